#include "failures.h"
#include "modXMLSubs.h"

#include <QTest>

#include <sstream>

using namespace Qt::StringLiterals;

namespace {

QByteArray Raw(const pugi::xml_document &document)
{
    std::ostringstream stream;
    document.save(stream, "", pugi::format_raw | pugi::format_no_declaration);
    return QByteArray::fromStdString(stream.str());
}

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
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shownAgain");
        QTest::newRow("empty") << u""_s << u""_s << u""_s;
        QTest::newRow("two lines") << u"a\r\nb"_s << u"a\\nb"_s << u"a\r\nb"_s;
        QTest::newRow("tab") << u"a\tb"_s << u"a\\tb"_s << u"a\tb"_s;
        QTest::newRow("backslash") << u"a\\b"_s << u"a\\\\b"_s << u"a\\b"_s;
        QTest::newRow("backslash before n") << u"C:\\new"_s << u"C:\\\\new"_s << u"C:\\\r\new"_s;
        QTest::newRow("backslash before t") << u"C:\\tip"_s << u"C:\\\\tip"_s << u"C:\\\tip"_s;
        QTest::newRow("outer lines") << u"\r\n\r\na\r\n\r\nb\r\n\r\n"_s << u"a\\n\\nb"_s << u"a\r\n\r\nb"_s;
        QTest::newRow("lines only") << u"\r\n\r\n"_s << u""_s << u""_s;
        QTest::newRow("blank before line") << u" \r\na"_s << u" \\na"_s << u" \r\na"_s;
        QTest::newRow("halves of a pair stay") << u"\na\r"_s << u"\na\r"_s << u"\na\r"_s;
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
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("lines");
        QTest::newRow("commas") << u"a, b, c"_s << u"a\r\nb\r\nc"_s;
        QTest::newRow("brackets") << u"a (b, c), d"_s << u"a (b, c)\r\nd"_s;
        QTest::newRow("nested") << u"a ([b, {c, d}], e), f"_s << u"a ([b, {c, d}], e)\r\nf"_s;
        QTest::newRow("never closed") << u"x, [y"_s << u"x\r\n[y"_s;
        QTest::newRow("never opened") << u"x, y)"_s << u"x, y)"_s;
        QTest::newRow("never opened before") << u"x), y"_s << u"x)\r\ny"_s;
        QTest::newRow("crossed") << u"a, (b, [c, d), e], f"_s << u"a\r\n(b, [c, d), e]\r\nf"_s;
        QTest::newRow("wrong partner") << u"a, (b]"_s << u"a, (b]"_s;
        QTest::newRow("edges") << u",a,"_s << u"\r\na\r\n"_s;
        QTest::newRow("no split with lines") << u"a, b\r\n  c, d"_s << u"a, b\r\nc, d"_s;
        QTest::newRow("line feed is no line") << u"a\n b, c"_s << u"a\n b\r\nc"_s;
        QTest::newRow("first line keeps blanks") << u"  a,   b"_s << u"  a\r\nb"_s;
        QTest::newRow("tab stays") << u"a,\t b"_s << u"a\r\n\t b"_s;
        QTest::newRow("blank line") << u"a\r\n  \r\n b"_s << u"a\r\n\r\nb"_s;
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
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("kept") << u"\t\r\n \u007F\u0085é€"_s << "\t\r\n \x7F\xC2\x85\xC3\xA9\xE2\x82\xAC"_ba;
        QTest::newRow("control characters") << u"a\u0001b\u000B\u001Fc"_s + QChar(0) << "abc"_ba;
        QTest::newRow("no characters") << u"a\uFFFE\uFFFFb\uFFFD"_s << "ab\xEF\xBF\xBD"_ba;
        QTest::newRow("pair") << u"\U0001D11E"_s << "\xF0\x9D\x84\x9E"_ba;
        QTest::newRow("halves of pairs") << QString::fromUtf16(
                                                u"\xDD1E"
                                                u"a\xD834\xD834\xDD1E"
                                                u"b\xD834",
                                                7)
                                         << "a\xF0\x9D\x84\x9E"
                                            "b"_ba;
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
        QCOMPARE(
            Raw(document), R"(<Item Year="" Month="&quot;2"><Notes>é\t</Notes><Notes>g</Notes><Comment/></Item>)"_ba);
    }

    void clean_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QByteArray>("removed");
        QTest::newRow("attributes") << "<C><I a='' b='1' c='' d=''/></C>"_ba
                                    << R"(<C><I b="1"/></C>)"_ba
                                    << ""_ba;
        QTest::newRow("a blank is a value") << "<C><I a=' '/></C>"_ba
                                            << R"(<C><I a=" "/></C>)"_ba
                                            << ""_ba;
        QTest::newRow("elements") << "<C><I a=''/><J/><K>x</K></C>"_ba
                                  << "<C><K>x</K></C>"_ba
                                  << "IJ"_ba;
        QTest::newRow("emptied parents stay") << "<C><I a=''><N/></I></C>"_ba
                                              << "<C><I/></C>"_ba
                                              << "N"_ba;
        QTest::newRow("any child counts") << "<C><I><!--x--></I><J><?x?></J><K><![CDATA[]]></K><L> </L></C>"_ba
                                          << "<C><I><!--x--></I><J><?x?></J><K><![CDATA[]]></K><L> </L></C>"_ba
                                          << ""_ba;
        QTest::newRow("the document element stays") << "<!--x--><C a=''/>"_ba
                                                    << "<!--x--><C/>"_ba
                                                    << ""_ba;
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
        QTEST(Raw(document), "after");
        QTEST(removed, "removed");
    }

    void failedCleanUp()
    {
        pugi::xml_document document;
        Parse(document, "<C><I/></C>");
        QString failed;
        const auto earlier = InstallFailureReporter([&](const FailureReport &report) { failed = report.procName; });
        QVERIFY_THROWS_EXCEPTION(ReportedFailure, CleanXML(document, [](pugi::xml_node) { throw 7; }));
        InstallFailureReporter(earlier);
        QCOMPARE(failed, u"CleanXML"_s);
    }
};

QTEST_APPLESS_MAIN(TestModXMLSubs)
#include "test_modXMLSubs.moc"
