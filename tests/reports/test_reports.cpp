#include "htmlpage.h"
#include "htmltext.h"
#include "listkinds.h"
#include "shows.h"

namespace {

// Markup in the texts, an entity, characters beyond ASCII, all text rows, every reason to be left out.
constexpr auto kShows = R"(
<Item ID='1' Type='Concert' Year='1994' Month='7' Day='15' Venue='Red &lt;Rocks&gt; &amp; "Co"' Show='late'
 Length='2:10:00' Source='SBD' Grade='A-' Format='FLAC' Seeder="rock'n'roll">
 <SetList>A\nB\nC</SetList><Notes>one\ntwo</Notes><Comment>&lt;b>1
2</Comment></Item>
<Item ID='2' Type='Concert' Year='1994' Month='9' Venue='not held'/>
<Item ID='3' Type='Concert' Year='1994' Month='10' Venue='wrong date' Format='FLAC' WrongDate='1'/>
<Item ID='4' Type='Album' Year='1970' Venue='Caf&#233; &#xFEFF;&#x6771;&#x4EAC; &#x1F3B8;' Format='MP3'><SetList/></Item>)";

// What a box of the form adds begins with its letter; with a bar it is a row of text.
constexpr auto kPage = R"(<html>
<head><title>My Shows &#9834;</title></head>
<body>
<table width='100%' border='1' rules='groups'>
<caption><h1>My Shows &#9834;</h1></caption>
<colgroup></colgroup>
<colgroup span='2'></colgroup>
<colgroup span='3'></colgroup>
<colgroup></colgroup>
F:<colgroup></colgroup>
<tbody bgcolor='#FFCCCC'>
<tr>
    <th>Type</th>
    <th>Date</th>
    <th nowrap>Venue/Title</th>
    <th>Length</th>
    <th>Source</th>
    <th>Grade</th>
    <th>Seeder</th>
F:    <th>Format</th>
</tr>
</tbody>
<tbody bgcolor='#FFFFCC'>
<tr>
    <td>Concert</td>
    <td nowrap>1994-07-15</td>
    <td nowrap>Red <Rocks> & "Co"</td>
    <td>2:10:00</td>
    <td>SBD</td>
    <td>A-</td>
    <td>rock'n'roll</td>
F:    <td align='center'>FLAC</td>
</tr>
</tbody>
S:Set List:|A,B,C
C:Comments:|<b>1~2
N:Notes:|one<br>two
<tbody bgcolor='#FFCC88'>
<tr>
    <td>Album</td>
    <td nowrap>1970</td>
    <td nowrap>Caf&#233; &#65279;&#26481;&#20140; &#127928;</td>
    <td></td>
    <td></td>
    <td></td>
    <td></td>
F:    <td align='center'>MP3</td>
</tr>
</tbody>
</table>
</body>
</html>
)";

// "#" stands for the number of columns.
constexpr auto kTextRow = R"(<tbody bgcolor='#FFFFCC'>
<tr>
<td></td>
<td valign='top'>TITLE</td>
<td colspan='#'>
TEXT
</td>
</tr>
</tbody>)";

/// The lines of the page with the parts of these letters. Only the line feed inside a comment ("~") stands alone.
QByteArrayList PageWith(const QByteArray &parts)
{
    QByteArrayList lines;
    for (const QByteArray &line : QByteArray(kPage).split('\n')) {
        const bool optional = line.indexOf(':') == 1;
        const QByteArrayList row = line.mid(2).split('|');
        if (optional && row.size() == 2 && parts.contains(line[0]))
            lines += QByteArray(kTextRow).replace("TITLE", row[0]).replace("TEXT", row[1]).split('\n');
        else if (!optional || parts.contains(line[0]))
            lines += line.mid(optional ? 2 : 0);
    }
    const QByteArray page = lines.join("\r\n").replace("'#'", parts.contains('F') ? "'6'" : "'5'").replace('~', '\n');
    return page.split('\n');
}

