#include "catalogdocument.h"
#include "failures.h"
#include "findlistings.h"
#include "modXMLSubs.h"
#include "programfolder.h"
#include "searchcriteria.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kUpper = "translate(%1,'abcdefghijklmnopqrstuvwxyz','ABCDEFGHIJKLMNOPQRSTUVWXYZ')"_L1;

/// What a contains condition looks like, without blank and joiner.
QString Contains(const QString &field, const QString &value)
{
    return u"contains(%1,'%2')"_s.arg(QString(kUpper).arg(field), value);
}

SearchCriteria All(const QString &joiner)
{
    return {u"a"_s, 1994,   7,      15,     u"b"_s, u"c"_s, u"d"_s, u"e"_s,
            u"f"_s, u"g"_s, u"h"_s, u"i"_s, u"j"_s, u"k"_s, u"l"_s, joiner};
}

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

    QString Found(const QString &query) const
    {
        QStringList ids;
        for (const pugi::xml_node listing : FindListings(document, query))
            ids.append(ReadAttribute(listing, "ID"));
        return ids.join(u' ');
    }
};

} // namespace

class TestFindListings : public QObject
{
    Q_OBJECT

private slots:
    void query_data()
    {
        QTest::addColumn<SearchCriteria>("criteria");
        QTest::addColumn<QString>("query");
        const auto row = [](const char *name, const SearchCriteria &criteria, const QString &conditions) {
            QTest::newRow(name) << criteria << u"/Catalog/Item[ "_s + conditions + u']';
        };
        const QString and_ = u"and"_s;

        row("two fields", {.year = 1997, .venue = u"fillmore"_s, .joiner = and_},
            u"(@Year='1997') and contains(translate(@Venue,'abcdefghijklmnopqrstuvwxyz','ABCDEFGHIJKLMNOPQRSTUVWXYZ'),'FILLMORE')"_s);
        row("order of all fields", All(u"or"_s),
            QStringList{
                Contains(u"@Type"_s, u"A"_s), u"(@Year='1994')"_s, u"(@Month='7')"_s, u"(@Day='15')"_s,
                Contains(u"@Venue"_s, u"B"_s), Contains(u"@Type"_s, u"C"_s), Contains(u"@Length"_s, u"D"_s),
                Contains(u"@Source"_s, u"E"_s), Contains(u"@Grade"_s, u"F"_s), Contains(u"@Format"_s, u"G"_s),
                Contains(u"@Seeder"_s, u"H"_s), Contains(u"@Stored"_s, u"I"_s), Contains(u"SetList"_s, u"J"_s),
                Contains(u"Notes"_s, u"K"_s), Contains(u"Comment"_s, u"L"_s)}
                .join(u" or "_s));
        row("concert alone", {.concert = u"live"_s, .joiner = and_}, Contains(u"@Type"_s, u"LIVE"_s));
        row("numbers below 1 are none", {.year = 0, .month = -3, .day = 1, .joiner = and_}, u"(@Day='1')"_s);
        row("an apostrophe is not escaped", {.seeder = u"o'neil"_s, .joiner = and_},
            Contains(u"@Seeder"_s, u"O'NEIL"_s));
        row("capitals one by one", {.notes = u"straße éğÿ"_s, .joiner = and_}, Contains(u"Notes"_s, u"STRAßE ÉĞŸ"_s));
        QTest::newRow("no field, and") << SearchCriteria{.joiner = and_} << u"/Catalog/I]"_s;
        QTest::newRow("no field, or") << SearchCriteria{.joiner = u"or"_s} << u"/Catalog/It]"_s;
    }

    void query()
    {
        QFETCH(SearchCriteria, criteria);
        QTEST(BuildSearchQuery(criteria), "query");
    }

    void found_data()
    {
        QTest::addColumn<SearchCriteria>("criteria");
        QTest::addColumn<QString>("ids");
        const QString and_ = u"and"_s;

        QTest::newRow("any case") << SearchCriteria{.venue = u"FILLmore"_s, .joiner = and_} << u"1 4"_s;
        QTest::newRow("part of the type") << SearchCriteria{.type = u"live"_s, .joiner = and_} << u"2 5"_s;
        QTest::newRow("concert looks at the type, not the show")
            << SearchCriteria{.concert = u"early"_s, .joiner = and_} << u""_s;
        QTest::newRow("numbers are compared as text") << SearchCriteria{.year = 1997, .joiner = and_} << u"1 2"_s;
        QTest::newRow("and") << SearchCriteria{.year = 1997, .venue = u"f"_s, .joiner = and_} << u"1"_s;
        QTest::newRow("or, in document order")
            << SearchCriteria{.month = 2, .trackList = u"jam"_s, .joiner = u"or"_s} << u"2 5"_s;
        QTest::newRow("the stored form of a line break")
            << SearchCriteria{.trackList = u"star\\nfill"_s, .joiner = and_} << u"2"_s;
        QTest::newRow("beyond ASCII only as capital") << SearchCriteria{.notes = u"café"_s, .joiner = and_} << u"4"_s;
        QTest::newRow("sharp s") << SearchCriteria{.comments = u"strasse"_s, .joiner = and_} << u""_s;
    }

    void found()
    {
        QFETCH(SearchCriteria, criteria);
        QTEST(Catalog().Found(BuildSearchQuery(criteria)), "ids");
    }

    // Values can close their quotes and go on with an expression of their own.
    void otherExpressions_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("ids");

        QTest::newRow("every node") << u"//node()|//@*"_s << u"1 2 4 5"_s;
        QTest::newRow("backwards and twice")
            << u"/Catalog/Item[4]|/Catalog/Item[@ID='5']/preceding-sibling::*|/Catalog/Type"_s << u"1 2 4 5"_s;
        QTest::newRow("reverse axis") << u"/Catalog/Item[@ID='4']/preceding-sibling::Item"_s << u"1 2"_s;
        QTest::newRow("through a value") << BuildSearchQuery({.venue = u"x')]|/*/*[('1'='1"_s, .joiner = u"and"_s})
                                         << u"1 2 4 5"_s;
        QTest::newRow("attributes") << u"/Catalog/Item/@ID"_s << u""_s;
        QTest::newRow("an element that is no listing") << u"/Catalog/It"_s << u""_s;
        QTest::newRow("the document") << u"/"_s << u""_s;
    }

    void otherExpressions()
    {
        QFETCH(QString, query);
        QTEST(Catalog().Found(query), "ids");
    }

    void badExpressions_data()
    {
        QTest::addColumn<QString>("query");
        for (const QString &query :
             {u"/Catalog/I]"_s, u"/Catalog/It]"_s, BuildSearchQuery({.seeder = u"o'neil"_s, .joiner = u"and"_s}), u""_s,
              u"count(/Catalog/Item)"_s, u"'text'"_s})
            QTest::addRow("%s", qPrintable(query)) << query;
    }

    void badExpressions()
    {
        QFETCH(QString, query);
        const Catalog catalog;
        try {
            FindListings(catalog.document, query);
            QFAIL("nothing was thrown");
        } catch (const ProgramError &error) {
            QCOMPARE(error.failure(), Failure::BadQuery);
            QVERIFY(error.description().endsWith(query));
        }
    }

    void emptyDocument()
    {
        const CatalogDocument document;
        QVERIFY(FindListings(document, u"//node()"_s).empty());
    }
};

QTEST_GUILESS_MAIN(TestFindListings)
#include "test_findlistings.moc"
