#include "kit.h"
#include "labels.h"

class TestLabels : public QObject
{
    Q_OBJECT

private slots:
    void labels()
    {
        const std::vector<std::pair<QByteArray, QByteArray>> labels = {
            {"Type='Concert' Year='1994' Month='7' Day='15' Venue='Red Rocks' Show='2' Length='2:10:00' Source='SBD' "
             "Grade='A' Seeder='someone'",
             "1994-07-15 - Red Rocks (2) (2:10:00, SBD, A) (someone)"},
            {"Year='1994' Venue='Hall'", "1994-??-?? - Hall"},
            {"Type='Concert' Month='5' Day='3' Venue='Hall'", "???? - Hall"},
            {"Type='Concert' Year='1994' Day='15'", "1994-??-15 - "},
            {"Type='Radio' Year='1978' Month='4' Venue='KPFA' Grade='B'", "1978-04-?? - KPFA (B)"},
            {"Type='album' Year='1978' Venue='X'", "1978-??-?? - X"},
            {"Type='Album' Year='1969' Venue='Live'", "1969 - Live"},
            {"Type='Album' Year='1994' Day='3' Venue='Live'", "1994-03 - Live"},
            {"Type='Album' Month='5' Venue='Live'", " - Live"},
            {"Type='Interview' Year='1967' Month='10' Venue='Radio'", "1967-10 - Radio"},
            {"Type='Bootleg' Year='1970' Venue='West' Source='LP'", "West - 1970 (LP)"},
            {"Type='Bootleg' Venue='Hall'", "Hall - "},
            {"Type='Outtakes' Year='1975' Month='2' Day='1' Venue='Sessions'", "Sessions - 1975-02-01"},
            // A video shows no source.
            {"Type='Video' Year='1977' Venue='Movie' Length='131' Source='TV' Grade='A'", "Movie - 1977 (131, A)"},
            // A wrong date is named for concerts only, in the place of the details.
            {"Type='Concert' WrongDate='1' Year='1990' Length='90' Seeder='vine'", "1990-??-?? -  (wrong date) (vine)"},
            {"Type='Album' WrongDate='2' Year='1990' Venue='Hall' Grade='A'", "1990 - Hall"},
            {"WrongDate='0' Year='1990' Grade='A'", "1990-??-?? -  (A)"},
            // A venue can hold the date. Numbers are padded, odd ones too.
            {"Type='Bootleg' Year='1990' Venue='%d at %v' Show='%d'", "1990 at %v (1990) - 1990"},
            {"Type='Album' Year='1' Month='010' Day=' 7th'", "0001-10-07 - "},
            {"Type='Album' Year='19945'", "19945 - "},
            {"Type='Album' Year='-3'", "00-3 - "},
            {"Year='1990' Source='FM' Grade='B'", "1990-??-?? -  (FM, B)"},
            {"Year='1990' Venue='Köln &amp; 武道館' Show='&lt;b>'", "1990-??-?? - Köln & 武道館 (<b>)"}};
        for (const auto &[attributes, label] : labels) {
            pugi::xml_document document;
            QVERIFY(document.load_string("<Item " + attributes + "/>"));
            QCOMPARE(ListingLabel(document.first_child()).toUtf8(), label);
        }
    }

    void sortKeysFoldEveryAlphabet()
    {
        QCOMPARE(SortKey("ABC z-Q"), std::string("abc z-q"));
        QCOMPARE(SortKey("ÄRGER und Ñu"), std::string("ärger und ñu"));
    }
};

QTEST_APPLESS_MAIN(TestLabels)
#include "test_labels.moc"
