#include "showntext.h"
#include "testworkspace.h"

#include <QAbstractItemModelTester>

namespace {

/// A tree over a small catalog, with FLAC and MP3 as known formats.
struct Fixture : TestWorkspace
{
    QAbstractItemModelTester tester{&tree.Model(), QAbstractItemModelTester::FailureReportingMode::Fatal};

    explicit Fixture(const QByteArray &listings, const QByteArray &typesShown = {})
    {
        Open(listings, "FLAC=Lossless\r\nMP3=Lossy\r\n", "[Shows]\r\n" + typesShown);
    }

    BrowseTree::Listing &Listing(const QString &id) { return *tree.Model().FindListing(id); }

    /// The tree as text: groups, and their listings indented, each with its picture.
    QString Text() const
    {
        QString text;
        for (const auto &group : tree.Model().Groups()) {
            text += u"%1 [%2]\n"_s.arg(group->text.simplified(), group->picture);
            for (const auto &listing : group->InOrder())
                text += u"  %1 %2 [%3]\n"_s.arg(listing->Id(), ListingText(*listing), listing->picture);
        }
        return text;
    }

    QString ListingText(const BrowseTree::Listing &listing) const
    {
        return tree.Model().data(tree.Model().IndexOf(listing), Qt::DisplayRole).toString();
    }
};

constexpr auto kShows = R"(
<Item ID='1' Type='Concert' Year='1995' Venue='b' Format='MP3'/>
<Item ID='2' Type='Concert' Year='1994' Month='2' Venue='x' Format='FLAC'/>
<Item ID='3' Year='1994' Month='1' Venue='y'/>
<Item ID='4' Type='Album' Year='1994' Venue='Zebra' Format='FLAC'/>
<Item ID='5' Type='Album' Year='1994' Venue='apple' Format='MP3'/>
<Item ID='6' Type='Concert' Year='1994' Venue='w' WrongDate='1' Format='FLAC'/>
<Item ID='7' Type='Radio' Year='1990' Venue='r'/>
<Item ID='8' Type='Concert' Venue='undated'/>
<Item ID='9' Type='Video' Venue='v' Format='Laserdisc'/>
<Type>Radio</Type>)";

} // namespace

class TestBrowseTree : public QObject
{
    Q_OBJECT

private slots:
    void fullLoad()
    {
        Fixture f(kShows);
        f.prompts.ExpectMessage(u"Unknown format"_s, UserPrompts::Answer::No);
        f.prompts.SetWhileAsked([&](const auto &) { QCOMPARE(f.tree.Model().rowCount(), 0); });
        QVERIFY(f.tree.LoadShows());
        QCOMPARE(
            f.Text(), u"0 ( 0 / 0 / 1 ) [Closed]\n"
                      "  8 ???? - undated [Unchecked]\n"
                      "1994 ( 1 / 0 / 2 ) [Closed]\n"
                      "  3 1994-01-?? - y [Unchecked]\n"
                      "  2 1994-02-?? - x [FormatFLAC]\n"
                      "  6 1994-??-?? - w (wrong date) [WrongDate]\n"
                      "1995 ( 0 / 1 / 1 ) [Closed]\n"
                      "  1 1995-??-?? - b [FormatMP3]\n"
                      "Albums ( 1 / 1 / 2 ) [CD]\n"
                      "  5 1994 - apple [FormatMP3]\n"
                      "  4 1994 - Zebra [FormatFLAC]\n"
                      "Radio ( 0 / 0 / 1 ) [Closed]\n"
                      "  7 1990-??-?? - r [Unchecked]\n"
                      "Videos ( 0 / 1 / 1 ) [Video]\n"
                      "  9 v -  [FormatLaserdisc]\n"_s);
        QCOMPARE(f.tree.ShownCount(), 9);
        QCOMPARE(f.tree.Model().Groups()[1]->text, u"1994       ( 1 / 0 / 2 )"_s);
        QVERIFY(!f.document.IsModified());

        QVERIFY(f.tree.LoadShows());
        QCOMPARE(f.tree.Model().Groups()[1]->text, u"1994       ( 1 / 0 / 2 )"_s);
        QCOMPARE(f.tree.ShownCount(), 9);
    }

    void newTypeJoinsTheCatalog()
    {
        Fixture f("<Item ID='1' Type='R&amp;B'/><Item ID='2' Type='R&amp;B'/><Item ID='3' Type='concert'/>");
        f.tree.LoadShows();
        QCOMPARE(f.document.Entries(CatalogList::RecordingTypes), QStringList({u"R&B"_s, u"concert"_s}));
        QCOMPARE(f.types.ShownNames().mid(6), QStringList({u"R&B"_s, u"concert"_s}));
        QVERIFY(!f.document.IsModified());
    }

    void groupsAndListingsHaveKeysOfTheirOwn()
    {
        Fixture f(
            "<Item ID='5' Type='s5'/><Item ID='6' Type='y1994'/><Item ID='7' Year='1994'/><Item ID='5' Year='1990'/>"
            "<Item Venue='no ID'/>");
        f.options.showYearTotals = false;
        f.tree.LoadShows();
        // A type called like a year's key shares its group, and of two listings with one ID the tree holds the first.
        QCOMPARE(
            f.Text(), u"0 [Closed]\n   ???? - no ID [Unchecked]\n"
                      "1990 [Closed]\n"
                      "s5 [Closed]\n  5 ???? -  [Unchecked]\n"
                      "y1994 [Closed]\n  7 1994-??-?? -  [Unchecked]\n  6 ???? -  [Unchecked]\n"_s);
    }

    void aMovedRowKeepsItsIndex()
    {
        Fixture f("<Item ID='1' Year='1995'/><Item ID='2' Year='1994'/>");
        f.tree.LoadShows();
        const QPersistentModelIndex kept = f.tree.Model().IndexOf(f.Listing(u"1"_s));
        f.document.SetField(f.Listing(u"1"_s).element, "Year", u"1994"_s);
        QCOMPARE(kept.data(BrowseTreeModel::KeyRole).toString(), u"s1"_s);
        QCOMPARE(kept.parent().data().toString(), u"1994       ( 0 / 0 / 1 )"_s);
        QVERIFY(!f.tree.Model().FindGroup(u"y1995"_s));
        f.document.Clear();
        QVERIFY(!kept.isValid() && f.tree.Model().rowCount() == 0);
    }

    void totalsSwitchedOffCutAtTheFirstBlank()
    {
        Fixture f("<Item ID='1' Type='Live Video'/>");
        f.tree.LoadShows();
        BrowseTree::Group &group = *f.tree.Model().FindGroup(u"Live Video"_s);
        QCOMPARE(group.text, u"Live Video       ( 0 / 0 / 1 )"_s);
        f.tree.RemoveYearCount(group);
        QCOMPARE(group.text, u"Live"_s);
        f.tree.AddYearCount(group);
        QCOMPARE(group.text, u"Live       ( 0 / 0 / 1 )"_s);
    }

    void hugeLabelsAreCutForDisplayOnly()
    {
        const QByteArray huge(5'000'000, 'x');
        Fixture f("<Item ID='1' Type='" + huge + "' Venue='" + huge + "'/>");
        f.tree.LoadShows();
        QCOMPARE(f.ListingText(f.Listing(u"1"_s)).size(), kMostShown + 1);
        QCOMPARE(f.tree.Model().index(0, 0).data().toString().size(), kMostShown + 1);
    }
};

QTEST_MAIN(TestBrowseTree)
#include "test_browsetree.moc"
