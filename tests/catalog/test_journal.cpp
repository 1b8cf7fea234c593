#include "catalogdocument.h"
#include "journal.h"
#include "kit.h"
#include "modXMLSubs.h"
#include "rawxml.h"

#include <random>

using Kind = CatalogEdit::Kind;

namespace {

constexpr auto kCatalog =
    "<Catalog><Type>Radio</Type><Item Venue='first' ID='1' Type='Album'><Notes>n<!--c--><![CDATA[d]]></Notes></Item>"
    "<Item ID='7' m='a'/><Item m='none'/><WebSource>w</WebSource><Item ID='7' m='b'><Comment> </Comment></Item>"
    "<Item ID='' m='empty'/><Item ID='7' m='c'/><!--c--><Item ID='07'/></Catalog>";

/// A document whose edits are kept, in a program's folder that others may share.
struct Life
{
    explicit Life(const QString &path)
    {
        document.Load(path);
        document.SetPath(path);
        journal.Begin(path);
    }

    /// Goes on with what the newest journal has.
    bool Recover(const QString &path)
    {
        std::vector<FoundJournal> found = FindJournals(path, document.ContentDigest());
        if (found.size() != 1 || found[0].contents.digest != document.ContentDigest())
            return false;
        const bool all = document.Restore(found[0].contents.edits);
        journal.GoOnWith(std::move(found[0]));
        return all;
    }

    void Step(std::mt19937 &random);
    void FailToSave();

    /// The listings and lists, each in their order, as a save leaves them.
    QByteArray Content() const
    {
        pugi::xml_document copy;
        copy.reset(document.Document());
        CleanXML(copy);
        QByteArray content;
        for (const char *name : {"Item", "Type", "WebSource"}) {
            for (const pugi::xml_node element : copy.document_element().children(name))
                content += RawXml(element) + '\n';
        }
        return content;
    }

    CatalogDocument document;
    Journal journal{document};
};

void Life::Step(std::mt19937 &random)
{
    static const QStringList texts = {u""_s, u"a\tb\n"_s, u"ab"_s, u"été <&>'"_s, u"a\rb\\"_s, QString(3000, u'x')};
    const QString text = texts[static_cast<qsizetype>(random() % static_cast<size_t>(texts.size()))];
    std::vector<pugi::xml_node> listings;
    for (const pugi::xml_node listing : document.Catalog().children("Item"))
        listings.push_back(listing);
    if (listings.empty())
        listings.push_back(document.AppendListing(u"Album"_s));
    const pugi::xml_node listing = listings[random() % listings.size()];
    const auto list = random() % 2 == 0 ? CatalogList::RecordingTypes : CatalogList::WebSources;
    const QString entry = document.Entries(list).value(0);
    switch (random() % 16) {
    case 0:
        document.AppendListing(text);
        break;
    case 1:
        document.AppendCopy(listing);
        break;
    case 2:
    case 3:
        document.RemoveListing(listing);
        break;
    case 4:
        document.AddEntry(list, QString::number(random() % 99));
        break;
    case 5:
        entry.isEmpty() ? document.AddEntry(list, u"a"_s) : document.RenameEntry(list, entry, u"r"_s);
        break;
    case 6:
        entry.isEmpty() ? document.AddEntry(list, u"b"_s) : document.RemoveEntry(list, entry);
        break;
    case 7:
        journal.Flush();
        break;
    case 8:
        document.SetFormat(listing, text, QDate(2024, 2, 29));
        break;
    case 9:
    case 10:
        document.SetText(listing, "Notes", text);
        break;
    case 11:
        FailToSave();
        break;
    default:
        document.SetField(listing, "Venue", text);
    }
}

/// In its last step, when the journal has heard of it.
void Life::FailToSave()
{
    const QString path = document.Path();
    document.SetPath(path + u".x"_s);
    const auto inTheWay =
        QObject::connect(&document, &CatalogDocument::aboutToReplaceFile, [this] { QDir().mkdir(document.Path()); });
    QVERIFY_THROWS_EXCEPTION(ProgramError, document.Save());
    QObject::disconnect(inTheWay);
    QVERIFY(QDir().rmdir(document.Path()));
    document.SetPath(path);
}

} // namespace

