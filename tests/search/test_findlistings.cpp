#include "catalogdocument.h"
#include "findlistings.h"
#include "kit.h"
#include "modXMLSubs.h"
#include "searchcriteria.h"

namespace {

constexpr auto kCatalog = R"(<Catalog><!-- Item -->
<Type>live</Type>
<Item ID='1' Type='Concert' Year='1997' Venue='Fillmore West' Show='early' Format='MP3'/>
<Item ID='2' Type='Live Video' Year='1997' Venue='Winterland'><SetList>Dark Star\nFillmore Jam</SetList></Item>
<Other><Item ID='3' Type='Concert' Venue='FILLMORE'/></Other>
<Item ID='4' Type='Concert' Year='01997' Venue='fillmore East'><Notes>caf&#233;, CAF&#201;</Notes></Item>
<Item ID='5' Type='Olive' Year='1970' Month='2' Day='3' Length='1.5'><Comment>stra&#223;e</Comment></Item>
</Catalog>)";

struct Catalog
{
    TestProgramFolder folder;
    CatalogDocument document;

    Catalog() { document.Load(folder.Write(u"Shows.xml"_s, kCatalog)); }
};

QString Query(SearchCriteria criteria, const QString &joiner = u"and"_s)
{
    criteria.joiner = joiner;
    return BuildSearchQuery(criteria);
}

/// The query with every contains condition written as "has".
QString Brief(QString query)
{
    query.remove(u",'abcdefghijklmnopqrstuvwxyz','ABCDEFGHIJKLMNOPQRSTUVWXYZ')"_s);
    return query.replace(u"contains(translate("_s, u"has("_s);
}

} // namespace

class TestFindListings : public QObject
{
    Q_OBJECT

private slots:
    void query()
    {
        const SearchCriteria all{u"a"_s, 1994,   7,      15,     u"b"_s, u"c"_s, u"d"_s, u"e"_s,
                                 u"f"_s, u"g"_s, u"h"_s, u"i"_s, u"j"_s, u"k"_s, u"l"_s};
        QCOMPARE(
            Brief(Query(all, u"or"_s)),
            u"/Catalog/Item[ has(@Type,'A') or (@Year='1994') or (@Month='7') or (@Day='15') or has(@Venue,'B') or "
            "has(@Type,'C') or has(@Length,'D') or has(@Source,'E') or has(@Grade,'F') or has(@Format,'G') or "
            "has(@Seeder,'H') or has(@Stored,'I') or has(SetList,'J') or has(Notes,'K') or has(Comment,'L')]"_s);
        QCOMPARE(Brief(Query({.year = 0, .month = -3, .day = 1})), u"/Catalog/Item[ (@Day='1')]"_s);
        QCOMPARE(Brief(Query({.notes = u"straße éğÿ"_s})), u"/Catalog/Item[ has(Notes,'STRAßE ÉĞŸ')]"_s);
        QCOMPARE(Query({}), u"/Catalog/I]"_s);
        QCOMPARE(Query({}, u"or"_s), u"/Catalog/It]"_s);
    }

    void found_data()
    {
        Table<QString, QString>("query", "ids")
            .Row("any case", Query({.venue = u"FILLmore"_s}), u"1 4"_s)
            .Row("or, in document order", Query({.month = 2, .trackList = u"jam"_s}, u"or"_s), u"2 5"_s)
            .Row("the stored form of a line break", Query({.trackList = u"star\\nfill"_s}), u"2"_s)
            .Row("beyond ASCII only as capital", Query({.notes = u"café"_s}), u"4"_s)
            // Values can close their quotes and go on with an expression of their own.
            .Row("through a value", Query({.venue = u"x')]|/*/*[('1'='1"_s}), u"1 2 4 5"_s)
            .Row("every node", u"//node()|//@*"_s, u"1 2 4 5"_s)
            .Row(
                "backwards and twice", u"/Catalog/Item[4]|/Catalog/Item[4]/preceding-sibling::*|/*/Type"_s,
                u"1 2 4 5"_s)
            .Row("reverse axis", u"/Catalog/Item[@ID='4']/preceding-sibling::Item"_s, u"1 2"_s)
            .Row("attributes", u"/Catalog/Item/@ID"_s, u""_s)
            .Row("an element that is no listing", u"/Catalog/It"_s, u""_s)
            .Row("the document", u"/"_s, u""_s);
    }

    void found()
    {
        QFETCH(QString, query);
        const Catalog catalog;
        QStringList ids;
        for (const pugi::xml_node listing : FindListings(catalog.document, query))
            ids.append(ReadAttribute(listing, "ID"));
        QTEST(ids.join(u' '), "ids");
        QVERIFY(FindListings(CatalogDocument(), query).empty());
    }

    void badExpressionsAreRefused()
    {
        const Catalog catalog;
        for (const QString &query :
             {Query({}), Query({}, u"or"_s), Query({.seeder = u"o'neil"_s}), u""_s, u"count(/Catalog/Item)"_s,
              u"'text'"_s}) {
            try {
                FindListings(catalog.document, query);
                QFAIL(qPrintable(u"taken: "_s + query));
            } catch (const ProgramError &error) {
                QCOMPARE(error.failure(), Failure::BadQuery);
                QVERIFY(error.source().startsWith(u"pugixml"));
                QVERIFY(error.description().endsWith(u": "_s + query));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestFindListings)
#include "test_findlistings.moc"
