#include "failures.h"
#include "flatfile.h"
#include "programfolder.h"
#include "xmlcheck.h"
#include "xmlfile.h"
#include "xmlwriter.h"

#include <QStringEncoder>
#include <QTest>

#include <ctime>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace {

std::optional<XmlFile> Load(const TestProgramFolder &folder, const QByteArray &bytes)
{
    return LoadXml(folder.Write(u"loaded.xml"_s, bytes));
}

/// The file that comes of reading and writing bytes, "(refused)" when they do not load.
QByteArray Saved(const TestProgramFolder &folder, const QByteArray &bytes)
{
    const auto file = Load(folder, bytes);
    if (!file)
        return "(refused)";
    SaveXml(*file->document, file->encoding, folder.Path(u"saved.xml"_s));
    return folder.Read(u"saved.xml"_s);
}

QByteArray Nested(int depth)
{
    return "<Catalog>" + QByteArray("<a>").repeated(depth - 1) + QByteArray("</a>").repeated(depth - 1) + "</Catalog>";
}

QByteArray WithAttributes(int count, const QByteArray &more = {})
{
    QByteArray xml = "<Catalog";
    for (int i = 0; i < count; ++i)
        xml += " a" + QByteArray::number(i) + "='1'";
    return xml + more + "/>";
}

QByteArray Encoded(const char *name, const QString &text)
{
    return QStringEncoder(name).encode(text);
}

} // namespace

