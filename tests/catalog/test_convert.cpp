#include "failures.h"
#include "flatfile.h"
#include "modConvertTo12.h"
#include "modXMLSubs.h"
#include "paths.h"
#include "scriptedprompts.h"
#include "xmlfile.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <map>

using namespace Qt::StringLiterals;
using Icon = UserPrompts::Icon;

namespace {

constexpr int kKilled = 42;
const QString kQuestionTitle = u"Confirm conversion"_s;

void Write(const QString &path, const QByteArray &bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    WriteFileAtomically(path, bytes);
}

QByteArray Contents(const QString &path)
{
    return QFileInfo::exists(path) ? ReadWholeFile(path) : QByteArray("(no file)");
}

/// An older catalog in a folder of its own, and a program's folder beside it.
struct Pair
{
    explicit Pair(QString folder) : root(std::move(folder)) { SetProgramFolder(root + u"/program"_s); }
    Pair(const QString &folder, const QByteArray &catalogItems, const QByteArray &userItems) : Pair(folder)
    {
        Write(catalog, "<Catalog>" + catalogItems + "</Catalog>");
        Write(user, "<User>" + userItems + "</User>");
    }

    QStringList AllFiles() const
    {
        QStringList names;
        for (const char *sub : {"/", "/catalogs", "/program/Conversion Backup"})
            names += QDir(root + QString::fromLatin1(sub)).entryList(QDir::Files, QDir::Name);
        return names;
    }

    QString root;
    QString catalog = root + u"/catalogs/Shows.xml"_s;
    QString user = UserFilePath(catalog);
    QString merged = catalog + u".converted"_s;
    QString backups = root + u"/program/Conversion Backup"_s;
    QString catalogBackup = backups + u"/Shows.xml"_s;
    QString userBackup = backups + u"/Shows User.xml"_s;
};

bool Convert(const Pair &pair, ScriptedPrompts &prompts, const ConversionObserver &observer = {})
{
    prompts.ExpectMessage(kQuestionTitle, UserPrompts::Answer::Yes);
    return ConvertFileTo12(pair.catalog, pair.user, prompts, observer);
}

/// What a process does that ends itself after a step.
int ConvertUntil(const QString &folder, int lastStep)
{
    ScriptedPrompts prompts;
    Convert(Pair(folder), prompts, {.working = {}, .stepDone = [lastStep](ConversionStep step) {
                                        if (static_cast<int>(step) == lastStep)
                                            std::_Exit(kKilled);
                                    }});
    return 0;
}

constexpr auto kOldCatalog = R"(<Item ID="1" Year="1970" Venue="Hall"/><Item ID="2"><Notes>n</Notes></Item>)";
constexpr auto kOldUser = R"(<Item ID="2" FileType="M"/><Item ID="u1" Type="Album"/>)";
constexpr auto kConverted = "<Catalog>\n"
                            "\t<Item ID=\"1\" Year=\"1970\" Venue=\"Hall\" />\n"
                            "\t<Item ID=\"2\" Format=\"MP3\">\n\t\t<Notes>n</Notes>\n\t</Item>\n"
                            "\t<Item ID=\"3\" Type=\"Album\" />\n"
                            "</Catalog>\n";

} // namespace

