#include "labels.h"
#include "modXMLSubs.h"
#include "testworkspace.h"

#include <QAbstractItemModelTester>

#include <random>

namespace {

/// A catalog and its tree, to which random things are done. What the tree must show is worked out anew each time.
class Life : TestWorkspace
{
public:
    explicit Life(unsigned seed) : m_random(seed)
    {
        QByteArray listings = "<Type>Radio</Type><Item ID='7' Type='Album'/><Item ID='7' Type='Video'/>";
        for (int id = 1; id <= 40; ++id)
            listings += "<Item ID='" + QByteArray::number(id) + "' Type='" + Any(kTypes) + "' Year='" + Any(kYears) +
                        "' Venue='" + Any(kTexts) + "' Format='" + Any(kFormats) + "'/>";
        Open(listings, "CD=Lossless\r\nMP3=Lossy\r\n");
        Load();
    }

    void Step();
    /// What is wrong with the tree; empty when nothing is.
    QString Fault() const;
    QString FaultOfRefresh();

private:
    static constexpr std::array kTypes{"", "Concert", "Album", "Video", "Radio", "s5", "Bootleg"};
    static constexpr std::array kYears{"", "1994", "1995", "x", "12345"};
    static constexpr std::array kTexts{"", "b", "B", "a%d", "été", "Été", "zz"};
    static constexpr std::array kFormats{"", "CD", "MP3"};
    static constexpr std::array kFlags{"", "1", "0"};

    template<class List>
    QByteArray Any(const List &list)
    {
        return list[m_random() % list.size()];
    }
    pugi::xml_node AnyListing();
    void Edit(pugi::xml_node listing);
    void Load();
    bool IsShown(pugi::xml_node listing) const;
    QString GroupOf(pugi::xml_node listing) const;
    QString FaultOf(const BrowseTree::Listing &node) const;
    QStringList Rows() const;

