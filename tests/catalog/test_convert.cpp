#include "failurerecorder.h"
#include "modConvertTo12.h"
#include "modXMLSubs.h"
#include "programfolder.h"
#include "rawxml.h"
#include "scriptedprompts.h"
#include "table.h"
#include "xmlfile.h"

#include <QDirIterator>
#include <QProcess>

#include <cstdlib>
#include <map>

using namespace Qt::StringLiterals;
using Answer = UserPrompts::Answer;
using Icon = UserPrompts::Icon;

namespace {

using Contents = std::map<QString, QByteArray>; // of files, by name

constexpr int kKilled = 42;
const QString kQuestionTitle = u"Confirm conversion"_s;
const QString kCatalog = u"catalogs/Shows.xml"_s;
const QString kUser = u"catalogs/Shows User.xml"_s;
const QString kMerged = u"catalogs/Shows.xml.converted"_s;
const QString kCatalogBackup = u"Conversion Backup/Shows.xml"_s;
const QString kUserBackup = u"Conversion Backup/Shows User.xml"_s;

const QByteArray kOldCatalog = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
                               "<Catalog><Item ID='1' Show='\xE9'/><Item ID='2'><Notes>n</Notes></Item></Catalog>";
const QByteArray kOldUser = "<User><Item ID='2' FileType='M' Venue='\u00FC\u2013'/><Item ID='u1' Type='Album'/></User>";
const QByteArray kConverted =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
    "<Catalog>\n\t<Item ID=\"1\" Show=\"\xE9\" />\n\t<Item ID=\"2\" Format=\"MP3\" Venue=\"\xFC&#8211;\">\n"
    "\t\t<Notes>n</Notes>\n\t</Item>\n\t<Item ID=\"3\" Type=\"Album\" />\n</Catalog>\n";
const Contents kAfterwards = {{kCatalog, kConverted}, {kCatalogBackup, kOldCatalog}, {kUserBackup, kOldUser}};

/// An older catalog in a program's folder; what is empty is not written.
struct OldCatalog : TestProgramFolder
{
    explicit OldCatalog(
        const QByteArray &catalog = kOldCatalog, const QByteArray &user = kOldUser, const QString &name = kCatalog)
        : path(Path(name))
    {
        if (!catalog.isEmpty())
            Write(name, catalog);
        if (!user.isEmpty())
            Write(UserFilePath(name), user);
    }

    bool Convert() const
    {
        ScriptedPrompts prompts;
        prompts.ExpectMessage(kQuestionTitle, Answer::Yes);
        return ConvertFileTo12(path, UserFilePath(path), prompts);
    }

    Contents Files() const
    {
        Contents files;
        for (QDirIterator at(Path({}), QDir::Files, QDirIterator::Subdirectories); at.hasNext();) {
            const QString file = at.next();
            files[QDir(Path({})).relativeFilePath(file)] = ReadWholeFile(file);
        }
        return files;
    }