class TestConvert : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_reports.clear();
        m_earlier = InstallFailureReporter([this](const FailureReport &report) {
            m_reports.append(report.moduleName + u'.' + report.procName + u": "_s + report.description);
        });
    }

    void cleanup()
    {
        InstallFailureReporter(m_earlier);
        SetProgramFolder({});
    }

    void merging_data()
    {
        QTest::addColumn<QByteArray>("catalog");
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QByteArray>("merged"); // one element a line
        const auto row = [](const char *name, const char *catalog, const char *user, const char *merged) {
            QTest::newRow(name) << QByteArray(catalog) << QByteArray(user) << QByteArray(merged);
        };

        row("user's data", R"(<Item ID="1" Type="Album"/>)",
            R"(<Item ID="1" FileType="3" Seeder="s" Stored="b" Date="2001-02-03" Format="x" Rating="5"/>)",
            R"(<Item ID="1" Type="Album" Format="SHN" Seeder="s" Stored="b" DateAdded="2001-02-03" />)");
        row("user's values win",
            R"(<Item ID="1" WrongDate="0" Type="a" Year="1" Month="2" Day="3" Venue="v" Show="s" Length="l" Source="o" Grade="g" Seeder="e" DateAdded="d"/>)",
            R"(<Item ID="1" WrongDate="1" Type="A" Year="4" Month="5" Day="6" Venue="V" Show="S" Length="L" Source="O" Grade="G" Seeder="E" Date="D"/>)",
            R"(<Item ID="1" WrongDate="1" Type="A" Year="4" Month="5" Day="6" Venue="V" Show="S" Length="L" Source="O" Grade="G" Seeder="E" DateAdded="D" />)");
        row("user's empty value wins", R"(<Item ID="1" Venue="v" Stored="b"/>)", R"(<Item ID="1" Venue="" Stored=""/>)",
            R"(<Item ID="1" />)");
        row("new attributes come last, in their order", R"(<Item ID="1" Grade="g"/>)",
            R"(<Item ID="1" Show="s" Day="6" FileType="1" Type="T" WrongDate="1"/>)",
            R"(<Item ID="1" Grade="g" WrongDate="1" Type="T" Format="FLAC" Day="6" Show="s" />)");
        row("no user item, no type: stays without one", R"(<Item ID="1" Venue="" Mine="m"/>)", "",
            R"(<Item ID="1" Mine="m" />)");
        row("user item of no listing is dropped", R"(<Item ID="1"/>)", R"(<Item ID="2" Venue="v"/><Item ID="U3"/>)",
            R"(<Item ID="1" />)");
        row("IDs are looked up as whole numbers", R"(<Item ID="007"/><Item ID="2.5"/><Item ID="3.5x"/><Item ID=" 9"/>)",
            R"(<Item ID="7" Show="a"/><Item ID="2" Show="b"/><Item ID="4" Show="c"/><Item ID="9" Show="d"/>)",
            "<Item ID=\"007\" Show=\"a\" />\n<Item ID=\"2.5\" Show=\"b\" />\n"
            "<Item ID=\"3.5x\" Show=\"c\" />\n<Item ID=\" 9\" Show=\"d\" />");
        row("the user's IDs are compared as they are", R"(<Item ID="7"/>)",
            R"(<Item ID="07" Show="no"/><Item Show="no"/><Item ID="7" Show="yes"/><Item ID="7" Show="no"/>)",
            R"(<Item ID="7" Show="yes" />)");
        row("a listing without an ID is number 0", R"(<Item Show="s"/>)", R"(<Item ID="0" Show="t"/>)",
            R"(<Item Show="t" />)");
        row("children are replaced and moved to the end",
            R"(<Item ID="1"><SetList>a</SetList><Notes>b</Notes><Other>o</Other></Item>)",
            R"(<Item ID="1"><Other>x</Other><Comment>C</Comment><SetList>A</SetList></Item>)",
            "<Item ID=\"1\">\n\t<Notes>b</Notes>\n\t<Other>o</Other>\n\t<SetList>A</SetList>\n"
            "\t<Comment>C</Comment>\n</Item>");
        row("the user's empty child takes the text away", R"(<Item ID="1"><Notes>b</Notes></Item>)",
            R"(<Item ID="1"><Notes/></Item>)", R"(<Item ID="1" />)");
        row("of two listings with one ID, the first gets the children", R"(<Item ID="1"/><Item ID="1"/>)",
            R"(<Item ID="1" Show="s"><Notes>n</Notes></Item>)",
            "<Item ID=\"1\" Show=\"s\">\n\t<Notes>n</Notes>\n</Item>\n<Item ID=\"1\" Show=\"s\" />");
        row("the user's own listings", R"(<Item ID="41"/><Item ID="7"/>)",
            R"(<Item ID="u2" FileType="DM" Date="d" Extra="e"><Notes>n</Notes></Item><Item ID="1u" Venue=""/>)",
            "<Item ID=\"41\" />\n<Item ID=\"7\" />\n"
            "<Item ID=\"42\" FileType=\"1\" Date=\"d\" Extra=\"e\" Format=\"FLAC\">\n\t<Notes>n</Notes>\n</Item>\n"
            "<Item ID=\"43\" />");
        row("negative IDs do not count", R"(<Item ID="-5"/>)", R"(<Item ID="-5" Show="s"/><Item ID="u"/>)",
            "<Item ID=\"-5\" Show=\"s\" />\n<Item ID=\"1\" />");
        row("the catalog's other elements stay, the user's do not",
            R"(<Type>Radio</Type><!--c--><Item ID="1"/><WebSource>w</WebSource>)",
            R"(<Type>Not</Type><!--d--><Item ID="u"/>)",
            "<Type>Radio</Type>\n<!--c-->\n<Item ID=\"1\" />\n<WebSource>w</WebSource>\n<Item ID=\"2\" />");
    }

    void merging()
    {
        QFETCH(QByteArray, catalog);
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, merged);
        const Pair pair(m_folder->path(), catalog, user);
        ScriptedPrompts prompts;
        QVERIFY(Convert(pair, prompts));
        QCOMPARE(Contents(pair.catalog), "<Catalog>\n\t" + merged.replace("\n", "\n\t") + "\n</Catalog>\n");
        QCOMPARE(m_reports, QStringList());
    }

    void formats_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("format");
        const std::vector<std::pair<const char *, const char *>> formats = {
            {"1", "FLAC"},   {"2", "MP3"},   {"3", "SHN"},       {"4", "CD"},         {"5", "LP"},   {"6", "Tape"},
            {"7", "VHS"},    {"8", "DVD"},   {"9", "MPEG"},      {"10", "Quicktime"}, {"11", "11"},  {"12", "12"},
            {"0", ""},       {"", ""},       {"00", "00"},       {"0.0", "0.0"},      {"-1", "-1"},  {"1.5", "1.5"},
            {"1.0", "FLAC"}, {" 02", "MP3"}, {"3 discs", "SHN"}, {"FLAC", "FLAC"},    {"D", "FLAC"}, {"DM", "FLAC"},
            {"MD", "FLAC"},  {"M", "MP3"},   {"MP3", "MP3"},     {"CDR", "FLAC"},     {"d", "d"},    {"m", "m"}};
        for (const auto &[code, format] : formats)
            QTest::newRow(code) << QString::fromLatin1(code) << QString::fromLatin1(format);
    }

    void formats()
    {
        QFETCH(QString, code);
        QFETCH(QString, format);
        const Pair pair(
            m_folder->path(), R"(<Item ID="1" Format="old"/>)", "<Item ID='1' FileType='" + code.toUtf8() + "'/>");
        ScriptedPrompts prompts;
        QVERIFY(Convert(pair, prompts));
        const auto file = LoadXml(pair.catalog);
        QCOMPARE(ReadAttribute(file->document->document_element().child("Item"), "Format"), format);
    }

    void encodingIsTheCatalogs()
    {
        const Pair pair(m_folder->path());
        Write(
            pair.catalog,
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><Catalog><Item ID=\"1\" Show=\"\xE9\"/></Catalog>");
        Write(pair.user, "<User><Item ID=\"1\" Venue=\"\u00FC\u2013\"/></User>");
        ScriptedPrompts prompts;
        QVERIFY(Convert(pair, prompts));
        QCOMPARE(
            Contents(pair.catalog), QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Catalog>\n\t"
                                               "<Item ID=\"1\" Show=\"\xE9\" Venue=\"\xFC&#8211;\" />\n</Catalog>\n"));
    }

    void filesAfterwards()
    {
        const Pair pair(m_folder->path(), kOldCatalog, kOldUser);
        QVERIFY(QFile::setPermissions(pair.catalog, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
        const QFile::Permissions permissions = QFile::permissions(pair.catalog);
        const QByteArray catalog = Contents(pair.catalog);
        const QByteArray user = Contents(pair.user);
        Write(pair.catalogBackup, "an earlier one");
        Write(pair.merged, "left by an earlier one");
        ScriptedPrompts prompts;
        QVERIFY(Convert(pair, prompts));
        QCOMPARE(Contents(pair.catalog), QByteArray(kConverted));
        QCOMPARE(QFile::permissions(pair.catalog), permissions);
        QCOMPARE(Contents(pair.catalogBackup), catalog);
        QCOMPARE(Contents(pair.userBackup), user);
        QCOMPARE(pair.AllFiles(), QStringList({u"Shows.xml"_s, u"Shows User.xml"_s, u"Shows.xml"_s}));
    }

#ifdef Q_OS_UNIX
    void catalogBehindALink()
    {
        Pair pair(m_folder->path(), kOldCatalog, kOldUser);
        const QString target = pair.root + u"/catalogs/Real.xml"_s;
        QVERIFY(QFile::rename(pair.catalog, target));
        QVERIFY(QFile::link(u"Real.xml"_s, pair.catalog));
        ScriptedPrompts prompts;
        QVERIFY(Convert(pair, prompts));
        QVERIFY(QFileInfo(pair.catalog).isSymbolicLink());
        QCOMPARE(Contents(target), QByteArray(kConverted));
        QVERIFY(QFile::rename(target, target + u".converted"_s));
        QVERIFY(FinishInterruptedConversion(pair.catalog));
        QCOMPARE(Contents(pair.catalog), QByteArray(kConverted));
    }
#endif

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("catalog");
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("icon");
        const auto row = [](const char *name, const char *catalog, const char *user, const char16_t *text) {
            QTest::newRow(name) << QByteArray(catalog) << QByteArray(user) << QString::fromUtf16(text)
                                << u"Error during conversion"_s << static_cast<int>(Icon::Critical);
        };
        const auto notCatalog = u"File does not appear to be a valid catalog file.";
        const auto notUser = u"File does not appear to be a valid user catalog file.";
        row("broken catalog", "<Catalog><Item></Catalog>", "<User/>", u"Error reading catalog file.");
        row("no catalog file", "", "<User/>", u"Error reading catalog file.");
        row("another root", "<catalog/>", "<User/>", notCatalog);
        row("a catalog in a namespace", "<Catalog xmlns='urn:x'/>", "<User/>", notCatalog);
        row("broken user file", "<Catalog/>", "<User>", u"Error reading user file.");
        row("no user file", "<Catalog/>", "", u"Error reading user file.");
        row("a catalog as user file", "<Catalog/>", "<Catalog/>", notUser);
        QTest::newRow("no user path") << QByteArray("<Catalog/>") << QByteArray("(no path)")
                                      << u"File is already compatible."_s << u"Conversion"_s
                                      << static_cast<int>(Icon::Information);
    }

    void refusals()
    {
        QFETCH(QByteArray, catalog);
        QFETCH(QByteArray, user);
        QFETCH(QString, title);
        Pair pair(m_folder->path());
        if (!catalog.isEmpty())
            Write(pair.catalog, catalog);
        if (user == "(no path)")
            pair.user.clear();
        else if (!user.isEmpty())
            Write(pair.user, user);
        const QStringList before = pair.AllFiles();
        ScriptedPrompts prompts;
        prompts.ExpectMessage(kQuestionTitle, UserPrompts::Answer::Yes);
        prompts.ExpectMessage(title);
        QVERIFY(!ConvertFileTo12(pair.catalog, pair.user, prompts));
        QTEST(prompts.LastAsked().text, "text");
        QTEST(static_cast<int>(prompts.LastAsked().icon), "icon");
        QCOMPARE(pair.AllFiles(), before);
        QVERIFY(catalog.isEmpty() || Contents(pair.catalog) == catalog);
        QCOMPARE(m_reports, QStringList());
    }

    void declined()
    {
        const Pair pair(m_folder->path(), kOldCatalog, kOldUser);
        ScriptedPrompts prompts;
        prompts.ExpectMessage(kQuestionTitle, UserPrompts::Answer::No);
        QVERIFY(!ConvertFileTo12(pair.catalog, pair.user, prompts));
        QCOMPARE(
            prompts.LastAsked().text,
            u"The selected catalog needs to be updated to the version 1.2 format.  Would you like to do that now?"_s);
        QCOMPARE(prompts.LastAsked().icon, Icon::Question);
        QCOMPARE(pair.AllFiles(), QStringList({u"Shows User.xml"_s, u"Shows.xml"_s}));
    }

    void busyOnlyWhileWorking()
    {
        const Pair pair(m_folder->path(), kOldCatalog, "<broken");
        QStringList seen;
        ScriptedPrompts prompts;
        prompts.SetWhileAsked([&](const ScriptedPrompts::Asked &asked) { seen += asked.title; });
        prompts.ExpectMessage(kQuestionTitle, UserPrompts::Answer::Yes);
        prompts.ExpectMessage(u"Error during conversion"_s);
        QVERIFY(!ConvertFileTo12(
            pair.catalog, pair.user, prompts,
            {.working = [&](bool on) { seen += on ? u"busy"_s : u"ready"_s; }, .stepDone = {}}));
        QCOMPARE(seen, QStringList({kQuestionTitle, u"busy"_s, u"ready"_s, u"Error during conversion"_s}));
    }

    void backupIsNotConvertedOntoItself()
    {
        Pair pair(m_folder->path());
        for (QString *path : {&pair.catalog, &pair.user})
            *path = pair.backups + u'/' + FileTitle(*path, true);
        Write(pair.catalog, "<Catalog/>");
        Write(pair.user, "<User/>");
        ScriptedPrompts prompts;
        prompts.ExpectMessage(kQuestionTitle, UserPrompts::Answer::Yes);
        prompts.ExpectMessage(u"Error during conversion"_s);
        QVERIFY(!ConvertFileTo12(pair.catalog, pair.user, prompts));
        QVERIFY(prompts.LastAsked().text.contains(u"backup"_s));
        QCOMPARE(Contents(pair.catalog), QByteArray("<Catalog/>"));
        QCOMPARE(Contents(pair.user), QByteArray("<User/>"));
    }

    void failures_data()
    {
        QTest::addColumn<QByteArray>("catalog");
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QString>("inTheWay");
        QTest::addColumn<QString>("reported");
        const QByteArray item = R"(<Item ID="1"/>)";
        QTest::newRow("no ID left") << QByteArray(R"(<Item ID="2147483647"/>)") << QByteArray(R"(<Item ID="u"/>)")
                                    << u""_s << u"Overflow"_s;
        QTest::newRow("ID beyond 32 bits")
            << QByteArray(R"(<Item ID="2147483648"/>)") << item << u""_s << u"Overflow"_s;
        QTest::newRow("no backup folder")
            << item << item << u"/program/Conversion Backup"_s << u"Cannot make the folder"_s;
        QTest::newRow("no catalog backup")
            << item << item << u"/program/Conversion Backup/Shows.xml/x"_s << u"Shows.xml"_s;
        QTest::newRow("no user backup") << item << item << u"/program/Conversion Backup/Shows User.xml/x"_s
                                        << u"Shows User.xml"_s;
        QTest::newRow("no merged file") << item << item << u"/catalogs/Shows.xml.converted/x"_s
                                        << u"Shows.xml.converted"_s;
    }

    void failures()
    {
        QFETCH(QByteArray, catalog);
        QFETCH(QByteArray, user);
        QFETCH(QString, inTheWay);
        QFETCH(QString, reported);
        const Pair pair(m_folder->path(), catalog, user);
        const QByteArray catalogBefore = Contents(pair.catalog);
        const QByteArray userBefore = Contents(pair.user);
        if (!inTheWay.isEmpty())
            Write(pair.root + inTheWay, "x");
        ScriptedPrompts prompts;
        QVERIFY(!Convert(pair, prompts));
        QCOMPARE(m_reports.size(), 1);
        QVERIFY2(m_reports[0].startsWith(u"modConvertTo12.ConvertFileTo12: "_s), qPrintable(m_reports[0]));
        QVERIFY2(m_reports[0].contains(reported), qPrintable(m_reports[0]));
        QCOMPARE(Contents(pair.catalog), catalogBefore);
        QCOMPARE(Contents(pair.user), userBefore);
        QVERIFY(!QFileInfo(pair.merged).isFile());
    }

    // The process ends after each step; then the catalog is opened again.
    void killed_data()
    {
        QTest::addColumn<int>("lastStep");
        QTest::addColumn<bool>("asksAgain");
        const auto row = [](const char *name, ConversionStep step, bool asksAgain) {
            QTest::newRow(name) << static_cast<int>(step) << asksAgain;
        };
        row("merged file written", ConversionStep::MergedFileWritten, true);
        row("catalog backed up", ConversionStep::CatalogBackedUp, true);
        row("user file backed up", ConversionStep::UserFileBackedUp, true);
        row("catalog deleted", ConversionStep::CatalogDeleted, false);
        row("user file deleted", ConversionStep::UserFileDeleted, false);
        row("merged file renamed", ConversionStep::MergedFileRenamed, false);
    }

    void killed()
    {
        QFETCH(int, lastStep);
        QFETCH(bool, asksAgain);
        const Pair pair(m_folder->path(), kOldCatalog, kOldUser);
        const QByteArray catalog = Contents(pair.catalog);
        const QByteArray user = Contents(pair.user);
        const int exitCode = QProcess::execute(
            QCoreApplication::applicationFilePath(), {u"--convert-until"_s, pair.root, QString::number(lastStep)});
        QCOMPARE(exitCode, kKilled);
        QVERIFY(
            Contents(pair.catalog) == catalog || Contents(pair.catalog) == kConverted ||
            (Contents(pair.catalogBackup) == catalog && Contents(pair.userBackup) == user));

        FinishInterruptedConversion(pair.catalog);
        QCOMPARE(QFileInfo::exists(pair.user), asksAgain);
        ScriptedPrompts prompts;
        if (asksAgain)
            QVERIFY(Convert(pair, prompts));
        QCOMPARE(Contents(pair.catalog), QByteArray(kConverted));
        QCOMPARE(Contents(pair.catalogBackup), catalog);
        QCOMPARE(Contents(pair.userBackup), user);
        QCOMPARE(pair.AllFiles(), QStringList({u"Shows.xml"_s, u"Shows User.xml"_s, u"Shows.xml"_s}));
    }

    void finishing_data()
    {
        QTest::addColumn<QStringList>("present"); // beside the merged file
        QTest::addColumn<bool>("finishes");
        const QString catalog = u"catalogs/Shows.xml"_s;
        const QString user = u"catalogs/Shows User.xml"_s;
        const QString catalogBackup = u"program/Conversion Backup/Shows.xml"_s;
        const QString userBackup = u"program/Conversion Backup/Shows User.xml"_s;
        QTest::newRow("nothing but backups") << QStringList{catalogBackup, userBackup} << true;
        QTest::newRow("user file") << QStringList{user, catalogBackup, userBackup} << true;
        QTest::newRow("another user file") << QStringList{user + u"=other"_s, catalogBackup, userBackup} << false;
        QTest::newRow("catalog") << QStringList{catalog, catalogBackup, userBackup} << false;
        QTest::newRow("no catalog backup") << QStringList{user, userBackup} << false;
        QTest::newRow("no user backup") << QStringList{user, catalogBackup} << false;
        QTest::newRow("no backups") << QStringList{} << false;
    }

    void finishing()
    {
        QFETCH(QStringList, present);
        QFETCH(bool, finishes);
        const Pair pair(m_folder->path());
        Write(pair.merged, "merged");
        for (const QString &file : present)
            Write(pair.root + u'/' + file.section(u'=', 0, 0), file.section(u'=', 1).toUtf8());
        const QStringList before = pair.AllFiles();
        FinishInterruptedConversions(QFileInfo(pair.catalog).path());
        QCOMPARE(Contents(pair.catalog) == "merged", finishes);
        QCOMPARE(QFileInfo::exists(pair.merged), !finishes);
        if (!finishes)
            QCOMPARE(pair.AllFiles(), before);
        QCOMPARE(m_reports, QStringList());
    }

    void sample()
    {
        const Pair pair(m_folder->path());
        const QString folder = QStringLiteral(DISCBOOK_SAMPLES "/two-file/");
        Write(pair.catalog, ReadWholeFile(folder + u"Shows.xml"_s));
        Write(pair.user, ReadWholeFile(folder + u"Shows User.xml"_s));
        ScriptedPrompts prompts;
        QVERIFY(Convert(pair, prompts));
        std::map<QString, int> formats;
        int listings = 0;
        const auto file = LoadXml(pair.catalog);
        for (const pugi::xml_node item : file->document->document_element().children("Item")) {
            ++formats[ReadAttribute(item, "Format")];
            QCOMPARE(ReadAttribute(item, "ID"), QString::number(++listings));
        }
        QCOMPARE(listings, 424 + 7);
        // FLAC are 20 of code DM, 14 D, 15 FLAC and 7 of code 1; an eighth of code 1 matches no listing. Without a
        // format are 14 of code 0 and 283 that the user does not have.
        QCOMPARE(
            formats, (std::map<QString, int>{
                         {u""_s, 297},
                         {u"FLAC"_s, 56},
                         {u"MP3"_s, 29},
                         {u"SHN"_s, 15},
                         {u"CD"_s, 13},
                         {u"12"_s, 10},
                         {u"Tape"_s, 9},
                         {u"LP"_s, 1},
                         {u"VHS"_s, 1}}));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    FailureReporter m_earlier;
    QStringList m_reports;
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--convert-until"_s)
        return ConvertUntil(arguments.value(2), arguments.value(3).toInt());
    TestConvert test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_convert.moc"
