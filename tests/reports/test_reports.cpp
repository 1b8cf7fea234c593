#include "failures.h"
#include "htmlpage.h"
#include "htmltext.h"
#include "listkinds.h"
#include "shows.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Markup in the texts, an entity, characters beyond ASCII, all text rows, every reason to be left out.
constexpr auto kShows = R"(
<Item ID='1' Type='Concert' Year='1994' Month='7' Day='15' Venue='Red &lt;Rocks&gt; &amp; "Co"' Show='late' Length='2:10:00'
 Source='SBD' Grade='A-' Format='FLAC' Seeder="rock'n'roll"><SetList>A\nB\nC</SetList><Notes>one\ntwo</Notes><Comment>&lt;b></Comment></Item>
<Item ID='2' Type='Concert' Year='1994' Month='8' Venue='Caf&#233; &#x6771;&#x4EAC; &#x1F3B8;' Format='MP3'><SetList>D, E</SetList></Item>
<Item ID='3' Type='Concert' Year='1994' Month='9' Venue='not held'/>
<Item ID='4' Type='Concert' Year='1994' Month='10' Venue='wrong date' Format='FLAC' WrongDate='1'/>
<Item ID='5' Type='Concert' Year='1994' Month='11' Venue='raw' Format='Tape'><Comment>1
2</Comment><SetList/></Item>
<Item ID='6' Type='Album' Year='1970' Venue='Album' Format='SHN'/>
)";

constexpr auto kHead = R"(<html>
<head><title>My Shows &#9834;</title></head>
<body>
<table width='100%' border='1' rules='groups'>
<caption><h1>My Shows &#9834;</h1></caption>
<colgroup></colgroup>
<colgroup span='2'></colgroup>
<colgroup span='3'></colgroup>
<colgroup></colgroup>
)";

constexpr auto kColumns = R"(<tbody bgcolor='#FFCCCC'>
<tr>
    <th>Type</th>
    <th>Date</th>
    <th nowrap>Venue/Title</th>
    <th>Length</th>
    <th>Source</th>
    <th>Grade</th>
    <th>Seeder</th>
)";

constexpr auto kRows = R"(<tbody bgcolor='#FFFFCC'>
<tr>
    <td>Concert</td>
    <td nowrap>1994-07-15</td>
    <td nowrap>Red <Rocks> & "Co"</td>
    <td>2:10:00</td>
    <td>SBD</td>
    <td>A-</td>
    <td>rock'n'roll</td>
    <td align='center'>FLAC</td>
</tr>
</tbody>
<tbody bgcolor='#FFFFCC'>
<tr>
<td></td>
<td valign='top'>Set List:</td>
<td colspan='6'>
A,B,C
</td>
</tr>
</tbody>
<tbody bgcolor='#FFFFCC'>
<tr>
<td></td>
<td valign='top'>Comments:</td>
<td colspan='6'>
<b>
</td>
</tr>
</tbody>
<tbody bgcolor='#FFFFCC'>
<tr>
<td></td>
<td valign='top'>Notes:</td>
<td colspan='6'>
one<br>two
</td>
</tr>
</tbody>
<tbody bgcolor='#FFCC88'>
<tr>
    <td>Concert</td>
    <td nowrap>1994-08-??</td>
    <td nowrap>Caf&#233; &#26481;&#20140; &#127928;</td>
    <td></td>
    <td></td>
    <td></td>
    <td></td>
    <td align='center'>MP3</td>
</tr>
</tbody>
<tbody bgcolor='#FFCC88'>
<tr>
<td></td>
<td valign='top'>Set List:</td>
<td colspan='6'>
D, E
</td>
</tr>
</tbody>
<tbody bgcolor='#FFFFCC'>
<tr>
    <td>Concert</td>
    <td nowrap>1994-11-??</td>
    <td nowrap>raw</td>
    <td></td>
    <td></td>
    <td></td>
    <td></td>
    <td align='center'>Tape</td>
</tr>
</tbody>
<tbody bgcolor='#FFFFCC'>
<tr>
<td></td>
<td valign='top'>Comments:</td>
<td colspan='6'>
1
2
</td>
</tr>
</tbody>
<tbody bgcolor='#CCFFFF'>
<tr>
    <td>Album</td>
    <td nowrap>1970</td>
    <td nowrap>Album</td>
    <td></td>
    <td></td>
    <td></td>
    <td></td>
    <td align='center'>SHN</td>
</tr>
</tbody>
)";