    QString path;
};

/// What a process does that ends itself after a step.
int ConvertUntil(const QString &folder, int lastStep)
{
    SetProgramFolder(folder);
    ScriptedPrompts prompts;
    prompts.ExpectMessage(kQuestionTitle, Answer::Yes);
    const auto endAt = [lastStep](ConversionStep step) {
        if (static_cast<int>(step) == lastStep)
            std::_Exit(kKilled);
    };
    ConvertFileTo12(InFolder(folder, kCatalog), InFolder(folder, kUser), prompts, {.working = {}, .stepDone = endAt});
    return 0;
}

/// A conversion begins, busy while it works, and ends with a message; no file is touched.
void Refuses(
    const OldCatalog &old, const QString &text, bool hasUser = true,
    const QString &title = u"Error during conversion"_s, Icon icon = Icon::Critical)
{
    const Contents before = old.Files();
    QStringList seen;
    ScriptedPrompts prompts;
    prompts.SetWhileAsked([&](const ScriptedPrompts::Asked &asked) { seen += asked.title; });
    prompts.ExpectMessage(kQuestionTitle, Answer::Yes);
    prompts.ExpectMessage(title);
    const auto working = [&](bool on) { seen += on ? u"busy"_s : u"ready"_s; };
    const QString user = hasUser ? UserFilePath(old.path) : QString();
    QVERIFY(!ConvertFileTo12(old.path, user, prompts, {.working = working, .stepDone = {}}));
    QCOMPARE(seen, QStringList({kQuestionTitle, u"busy"_s, u"ready"_s, title}));
    QCOMPARE(prompts.LastAsked().text, text);
    QCOMPARE(prompts.LastAsked().icon, icon);
    QCOMPARE(old.Files(), before);
}

/// A conversion ends with a report, here for what lies in its way, and leaves what it was to convert.
void Fails(const OldCatalog &old, const QString &reported, const QString &inTheWay = {})
{
    const Contents before = old.Files();
    if (!inTheWay.isEmpty())
        old.Write(inTheWay, "x");
    const FailureRecorder failures;
    QVERIFY(!old.Convert());
    QCOMPARE(failures.Names(), {u"modConvertTo12.ConvertFileTo12"_s});
    const QString description = failures.reports.front().description;
    QVERIFY2(description.contains(reported), qPrintable(description));
    for (const auto &[name, contents] : before)
        QCOMPARE(old.Files()[name], contents);
    QVERIFY(!QFileInfo(old.Path(kMerged)).isFile());
}

} // namespace