class TestJournal : public QObject
{
    Q_OBJECT

private slots:
    /// Each life ends without a word, and the next one goes on where it was.
    void livesGoOn()
    {
        for (unsigned seed = 1; seed <= 4; ++seed) {
            const TestProgramFolder folder;
            const QString path = folder.Write(u"Shows.xml"_s, kCatalog);
            std::mt19937 random(seed);
            auto life = std::make_unique<Life>(path);
            for (int crash = 0; crash < 6; ++crash) {
                for (int step = 0; step < 100; ++step)
                    life->Step(random);
                QVERIFY(FindJournals(path, 0).empty());
                const QByteArray content = life->Content();
                life = std::make_unique<Life>(path);
                QVERIFY(life->Recover(path) && life->document.IsModified());
                QCOMPARE(life->Content(), content);
                const double highest = life->document.GetNextID();
                life->document.RemoveListing(life->document.AppendListing({}));
                QCOMPARE(life->document.GetNextID(), highest);
            }
            const QDir journals(folder.Path(u"Recovery"_s));
            QCOMPARE(journals.entryInfoList(QDir::Files).size(), 1);
            life->document.Save();
            QVERIFY(journals.isEmpty());
        }
    }

    /// Cut anywhere or with any byte changed, a journal gives what is whole before.
    void damaged()
    {
        const TestProgramFolder folder;
        const QString path = folder.Write(u"Shows.xml"_s, kCatalog);
        Life life(path);
        QByteArrayList contents;
        QList<qsizetype> ends;
        QByteArray journal;
        const auto edit = [&](auto &&work) {
            work();
            contents += life.Content();
            const QStringList names = QDir(folder.Path(u"Recovery"_s)).entryList(QDir::Files);
            journal = names.isEmpty() ? QByteArray() : folder.Read(u"Recovery/"_s + names[0]);
            ends += journal.size();
        };
        edit([] {});
        edit([&] { life.document.SetField(life.document.Listing(u"1"_s), "Venue", u"été"_s); });
        const pugi::xml_node third = life.document.Catalog().find_child_by_attribute("m", "c");
        edit([&] { life.document.SetField(third, "Venue", u"third"_s); });
        edit([&] { life.document.RemoveListing(life.document.Listing(u"7"_s)); });
        edit([&] { life.document.SetField(life.document.Listing(u"1"_s), "Venue", u"été!"_s); });
        edit([&] { life.document.AddEntry(CatalogList::WebSources, u"x"_s); });
        edit([&] { life.document.AppendListing(u"Video"_s); });
        CatalogDocument document;
        for (qsizetype at = 0; at < journal.size(); ++at) {
            const auto whole = std::ranges::upper_bound(ends, at) - ends.begin() - 1;
            QByteArray changed = journal;
            changed[at] = static_cast<char>(changed[at] ^ (1 << at % 8));
            for (const QByteArray &bytes : {journal.first(at), changed}) {
                Life other(path);
                const JournalContents read = ReadJournal(bytes);
                other.document.Restore(read.edits);
                QCOMPARE(other.Content(), contents[whole]);
                // A last record that is said to be longer than it is looks cut off.
                QVERIFY(read.isDamaged == (bytes == changed) || at >= ends[ends.size() - 2]);
            }
        }
    }

