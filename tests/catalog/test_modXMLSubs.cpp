#include "failurerecorder.h"
#include "modXMLSubs.h"
#include "rawxml.h"
#include "table.h"

using namespace Qt::StringLiterals;

namespace {

void Parse(pugi::xml_document &document, const QByteArray &xml)
{
    QVERIFY(document.load_string(xml.constData(), pugi::parse_full | pugi::parse_ws_pcdata));
}

} // namespace

class TestModXMLSubs : public QObject
{
    Q_OBJECT

private slots:
    void escaping_data()
    {
        Table<QString, QString, QString>("shown", "stored", "shownAgain")
            .Row("empty", u""_s, u""_s, u""_s)
            .Row("lines, tab and backslash", u"a\r\nb\tc\\d"_s, u"a\\nb\\tc\\\\d"_s, u"a\r\nb\tc\\d"_s)
            .Row("backslash before n", u"C:\\new"_s, u"C:\\\\new"_s, u"C:\\\r\new"_s)
            .Row("backslash before t", u"C:\\tip"_s, u"C:\\\\tip"_s, u"C:\\\tip"_s)
            .Row("outer lines", u"\r\n\r\na\r\n\r\nb\r\n\r\n"_s, u"a\\n\\nb"_s, u"a\r\n\r\nb"_s)
            .Row("lines only", u"\r\n\r\n"_s, u""_s, u""_s)
            .Row("blank before line", u" \r\na"_s, u" \\na"_s, u" \r\na"_s)
            .Row("halves of a pair stay", u"\na\r"_s, u"\na\r"_s, u"\na\r"_s);
    }
    void escaping()
    {
        QFETCH(QString, shown);
        QFETCH(QString, stored);
        QCOMPARE(EscapeText(shown), stored);
        QTEST(UnescapeText(stored), "shownAgain");
    }

    void unescapesInFixedOrder() { QCOMPARE(UnescapeText(u"\\\\\\n|\\\\\\\\t|\\"_s), u"\\\r\n|\\\\\t|\\"_s); }

    void setList_data()
    {
        Table<QString, QString>("stored", "lines")
            .Row("brackets", u"a ([b, {c, d}], e), f, g (h, i)"_s, u"a ([b, {c, d}], e)\r\nf\r\ng (h, i)"_s)
            .Row("never closed", u"x, (y (z), [a"_s, u"x\r\n(y (z)\r\n[a"_s)
            .Row("never opened", u"x, y)"_s, u"x, y)"_s)
            .Row("never opened before", u"x), y"_s, u"x)\r\ny"_s)
            .Row("crossed", u"a, (b, [c, d), e], f"_s, u"a\r\n(b, [c, d), e]\r\nf"_s)
            .Row("wrong partner", u"a, (b]"_s, u"a, (b]"_s)
            .Row("first and last line empty", u",  a,"_s, u"\r\na\r\n"_s)
            .Row("no split with lines", u"a, b\r\n  c, d"_s, u"a, b\r\nc, d"_s)
            .Row("line feed is no line", u"a\n b, c"_s, u"a\n b\r\nc"_s)
            .Row("the first line keeps blanks, each keeps tabs", u"  a,   b,\t c"_s, u"  a\r\nb\r\n\t c"_s)
            .Row("blank line", u"a\r\n  \r\n b"_s, u"a\r\n\r\nb"_s);
    }
    void setList()
    {
        QFETCH(QString, stored);
        QTEST(ParseSetList(stored), "lines");
    }

    void longTextsInLinearTime()
    {
        constexpr qsizetype kCount = 1'000'000;
        const QString breaks = u"\r\n"_s.repeated(kCount);
        QCOMPARE(EscapeText(breaks), QString());
        QCOMPARE(EscapeText(u"a"_s + breaks + u"b"_s).size(), 2 * kCount + 2);
        QCOMPARE(UnescapeText(u"\\t\\n\\\\"_s.repeated(kCount)).size(), 4 * kCount);
        QCOMPARE(ParseSetList(u"a, "_s.repeated(kCount)).size(), 3 * kCount);
        QCOMPARE(ParseSetList(u","_s + u")"_s.repeated(kCount)).size(), kCount + 1);
    }

