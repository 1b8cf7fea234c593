#include "catalogdocument.h"
#include "kit.h"
#include "modXMLSubs.h"
#include "rawxml.h"

using LoadResult = CatalogDocument::LoadResult;

namespace {

/// A document opened from a file of its own.
struct Opened : TestProgramFolder
{
    explicit Opened(const QByteArray &xml) { LoadFrom(xml); }

    void LoadFrom(const QByteArray &xml)
    {
        const QString path = Write(u"Shows.xml"_s, xml);
        QCOMPARE(document.Load(path), LoadResult::Loaded);
        document.SetPath(path);
    }
    /// What the file holds when it was saved.
    QByteArray Saved()
    {
        document.MarkModified();
        document.Save();
        return RawXml(*LoadXml(document.Path())->document);
    }
    /// The marks of the listings that some IDs find, "-" for none.
    QString Found(const QStringList &ids) const
    {
        QString marks;
        for (const QString &id : ids)
            marks += document.Listing(id) ? ReadAttribute(document.Listing(id), "m") : u"-"_s;
        return marks;
    }
    void Remove(const QString &id) { document.RemoveListing(document.Listing(id)); }
    /// The next ID, 0 when none fits.
    int NextId() const
    {
        try {
            return document.GetNextID();
        } catch (const ProgramError &) {
            return 0;
        }
    }

    CatalogDocument document;
};

} // namespace

class TestCatalogDocument : public QObject
{
    Q_OBJECT

private slots:
    void loads()
    {
        const std::vector<std::pair<LoadResult, QByteArrayList>> files = {
            {LoadResult::Loaded, {"<Catalog/>", "<!--a--><Catalog a='1' xmlns=''>b</Catalog>"}},
            {LoadResult::NotACatalog, {"<catalog/>", "<User/>", "<a><Catalog/></a>"}},
            {LoadResult::NotACatalog, {"<x:Catalog xmlns:x='y'/>", "<Catalog xmlns='y'/>"}},
            {LoadResult::Unreadable, {"", "<Catalog>"}}};
        for (const auto &[result, xmls] : files) {
            for (const QByteArray &xml : xmls) {
                Opened open("<Catalog><Item ID='1' m='old'/></Catalog>");
                open.document.MarkModified();
                const QSignalSpy replaced(&open.document, &CatalogDocument::aboutToBeReplaced);
                QVERIFY2(open.document.Load(open.Write(u"Other.xml"_s, xml)) == result, xml);
                QCOMPARE(replaced.count(), result == LoadResult::Loaded ? 1 : 0);
                QCOMPARE(open.Found({u"1"_s}), result == LoadResult::Loaded ? u"-"_s : u"old"_s);
                QVERIFY(open.document.IsModified());
                QCOMPARE(open.document.Path(), open.Path(u"Shows.xml"_s));
            }
        }
    }