    void whatTellsNothingIsRemoved()
    {
        const TestProgramFolder folder;
        const QString path = folder.Write(u"Shows.xml"_s, kCatalog);
        Life life(path);
        const QDir journals(folder.Path(u"Recovery"_s));
        QString name;
        QByteArray saved; // as the journal is when the file is about to be replaced
        connect(&life.document, &CatalogDocument::aboutToReplaceFile, [&] {
            name = u"Recovery/"_s + journals.entryList(QDir::Files).value(0);
            saved = folder.Read(name);
        });
        life.document.AppendListing({});
        life.document.Save();
        QVERIFY(journals.isEmpty());
        const QByteArray later = saved + JournalRecord({Kind::Removal, "1", 0, {}}, {});
        // What is left, and the edits that are to be had from it; -1 when it goes.
        const std::vector<std::pair<QByteArray, qsizetype>> rows = {
            {saved, -1},      {later, 1}, {saved.chopped(1), 1}, {saved + '\0', -1},   {saved + later, 0},
            {'x' + saved, 0}, {{}, -1},   {saved.first(30), -1}, {saved.first(9), -1}, {QByteArray(99, '\0'), -1}};
        for (const auto &[bytes, edits] : rows) {
            folder.Write(name, bytes);
            const auto found = FindJournals(path, life.document.ContentDigest());
            QCOMPARE(found.empty() ? -1 : qsizetype(found[0].contents.edits.All().size()), edits);
            QCOMPARE(journals.isEmpty(), edits < 0);
        }
        folder.Write(name, "Discbook journal 2\n");
        QVERIFY(FindJournals(path, 0).empty() && !journals.isEmpty());
    }

    void aKeyInALongTextIsFewBytesAndManyBecomeOne()
    {
        const TestProgramFolder folder;
        const QString path = folder.Write(u"Shows.xml"_s, kCatalog);
        auto life = std::make_unique<Life>(path);
        const auto size = [&] {
            const QFileInfoList journals = QDir(folder.Path(u"Recovery"_s)).entryInfoList(QDir::Files);
            return journals.size() == 1 ? journals[0].size() : 0;
        };
        QString text(5'000, u'x');
        for (int key = 0; key < 3'000; ++key)
            life->document.SetText(life->document.Listing(u"1"_s), "Notes", text.insert(2'500, u'y'));
        QVERIFY(size() > 80'000 && size() < 150'000);
        life->journal.Flush();
        QVERIFY(size() > 8'000 && size() < 9'000);
        life->document.SetField(life->document.Listing(u"1"_s), "Venue", u"v"_s);
        const QByteArray content = life->Content();
        life = std::make_unique<Life>(path);
        QVERIFY(life->Recover(path));
        QCOMPARE(life->Content(), content);
    }

    void senselessEditsAreLeftOut()
    {
        const TestProgramFolder folder;
        Life life(folder.Write(u"Shows.xml"_s, kCatalog));
        const QByteArray content = life.Content();
        const std::vector<CatalogEdit> senseless = {
            {Kind::Listing, "1", 0, "<Item ID='2'/>"},
            {Kind::Listing, "1", 0, "<Item ID='1'>"},
            {Kind::Listing, "1", 0, "<Item ID='1' a='&x;'/>"},
            {Kind::Listing, "1", 0, "<Item ID='1' a='\x01'/>"},
            {Kind::Listing, "1", 0, "<Item ID='1'/><Item ID='1'/>"},
            {Kind::Listing, "1", 0, "</Catalog><Catalog><Item ID='1'/>"},
            {Kind::Listing, "", 0, "<Type/>"},
            {Kind::Listing, "", 0, {}},
            {Kind::Removal, "7", 3, {}},
            {Kind::Removal, "x", 0, {}},
            {Kind::Entries, "Item", 0, {}}};
        for (const CatalogEdit &edit : senseless) {
            CatalogEdits edits;
            edits.Take(edit);
            QCOMPARE(life.document.Restore(edits), edit.kind == Kind::Removal);
            QCOMPARE(life.Content(), content);
        }
    }
};

QTEST_GUILESS_MAIN(TestJournal)
#include "test_journal.moc"
