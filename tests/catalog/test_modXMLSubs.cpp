#include "kit.h"
#include "modXMLSubs.h"
#include "rawxml.h"

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
    void escapes()
    {
        const std::vector<std::array<QString, 3>> texts = {
            {u"a\r\nb\tc\\d"_s, u"a\\nb\\tc\\\\d"_s, u"a\r\nb\tc\\d"_s},
            {u"C:\\new\\tip"_s, u"C:\\\\new\\\\tip"_s, u"C:\\\r\new\\\tip"_s},
            {u"\r\n\r\na\r\n\r\nb\r\n\r\n"_s, u"a\\n\\nb"_s, u"a\r\n\r\nb"_s},
            {u" \r\na"_s, u" \\na"_s, u" \r\na"_s},
            {u"\na\r"_s, u"\na\r"_s, u"\na\r"_s}};
        for (const auto &[shown, stored, shownAgain] : texts) {
            QCOMPARE(EscapeText(shown), stored);
            QCOMPARE(UnescapeText(stored), shownAgain);
        }
        QCOMPARE(UnescapeText(u"\\\\\\n|\\\\\\\\t|\\"_s), u"\\\r\n|\\\\\t|\\"_s); // tabs, lines, then backslashes
    }

    void setLists()
    {
        const std::vector<std::pair<QString, QString>> lists = {
            {u"a ([b, {c, d}], e), f, g (h, i)"_s, u"a ([b, {c, d}], e)\r\nf\r\ng (h, i)"_s},
            // Brackets that are never closed, never opened, crossed, and closed by another kind.
            {u"x, (y (z), [a"_s, u"x\r\n(y (z)\r\n[a"_s},
            {u"x), y"_s, u"x)\r\ny"_s},
            {u"x, y)"_s, u"x, y)"_s},
            {u"a, (b, [c, d), e], f"_s, u"a\r\n(b, [c, d), e]\r\nf"_s},
            {u"a, (b]"_s, u"a, (b]"_s},
            // A text that has lines is not split; a line feed makes none. The first line keeps its blanks.
            {u"a, b\r\n  c, d\r\n  \r\n e"_s, u"a, b\r\nc, d\r\n\r\ne"_s},
            {u"a\n b, c"_s, u"a\n b\r\nc"_s},
            {u"  a,   b,\t c"_s, u"  a\r\nb\r\n\t c"_s},
            {u",  a,"_s, u"\r\na\r\n"_s}};
        for (const auto &[stored, lines] : lists)
            QCOMPARE(ParseSetList(stored), lines);
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

    void takesOnlyWhatXmlAllows()
    {
        QCOMPARE(
            ToXml(u"\t\r\n \u007F\u0085é€\U0001D11E"_s), "\t\r\n \x7F\xC2\x85\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E");
        QCOMPARE(ToXml(u"a\u0001b\u000B\u001Fc\uFFFE\uFFFFd\uFFFD"_s + QChar(0)), "abcd\xEF\xBF\xBD");
        const QChar high(0xD834), low(0xDD1E);
        QCOMPARE(ToXml(u""_s + low + low + u'a' + high + high + low + u'b' + high), "a\U0001D11Eb");
    }

    void fields()
    {
        pugi::xml_document document;
        Parse(
            document,
            "<Item Year=' 1994x'><Notes>\uFEFFa\\nb<x>c</x><!--d--><![CDATA[<e>]]> f</Notes><Notes>g</Notes></Item>");
        const pugi::xml_node item = document.first_child();
        QCOMPARE(ReadNumber(item, "Year"), 1994.0);
        QCOMPARE(ReadNumber(item, "Month"), 0.0);
        QCOMPARE(ReadAttribute(item, "Month"), QString());
        QCOMPARE(ReadTextElement(item, "Notes"), u"\uFEFFa\r\nbc<e> f"_s);
        QCOMPARE(ReadTextElement(item, "Comment"), QString());

        WriteTextElement(item, "Notes", u"é\t"_s);
        WriteTextElement(item, "Comment", u"\r\n"_s);
        WriteAttribute(item, "Year", {});
        WriteAttribute(item, "Month", u"\"2\u0001"_s);
        QCOMPARE(RawXml(document), "<Item Year='' Month='\"2'><Notes>é\\t</Notes><Notes>g</Notes><Comment/></Item>");
    }

    void clean()
    {
        pugi::xml_document document;
        Parse(
            document, "<!--x--><C a=''><I a='' b='1' c='' d=''/><I a=' '/><J a=''/><K/><L>x</L><M a=''><N/></M>"
                      "<P><!--x--></P><Q><?x?></Q><R><![CDATA[]]></R><S> </S></C>");
        QByteArray removed;
        CleanXML(document, [&removed](pugi::xml_node element) {
            QVERIFY(element.parent());
            removed += element.name();
        });
        QCOMPARE(
            RawXml(document), "<!--x--><C><I b='1'/><I a=' '/><L>x</L><M/>"
                              "<P><!--x--></P><Q><?x?></Q><R><![CDATA[]]></R><S> </S></C>");
        QCOMPARE(removed, "JKN");
        Parse(document, "<C a=''/>");
        CleanXML(document);
        QCOMPARE(RawXml(document), "<C/>");
    }
};

QTEST_APPLESS_MAIN(TestModXMLSubs)
#include "test_modXMLSubs.moc"