    void toXml_data()
    {
        Table<QString, QByteArray>("text", "xml")
            .Row("kept", u"\t\r\n \u007F\u0085é€"_s, "\t\r\n \x7F\xC2\x85\xC3\xA9\xE2\x82\xAC")
            .Row("control characters", u"a\u0001b\u000B\u001Fc"_s + QChar(0), "abc")
            .Row("no characters", u"a\uFFFE\uFFFFb\uFFFD"_s, "ab\xEF\xBF\xBD")
            .Row("pair", u"\U0001D11E"_s, "\xF0\x9D\x84\x9E")
            .Row(
                "halves of pairs", QChar(0xDD1E) + u"a"_s + QChar(0xD834) + u"\U0001D11Eb"_s + QChar(0xD834),
                "a\U0001D11Eb");
    }
    void toXml()
    {
        QFETCH(QString, text);
        QTEST(ToXml(text), "xml");
    }

    void fields()
    {
        pugi::xml_document document;
        Parse(
            document,
            "<Item Year=' 1994x'><Notes>a\\nb<x>c</x><!--d--><![CDATA[<e>]]> f</Notes><Notes>g</Notes></Item>");
        const pugi::xml_node item = document.first_child();
        QCOMPARE(ReadNumber(item, "Year"), 1994.0);
        QCOMPARE(ReadNumber(item, "Month"), 0.0);
        QCOMPARE(ReadAttribute(item, "Month"), QString());
        QCOMPARE(ReadTextElement(item, "Notes"), u"a\r\nbc<e> f"_s);
        QCOMPARE(ReadTextElement(item, "Comment"), QString());

        WriteTextElement(item, "Notes", u"é\t"_s);
        WriteTextElement(item, "Comment", u"\r\n"_s);
        WriteAttribute(item, "Year", {});
        WriteAttribute(item, "Month", u"\"2\u0001"_s);
        QCOMPARE(RawXml(document), "<Item Year='' Month='\"2'><Notes>é\\t</Notes><Notes>g</Notes><Comment/></Item>");
    }

    void clean_data()
    {
        constexpr auto kChildren = "<C><I><!--x--></I><J><?x?></J><K><![CDATA[]]></K><L> </L></C>";
        Table<QByteArray, QByteArray, QByteArray>("before", "after", "removed")
            .Row("attributes", "<C><I a='' b='1' c='' d=''/></C>", "<C><I b='1'/></C>", "")
            .Row("a blank is a value", "<C><I a=' '/></C>", "<C><I a=' '/></C>", "")
            .Row("elements", "<C><I a=''/><J/><K>x</K></C>", "<C><K>x</K></C>", "IJ")
            .Row("emptied parents stay", "<C><I a=''><N/></I></C>", "<C><I/></C>", "N")
            .Row("any child counts", kChildren, kChildren, "")
            .Row("the document element stays", "<!--x--><C a=''/>", "<!--x--><C/>", "");
    }
    void clean()
    {
        QFETCH(QByteArray, before);
        pugi::xml_document document;
        Parse(document, before);
        QByteArray removed;
        CleanXML(document, [&removed](pugi::xml_node element) {
            QVERIFY(element.parent());
            removed += element.name();
        });
        QTEST(RawXml(document), "after");
        QTEST(removed, "removed");
    }

    void failedCleanUp()
    {
        pugi::xml_document document;
        Parse(document, "<C><I/></C>");
        const FailureRecorder failures;
        QVERIFY_THROWS_EXCEPTION(ReportedFailure, CleanXML(document, [](pugi::xml_node) { throw 7; }));
        QCOMPARE(failures.Names(), {u"modXMLSubs.CleanXML"_s});
    }
};

QTEST_APPLESS_MAIN(TestModXMLSubs)
#include "test_modXMLSubs.moc"