/// Listings named 0, 1, 2 …, each by a letter: F lossless, M lossy, - none, ? unknown, ! a wrong date.
QByteArray Listings(const QByteArray &letters)
{
    static const QHash<char, QByteArray> formats{
        {'F', "FLAC"}, {'M', "MP3"}, {'-', ""}, {'?', "Tape"}, {'!', "FLAC' WrongDate='1"}};
    QByteArray listings;
    for (qsizetype i = 0; i < letters.size(); ++i)
        listings += "<Item ID='1" + QByteArray::number(i) + "' Type='Album' Venue='" + QByteArray::number(i) +
                    "' Format='" + formats[letters[i]] + "'/>";
    return listings;
}

} // namespace

class TestReports : public QObject
{
    Q_OBJECT

private slots:
    void page()
    {
        const std::vector<std::pair<PageOptions, QByteArray>> choices = {
            {{}, ""},
            {{.format = true}, "F"},
            {{.setList = true}, "S"},
            {{.comments = true}, "C"},
            {{.notes = true}, "N"},
            {{true, true, true, true}, "FSCN"}};
        for (const auto &[options, parts] : choices) {
            Shows s(kShows);
            WriteHtmlPage(s.folder.Path(u"page.html"_s), u"My Shows ♪"_s, options, s.Source());
            QCOMPARE(s.folder.Read(u"page.html"_s).split('\n'), PageWith(parts));
        }
    }

    void coloursAlternateAndLossyMovesThemOn()
    {
        const std::vector<std::pair<QByteArray, QByteArray>> rows = {
            {"FF?", "FFFFCC CCFFFF FFFFCC"}, {"MFMF", "FFCC88 CCFFFF FFCC88 CCFFFF"}, {"F-!F", "FFFFCC CCFFFF"}};
        for (const auto &[listings, expected] : rows) {
            Shows s(Listings(listings));
            WriteHtmlPage(s.folder.Path(u"page.html"_s), {}, {}, s.Source());
            QByteArrayList colours;
            for (const QByteArray &colour :
                 s.folder.Read(u"page.html"_s).split('#').mid(2)) // after that of the captions
                colours += colour.first(6);
            QCOMPARE(colours.join(' '), expected);
        }
    }

    void htmlText()
    {
        std::string page("x");
        AppendHtmlText(page, "12345678\u00E9\x7F\u0080\U0001F3B8!");
        QCOMPARE(QByteArray::fromStdString(page), QByteArray("x12345678&#233;\x7F&#128;&#127928;!"));
    }

    // Lossless, lossy, need lossless, do not have. One of unknown class goes with the listing before it.
    void lists()
    {
        const std::vector<std::pair<QByteArray, QString>> rows = {
            {"FM-", u"0|1|12|2 of 3"_s},          {"F??M?", u"012|34|34| of 2"_s}, {"?F?", u"12||| of 1"_s},
            {"?M?-?F?", u"56|12|1234|34 of 3"_s}, {"F!?F", u"03||| of 2"_s},       {"!!", u"||| of 0"_s}};
        for (const auto &[listings, expected] : rows) {
            Shows s(Listings(listings));
            QStringList listed;
            for (const auto kind : {ListKind::Lossless, ListKind::Lossy, ListKind::NeedLossless, ListKind::DoNotHave}) {
                const ListedLabels labels = GatherLabels(kind, s.Source());
                listed += labels.labels.join(u""_s).remove(u" - "_s);
                QVERIFY2(expected.endsWith(u" of %1"_s.arg(labels.total)), listings);
            }
            QCOMPARE(listed.join(u'|'), expected.section(u" of "_s, 0, 0));
        }
    }

    // The decision goes on from one group to the next, and starts anew with each list.
    void unknownClassAcrossGroups()
    {
        Shows s("<Item ID='1' Type='Album' Format='FLAC'/><Item ID='2' Type='Bootleg' Format='Tape' Venue='b'/>");
        const QStringList both{u" - "_s, u"b - "_s};
        QCOMPARE(GatherLabels(ListKind::Lossless, s.Source()).labels, both);
        QCOMPARE(GatherLabels(ListKind::Lossy, s.Source()).labels, QStringList());
    }
};

QTEST_MAIN(TestReports)
#include "test_reports.moc"