constexpr auto kFoot = "</table>\n</body>\n</html>\n";

/// The lines of an expected page, each with its carriage return.
QByteArrayList Lines(QByteArray text)
{
    // The raw line feed inside the comment stays one.
    return text.replace("\n", "\r\n").replace("1\r\n2", "1\n2").split('\n');
}

/// The expected page without the optional parts: no Format column, no text rows.
QByteArray PlainRows()
{
    QByteArray rows;
    for (const QString &group : QString::fromUtf8(kRows).split(u"<tbody "_s, Qt::SkipEmptyParts)) {
        if (!group.contains(u"colspan"_s))
            rows += "<tbody " + group.toUtf8();
    }
    for (const auto *format : {"FLAC", "MP3", "Tape", "SHN"})
        rows.replace(QByteArray("    <td align='center'>") + format + "</td>\n", "");
    return rows;
}

const QString kTitle = u"My Shows ♪"_s;

} // namespace

class TestReports : public QObject
{
    Q_OBJECT

private slots:
    void pageWithEverything()
    {
        Shows s(kShows);
        WriteHtmlPage(s.folder.Path(u"page.html"_s), kTitle, {true, true, true, true}, s.Source());
        QCOMPARE(
            s.folder.Read(u"page.html"_s).split('\n'), Lines(
                                                           QByteArray(kHead) + "<colgroup></colgroup>\n" + kColumns +
                                                           "    <th>Format</th>\n</tr>\n</tbody>\n" + kRows + kFoot));
    }

    void plainPage()
    {
        Shows s(kShows);
        WriteHtmlPage(s.folder.Path(u"page.html"_s), kTitle, {}, s.Source());
        QCOMPARE(
            s.folder.Read(u"page.html"_s).split('\n'),
            Lines(QByteArray(kHead) + kColumns + "</tr>\n</tbody>\n" + PlainRows() + kFoot));
    }

    void oneTextRow_data()
    {
        QTest::addColumn<PageOptions>("options");
        QTest::addColumn<QByteArray>("label");
        QTest::newRow("set list") << PageOptions{.setList = true} << QByteArray("Set List:");
        QTest::newRow("comments") << PageOptions{.comments = true} << QByteArray("Comments:");
        QTest::newRow("notes") << PageOptions{.notes = true} << QByteArray("Notes:");
    }

    void oneTextRow()
    {
        QFETCH(PageOptions, options);
        QFETCH(QByteArray, label);
        Shows s(
            "<Item ID='1' Type='Album' Format='SHN'><SetList>x</SetList><Comment>x</Comment><Notes>x</Notes></Item>");
        WriteHtmlPage(s.folder.Path(u"page.html"_s), {}, options, s.Source());
        const QByteArray page = s.folder.Read(u"page.html"_s);
        QVERIFY(page.contains("<td valign='top'>" + label + "</td>\r\n<td colspan='5'>\r\nx\r\n"));
        QCOMPARE(page.count("colspan"), 1);
    }

    void colours_data()
    {
        QTest::addColumn<QStringList>("formats");
        QTest::addColumn<QStringList>("colours");
        const QString yellow = u"#FFFFCC"_s;
        const QString blue = u"#CCFFFF"_s;
        const QString lossy = u"#FFCC88"_s;
        QTest::newRow("alternate") << QStringList{u"FLAC"_s, u"SHN"_s, u"Tape"_s} << QStringList{yellow, blue, yellow};
        QTest::newRow("lossy moves on") << QStringList{u"MP3"_s, u"FLAC"_s, u"MP3"_s, u"FLAC"_s}
                                        << QStringList{lossy, blue, lossy, blue};
        QTest::newRow("one left out does not") << QStringList{u"FLAC"_s, u""_s, u"FLAC"_s} << QStringList{yellow, blue};
    }

    void colours()
    {
        QFETCH(QStringList, formats);
        QByteArray listings;
        for (const QString &format : formats) {
            const QByteArray number = QByteArray::number(listings.size() + 1000);
            listings += "<Item ID='" + number + "' Year='" + number + "' Format='" + format.toUtf8() + "'/>";
        }
        Shows s(listings);
        WriteHtmlPage(s.folder.Path(u"page.html"_s), {}, {}, s.Source());
        QStringList colours;
        for (const QByteArray &line : s.folder.Read(u"page.html"_s).split('\n')) {
            if (line.startsWith("<tbody bgcolor='") && !line.contains("#FFCCCC"))
                colours.append(QString::fromLatin1(line.mid(16, 7)));
        }
        QTEST(colours, "colours");
    }

