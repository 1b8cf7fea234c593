#include "contentdigest.h"
#include "kit.h"
#include "xmlcheck.h"
#include "xmlfile.h"
#include "xmlwriter.h"

#include <QStringEncoder>

#include <ctime>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

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
    QStringEncoder encoder(name);
    return encoder.isValid() ? QByteArray(encoder.encode(text)) : text.toLatin1();
}

} // namespace

class TestXmlFile : public QObject
{
    Q_OBJECT

private slots:
    void keeps()
    {
        Keeps("<Catalog></Catalog>", "<Catalog />\n");
        Keeps("<Catalog> </Catalog>", "<Catalog />\n");
        Keeps(
            "<?xml version='1.0' encoding='utf-8' standalone='yes'?><Catalog/>",
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<Catalog />\n");
        Keeps(
            "<Catalog a='1\t2\n3' b='&#9;&#10;&#13;' c = '\"&apos;' />",
            "<Catalog a=\"1 2 3\" b=\"&#09;&#10;&#13;\" c=\"&quot;'\" />\n");
        const QByteArray type = R"(<!DOCTYPE Catalog PUBLIC "a" 'b' [%c; <!-- ' --><?d?><!ENTITY e "f>&g;"><!ELEMENT
            Catalog (h|i?|(j,(k)*)+)><!ELEMENT h (#PCDATA | i)*><!ELEMENT i EMPTY><!ELEMENT k ANY><!ATTLIST h a CDATA
            #IMPLIED b ID #REQUIRED c IDREF '' d IDREFS '' e ENTITY '' f ENTITIES '' g NMTOKEN '' i NMTOKENS ''
            l (1m|n) '&e;' o NOTATION (p) #FIXED 'p'><!NOTATION p PUBLIC 'q'><!ENTITY % c SYSTEM 'r'><!ENTITY s
            SYSTEM 't' NDATA p ><!ELEMENT l ( #PCDATA )>] >)";
        Keeps(
            type + "<!--c--><?d e\r\nf?><Catalog/><!--]]>-->",
            type + "\n<!--c-->\n<?d e\nf?>\n<Catalog />\n<!--]]>-->\n");
    }

    void keepsContents()
    {
        const std::vector<std::pair<QByteArray, QByteArray>> contents = {
            {"\r\n  <Item ab='1'> \n </Item>\n\n<b ab='' ba=''>c</b>",
             "\n\t<Item ab=\"1\" />\n\t<b ab=\"\" ba=\"\">c</b>\n"},
            {" <!--a-->\n <Item> <!--b--> <Notes>c</Notes> </Item>",
             "\n\t<!--a-->\n\t<Item>\n\t\t<!--b-->\n\t\t<Notes>c</Notes>\n\t</Item>\n"},
            {"&#32;<Item>&#10; </Item>", "\n\t<Item />\n"},
            {"a <Item/> b<!--c-->d<![CDATA[e]]>", "a <Item /> b<!--c-->d<![CDATA[e]]>"},
            {"<\u00E9 a='\u20AC'>&#xE9;&#x1D11E;&#127;</\u00E9>",
             "\n\t<\u00E9 a=\"\u20AC\">\u00E9\U0001D11E\u007F</\u00E9>\n"},
            {"<Type>a\r\nb\rc\nd\r\r\n&#13;&#10;</Type>", "\n\t<Type>a\nb\nc\nd\n\n&#13;\n</Type>\n"},
            {"<Type><!--a--> b</Type><b> <Item> </Item></b>",
             "\n\t<Type><!--a--> b</Type>\n\t<b> <Item> </Item></b>\n"}};
        for (const auto &[before, after] : contents)
            Keeps("<Catalog>" + before + "</Catalog>", "<Catalog>" + after + "</Catalog>\n");
        // What a listing holds is to come back unchanged.
        for (const QByteArray content :
             {"<Notes>  a &amp; &lt;b]]&gt; \" '\n</Notes>", "<Notes> \n\t</Notes>",
              "<Notes> <![CDATA[<a>&amp; ]]> <![CDATA[]]>\n</Notes>", "<Notes><!--a-->b<!--c--><!-- d --></Notes>",
              "<Notes><!--a--></Notes>", "<Notes><?a?>b<?c d?></Notes>",
              "<x:More a=\"1\"><b /><c>d</c> e<f><g /></f></x:More>", "<More>\n  <b> <!--c--> </b>\n</More>"})
            Keeps(
                "<Catalog><Item>" + content + "</Item></Catalog>",
                "<Catalog>\n\t<Item>\n\t\t" + content + "\n\t</Item>\n</Catalog>\n");
        QVERIFY2(CheckXml("<Catalog> <Item> <Notes>a</Notes> </Item> </Catalog>") == XmlForm::Simple, "loads slowly");
    }

    void refuses()
    {
        Refuses(
            "@",
            "~ \n~Catalog~<Catalog><Item ID='1'/>~<Catalog~<Catalog a='~<Catalog></Catalog~<Catalog/><!-- ~"
            "<Catalog><![CDATA[]</Catalog>~<Catalog></catalog>~<Catalog></Catalog></Catalog>~<Catalog/><Catalog/>~"
            "a<Catalog/>~<Catalog/>a~<Catalog/><![CDATA[]]>~ <?xml version='1.0'?><Catalog/>~"
            "<Catalog/><!DOCTYPE Catalog>~<!DOCTYPE a><!DOCTYPE b><Catalog/>~<1/>~\xEF\xBB\xBF\xEF\xBB\xBF<Catalog/>~"
            "<!DOCTYPE Catalog [<!ENTITY a 'b'>]><Catalog>&a;</Catalog>~"
            "<!DOCTYPE a [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;&a;&a;'>]><Catalog>&b;&b;</Catalog>");
        Refuses("<Catalog @/>", "ID='1' Type='2' ID='1'~a='1'b='2'~a=1~a~a='<'~a='b&c'");
        Refuses(
            "<Catalog>@</Catalog>",
            "<Item></Catalog></Item>~<?XML version='1.0'?>~<!-- a -- b -->~a & b~&nbsp;~&AMP;~a]]>b~<Item>]]></Item>");
        Refuses(
            "<?xml version='1.0' encoding='@</Catalog>",
            "x-none'?><Catalog>~'?><Catalog>~utf-16'?><Catalog>~UTF-7'?><Catalog>~us-ascii'?><Catalog>\xE9~"
            "Shift_JIS'?><Catalog>\x92");
        Refuses(
            "<?xml @?><Catalog/>",
            "~encoding='utf-8'~version='1'~version='1.0' standalone='1'~version='1.0'encoding='utf-8'~"
            "version='1.0' standalone='yes' encoding='utf-8'~version='1.0' encoding='8'~version='1.0' a='b'");
        Refuses(
            "<!DOCTYPE @><Catalog/>",
            "~'a'~a b~a SYSTEM~a PUBLIC 'b'~a PUBLIC '<' 'b'~a []b~a [b]~a [%b]~a [<![IGNORE[ ]]>]~"
            "a [<!-- -- -->]~a [<?xml b?>]~a [<!ELEMENT a>]~a [<!ELEMENT 1 ANY>]~a [<!ELEMENT a (b|c,d)>]~"
            "a [<!ELEMENT a (#PCDATA|b)>]~a [<!ATTLIST a b c 'd'>]~a [<!ATTLIST a b CDATA '<'>]~"
            "a [<!ATTLIST a b CDATA #FIXED>]~a [<!ENTITY b>]~a [<!ENTITY b '&'>]~a [<!ENTITY b '%c;'>]~"
            "a [<!ENTITY % b SYSTEM 'c' NDATA d>]~a [<!NOTATION b 'c'>]~a [<!ENTITY b 'c'");
        // Overlong, alone, cut off, half of a pair, beyond the last character, and in another encoding.
        Refuses("<Catalog>@</Catalog>", "\xC0\xAF~\x80~\xE2\x82~\xED\xA0\x80~\xF4\x90\x80\x80~K\xF6ln");
        // Control characters, early and late, and what is no character.
        Refuses("<Catalog>" + QByteArray(70, ' ') + "@</Catalog>", "\x01~\x08~\x0B~\x1F~\xEF\xBF\xBE~\xEF\xBF\xBF");
        Refuses("<Catalog a='&#@;'/>", "0~1~x1F~xD800~xDFFF~xFFFE~xFFFF~x110000~x100000041~~x~X41~-1~+65~ 65~6a");
    }

    void refusesBytes()
    {
        const QByteArray start = Encoded("UTF-16LE", u"<Catalog>"_s);
        const QByteArray end = Encoded("UTF-16LE", u"</Catalog>"_s);
        QVERIFY(Load(start + end));
        QVERIFY2(!Load(start + end + ' '), "half a unit");
        QVERIFY2(!Load(start + "\x00\xD8"_ba + end), "half a pair");
        QVERIFY2(!Load(Encoded("UTF-32LE", u"<"_s) + "\x00\x00\x11\x04"_ba), "no character");
        QVERIFY(!Load("\177ELF\0\1\2"_ba));
        QVERIFY(!Load("<Catalog>\0</Catalog>"_ba));
        QVERIFY2(!Load("<Catalog/>\xEF\xBF"), "cut off inside a character");
        QVERIFY2(!Load(WithAttributes(100, " a7=''")), "an attribute twice");
        for (const int depth : {kMaxXmlDepth + 1, 100'000}) {
            QVERIFY2(!Load(Nested(depth)), "too deep");
            const QByteArray model = QByteArray(depth, '(') + "b" + QByteArray(depth, ')');
            QVERIFY2(!Load("<!DOCTYPE a [<!ELEMENT a " + model + ">]><Catalog/>"), "too deep");
        }
    }

    void extremesTakeLinearTime()
    {
        const QByteArray text = QByteArray("\r\n&amp;").repeated(2'000'000);
        // The processor's time, which other programs do not lengthen.
        const std::clock_t start = std::clock();
        QVERIFY(Load(Nested(kMaxXmlDepth)));
        QVERIFY(Load(WithAttributes(100'000)));
        QVERIFY(Load("<Catalog a='" + QByteArray(20'000'000, 'a') + "'/>"));
        QVERIFY(Load("<Catalog><Type>" + text + "</Type></Catalog>"));
        QVERIFY((std::clock() - start) / CLOCKS_PER_SEC < 10);
    }

    void encodings()
    {
        const std::vector<std::pair<QByteArray, QByteArray>> marks = {
            {"UTF-8", "\xEF\xBB\xBF"},
            {"UTF-16LE", "\xFF\xFE"},
            {"UTF-16BE", "\xFE\xFF"},
            {"UTF-32LE", "\xFF\xFE\0\0"_ba},
            {"UTF-32BE", "\0\0\xFE\xFF"_ba}};
        for (const auto &[name, mark] : marks)
            for (const bool declared : {false, true}) {
                KeepsEncoding(name, {}, declared);
                KeepsEncoding(name, mark, declared);
            }
        for (const char *name :
             {"ISO-8859-1", "windows-1252", "us-ascii", "ISO-8859-15", "Shift_JIS", "EUC-JP", "GB18030", "ISO-2022-JP"})
            KeepsEncoding(name, {}, true);
    }

    void bigFiles()
    {
        QString xml = u"\uFEFF<Catalog>\n"_s;
        for (int i = 0; i < 20'000; ++i)
            xml += u"\t<Item ID=\"%1\" Venue=\"\u4E2D\u4E2D\U0001D11E\" />\n"_s.arg(i);
        for (const char *name : {"UTF-8", "UTF-16BE"}) { // written in pieces
            const QByteArray bytes = Encoded(name, xml + u"</Catalog>\n"_s);
            QVERIFY2(Saved(bytes) == bytes, name);
        }
    }

    void loadsOnlyOrdinaryFiles()
    {
        for (const QString &path :
             {QString(), m_folder.Path({}), m_folder.Path(u"none.xml"_s), m_folder.Write(u"empty.xml"_s, {})})
            QVERIFY2(!LoadXml(path), qPrintable(path));
        QVERIFY(LoadXml(m_folder.Write(u"a.xml"_s, "<Catalog/>")));
#ifdef Q_OS_UNIX
        QVERIFY(!LoadXml(u"/dev/zero"_s));
        const QString pipe = m_folder.Path(u"pipe.xml"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!LoadXml(pipe));
#endif
    }

private:
    std::optional<XmlFile> Load(const QByteArray &bytes) const
    {
        return LoadXml(m_folder.Write(u"loaded.xml"_s, bytes));
    }

    /// The file that comes of reading and writing bytes, "(refused)" when they do not load.
    QByteArray Saved(const QByteArray &bytes) const
    {
        const auto file = Load(bytes);
        if (!file)
            return "(refused)";
        const quint64 digest = SaveXml(*file->document, file->encoding, m_folder.Path(u"saved.xml"_s)).digest;
        QByteArray saved = m_folder.Read(u"saved.xml"_s);
        const bool told = file->digest == ContentDigest(bytes) && digest == ContentDigest(saved);
        return told ? saved : "(another digest)";
    }

    /// What is read and written comes out in a certain form, and in that form again.
    void Keeps(const QByteArray &before, const QByteArray &after) const
    {
        QCOMPARE(Saved(before), after);
        QCOMPARE(Saved(after), after);
    }

    /// A file keeps its encoding, mark and declaration, and every character that its encoding lacks.
    void KeepsEncoding(const QByteArray &name, const QByteArray &mark, bool declared) const
    {
        const QString declaration = u"<?xml version=\"1.0\" encoding=\"%1\"?>\n"_s.arg(QLatin1StringView(name));
        const QString xml = (declared ? declaration : QString()) + u"<Catalog Venue=\"%1\" />\n"_s;
        const QByteArray plain = mark + Encoded(name, xml.arg(u'A'));
        QCOMPARE(Saved(plain), plain);

        const auto file = Load(plain);
        const QString venue = u"\\~ é ä € 中 丂 д ｱ \U0001D11E \u0085"_s;
        file->document->child("Catalog").attribute("Venue").set_value(venue.toUtf8().constData());
        const QString path = m_folder.Path(u"other.xml"_s);
        SaveXml(*file->document, file->encoding, path);
        QCOMPARE(QString::fromUtf8(LoadXml(path)->document->child("Catalog").attribute("Venue").value()), venue);
        QVERIFY2(m_folder.Read(u"other.xml"_s).startsWith(mark), name);
    }

    /// Of some texts, divided by "~", none makes a document in the place of "@".
    void Refuses(const QByteArray &document, const QByteArray &texts) const
    {
        for (const QByteArray &text : texts.split('~'))
            QVERIFY2(!Load(QByteArray(document).replace("@", text)), text);
    }

    TestProgramFolder m_folder;
};

QTEST_GUILESS_MAIN(TestXmlFile)
#include "test_xmlfile.moc"