class TestXmlFile : public QObject
{
    Q_OBJECT

private slots:
    void keeps_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char *name, const QByteArray &before, const QByteArray &after) {
            QTest::newRow(name) << before << after;
        };
        // The content of a listing, which is to come back unchanged.
        const auto field = [](const char *name, const QByteArray &content) {
            const QByteArray after = "<Catalog>\n\t<Item>\n\t\t" + content + "\n\t</Item>\n</Catalog>\n";
            QTest::newRow(name) << "<Catalog><Item>" + content + "</Item></Catalog>" << after;
        };
        row("empty element", "<Catalog></Catalog>", "<Catalog />\n");
        row("layout", "<Catalog>\r\n  <Item ID='1'> \n </Item>\n\n<Type>a</Type></Catalog>",
            "<Catalog>\n\t<Item ID=\"1\" />\n\t<Type>a</Type>\n</Catalog>\n");
        row("layout beside comments", "<Catalog> <!--a-->\n <Item> <!--b--> <Notes>c</Notes> </Item></Catalog>",
            "<Catalog>\n\t<!--a-->\n\t<Item>\n\t\t<!--b-->\n\t\t<Notes>c</Notes>\n\t</Item>\n</Catalog>\n");
        row("layout by reference", "<Catalog>&#32;<Item>&#10; </Item></Catalog>",
            "<Catalog>\n\t<Item />\n</Catalog>\n");
        row("layout alone", "<Catalog> </Catalog>", "<Catalog />\n");
        row("declaration", "<?xml version='1.0' encoding='utf-8' standalone='yes'?><Catalog/>",
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<Catalog />\n");
        const QByteArray type = R"(<!DOCTYPE Catalog PUBLIC "a" 'b' [%c; <!-- ' --><?d?><!ENTITY e "f>&g;"><!ELEMENT
            Catalog (h|i?|(j,(k)*)+)><!ELEMENT h (#PCDATA | i)*><!ELEMENT i EMPTY><!ATTLIST h l (1m|n) '&e;' o NOTATION
            (p) #FIXED 'p'><!NOTATION p PUBLIC 'q'><!ENTITY % c SYSTEM 'r'><!ENTITY s SYSTEM 't' NDATA p >] >)";
        row("prologue", type + "<!--c--><?d e\r\nf?><Catalog/><!--]]>-->",
            type + "\n<!--c-->\n<?d e\nf?>\n<Catalog />\n<!--]]>-->\n");
        row("text in the catalog", "<Catalog>a <Item/> b<!--c-->d</Catalog>",
            "<Catalog>a <Item /> b<!--c-->d</Catalog>\n");
        row("white space in attributes", "<Catalog a='1\t2\n3' b='&#9;&#10;&#13;' c='\"&apos;'/>",
            "<Catalog a=\"1 2 3\" b=\"&#09;&#10;&#13;\" c=\"&quot;'\" />\n");
        row("characters outside ASCII", "<Ca\xC3\xA9 \xC3\xA9='\xF0\x9D\x84\x9E'>&#xE9;&#x1D11E;&#127;</Ca\xC3\xA9>",
            "<Ca\xC3\xA9 \xC3\xA9=\"\xF0\x9D\x84\x9E\">\xC3\xA9\xF0\x9D\x84\x9E\x7F</Ca\xC3\xA9>\n");
        row("line ends in text", "<Catalog><Type>a\r\nb\rc\nd\r\r\n&#13;&#10;</Type></Catalog>",
            "<Catalog>\n\t<Type>a\nb\nc\nd\n\n&#13;\n</Type>\n</Catalog>\n");
        field("text", "<Notes>  a &amp; &lt;b]]&gt; \" '\n</Notes>");
        field("blanks", "<Notes> \n\t</Notes>");
        field("CDATA between blanks", "<Notes> <![CDATA[<a>&amp; ]]> <![CDATA[]]>\n</Notes>");
        field("comments in text", "<Notes><!--a-->b<!--c--><!-- d --></Notes>");
        field("comment alone", "<Notes><!--a--></Notes>");
        field("instruction", "<Notes><?a?>b<?c d?></Notes>");
        field("unknown elements", "<x:More a=\"1\"><b /><c>d</c> e<f><g /></f></x:More>");
        field("unknown elements with blanks", "<More>\n  <b> <!--c--> </b>\n</More>");
        row("fields of the catalog", "<Catalog><Type><!--a--> b</Type><More> <Item> </Item></More></Catalog>",
            "<Catalog>\n\t<Type><!--a--> b</Type>\n\t<More> <Item> </Item></More>\n</Catalog>\n");
    }
    void keeps()
    {
        QFETCH(QByteArray, before);
        const QByteArray after = Saved(m_folder, before);
        QTEST(after, "after");
        QCOMPARE(Saved(m_folder, after), after);
    }

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("xml");
        const auto row = [](const char *name, const QByteArray &xml) { QTest::newRow(name) << xml; };
        constexpr auto kTexts =
            "~ \n~Catalog~<Catalog><Item ID='1'/>~<Catalog~<Catalog a='~<Catalog></Catalog~<Catalog/><!-- ~"
            "<Catalog><![CDATA[]</Catalog>~<Catalog><Item></Catalog></Item>~<Catalog></catalog>~"
            "<Catalog></Catalog></Catalog>~<Catalog/><Catalog/>~a<Catalog/>~<Catalog/>a~<Catalog/><![CDATA[]]>~"
            " <?xml version='1.0'?><Catalog/>~<Catalog><?XML version='1.0'?></Catalog>~"
            "<Catalog/><!DOCTYPE Catalog>~<!DOCTYPE a><!DOCTYPE b><Catalog/>~<Catalog ID='1' Type='2' ID='1'/>~"
            "<Catalog a='1'b='2'/>~<Catalog a=1/>~<Catalog a/>~<Catalog a='<'/>~<1/>~"
            "<Catalog><!-- a -- b --></Catalog>~<Catalog>a & b</Catalog>~<Catalog a='b&c'/>~"
            "<Catalog>&nbsp;</Catalog>~<Catalog>&AMP;</Catalog>~<Catalog>a]]>b</Catalog>~"
            "<Catalog><Item>]]></Item></Catalog>~<!DOCTYPE Catalog [<!ENTITY a 'b'>]><Catalog>&a;</Catalog>";
        for (const QByteArray &xml : QByteArray(kTexts).split('~'))
            row(xml.constData(), xml);
        for (const QByteArray declaration :
             {"", "encoding='utf-8'", "version='1'", "version='1.0' standalone='1'", "version='1.0'encoding='utf-8'",
              "version='1.0' standalone='yes' encoding='utf-8'", "version='1.0' encoding='8'", "version='1.0' a='b'"})
            row(declaration, "<?xml " + declaration + "?><Catalog/>");
        constexpr auto kTypes =
            "~'a'~a b~a SYSTEM~a PUBLIC 'b'~a PUBLIC '<' 'b'~a []b~a [b]~a [%b]~a [<![IGNORE[ ]]>]~"
            "a [<!-- -- -->]~a [<?xml b?>]~a [<!ELEMENT a>]~a [<!ELEMENT a (b|c,d)>]~"
            "a [<!ELEMENT a (#PCDATA|b)>]~a [<!ATTLIST a b c 'd'>]~a [<!ATTLIST a b CDATA '<'>]~"
            "a [<!ATTLIST a b CDATA #FIXED>]~a [<!ENTITY b>]~a [<!ENTITY b '&'>]~a [<!ENTITY b '%c;'>]~"
            "a [<!ENTITY % b SYSTEM 'c' NDATA d>]~a [<!NOTATION b 'c'>]~a [<!ENTITY b 'c'";
        for (const QByteArray &type : QByteArray(kTypes).split('~'))
            row(type, "<!DOCTYPE " + type + "><Catalog/>");
        row("binary", QByteArray(
                          "\x7F"
                          "ELF\0\1\2",
                          7));
        row("byte-order mark twice", "\xEF\xBB\xBF\xEF\xBB\xBF<Catalog/>");
        row("repeated among many", WithAttributes(100, " a7=''"));
        row("overlong", "<Catalog>\xC0\xAF</Catalog>");
        row("lone continuation", "<Catalog>\x80</Catalog>");
        row("cut-off character", "<Catalog>\xE2\x82</Catalog>");
        row("surrogate", "<Catalog>\xED\xA0\x80</Catalog>");
        row("beyond the last character", "<Catalog>\xF4\x90\x80\x80</Catalog>");
        row("windows-1252 without declaration", "<Catalog>K\xF6ln</Catalog>");
        for (const char *forbidden : {"\x01", "\x08", "\x0B", "\x1F", "\xEF\xBF\xBE", "\xEF\xBF\xBF"})
            row(QByteArray(forbidden).toHex().constData(),
                "<Catalog>" + QByteArray(70, ' ') + forbidden + "</Catalog>");
        row("zero", QByteArray("<Catalog>\0</Catalog>", 20));
        for (const char *forbidden :
             {"0", "1", "x1F", "xD800", "xDFFF", "xFFFE", "xFFFF", "x110000", "x100000041", "", "x", "X41", "-1", "+65",
              " 65", "6a"})
            row(qPrintable(u"reference "_s + QLatin1StringView(forbidden)),
                "<Catalog a='&#" + QByteArray(forbidden) + ";'/>");
        row("too deep", Nested(kMaxXmlDepth + 1));
        row("much too deep", Nested(100'000));
        row("entity bomb", "<!DOCTYPE a [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;&a;&a;'>]><Catalog>&b;&b;</Catalog>");
        row("unknown encoding", "<?xml version='1.0' encoding='x-none'?><Catalog/>");
        row("empty encoding", "<?xml version='1.0' encoding=''?><Catalog/>");
        row("not in the declared encoding", "<?xml version='1.0' encoding='utf-16'?><Catalog/>");
        row("US-ASCII with more", "<?xml version='1.0' encoding='us-ascii'?><Catalog>\xE9</Catalog>");
        row("half a UTF-16 unit", Encoded("UTF-16LE", u"<Catalog/>"_s) + ' ');
        row("lone surrogate in UTF-16",
            Encoded("UTF-16LE", u"<Catalog>"_s) + QByteArray("\x00\xD8", 2) + Encoded("UTF-16LE", u"</Catalog>"_s));
        row("no character in UTF-32", Encoded("UTF-32LE", u"<Catalog>"_s) + QByteArray("\x00\x00\x11\x04", 4) +
                                          Encoded("UTF-32LE", u"</Catalog>"_s));
        row("Shift_JIS cut off", "<?xml version='1.0' encoding='Shift_JIS'?><Catalog>\x92</Catalog>");
    }
    void refuses()
    {
        QFETCH(QByteArray, xml);
        QVERIFY(!Load(m_folder, xml));
    }

    void extremes_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("deep") << Nested(kMaxXmlDepth);
        QTest::newRow("long value") << "<Catalog a='" + QByteArray(20'000'000, 'a') + "'/>";
        QTest::newRow("100,000 attributes") << WithAttributes(100'000);
        QTest::newRow("long text") << "<Catalog><Type>" + QByteArray("\r\n&amp;").repeated(2'000'000) +
                                          "</Type></Catalog>";
    }
    void extremes()
    {
        QFETCH(QByteArray, xml);
        // The processor's time, which other programs do not lengthen.
        const std::clock_t start = std::clock();
        QVERIFY(Load(m_folder, xml));
        QVERIFY2((std::clock() - start) / CLOCKS_PER_SEC < 10, "this must not take quadratic time");
    }

    void encodings_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("mark");
        QTest::addColumn<bool>("declared");
        const auto row = [](const char *name, const QByteArray &mark, bool declared) {
            QTest::addRow("%s%s%s", name, mark.isEmpty() ? "" : " marked", declared ? " declared" : "")
                << QByteArray(name) << mark << declared;
        };
        for (const bool declared : {false, true}) {
            row("UTF-8", "", declared);
            row("UTF-8", "\xEF\xBB\xBF", declared);
            row("UTF-16LE", "", declared);
            row("UTF-16LE", "\xFF\xFE", declared);
            row("UTF-16BE", "", declared);
            row("UTF-16BE", "\xFE\xFF", declared);
            row("UTF-32LE", QByteArray("\xFF\xFE\0\0", 4), declared);
            row("UTF-32BE", "", declared);
        }
        for (const char *name :
             {"ISO-8859-1", "windows-1252", "us-ascii", "ISO-8859-15", "KOI8-R", "Shift_JIS", "GB18030"})
            row(name, "", true);
    }
    void encodings()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, mark);
        QFETCH(bool, declared);
        const QString declaration =
            declared ? u"<?xml version=\"1.0\" encoding=\"%1\"?>\n"_s.arg(QLatin1StringView(name)) : QString();
        const QByteArray bytes = mark + Encoded(name, declaration + u"<Catalog Venue=\"A\" />\n"_s);
        QCOMPARE(Saved(m_folder, bytes), bytes);

        const auto file = Load(m_folder, bytes);
        QVERIFY(file);
        const QString venue = u"\\~ é ä € 中 д ｱ \U0001D11E \u0085"_s;
        file->document->child("Catalog").attribute("Venue").set_value(venue.toUtf8().constData());
        const QString path = m_folder.Path(u"other.xml"_s);
        SaveXml(*file->document, file->encoding, path);
        const auto again = LoadXml(path);
        QVERIFY(again);
        QCOMPARE(QString::fromUtf8(again->document->child("Catalog").attribute("Venue").value()), venue);
        QVERIFY(m_folder.Read(u"other.xml"_s).startsWith(mark));
    }

    void lackingCharacters_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("ASCII") << "us-ascii"_ba
                               << "&#233;&#8364;&#20013;&#119070;"_ba;
        QTest::newRow("Latin-1") << "ISO-8859-1"_ba
                                 << "\xE9&#8364;&#20013;&#119070;"_ba;
        QTest::newRow("Windows") << "windows-1252"_ba
                                 << "\xE9\x80&#20013;&#119070;"_ba;
        QTest::newRow("Japanese") << "Shift_JIS"_ba
                                  << "&#233;&#8364;\x92\x86&#119070;"_ba;
    }
    void lackingCharacters()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, text);
        QByteArray xml = "<?xml version='1.0' encoding='" + name + "'?>\n<Catalog>" + text + "</Catalog>\n";
        xml.replace('\'', '"');
        QCOMPARE(Saved(m_folder, xml), xml);
    }

    void piecesInsideCharacters()
    {
        XmlEncoder encoder({"UTF-16BE", true});
        QByteArray bytes = encoder.Start();
        for (const char c : "\xC3\xA9\xF0\x9D\x84\x9E"_ba)
            bytes += encoder.Encode(QByteArrayView(&c, 1));
        QCOMPARE(bytes, QByteArray("\xFE\xFF\0\xE9\xD8\x34\xDD\x1E", 8));
    }

    void bigFiles()
    {
        QByteArray xml = "<Catalog>\n";
        for (int i = 0; i < 20'000; ++i)
            xml += "\t<Item ID=\"" + QByteArray::number(i) + "\" Venue=\"K\xC3\xB6ln\" />\n";
        xml += "</Catalog>\n";
        QCOMPARE(Saved(m_folder, xml), xml);
    }

    void loadsOnlyOrdinaryFiles()
    {
        QVERIFY(!LoadXml(m_folder.Path({})));
        QVERIFY(!LoadXml(m_folder.Path(u"none.xml"_s)));
        QVERIFY(!LoadXml({}));
        QVERIFY(!LoadXml(m_folder.Write(u"empty.xml"_s, {})));
        QVERIFY(LoadXml(m_folder.Write(u"a.xml"_s, "<Catalog/>")));
#ifdef Q_OS_UNIX
        QVERIFY(!LoadXml(u"/dev/zero"_s));
        const QString pipe = m_folder.Path(u"pipe.xml"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!LoadXml(pipe));
#endif
    }

    void failedSaveLeavesTheFile()
    {
        const QString path = m_folder.Write(u"kept.xml"_s, "<Catalog/>");
        const auto file = Load(m_folder, "<Catalog><Type>" + QByteArray(3'000'000, 'a') + "</Type></Catalog>");
        QVERIFY(file);
        QVERIFY_THROWS_EXCEPTION(
            ProgramError, SaveXml(*file->document, file->encoding, m_folder.Path(u"gone/kept.xml"_s)));
#ifdef Q_OS_UNIX
        rlimit before = {};
        getrlimit(RLIMIT_FSIZE, &before);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit full = {500'000, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        bool failed = false;
        try {
            SaveXml(*file->document, file->encoding, path);
        } catch (const ProgramError &) {
            failed = true;
        }
        setrlimit(RLIMIT_FSIZE, &before);
        (void)std::signal(SIGXFSZ, handler);
        QVERIFY(failed);
#endif
        QCOMPARE(m_folder.Read(u"kept.xml"_s), "<Catalog/>"_ba);
        QCOMPARE(QDir(m_folder.Path({})).entryList({u"kept*"_s}), QStringList(u"kept.xml"_s));
    }

private:
    TestProgramFolder m_folder;
};

QTEST_GUILESS_MAIN(TestXmlFile)
#include "test_xmlfile.moc"