    std::mt19937 m_random;
    QAbstractItemModelTester m_tester{&tree.Model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::vector<pugi::xml_node> m_shown; ///< the listings that must have a node
};

pugi::xml_node Life::AnyListing()
{
    std::vector<pugi::xml_node> listings;
    for (const pugi::xml_node listing : document.Catalog().children("Item"))
        listings.push_back(listing);
    return listings.empty() ? pugi::xml_node() : listings[m_random() % listings.size()];
}

void Life::Edit(pugi::xml_node listing)
{
    switch (m_random() % 6) {
    case 0:
        return document.SetField(listing, "Type", QString::fromUtf8(Any(kTypes)));
    case 1:
        return document.SetField(listing, "Year", QString::fromUtf8(Any(kYears)));
    case 2:
        return document.SetField(listing, "WrongDate", QString::fromUtf8(Any(kFlags)));
    case 3:
        return document.SetFormat(listing, QString::fromUtf8(Any(kFormats)), QDate(2024, 2, 29));
    case 4:
        return document.SetText(listing, "Notes", QString::fromUtf8(Any(kTexts)));
    default:
        return document.SetField(listing, "Venue", QString::fromUtf8(Any(kTexts)));
    }
}

void Life::Step()
{
    const pugi::xml_node listing = AnyListing();
    const auto add = [this](pugi::xml_node added) {
        if (IsShown(added))
            m_shown.push_back(added);
    };
    switch (listing ? m_random() % 20 : 0) {
    case 0:
        return add(document.AppendListing(QString::fromUtf8(Any(kTypes))));
    case 1:
        return add(document.AppendCopy(listing));
    case 2:
    case 3:
        std::erase(m_shown, listing);
        return document.RemoveListing(listing);
    case 4:
        options.filter = static_cast<ViewFilter>(m_random() % 5);
        options.showWrongDate = m_random() % 2 == 0;
        types.Toggle(static_cast<int>(m_random() % 7));
        return Load();
    case 5:
        document.Save();
        break;
    default:
        return Edit(listing);
    }
}

void Life::Load()
{
    tree.LoadShows();
    m_shown.clear();
    QSet<QString> ids;
    for (const pugi::xml_node listing : document.Catalog().children("Item")) {
        if (IsShown(listing) && !ids.contains(ReadAttribute(listing, "ID"))) {
            m_shown.push_back(listing);
            ids.insert(ReadAttribute(listing, "ID"));
        }
    }
}

bool Life::IsShown(pugi::xml_node listing) const
{
    const QString type = ReadAttribute(listing, "Type");
    const QString format = ReadAttribute(listing, "Format");
    const std::array shown{true, format == "CD"_L1, format == "MP3"_L1, format != "CD"_L1, format.isEmpty()};
    return types.IsShown(types.Find(type.isEmpty() ? u"Concert"_s : type)) && shown[size_t(options.filter)] &&
           (options.showWrongDate || ReadAttribute(listing, "WrongDate") != "1"_L1);
}

QString Life::GroupOf(pugi::xml_node listing) const
{
    const QString type = ReadAttribute(listing, "Type");
    const QString year = ReadAttribute(listing, "Year");
    if (type.isEmpty() || type == "Concert"_L1)
        return u'y' + (year.isEmpty() || year == "x"_L1 ? u"0"_s : year);
    return type == "Radio"_L1 || type == "s5"_L1 ? type : type + u's';
}

QString Life::FaultOf(const BrowseTree::Listing &node) const
{
    const QString format = ReadAttribute(node.element, "Format");
    const bool wrongDate = ReadAttribute(node.element, "WrongDate") == "1"_L1;
    const QString picture = wrongDate ? u"WrongDate"_s : format.isEmpty() ? u"Unchecked"_s : u"Format"_s + format;
    if (node.picture != picture)
        return u"picture "_s + node.picture;
    // A listing whose type is hidden by an edit stays where it was until the next load.
    if (IsShown(node.element) && node.group->key != GroupOf(node.element))
        return u"group "_s + node.group->key;
    const QString label = tree.Model().IndexOf(node).data().toString();
    return label == ListingLabel(node.element) ? QString() : u"label "_s + label;
}

QString Life::Fault() const
{
    if (tree.ShownCount() != static_cast<qsizetype>(m_shown.size()))
        return u"%1 nodes for %2 listings"_s.arg(tree.ShownCount()).arg(m_shown.size());
    for (const pugi::xml_node listing : m_shown) {
        const BrowseTree::Listing *node = tree.FindNode(listing);
        const QString fault = node ? FaultOf(*node) : u"no node"_s;
        if (!fault.isEmpty())
            return fault + u" of "_s + ListingLabel(listing);
    }
    for (const auto &group : tree.Model().Groups()) {
        for (size_t row = 1; row < group->InOrder().size(); ++row) {
            const auto label = [&](size_t at) { return ListingLabel(group->InOrder()[at]->element).toCaseFolded(); };
            if (label(row) < label(row - 1))
                return u"order at "_s + label(row);
        }
    }
    return {};
}

QStringList Life::Rows() const
{
    QStringList rows;
    for (const pugi::xml_node listing : m_shown) {
        const BrowseTree::Listing *node = tree.FindNode(listing);
        if (node && IsShown(listing))
            rows += node->group->key + u' ' + node->Id() + u' ' + node->picture;
    }
    return rows;
}

/// A load changes nothing about the listings that it shows as well.
QString Life::FaultOfRefresh()
{
    const QStringList before = Rows();
    Load();
    const QStringList after = Rows();
    for (const QString &row : before) {
        if (!after.contains(row))
            return u"after a refresh: "_s + row;
    }
    return Fault();
}

} // namespace

class TestTreeFollows : public QObject
{
    Q_OBJECT

private slots:
    void whateverIsDoneToTheCatalog()
    {
        for (unsigned seed = 1; seed <= 8; ++seed) {
            Life life(seed);
            for (int step = 1; step <= 250; ++step) {
                life.Step();
                // Where it is looked at seldom, groups are edited before anybody has asked for their order.
                QString fault = seed % 2 == 0 || step % 10 == 0 ? life.Fault() : QString();
                if (step % 50 == 0 && fault.isEmpty())
                    fault = life.FaultOfRefresh();
                QVERIFY2(fault.isEmpty(), qPrintable(u"seed %1, step %2: %3"_s.arg(seed).arg(step).arg(fault)));
            }
        }
    }
};

QTEST_MAIN(TestTreeFollows)
#include "test_treefollows.moc"