    void htmlText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("markup stays") << QByteArray("a<b>&amp;'\"\t") << QByteArray("a<b>&amp;'\"\t");
        QTest::newRow("two bytes") << QByteArray("\u00E9t\u00E9") << QByteArray("&#233;t&#233;");
        QTest::newRow("neighbours") << QByteArray("\u6771\u4EAC") << QByteArray("&#26481;&#20140;");
        QTest::newRow("beyond 16 bits") << QByteArray("\U0001F3B8!") << QByteArray("&#127928;!");
        QTest::newRow("after eight plain characters") << QByteArray("12345678\u00E9") << QByteArray("12345678&#233;");
        QTest::newRow("last ASCII character") << QByteArray("\x7F\u0080") << QByteArray("\x7F&#128;");
    }

    void htmlText()
    {
        QFETCH(QByteArray, text);
        std::string page("x");
        AppendHtmlText(page, {text.constData(), static_cast<size_t>(text.size())});
        QTEST(QByteArray::fromStdString(page).mid(1), "bytes");
    }

    // A page that cannot be finished leaves the earlier one in place.
    void unfinishedPage()
    {
        Shows s(kShows);
        const QString path = s.folder.Write(u"page.html"_s, "good");
        const CatalogDocument other;
        QVERIFY_THROWS_EXCEPTION(ProgramError, WriteHtmlPage(path, kTitle, {}, {s.tree.Model(), other, s.formats}));
        QCOMPARE(s.folder.Read(u"page.html"_s), QByteArray("good"));
    }

    void lists_data()
    {
        QTest::addColumn<ListKind>("kind");
        QTest::addColumn<QString>("formats"); // F lossless, M lossy, - none, ? unknown, ! a wrong date
        QTest::addColumn<QString>("listed");
        QTest::addColumn<int>("total");
        const auto row = [](const char *formats, ListKind kind, const char *listed, int total) {
            QTest::addRow("%s for %d", formats, static_cast<int>(kind))
                << kind << QString::fromLatin1(formats) << QString::fromLatin1(listed) << total;
        };
        row("FM-", ListKind::Lossless, "0", 3);
        row("FM-", ListKind::Lossy, "1", 3);
        row("FM-", ListKind::NeedLossless, "12", 3);
        row("FM-", ListKind::DoNotHave, "2", 3);
        // One of unknown class goes with the listing before it, whatever that was.
        row("F??M?", ListKind::Lossless, "012", 2);
        row("?F?", ListKind::Lossy, "", 1);
        row("?M?-?F?", ListKind::NeedLossless, "1234", 3);
        row("?-?M?", ListKind::DoNotHave, "12", 2);
        row("F!?F", ListKind::Lossless, "03", 2);
        row("!!", ListKind::NeedLossless, "", 0);
    }

    void lists()
    {
        QFETCH(ListKind, kind);
        QFETCH(QString, formats);
        static const QHash<QChar, QByteArray> attributes{
            {u'F', "Format='FLAC'"},
            {u'M', "Format='MP3'"},
            {u'-', ""},
            {u'?', "Format='Tape'"},
            {u'!', "WrongDate='1' Format='FLAC'"}};
        QByteArray listings;
        for (qsizetype i = 0; i < formats.size(); ++i) {
            const QByteArray number = QByteArray::number(i);
            listings +=
                "<Item ID='1" + number + "' Type='Bootleg' Venue='" + number + "' " + attributes[formats[i]] + "/>";
        }
        Shows s(listings);
        const ListedLabels listed = GatherLabels(kind, s.Source());
        QTEST(listed.labels.join(u""_s).remove(u" - "_s), "listed");
        QTEST(static_cast<int>(listed.total), "total");
    }

    // The decision goes on from one group to the next, and starts anew with each list.
    void unknownClassAcrossGroups()
    {
        Shows s(
            "<Item ID='1' Type='Album' Format='FLAC' Venue='a'/><Item ID='2' Type='Bootleg' Format='Tape' Venue='b'/>");
        const QStringList both{u" - a"_s, u"b - "_s};
        QCOMPARE(GatherLabels(ListKind::Lossless, s.Source()).labels, both);
        QCOMPARE(GatherLabels(ListKind::Lossy, s.Source()).labels, QStringList());
    }
};

QTEST_MAIN(TestReports)
#include "test_reports.moc"
