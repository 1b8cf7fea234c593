#include "catalogdocument.h"
#include "failures.h"
#include "modXMLSubs.h"
#include "programfolder.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using LoadResult = CatalogDocument::LoadResult;

namespace {

/// A document opened from a file of its own.
struct Opened
{
    explicit Opened(const QByteArray &xml) { LoadFrom(xml); }

    void LoadFrom(const QByteArray &xml)
    {
        const QString path = folder.Write(u"Shows.xml"_s, xml);
        QCOMPARE(document.Load(path), LoadResult::Loaded);
        document.SetPath(path);
    }
    QByteArray Saved()
    {
        document.MarkModified();
        document.Save();
        return folder.Read(u"Shows.xml"_s);
    }
    /// The mark of the listing that an ID finds, "-" for none.
    QString Found(const QString &id) const
    {
        const pugi::xml_node listing = document.Listing(id);
        return listing ? ReadAttribute(listing, "m") : u"-"_s;
    }

    TestProgramFolder folder;
    CatalogDocument document;
};

} // namespace

class TestCatalogDocument : public QObject
{
    Q_OBJECT

private slots:
    void loads_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<LoadResult>("result");
        QTest::newRow("catalog") << "<Catalog/>"_ba << LoadResult::Loaded;
        QTest::newRow("catalog with more") << "<!--a--><Catalog a='1' xmlns=''>b</Catalog>"_ba << LoadResult::Loaded;
        QTest::newRow("another case") << "<catalog/>"_ba << LoadResult::NotACatalog;
        QTest::newRow("user file") << "<User/>"_ba << LoadResult::NotACatalog;
        QTest::newRow("not at the top") << "<a><Catalog/></a>"_ba << LoadResult::NotACatalog;
        QTest::newRow("prefix") << "<x:Catalog xmlns:x='y'/>"_ba << LoadResult::NotACatalog;
        QTest::newRow("namespace") << "<Catalog xmlns='y'/>"_ba << LoadResult::NotACatalog;
        QTest::newRow("empty file") << ""_ba << LoadResult::Unreadable;
        QTest::newRow("broken") << "<Catalog>"_ba << LoadResult::Unreadable;
    }
    void loads()
    {
        QFETCH(QByteArray, xml);
        QFETCH(LoadResult, result);
        Opened open("<Catalog><Item ID='1' m='old'/></Catalog>");
        open.document.MarkModified();
        const QSignalSpy replaced(&open.document, &CatalogDocument::aboutToBeReplaced);
        QCOMPARE(open.document.Load(open.folder.Write(u"Other.xml"_s, xml)), result);
        QCOMPARE(replaced.count(), result == LoadResult::Loaded ? 1 : 0);
        QCOMPARE(open.Found(u"1"_s), result == LoadResult::Loaded ? u"-"_s : u"old"_s);
        QVERIFY(open.document.IsModified());
        QCOMPARE(open.document.Path(), open.folder.Path(u"Shows.xml"_s));
    }

    void announcesBeforeElementsDie()
    {
        Opened open("<Catalog><Item ID='1' m='a'/></Catalog>");
        QStringList told;
        connect(&open.document, &CatalogDocument::aboutToBeReplaced, this, [&] { told += open.Found(u"1"_s); });
        connect(&open.document, &CatalogDocument::listingAboutToBeRemoved, this, [&](pugi::xml_node listing) {
            told += u"removed "_s + ReadAttribute(listing, "m");
        });
        connect(&open.document, &CatalogDocument::modifiedChanged, this, [&](bool changed) {
            told += changed ? u"changed"_s : u"unchanged"_s;
        });
        open.LoadFrom("<Catalog><Item ID='1' m='b'/><Item ID='2' m='c'/></Catalog>");
        open.document.RemoveListing(open.document.Listing(u"2"_s));
        open.document.MarkModified();
        open.document.MarkModified();
        open.document.Clear();
        QCOMPARE(told, QStringList({u"a"_s, u"removed c"_s, u"changed"_s, u"b"_s, u"unchanged"_s}));
        QVERIFY(!open.document.Catalog());
        QCOMPARE(open.document.NumberOfListings(), 0);
        QCOMPARE(open.Found(u"1"_s), u"-"_s);
    }

    void findsByIdText()
    {
        Opened open(
            "<Catalog><Item ID='7' m='a'/><Item m='b'/><Item ID=\"it's\" m='c'/><Item ID='7' m='d'/>"
            "<Item ID='' m='e'/><Item ID='07' m='f'/><Item ID='7' m='g'/><More><Item ID='9' m='h'/></More></Catalog>");
        QCOMPARE(open.document.NumberOfListings(), 7);
        const auto found = [&open] {
            QString marks;
            for (const QString &id : {u"7"_s, u"07"_s, u""_s, u"it's"_s, u"9"_s})
                marks += open.Found(id);
            return marks;
        };
        QCOMPARE(found(), u"afbc-"_s);
        open.document.RemoveListing(open.document.Listing(u"7"_s));
        open.document.RemoveListing(open.document.Listing(u""_s));
        QCOMPARE(found(), u"dfec-"_s);
        open.document.RemoveListing(open.document.Listing(u"7"_s));
        open.document.RemoveListing(open.document.Listing(u"it's"_s));
        QCOMPARE(found(), u"gfe--"_s);
        open.document.RemoveListing(open.document.Listing(u"7"_s));
        open.document.RemoveListing(open.document.Listing(u""_s));
        QCOMPARE(found(), u"-f---"_s);
        QVERIFY(!open.document.Listing(u"7"_s));
        QCOMPARE(
            open.Saved(),
            "<Catalog>\n\t<Item ID=\"07\" m=\"f\" />\n\t<More><Item ID=\"9\" m=\"h\" /></More>\n</Catalog>\n"_ba);
    }

    void nextId_data()
    {
        QTest::addColumn<QStringList>("ids");
        QTest::addColumn<int>("next"); // 0: none fits
        const auto row = [](const char *name, const QStringList &ids, int next) { QTest::newRow(name) << ids << next; };
        row("empty catalog", {}, 1);
        row("gaps", {u"1"_s, u"7"_s, u"2"_s}, 8);
        row("as numbers", {u"9"_s, u"10"_s}, 11);
        row("lenient", {u" 12x"_s, u"u99"_s, u""_s}, 13);
        row("none above 0", {u"-5"_s, u"x"_s}, 1);
        row("halves to even", {u"2.5"_s, u"1"_s}, 3);
        row("halves to even, up", {u"3.5"_s}, 5);
        row("last", {u"2147483646"_s}, 2147483647);
        row("behind the last", {u"2147483647"_s}, 0);
        row("beyond 32 bits", {u"1"_s, u"99999999999"_s}, 0);
    }
    void nextId()
    {
        QFETCH(QStringList, ids);
        QFETCH(int, next);
        QByteArray xml = "<Catalog><Item/>";
        for (const QString &id : ids)
            xml += "<Item ID='" + id.toUtf8() + "'/>";
        Opened open(xml + "</Catalog>");
        if (next > 0) {
            QCOMPARE(open.document.GetNextID(), next);
            QCOMPARE(ReadAttribute(open.document.AppendListing(u"a"_s), "ID"), QString::number(next));
            return;
        }
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.GetNextID());
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.AppendListing(u"a"_s));
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.AppendCopy(open.document.Listing({})));
        QCOMPARE(std::distance(open.document.Catalog().begin(), open.document.Catalog().end()), ids.size() + 1);
        QCOMPARE(open.document.NumberOfListings(), ids.size() + 1);
    }

    void nextIdAfterRemoving_data()
    {
        QTest::addColumn<QStringList>("ids");
        QTest::addColumn<QList<int>>("next"); // after each is removed, in their order
        QTest::newRow("one ID twice") << QStringList{u"3"_s, u"8"_s, u"8"_s, u"5"_s} << QList<int>{9, 9, 6, 1};
        QTest::newRow("just below") << QStringList{u"12"_s, u"11"_s, u"10"_s} << QList<int>{12, 11, 1};
        QTest::newRow("far below") << QStringList{u"90000"_s, u"7"_s, u"3"_s} << QList<int>{8, 4, 1};
        QTest::newRow("written oddly") << QStringList{u"9"_s, u"07"_s, u" 6x"_s} << QList<int>{8, 7, 1};
    }
    void nextIdAfterRemoving()
    {
        QFETCH(QStringList, ids);
        QByteArray xml = "<Catalog>";
        for (const QString &id : ids)
            xml += "<Item ID='" + id.toUtf8() + "'/>";
        Opened open(xml + "</Catalog>");
        QList<int> next;
        for (const QString &id : ids) {
            open.document.RemoveListing(open.document.Listing(id));
            next += open.document.GetNextID();
        }
        QTEST(next, "next");
    }

    void appends()
    {
        Opened open(
            "<Catalog><Item ID='4' Seeder='s' Type='Video' WrongDate='1' DateAdded='2001-01-01' Venue='v' Format='CD'>"
            "<Notes>n<!--c--></Notes></Item><Type>Video</Type><WebSource>w</WebSource></Catalog>");
        const pugi::xml_node copy = open.document.AppendCopy(open.document.Listing(u"4"_s));
        QCOMPARE(open.document.Listing(u"5"_s), copy);
        for (const char *name : {"WrongDate", "Format", "DateAdded", "Seeder"})
            QVERIFY2(copy.attribute(name) && ReadAttribute(copy, name).isEmpty(), name);
        const pugi::xml_node added = open.document.AppendListing(u"R&B"_s);
        QCOMPARE(open.document.Listing(u"6"_s), added);
        open.document.SupplyType(u"R&B"_s);
        QCOMPARE(open.document.Entries(CatalogList::RecordingTypes), QStringList({u"Video"_s, u"R&B"_s}));
        QCOMPARE(open.document.Entries(CatalogList::WebSources), QStringList(u"w"_s));
        QCOMPARE(
            open.Saved(),
            R"(<Catalog>
	<Item ID="4" Seeder="s" Type="Video" WrongDate="1" DateAdded="2001-01-01" Venue="v" Format="CD">
		<Notes>n<!--c--></Notes>
	</Item>
	<Type>Video</Type>
	<WebSource>w</WebSource>
	<Item ID="5" Type="Video" Venue="v">
		<Notes>n<!--c--></Notes>
	</Item>
	<Item ID="6" Type="R&amp;B" />
	<Type>R&amp;B</Type>
</Catalog>
)"_ba);
    }

    void appendsNothingToAnEmptyDocument()
    {
        CatalogDocument document;
        QVERIFY_THROWS_EXCEPTION(ProgramError, document.AppendListing(u"a"_s));
        QVERIFY_THROWS_EXCEPTION(ProgramError, document.SupplyType(u"a"_s));
        QCOMPARE(document.Entries(CatalogList::RecordingTypes), QStringList());
    }

    void saveTellsOfListingsThatItRemoves()
    {
        Opened open("<Catalog><Item ID='' Type=''/><Item ID='1'><Notes/></Item><Item/><x/></Catalog>");
        int removed = 0;
        connect(&open.document, &CatalogDocument::listingAboutToBeRemoved, this, [&removed](pugi::xml_node listing) {
            QCOMPARE(listing.name(), "Item");
            ++removed;
        });
        QCOMPARE(open.Saved(), "<Catalog>\n\t<Item ID=\"1\" />\n</Catalog>\n"_ba);
        QCOMPARE(removed, 2);
        QCOMPARE(open.document.NumberOfListings(), 1);
        QVERIFY(!open.document.Listing({}));
        QVERIFY(!open.document.IsModified());
    }

    void failedSaveKeepsTheFlag()
    {
        Opened open("<Catalog><Item ID='1' Venue=''/></Catalog>");
        open.document.SetPath(open.folder.Path(u"gone/Shows.xml"_s));
        open.document.MarkModified();
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.Save());
        QVERIFY(open.document.IsModified());
        QVERIFY(!open.document.Listing(u"1"_s).attribute("Venue"));
        QVERIFY(!QDir(open.folder.Path(u"gone"_s)).exists());
    }

    void newCatalog()
    {
        Opened open("<Catalog><Item ID='1' m='a'/></Catalog>");
        CatalogDocument::WriteNewCatalog(open.folder.Path(u"New.xml"_s));
        QCOMPARE(open.folder.Read(u"New.xml"_s), "<Catalog />\n"_ba);
        QCOMPARE(open.Found(u"1"_s), u"a"_s);
        open.LoadFrom("<Catalog />\n");
        QCOMPARE(open.Saved(), "<Catalog />\n"_ba);
    }

    void sample()
    {
        Opened open("<Catalog/>");
        QCOMPARE(open.document.Load(QStringLiteral(DISCBOOK_SAMPLES "/Live.xml")), LoadResult::Loaded);
        QCOMPARE(open.document.NumberOfListings(), 2373);
        QCOMPARE(open.document.GetNextID(), 2374);
        const QByteArray saved = open.Saved();
        QCOMPARE(saved.count("\n\t<Item "), 2373);
        open.LoadFrom(saved);
        QCOMPARE(open.Saved(), saved);
    }
};

QTEST_GUILESS_MAIN(TestCatalogDocument)
#include "test_catalogdocument.moc"