    void announcesBeforeElementsDie()
    {
        Opened open("<Catalog><Item ID='1' m='a'/></Catalog>");
        QStringList told;
        connect(&open.document, &CatalogDocument::aboutToBeReplaced, this, [&] { told += open.Found({u"1"_s}); });
        connect(&open.document, &CatalogDocument::listingAboutToBeRemoved, this, [&](pugi::xml_node listing) {
            told += u"removed "_s + ReadAttribute(listing, "m");
        });
        connect(&open.document, &CatalogDocument::modifiedChanged, this, [&](bool changed) {
            told += changed ? u"changed"_s : u"unchanged"_s;
        });
        open.LoadFrom("<Catalog><Item ID='1' m='b'/><Item ID='2' m='c'/></Catalog>");
        open.Remove(u"2"_s);
        open.document.MarkModified();
        open.document.MarkModified();
        open.document.Clear();
        QCOMPARE(told, QStringList({u"a"_s, u"removed c"_s, u"changed"_s, u"b"_s, u"unchanged"_s}));
        QVERIFY(!open.document.Catalog());
        QCOMPARE(open.document.NumberOfListings(), 0);
        QCOMPARE(open.Found({u"1"_s}), u"-"_s);
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.AppendListing(u"a"_s));
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.SupplyType(u"a"_s));
        QCOMPARE(open.document.Entries(CatalogList::RecordingTypes), QStringList());
    }

    void findsByIdText()
    {
        Opened open(
            "<Catalog><Item ID='7' m='a'/><Item m='b'/><Item ID=\"it's\" m='c'/><Item ID='7' m='d'/>"
            "<Item ID='' m='e'/><Item ID='07' m='f'/><Item ID='7' m='g'/><More><Item ID='9' m='h'/></More></Catalog>");
        QCOMPARE(open.document.NumberOfListings(), 7);
        const QStringList ids = {u"7"_s, u"07"_s, u""_s, u"it's"_s, u"9"_s};
        QCOMPARE(open.Found(ids), u"afbc-"_s);
        open.Remove(u"7"_s);
        open.Remove(u""_s);
        QCOMPARE(open.Found(ids), u"dfec-"_s);
        open.Remove(u"7"_s);
        open.Remove(u"it's"_s);
        QCOMPARE(open.Found(ids), u"gfe--"_s);
        open.Remove(u"7"_s);
        open.Remove(u""_s);
        QCOMPARE(open.Found(ids), u"-f---"_s);
        QCOMPARE(open.Saved(), "<Catalog><Item ID='07' m='f'/><More><Item ID='9' m='h'/></More></Catalog>");
    }

    void nextId()
    {
        // The IDs, and the next one at first and after each listing is removed, in their order; 0 where none fits.
        const std::vector<std::pair<QByteArray, QList<int>>> rows = {
            {"1,10,2,9", {11, 11, 10, 10, 1}}, // as numbers
            {" 12x,u99,-5,", {13, 1, 1, 1, 1}},
            {"3.5,2.5,1", {5, 3, 2, 1}}, // halves to even
            {"2147483647,2147483646", {0, 2147483647, 1}},
            {"1,99999999999", {0, 0, 1}},
            {"3,8,8,5", {9, 9, 9, 6, 1}},
            {"12,11,10", {13, 12, 11, 1}}, // just below, and far
            {"90000,7,3", {90001, 8, 4, 1}},
            {"9,07, 6x", {10, 8, 7, 1}}};
        for (const auto &[ids, expected] : rows) {
            Opened open("<Catalog><Item/><Item ID='" + QByteArray(ids).replace(",", "'/><Item ID='") + "'/></Catalog>");
            QList<int> next = {open.NextId()};
            for (const QByteArray &id : ids.split(',')) {
                open.Remove(QString::fromLatin1(id));
                next += open.NextId();
            }
            QCOMPARE(next, expected);
        }
        QCOMPARE(Opened("<Catalog/>").NextId(), 1);
    }

    void appendsNothingWithoutAFreeId()
    {
        Opened open("<Catalog><Item ID='2147483647'/></Catalog>");
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.AppendListing(u"a"_s));
        QVERIFY_THROWS_EXCEPTION(ProgramError, open.document.AppendCopy(open.document.Listing(u"2147483647"_s)));
        QCOMPARE(open.document.NumberOfListings(), 1);
        QCOMPARE(open.Saved(), "<Catalog><Item ID='2147483647'/></Catalog>");
    }

    void appends()
    {
        const QByteArray item =
            "<Item ID='4' Seeder='s' Type='Video' WrongDate='1' DateAdded='d' Venue='v' Format='CD'>"
            "<Notes>n<!--c--></Notes></Item><Type>Video</Type><WebSource>w</WebSource>";
        Opened open("<Catalog>" + item + "</Catalog>");
        const pugi::xml_node copy = open.document.AppendCopy(open.document.Listing(u"4"_s));
        QCOMPARE(open.document.Listing(u"5"_s), copy);
        for (const char *name : {"WrongDate", "Format", "DateAdded", "Seeder"})
            QVERIFY2(copy.attribute(name) && ReadAttribute(copy, name).isEmpty(), name);
        const pugi::xml_node added = open.document.AppendListing(u"R&B"_s);
        QCOMPARE(open.document.Listing(u"6"_s), added);
        open.document.SupplyType(u"R&B"_s);
        QCOMPARE(open.document.Entries(CatalogList::RecordingTypes), QStringList({u"Video"_s, u"R&B"_s}));
        QCOMPARE(open.document.Entries(CatalogList::WebSources), {u"w"_s});
        QCOMPARE(
            open.Saved(), "<Catalog>" + item +
                              "<Item ID='5' Type='Video' Venue='v'><Notes>n<!--c--></Notes></Item>"
                              "<Item ID='6' Type='R&amp;B'/><Type>R&amp;B</Type></Catalog>");
    }

    void saveTellsOfListingsThatItRemoves()
    {
        Opened open("<Catalog><Item ID='' Type=''/><Item ID='1'><Notes/></Item><Item/><x/></Catalog>");
        const QSignalSpy removed(&open.document, &CatalogDocument::listingAboutToBeRemoved);
        const QSignalSpy saved(&open.document, &CatalogDocument::saved);
        QCOMPARE(open.Saved(), "<Catalog><Item ID='1'/></Catalog>");
        QCOMPARE(removed.count(), 2);
        QCOMPARE(saved.count(), 1);
        QCOMPARE(open.document.NumberOfListings(), 1);
        QVERIFY(!open.document.Listing({}));
        QVERIFY(!open.document.IsModified());
    }
};

QTEST_GUILESS_MAIN(TestCatalogDocument)
#include "test_catalogdocument.moc"
