#include "kit.h"
#include "modConvertTo12.h"
#include "modXMLSubs.h"
#include "rawxml.h"
#include "xmlfile.h"

#include <QDirIterator>
#include <QProcess>

#include <cstdlib>
#include <map>

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
const QString kRecovery = u"Recovery/"_s;
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
        if (QFileInfo(Path(kMerged)).isFile())
            prompts.ExpectMessage(u"Conversion"_s);
        return ConvertFileTo12(path, UserFilePath(path), prompts);
    }

    Contents Files() const
    {
        Contents files;
        for (QDirIterator at(Path({}), QDir::Files, QDirIterator::Subdirectories); at.hasNext();) {
            const QString file = at.next();
            const QString name = QDir(Path({})).relativeFilePath(file);
            files[name.startsWith(kRecovery) ? kRecovery : name] = ReadWholeFile(file);
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
void Refuses(const OldCatalog &old, const QString &text, bool hasUser = true)
{
    const QString title = hasUser ? u"Error during conversion"_s : u"Conversion"_s;
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
    const QString question =
        u"The selected catalog needs to be updated to the version 1.2 format.  Would you like to do that now?"_s;
    QCOMPARE(prompts.AllAsked()[0].text, question);
    QCOMPARE(prompts.LastAsked().text, text);
    QCOMPARE(prompts.LastAsked().icon, hasUser ? Icon::Critical : Icon::Information);
    QCOMPARE(old.Files(), before);
}

/// A catalog of these listings and a user file of those make a catalog of the merged ones.
void Merges(const QByteArray &listings, const QByteArray &users, const QByteArray &merged)
{
    const OldCatalog old("<Catalog>" + listings + "</Catalog>", "<User>" + users + "</User>");
    QVERIFY(old.Convert());
    QCOMPARE(RawXml(*LoadXml(old.path)->document), "<Catalog>" + merged + "</Catalog>");
}

} // namespace

class TestConvert : public QObject
{
    Q_OBJECT

private slots:
    void usersValuesWin()
    {
        const QByteArray all = "<Item ID='1' WrongDate='?' Type='?' Format='?' Year='?' Month='?' Day='?' Venue='?' "
                               "Show='?' Length='?' Source='?' Grade='?' Seeder='?' Stored='?' DateAdded='?'/>";
        const auto allOf = [all](const char *value) { return QByteArray(all).replace("?", value); };
        Merges(allOf("a"), allOf("b").replace("DateAdded", "Date").replace("Format", "FileType"), allOf("b"));
        // Empty ones too; users' items of no listing are dropped.
        Merges(
            "<Item ID='1' Venue='v' Stored='b'><Notes>b</Notes></Item><Item ID='3' Venue='' a='b'/>",
            "<Item ID='1' Venue='' Stored='' x='y'><Notes/></Item><Item ID='2'/><Item ID='U3'/>",
            "<Item ID='1'/><Item ID='3' a='b'/>");
        // New attributes come last, in an order of their own; children are replaced and moved to the end.
        Merges(
            "<Item ID='1' Grade='g'/>",
            "<Item ID='1' Date='d' Show='s' Stored='t' Day='6' FileType='1' Type='T' Seeder='e' WrongDate='1'/>",
            "<Item ID='1' Grade='g' WrongDate='1' Type='T' Format='FLAC' Seeder='e' Stored='t' DateAdded='d' Day='6' "
            "Show='s'/>");
        Merges(
            "<Item ID='1'><SetList>a</SetList><Notes>b</Notes><Other>o</Other></Item>",
            "<Item ID='1'><Other>x</Other><Comment>C</Comment><SetList>A</SetList></Item>",
            "<Item ID='1'><Notes>b</Notes><Other>o</Other><SetList>A</SetList><Comment>C</Comment></Item>");
    }

    void idsAreLookedUpAsWholeNumbers()
    {
        Merges(
            "<Item ID='007'/><Item ID='2.5'/><Item ID='3.5x'/><Item ID=' 9'/><Item/>",
            "<Item ID='7' Day='a'/><Item ID='2' Day='b'/><Item ID='4' Day='c'/><Item ID='9' Day='d'/>"
            "<Item ID='0' Day='e'/>",
            "<Item ID='007' Day='a'/><Item ID='2.5' Day='b'/><Item ID='3.5x' Day='c'/><Item ID=' 9' Day='d'/>"
            "<Item Day='e'/>");
        // The user's IDs are compared as they are. Of two listings with one ID, the first gets the children.
        Merges(
            "<Item ID='7'/><Item ID='7'/>",
            "<Item ID='07' Day='x'/><Item Day='x'/><Item ID='7' Day='y'><Notes>n</Notes></Item><Item ID='7' Day='x'/>",
            "<Item ID='7' Day='y'><Notes>n</Notes></Item><Item ID='7' Day='y'/>");
    }

    void usersOwnListingsFollowTheHighestId()
    {
        Merges(
            "<Type>R</Type><!--c--><Item ID='4'/><Item ID='3'/>",
            "<Item ID='u2' FileType='DM' Date='d'><Notes>n</Notes></Item><Type>S</Type><!--d--><Item ID='1u' Day=''/>",
            "<Type>R</Type><!--c--><Item ID='4'/><Item ID='3'/>"
            "<Item ID='5' FileType='1' Date='d' Format='FLAC'><Notes>n</Notes></Item><Item ID='6'/>");
        Merges("<Item ID='-5'/>", "<Item ID='-5'/><Item ID='u'/>", "<Item ID='-5'/><Item ID='1'/>");
    }

    void formats()
    {
        const std::vector<std::pair<QByteArray, QByteArray>> formats = {
            {"1", "FLAC"},   {"2", "MP3"},   {"3", "SHN"},       {"4", "CD"},         {"5", "LP"},   {"6", "Tape"},
            {"7", "VHS"},    {"8", "DVD"},   {"9", "MPEG"},      {"10", "Quicktime"}, {"11", "11"},  {"12", "12"},
            {"0", ""},       {"", ""},       {"00", "00"},       {"0.0", "0.0"},      {"-1", "-1"},  {"1.5", "1.5"},
            {"1.0", "FLAC"}, {" 02", "MP3"}, {"3 discs", "SHN"}, {"FLAC", "FLAC"},    {"D", "FLAC"}, {"DM", "FLAC"},
            {"MD", "FLAC"},  {"M", "MP3"},   {"MP3", "MP3"},     {"CDR", "FLAC"},     {"d", "d"},    {"m", "m"}};
        QByteArray users;
        QByteArray expected;
        for (const auto &[code, format] : formats) {
            users += "<Item ID='u' FileType='" + code + "'/>";
            expected += format + '|';
        }
        const OldCatalog old("<Catalog/>", "<User>" + users + "</User>");
        QVERIFY(old.Convert());
        QByteArray converted;
        const auto file = LoadXml(old.path);
        for (const pugi::xml_node item : file->document->document_element())
            converted += item.attribute("Format").value() + "|"_ba;
        QCOMPARE(converted, expected);
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
        const QString notRead = u"Error reading catalog file."_s;
        const QString notCatalog = u"File does not appear to be a valid catalog file."_s;
        const QString backup = u"This catalog is a backup of an earlier conversion.  "
                               u"Please copy it and its user file to another folder first."_s;
        Refuses(OldCatalog("<Catalog><Item></Catalog>"), notRead);
        Refuses(OldCatalog(""), notRead);
        Refuses(OldCatalog("<catalog/>"), notCatalog);
        Refuses(OldCatalog("<Catalog xmlns='urn:x'/>"), notCatalog);
        Refuses(OldCatalog(kOldCatalog, "<User>"), u"Error reading user file."_s);
        Refuses(OldCatalog(kOldCatalog, ""), u"Error reading user file."_s);
        Refuses(OldCatalog(kOldCatalog, kOldCatalog), u"File does not appear to be a valid user catalog file."_s);
        Refuses(OldCatalog(kOldCatalog, kOldUser, kCatalogBackup), backup);
        Refuses(OldCatalog(), u"File is already compatible."_s, false);
    }

    void failures()
    {
        // A catalog, what is in the way, the report.
        const std::vector<std::tuple<QByteArray, QString, QString>> cases = {
            {"<Catalog><Item ID='2147483647'/></Catalog>", u"x"_s, u"Overflow"_s},
            {"<Catalog><Item ID='2147483648'/></Catalog>", u"x"_s, u"Overflow"_s},
            {kOldCatalog, u"Conversion Backup"_s, u"Cannot make the folder"_s},
            {kOldCatalog, kCatalogBackup + u"/x"_s, u"Shows.xml"_s},
            {kOldCatalog, kUserBackup + u"/x"_s, u"Shows User.xml"_s},
            {kOldCatalog, kMerged + u"/x"_s, u"Shows.xml.converted"_s}};
        for (const auto &[catalog, inTheWay, reported] : cases) {
            const OldCatalog old(catalog);
            old.Write(inTheWay, "x");
            const FailureRecorder failures;
            QVERIFY(!old.Convert());
            QCOMPARE(failures.Names(), {u"modConvertTo12.ConvertFileTo12"_s});
            QVERIFY2(failures.reports[0].description.contains(reported), qPrintable(reported));
            QCOMPARE(old.Read(kCatalog), catalog);
            QCOMPARE(old.Read(kUser), kOldUser);
            QVERIFY(!QFileInfo(old.Path(kMerged)).isFile());
        }
    }

    void takenUpAfterItWasKilled()
    {
        for (int last = 0; last <= static_cast<int>(ConversionStep::MergedFileRenamed); ++last) {
            const OldCatalog old;
            const QString step = QString::number(last);
            const QStringList arguments = {u"--convert-until"_s, old.Path({}), step};
            QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), arguments), kKilled);
            Contents left = old.Files();
            QVERIFY2(
                left[kCatalog] == kOldCatalog || left[kCatalog] == kConverted ||
                    (left[kCatalogBackup] == kOldCatalog && left[kUserBackup] == kOldUser),
                qPrintable(step));

            FinishInterruptedConversion(old.path);
            const bool asksAgain = QFileInfo::exists(UserFilePath(old.path));
            QVERIFY2(asksAgain == (last < static_cast<int>(ConversionStep::CatalogDeleted)), qPrintable(step));
            Contents expected = kAfterwards;
            if (asksAgain)
                old.Write(kMerged, expected[kRecovery] = "another");
            QVERIFY(!asksAgain || old.Convert());
            QCOMPARE(old.Files(), expected);
        }
    }

    void finishesOnlyWhatIsBackedUp()
    {
        // What is there beside the merged file, with "=" and contents.
        const QStringList backups = {kCatalogBackup, kUserBackup};
        const std::vector<std::pair<QStringList, bool>> rows = {
            {backups, true},
            {backups + QStringList(kUser), true},
            {backups + QStringList(kUser + u"=another"_s), false},
            {backups + QStringList(kCatalog), false},
            {{kUser, kUserBackup}, false},
            {{kUser, kCatalogBackup}, false},
            {{}, false}};
        for (const auto &[present, finishes] : rows) {
            const OldCatalog old({}, {});
            old.Write(kMerged, "merged");
            for (const QString &file : present)
                old.Write(file.section(u'=', 0, 0), file.section(u'=', 1).toUtf8());
            const Contents finished = {{kCatalog, "merged"}, {kCatalogBackup, ""}, {kUserBackup, ""}};
            const Contents expected = finishes ? finished : old.Files();
            FinishInterruptedConversions(old.Path(u"catalogs"_s));
            QCOMPARE(old.Files(), expected);
        }
    }

    void longestName()
    {
        const QString name = u"catalogs/"_s + QString(246, u'x') + u".xml"_s;
        const OldCatalog old(kOldCatalog, kOldUser, name);
        QVERIFY(old.Convert());
        QCOMPARE(old.Read(name), kConverted);
        const QString merged = ConversionFiles(old.path, {}).merged;
        QVERIFY(QFile::rename(old.path, merged));
        FinishInterruptedConversions(old.Path(u"catalogs"_s));
        QCOMPARE(old.Read(name), kConverted);
    }

    void sample()
    {
        const QString path = QStringLiteral(DISCBOOK_SAMPLES "/two-file/Shows.xml");
        const OldCatalog old(ReadWholeFile(path), ReadWholeFile(UserFilePath(path)));
        QCOMPARE(old.Convert() ? ReadWholeFile(old.path).count("<Item ") : 0, 424 + 7);
    }
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