class TestConvert : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(m_failures.Names(), QStringList()); }

    void merging_data()
    {
        const Table<QByteArray, QByteArray, QByteArray> table("catalog", "user", "merged");
        const auto row =
            [&table](const char *name, const QByteArray &mine, const QByteArray &user, const QByteArray &merged) {
                table.Row(
                    name, "<Catalog>" + mine + "</Catalog>", "<User>" + user + "</User>",
                    "<Catalog>" + merged + "</Catalog>");
            };
        row("user's data", "<Item ID='1' Type='a'/>",
            "<Item ID='1' FileType='3' Seeder='s' Stored='b' Date='d' Format='x' Rating='5'/>",
            "<Item ID='1' Type='a' Format='SHN' Seeder='s' Stored='b' DateAdded='d'/>");
        row("user's values win",
            "<Item ID='1' WrongDate='0' Type='a' Year='1' Month='2' Day='3' Venue='v' DateAdded='d'/>",
            "<Item ID='1' WrongDate='1' Type='A' Year='4' Month='5' Day='6' Venue='V' Date='D'/>",
            "<Item ID='1' WrongDate='1' Type='A' Year='4' Month='5' Day='6' Venue='V' DateAdded='D'/>");
        row("more of the user's values win",
            "<Item ID='1' Show='s' Length='l' Source='o' Grade='g' Seeder='e' Stored='t'/>",
            "<Item ID='1' Show='S' Length='L' Source='O' Grade='G' Seeder='E' Stored='T'/>",
            "<Item ID='1' Show='S' Length='L' Source='O' Grade='G' Seeder='E' Stored='T'/>");
        row("new attributes come last, in their order", "<Item ID='1' Grade='g'/>",
            "<Item ID='1' Show='s' Day='6' FileType='1' Type='T' WrongDate='1'/>",
            "<Item ID='1' Grade='g' WrongDate='1' Type='T' Format='FLAC' Day='6' Show='s'/>");
        row("user's empty value wins", "<Item ID='1' Venue='v' Stored='b'/>", "<Item ID='1' Venue='' Stored=''/>",
            "<Item ID='1'/>");
        row("user's item of no listing", "<Item ID='1' Venue='' a='b'/>", "<Item ID='2'/><Item ID='U3'/>",
            "<Item ID='1' a='b'/>");
        row("IDs are looked up as whole numbers", "<Item ID='007'/><Item ID='2.5'/><Item ID='3.5x'/><Item ID=' 9'/>",
            "<Item ID='7' Show='a'/><Item ID='2' Show='b'/><Item ID='4' Show='c'/><Item ID='9' Show='d'/>",
            "<Item ID='007' Show='a'/><Item ID='2.5' Show='b'/><Item ID='3.5x' Show='c'/><Item ID=' 9' Show='d'/>");
        row("a listing without an ID is number 0", "<Item Show='s'/>", "<Item ID='0' Show='t'/>", "<Item Show='t'/>");
        row("the user's IDs are compared as they are", "<Item ID='7'/>",
            "<Item ID='07' Show='no'/><Item Show='no'/><Item ID='7' Show='yes'/><Item ID='7' Show='no'/>",
            "<Item ID='7' Show='yes'/>");
        row("children are replaced and moved to the end",
            "<Item ID='1'><SetList>a</SetList><Notes>b</Notes><Other>o</Other></Item>",
            "<Item ID='1'><Other>x</Other><Comment>C</Comment><SetList>A</SetList></Item>",
            "<Item ID='1'><Notes>b</Notes><Other>o</Other><SetList>A</SetList><Comment>C</Comment></Item>");
        row("user's empty child", "<Item ID='1'><Notes>b</Notes></Item>", "<Item ID='1'><Notes/></Item>",
            "<Item ID='1'/>");
        row("of two listings with one ID, the first gets the children", "<Item ID='1'/><Item ID='1'/>",
            "<Item ID='1' Show='s'><Notes>n</Notes></Item>",
            "<Item ID='1' Show='s'><Notes>n</Notes></Item><Item ID='1' Show='s'/>");
        row("user's own listings follow the highest ID", "<Item ID='4'/><Item ID='3'/>",
            "<Item ID='u2' FileType='DM' Date='d' a='b'><Notes>n</Notes></Item><Item ID='1u' Venue=''/>",
            "<Item ID='4'/><Item ID='3'/><Item ID='5' FileType='1' Date='d' a='b' Format='FLAC'><Notes>n</Notes></Item>"
            "<Item ID='6'/>");
        row("negative IDs do not count", "<Item ID='-5'/>", "<Item ID='-5'/><Item ID='u'/>",
            "<Item ID='-5'/><Item ID='1'/>");
        row("other elements stay", "<Type>Radio</Type><!--c--><Item ID='1'/><WebSource>w</WebSource>",
            "<Type>Not</Type><!--d--><Item ID='u'/>",
            "<Type>Radio</Type><!--c--><Item ID='1'/><WebSource>w</WebSource><Item ID='2'/>");
    }
    void merging()
    {
        QFETCH(QByteArray, catalog);
        QFETCH(QByteArray, user);
        const OldCatalog old(catalog, user);
        QVERIFY(old.Convert());
        QTEST(RawXml(*LoadXml(old.path)->document), "merged");
    }

    void formats()
    {
        const std::vector<std::pair<const char *, const char *>> formats = {
            {"1", "FLAC"},   {"2", "MP3"},   {"3", "SHN"},       {"4", "CD"},         {"5", "LP"},   {"6", "Tape"},
            {"7", "VHS"},    {"8", "DVD"},   {"9", "MPEG"},      {"10", "Quicktime"}, {"11", "11"},  {"12", "12"},
            {"0", ""},       {"", ""},       {"00", "00"},       {"0.0", "0.0"},      {"-1", "-1"},  {"1.5", "1.5"},
            {"1.0", "FLAC"}, {" 02", "MP3"}, {"3 discs", "SHN"}, {"FLAC", "FLAC"},    {"D", "FLAC"}, {"DM", "FLAC"},
            {"MD", "FLAC"},  {"M", "MP3"},   {"MP3", "MP3"},     {"CDR", "FLAC"},     {"d", "d"},    {"m", "m"}};
        QByteArray items;
        QByteArray userItems;
        for (const auto &[code, format] : formats) {
            const QByteArray start = "<Item ID='" + QByteArray::number(items.count('<') + 1) + "' ";
            items += start + "Format='old'/>";
            userItems += start + "FileType='" + code + "'/>";
        }
        const OldCatalog old("<Catalog>" + items + "</Catalog>", "<User>" + userItems + "</User>");
        QVERIFY(old.Convert());
        const auto file = LoadXml(old.path);
        auto format = formats.begin();
        for (const pugi::xml_node item : file->document->document_element())
            QCOMPARE(QByteArray(item.attribute("Format").value()), (format++)->second);
    }

    void filesAfterwards()
    {
        const OldCatalog old;
        QVERIFY(QFile::setPermissions(old.path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
        const QFile::Permissions permissions = QFile::permissions(old.path);
        old.Write(kCatalogBackup, "an earlier one");
        old.Write(kMerged, "left by an earlier one");
        QVERIFY(old.Convert());
        QCOMPARE(old.Files(), kAfterwards);
        QCOMPARE(QFile::permissions(old.path), permissions);
    }

#ifdef Q_OS_UNIX
    void catalogBehindALink()
    {
        const OldCatalog old;
        const QString target = old.Path(u"catalogs/Real.xml"_s);
        QVERIFY(QFile::rename(old.path, target));
        QVERIFY(QFile::link(u"Real.xml"_s, old.path));
        QVERIFY(old.Convert());
        QVERIFY(QFileInfo(old.path).isSymbolicLink());
        QCOMPARE(ReadWholeFile(target), kConverted);
        QVERIFY(QFile::rename(target, target + u".converted"_s));
        QVERIFY(FinishInterruptedConversion(old.path));
        QCOMPARE(ReadWholeFile(old.path), kConverted);
        QVERIFY(QFile::link(u"Ring.xml"_s, old.Path(u"catalogs/Ring.xml"_s)));
        QVERIFY(!FinishInterruptedConversion(old.Path(u"catalogs/Ring.xml"_s)));
    }
#endif

    void refusals()
    {
        const QString notCatalog = u"File does not appear to be a valid catalog file."_s;
        const QString notUser = u"File does not appear to be a valid user catalog file."_s;
        const QString backup = u"This catalog is a backup of an earlier conversion.  "
                               u"Please copy it and its user file to another folder first."_s;
        Refuses(OldCatalog("<Catalog><Item></Catalog>", kOldUser), u"Error reading catalog file."_s);
        Refuses(OldCatalog("", kOldUser), u"Error reading catalog file."_s);
        Refuses(OldCatalog("<catalog/>", kOldUser), notCatalog);
        Refuses(OldCatalog("<Catalog xmlns='urn:x'/>", kOldUser), notCatalog);
        Refuses(OldCatalog(kOldCatalog, "<User>"), u"Error reading user file."_s);
        Refuses(OldCatalog(kOldCatalog, ""), u"Error reading user file."_s);
        Refuses(OldCatalog(kOldCatalog, kOldCatalog), notUser);
        Refuses(OldCatalog(kOldCatalog, kOldUser, kCatalogBackup), backup);
        Refuses(OldCatalog(), u"File is already compatible."_s, false, u"Conversion"_s, Icon::Information);
    }

    void declined()
    {
        const OldCatalog old;
        const Contents before = old.Files();
        ScriptedPrompts prompts;
        prompts.ExpectMessage(kQuestionTitle, Answer::No);
        QVERIFY(!ConvertFileTo12(old.path, UserFilePath(old.path), prompts));
        QCOMPARE(
            prompts.LastAsked().text,
            u"The selected catalog needs to be updated to the version 1.2 format.  Would you like to do that now?"_s);
        QCOMPARE(prompts.LastAsked().icon, Icon::Question);
        QCOMPARE(old.Files(), before);
    }

    void failures()
    {
        Fails(OldCatalog("<Catalog><Item ID='2147483647'/></Catalog>"), u"Overflow"_s);
        Fails(OldCatalog("<Catalog><Item ID='2147483648'/></Catalog>"), u"Overflow"_s);
        Fails(OldCatalog(), u"Cannot make the folder"_s, u"Conversion Backup"_s);
        Fails(OldCatalog(), u"Shows.xml"_s, kCatalogBackup + u"/x"_s);
        Fails(OldCatalog(), u"Shows User.xml"_s, kUserBackup + u"/x"_s);
        Fails(OldCatalog(), u"Shows.xml.converted"_s, kMerged + u"/x"_s);
    }

    void takenUpAfterItWasKilled()
    {
        for (const auto last :
             {ConversionStep::MergedFileWritten, ConversionStep::CatalogBackedUp, ConversionStep::UserFileBackedUp,
              ConversionStep::CatalogDeleted, ConversionStep::UserFileDeleted, ConversionStep::MergedFileRenamed}) {
            const OldCatalog old;
            const QString step = QString::number(static_cast<int>(last));
            const QStringList arguments = {u"--convert-until"_s, old.Path({}), step};
            QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), arguments), kKilled);
            Contents left = old.Files();
            QVERIFY2(
                left[kCatalog] == kOldCatalog || left[kCatalog] == kConverted ||
                    (left[kCatalogBackup] == kOldCatalog && left[kUserBackup] == kOldUser),
                qPrintable(step));

            FinishInterruptedConversion(old.path);
            const bool asksAgain = QFileInfo::exists(UserFilePath(old.path));
            QVERIFY2(asksAgain == (last < ConversionStep::CatalogDeleted), qPrintable(step));
            QVERIFY(!asksAgain || old.Convert());
            QCOMPARE(old.Files(), kAfterwards);
        }
    }

    void finishing_data()
    {
        const QString another = kUser + u"=another"_s;
        Table<QStringList, bool>("present", "finishes") // beside the merged file, with "=" and contents
            .Row("nothing but backups", {kCatalogBackup, kUserBackup}, true)
            .Row("user file", {kUser, kCatalogBackup, kUserBackup}, true)
            .Row("another user file", {another, kCatalogBackup, kUserBackup}, false)
            .Row("catalog", {kCatalog, kCatalogBackup, kUserBackup}, false)
            .Row("no catalog backup", {kUser, kUserBackup}, false)
            .Row("no user backup", {kUser, kCatalogBackup}, false)
            .Row("no backups", {}, false);
    }
    void finishing()
    {
        QFETCH(const QStringList, present);
        QFETCH(const bool, finishes);
        const OldCatalog old({}, {});
        old.Write(kMerged, "merged");
        for (const QString &file : present)
            old.Write(file.section(u'=', 0, 0), file.section(u'=', 1).toUtf8());
        const Contents finished = {{kCatalog, "merged"}, {kCatalogBackup, ""}, {kUserBackup, ""}};
        const Contents expected = finishes ? finished : old.Files();
        FinishInterruptedConversions(old.Path(u"catalogs"_s));
        QCOMPARE(old.Files(), expected);
    }

    void sample()
    {
        const QString folder = QStringLiteral(DISCBOOK_SAMPLES "/two-file/");
        const OldCatalog old(ReadWholeFile(folder + u"Shows.xml"_s), ReadWholeFile(folder + u"Shows User.xml"_s));
        QVERIFY(old.Convert());
        QStringList formats;
        const auto file = LoadXml(old.path);
        for (const pugi::xml_node item : file->document->document_element().children("Item")) {
            formats += ReadAttribute(item, "Format");
            QCOMPARE(ReadAttribute(item, "ID"), QString::number(formats.size()));
        }
        QCOMPARE(formats.size(), 424 + 7);
        // 20 of code DM, 14 D, 15 FLAC and 7 of code 1, of which an eighth matches no listing.
        QCOMPARE(formats.count(u"FLAC"_s), 56);
        // 14 of code 0 and 283 that the user does not have.
        QCOMPARE(formats.count(QString()), 297);
    }

private:
    FailureRecorder m_failures;
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
