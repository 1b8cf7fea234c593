#include "labels.h"
#include "table.h"

using namespace Qt::StringLiterals;

class TestLabels : public QObject
{
    Q_OBJECT

private slots:
    void labels_data()
    {
        Table<QByteArray, QByteArray>("attributes", "label")
            .Row(
                "everything",
                "Type='Concert' Year='1994' Month='7' Day='15' Venue='Red Rocks' Show='Night 2' Length='2:10:00' "
                "Source='SBD' Grade='A' Seeder='someone'",
                "1994-07-15 - Red Rocks (Night 2) (2:10:00, SBD, A) (someone)")
            .Row("no type is a concert", "Year='1994' Venue='Hall'", "1994-??-?? - Hall")
            .Row("concert without a date", "Type='Concert' Month='5' Day='3' Venue='Hall'", "???? - Hall")
            .Row("concert without a month", "Type='Concert' Year='1994' Day='15'", "1994-??-15 - ")
            .Row("own type", "Type='Radio' Year='1978' Month='4' Venue='KPFA' Grade='B'", "1978-04-?? - KPFA (B)")
            .Row("other case is an own type", "Type='album' Year='1978' Venue='X'", "1978-??-?? - X")
            .Row("album", "Type='Album' Year='1969' Venue='Live'", "1969 - Live")
            .Row("album, day without month", "Type='Album' Year='1994' Day='3' Venue='Live'", "1994-03 - Live")
            .Row("album without a year", "Type='Album' Month='5' Venue='Live'", " - Live")
            .Row("interview", "Type='Interview' Year='1967' Month='10' Venue='Radio'", "1967-10 - Radio")
            .Row("bootleg", "Type='Bootleg' Year='1970' Venue='West' Source='LP'", "West - 1970 (LP)")
            .Row("bootleg without a date", "Type='Bootleg' Venue='Hall'", "Hall - ")
            .Row("outtakes", "Type='Outtakes' Year='1975' Month='2' Day='1' Venue='Sessions'", "Sessions - 1975-02-01")
            .Row(
                "video shows no source", "Type='Video' Year='1977' Venue='Movie' Length='131' Source='TV' Grade='A'",
                "Movie - 1977 (131, A)")
            .Row(
                "wrong date", "Type='Concert' WrongDate='1' Year='1990' Venue='Hall' Length='90' Seeder='vine'",
                "1990-??-?? - Hall (wrong date) (vine)")
            .Row(
                "wrong date is named for concerts only",
                "Type='Album' WrongDate='2' Year='1990' Venue='Hall' Grade='A'", "1990 - Hall")
            .Row("wrong date of 0", "WrongDate='0' Year='1990' Grade='A'", "1990-??-?? -  (A)")
            .Row(
                "date in the venue", "Type='Bootleg' Year='1990' Venue='%d at %v' Show='%d'",
                "1990 at %v (1990) - 1990")
            .Row("padding", "Type='Album' Year='1' Month='010' Day=' 7th'", "0001-10-07 - ")
            .Row("long and odd years", "Type='Album' Year='19945'", "19945 - ")
            .Row("negative year", "Type='Album' Year='-3'", "00-3 - ")
            .Row("source and grade only", "Year='1990' Source='FM' Grade='B'", "1990-??-?? -  (FM, B)")
            .Row("letters", "Year='1990' Venue='Köln &amp; 武道館' Show='&lt;b>'", "1990-??-?? - Köln & 武道館 (<b>)");
    }

    void labels()
    {
        QFETCH(QByteArray, attributes);
        pugi::xml_document document;
        QVERIFY(document.load_string("<Item " + attributes + "/>"));
        QTEST(ListingLabel(document.first_child()).toUtf8(), "label");
    }

    void parts()
    {
        pugi::xml_document document;
        document.load_string(
            "<Item Type='Video' Year='1977' Day='2' Venue='Movie' Length='131' Grade='A' Seeder='x'/>");
        const pugi::xml_node listing = document.first_child();
        QCOMPARE(ListingTitle(listing), u"Movie - 1977-02"_s);
        QCOMPARE(ListingDetails(listing), u"131, A"_s);
        QCOMPARE(ListingDateText(listing), u"1977-02"_s);
    }

    void sortKeysFoldEveryAlphabet()
    {
        QCOMPARE(SortKey("ABC z-Q"), std::string("abc z-q"));
        QCOMPARE(SortKey("ÄRGER und Ñu"), std::string("ärger und ñu"));
    }
};

QTEST_APPLESS_MAIN(TestLabels)
#include "test_labels.moc"
