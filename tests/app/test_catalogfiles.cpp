#include "commandline.h"
#include "filecopy.h"
#include "filesizelimit.h"
#include "journalformat.h"
#include "program.h"
#include "recentcatalogs.h"

#include <QScopedValueRollback>
#ifdef Q_OS_LINUX
#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

using Answer = UserPrompts::Answer;

namespace {

constexpr auto kLive = "<Catalog><Item ID=\"1\" Type=\"Album\" Venue=\"x\"/></Catalog>";
constexpr auto kLiveTitle = "Discbook: Live (Showing 1 Items)"_L1;
constexpr QFile::Permissions kOwner = QFile::ReadOwner | QFile::WriteOwner;
constexpr auto kTheirs = "<Catalog><Type>theirs</Type></Catalog>";
constexpr auto kSave = "Save Confirmation"_L1;
constexpr auto kRecovery = "Recovery"_L1;
constexpr auto kRestore = "Unsaved changes to this catalog were found.  Restore them?"_L1;

/// The recent catalogs as they are kept in the settings.
QByteArray Recent(const QStringList &paths)
{
    QByteArray lines = "[MRU]\r\n";
    for (int i = 0; i < paths.size(); ++i)
        lines += QByteArray::number(i) + '=' + paths[i].toUtf8() + "\r\n";
    return lines;
}

/// What lies in a folder of copies, in the order of the names.
QByteArrayList Copies(const Program &program, const QString &folder)
{
    QByteArrayList copies;
    for (const QString &name : FilesInFolder(program.folder.Path(folder), u"*.xml"_s))
        copies += program.folder.Read(InFolder(folder, name));
    return copies;
}

bool g_keepsModes = true;
bool g_hasLocks = true;
int g_flushes = 0;

QStringList Journals(const Program &program)
{
    return QDir(program.folder.Path(u"Recovery"_s)).entryList({u"*.journal"_s}, QDir::Files, QDir::Time);
}

/// Ends as the program does when it dies with an unsaved edit: the place of the listing is "yx".
void Die(Program &program)
{
    program.Edit();
    QCOMPARE(Journals(program).size(), 1);
    program.window.reset();
}

/// Drops a file on a box that would take its name for text.
void Drop(const Program &program, const QString &path)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path), QUrl::fromLocalFile(path)});
    QDragEnterEvent several({}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&program.Field("txtVenue"), &several);
    QVERIFY(!several.isAccepted());
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&program.Field("txtVenue"), &enter);
    QDropEvent drop({}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&program.Field("txtVenue"), &drop);
    QCOMPARE(drop.dropAction(), Qt::CopyAction);
    QCoreApplication::processEvents();
}

} // namespace

#ifdef Q_OS_LINUX
// The program's own, as on a file system without modes.
extern "C" int fsync(int handle)
{
    ++g_flushes;
    return static_cast<int>(syscall(SYS_fsync, handle));
}

extern "C" int flock(int handle, int operation) noexcept
{
    errno = ENOLCK;
    return g_hasLocks ? static_cast<int>(syscall(SYS_flock, handle, operation)) : -1;
}

extern "C" int fchmod(int handle, mode_t mode) noexcept
{
    return g_keepsModes ? static_cast<int>(syscall(SYS_fchmod, handle, mode)) : -1;
}
#endif

class TestCatalogFiles : public QObject
{
    Q_OBJECT

private slots:
    void aFileThatDoesNotOpenLeavesTheListAndTheEarlierCatalogComesBack()
    {
        const auto notACatalog = u"This file does not appear to be a valid catalog file.  Please try another file."_s;
        for (const auto &[contents, title, text] :
             {std::tuple("<Catalog>", u"Discbook"_s, u"Error loading concert data!"_s),
              {"<catalog/>", u"Invalid file"_s, notACatalog}}) {
            Program program;
            program.folder.Write(u"Bad.xml"_s, contents);
            const QString live = program.folder.Write(u"Live.xml"_s, kLive);
            program.WriteSettings(Recent({program.folder.Path(u"./Bad.xml"_s), program.folder.Path(u"Bad.xml"_s)}));
            program.Start({u"Live.xml"_s});
            program.Edit();
            program.prompts.ExpectMessage(kSave, Answer::No);
            program.prompts.ExpectMessage(title);
            program.Choose("mnuFileMRU1");
            QCOMPARE(program.prompts.LastAsked().text, text);
            QCOMPARE(program.window->windowTitle(), kLiveTitle);
            QCOMPARE(program.Settings(), Recent({live}));
            QVERIFY(program.Tree()->isEnabled() && !program.Item("mnuFileSave")->isEnabled());
        }
    }

#ifdef Q_OS_LINUX
    void whatASaveCannotKeepIsSaidOnce()
    {
        Program program;
        const QScopedValueRollback<bool> lost(g_keepsModes, false);
        QFile::setPermissions(program.folder.Write(u"Live.xml"_s, kLive), kOwner | QFile::ReadOther);
        program.folder.Write(u"Live User.xml"_s, "<User/>");
        program.prompts.ExpectMessage(u"Confirm conversion"_s, Answer::Yes);
        program.prompts.ExpectMessage(u"Save"_s);
        program.Start({u"Live.xml"_s});
        for (int i = 0; i < 2; ++i) {
            QFile::setPermissions(program.folder.Path(u"Live.xml"_s), kOwner | QFile::ReadOther);
            program.Edit();
            program.Choose("mnuFileSave");
            QVERIFY(!program.workspace->document.IsModified());
        }
        QVERIFY(program.prompts.LastAsked().text.startsWith(u"Live.xml was saved, "_s));
        const QString other = program.folder.Write(u"Other.xml"_s, kTheirs);
        QFile::setPermissions(other, kOwner | QFile::ReadOther);
        program.prompts.ExpectSaveFile(u"New Catalog"_s, other);
        program.prompts.ExpectMessage(u"Save"_s);
        program.Choose("mnuFileNewCatalog");
    }
#endif

    void theOpenCatalogIsNotTriedForEver()
    {
        Program program(kLive);
        QVERIFY(QFile::remove(program.folder.Path(u"Live.xml"_s)));
        program.prompts.ExpectMessage(u"Discbook"_s);
        program.Choose("mnuFileMRU0");
        QCOMPARE(program.window->windowTitle(), u"Discbook"_s);
        QVERIFY(program.workspace->document.Path().isEmpty() && !program.workspace->document.Catalog());
        QVERIFY(!program.Item("mnuFileDashMRU")->isVisible());
    }

    void interruptedConversionIsTakenToItsEnd()
    {
        Program program;
        program.folder.Write(u"sub/Live.xml.converted"_s, kLive);
        program.folder.Write(u"Conversion Backup/Live.xml"_s, "<Catalog/>");
        program.folder.Write(u"Conversion Backup/Live User.xml"_s, "<User/>");
        program.folder.Write(u"sub/Live User.xml"_s, "<User/>");
        program.Start({u"sub/Live.xml"_s});
        QCOMPARE(program.window->windowTitle(), kLiveTitle);
    }

    void declinedConversionLeavesAnEmptyDocument()
    {
        Program program(kLive);
        const QString live = program.folder.Path(u"Live.xml"_s);
        const QString old = program.folder.Write(u"Old.xml"_s, kLive);
        program.folder.Write(u"Old User.xml"_s, "<User/>");
        program.prompts.ExpectOpenFile(u"Open Catalog"_s, old);
        program.prompts.ExpectMessage(u"Confirm conversion"_s, Answer::No);
        program.Choose("mnuFileOpenCatalog");
        QCOMPARE(program.window->windowTitle(), u"Discbook"_s);
        QVERIFY(!program.Tree()->isEnabled());
        QCOMPARE(program.workspace->document.Path(), live);
        QVERIFY(!program.workspace->document.Catalog());
        QCOMPARE(program.Settings(), Recent({live}));
        program.prompts.ExpectSaveFile(u"New Catalog"_s, old);
        program.prompts.ExpectMessage(u"Confirm conversion"_s, Answer::No);
        program.Choose("mnuFileNewCatalog");
        QCOMPARE(program.Settings(), Recent({old, live}));
    }

    /// Asked by the commands that leave the catalog.
    void saveQuestion()
    {
        for (const Answer answer : {Answer::Yes, Answer::No, Answer::Cancel}) {
            for (const QByteArray command :
                 {"mnuFileOpenCatalog", "mnuFileNewCatalog", "mnuFileMRU1", "mnuFileExit", "drop"}) {
                Program program;
                const QString live = program.folder.Write(u"Live.xml"_s, kLive);
                const QString other = program.folder.Write(u"Other.xml"_s, kLive);
                program.WriteSettings(Recent({other}));
                program.Start({u"Live.xml"_s});
                program.Edit();
                program.prompts.ExpectMessage(kSave, answer);
                const bool goesOn = answer != Answer::Cancel;
                if (goesOn && command == "mnuFileOpenCatalog")
                    program.prompts.ExpectOpenFile(u"Open Catalog"_s, other);
                if (goesOn && command == "mnuFileNewCatalog")
                    program.prompts.ExpectSaveFile(u"New Catalog"_s, other);
                if (command == "drop")
                    Drop(program, other);
                else
                    program.Choose(command);
                program.prompts.VerifyDone();
                const bool closed = goesOn && command == "mnuFileExit";
                QCOMPARE(program.window->isVisible(), !closed);
                QCOMPARE(program.Settings().contains("[Main]"), closed);
                QCOMPARE(program.workspace->document.Path(), goesOn && !closed ? other : live);
                QCOMPARE(program.folder.Read(u"Live.xml"_s).contains("Venue=\"yx\""), answer == Answer::Yes);
                // Some take No as the end of the edits; elsewhere the flag outlives the catalog.
                const bool ends = command == "mnuFileMRU1" || command == "drop";
                const bool modified = !goesOn || (answer == Answer::No && !ends);
                QCOMPARE(program.Item("mnuFileSave")->isEnabled(), modified);
            }
        }
    }

    void whatADeathLeftIsOfferedUntilItIsSavedOrDeclined()
    {
        Program program(kLive);
        Die(program);
        for (const Answer answer : {Answer::Yes, Answer::Cancel, Answer::Yes, Answer::No}) {
            program.prompts.ExpectMessage(kRecovery, answer);
            program.Start({u"Live.xml"_s});
            const bool takes = answer == Answer::Yes;
            QCOMPARE(program.prompts.LastAsked().text, kRestore);
            QCOMPARE(program.Item("mnuFileSave")->isEnabled(), takes);
            program.SelectListing();
            QCOMPARE(program.Tree()->currentIndex().data().toString(), takes ? u" - yx"_s : u" - x"_s);
            QCOMPARE(Journals(program).size(), answer == Answer::No ? 0 : 1);
        }
        program.Edit();
        program.Choose("mnuFileSave");
        QCOMPARE(Journals(program).size(), 0);
        program.Start({u"Live.xml"_s});
    }

#ifdef Q_OS_LINUX
    void editsAreOnTheDiskWhenTheirFieldOrListingIsLeft()
    {
        Program program(kLive);
        const auto flushes = [](auto &&work) {
            g_flushes = 0;
            work();
            return g_flushes > 0;
        };
        program.Edit();
        QVERIFY(!flushes([&] { QTest::keyClicks(&program.Field("txtVenue"), u"y"_s); }));
        QVERIFY(flushes([&] { program.Enter("txtSource"); }));
        QVERIFY(!flushes([&] { program.Enter("trv"); }));
        program.SelectListing();
        QTest::keyClicks(&program.Field("txtVenue"), u"y"_s);
        QVERIFY(flushes([&] { program.Tree()->setCurrentIndex(program.Tree()->model()->index(0, 0)); }));
        QVERIFY(!flushes([&] { program.SelectListing(); }));
        QVERIFY(flushes([&] { program.Choose("mnuFileNewSource"); }));
        program.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::Yes);
        QVERIFY(flushes([&] { program.Choose("mnuEditDeleteListing"); }));
    }
#endif

#ifdef Q_OS_UNIX
    void theNewestIsOfferedFirstAndOneThatFailsHindersNoOther()
    {
        Program program(kLive);
        Die(program);
        const QString journal = u"Recovery/"_s + Journals(program)[0];
        const auto addNewer = [&](quint64 digest, const QByteArray &venue) {
            QTest::qSleep(20);
            const CatalogEdit edit{
                CatalogEdit::Kind::Listing, "1", 0, "<Item ID='1' Type='Album' Venue='" + venue + "'/>"};
            program.folder.Write(
                QString(journal).replace(u".journal"_s, QString::number(digest, 16) + u".journal"_s),
                JournalHead(CanonicalPath(program.folder.Path(u"Live.xml"_s)), digest) + JournalRecord(edit, {}));
        };
        addNewer(program.workspace->document.ContentDigest(), "newer");
        addNewer(1, QByteArray(9000, 'x'));
        const FileSizeLimit full(4096);
        program.prompts.ExpectMessage(kRecovery, Answer::Yes);
        program.Start({u"Live.xml"_s});
        QCOMPARE(program.failures.Names(), {u"frmMain.KeepApart"_s});
        program.SelectListing();
        QCOMPARE(program.Tree()->currentIndex().data().toString(), u" - newer"_s);
        QCOMPARE(Journals(program).size(), 3);
    }
#endif

    void editsOfAnotherContentAreKeptApart()
    {
        Program program(kLive);
        Die(program);
        const QString journal = u"Recovery/"_s + Journals(program)[0];
        const QString catalog = CanonicalPath(program.workspace->document.Path());
        const auto listing = [](quint32 place) {
            return JournalRecord({CatalogEdit::Kind::Listing, "5", place, "<Item ID='5'/>"}, {});
        };
        const QByteArray removal = JournalRecord({CatalogEdit::Kind::Removal, "5", 0, {}}, {});
        const QByteArray emptied = JournalRecord({CatalogEdit::Kind::Entries, "WebSource", 0, {}}, {});
        const QByteArray senseless = JournalRecord({CatalogEdit::Kind::Listing, "1", 0, "<Item"}, {});
        const QByteArray damage = QByteArray(12, '\0') + 'x';
        // The edits, and what is told: whether there is a catalog, a number of deletions, and a rest. The last are
        // those of the same content.
        const std::vector<std::pair<QByteArray, std::array<bool, 4>>> rows = {
            {listing(0), {true, false, false}},
            {emptied, {false, true, false}},
            {listing(1) + removal + listing(0) + "x", {true, true, true}},
            {senseless, {false, false, true}},
            {damage, {false, false, true}},
            {listing(0) + damage, {false, false, true, true}},
            {listing(0) + senseless, {false, false, true, true}}};
        for (const auto &[edits, told] : rows) {
            const QByteArray left = JournalHead(catalog, told[3] ? FileDigest(catalog).value() : 1) + edits;
            program.folder.Write(journal, left);
            if (told[3])
                program.prompts.ExpectMessage(kRecovery, Answer::Yes);
            program.prompts.ExpectMessage(kRecovery);
            program.Start({u"Live.xml"_s});
            QCOMPARE(program.Item("mnuFileSave")->isEnabled(), told[3]);
            QStringList lines = program.prompts.LastAsked().text.split(u"\r\n"_s).mid(1);
            if (told[0])
                QCOMPARE(ReadWholeFile(lines.takeFirst()).simplified(), "<Catalog> <Item ID=\"5\" /> </Catalog>");
            if (told[1])
                QCOMPARE(lines.takeFirst(), u"Deletions that were not done again: 1"_s);
            if (told[2])
                QCOMPARE(ReadWholeFile(lines.takeLast()), left);
            QCOMPARE(lines.size(), told[2] ? 1 : 0);
            QCOMPARE(Journals(program).size(), told[3] ? 1 : 0);
            if (told[3])
                program.Choose("mnuFileSave");
        }
        QCOMPARE(Copies(program, kRecovery).size(), 2);
    }

    void editsOfAnotherWindowAreItsOwn()
    {
        Program program(kLive);
        program.Edit();
        Workspace workspace(program.prompts);
        frmMain second(workspace, program.prompts, {.arguments = {u"Live.xml"_s}, .sizeLimits = true});
        second.Form_Load();
        QVERIFY(!workspace.document.IsModified());
        QCOMPARE(Journals(program).size(), 1);
        program.prompts.ExpectMessage(kSave, Answer::No);
        program.Choose("mnuFileExit");
        QCOMPARE(Journals(program).size(), 0);
    }

    void editsThatCannotBeKeptAreToldOfOnce()
    {
        Program program(kLive);
        program.folder.Write(u"Recovery"_s, "no folder");
        program.prompts.ExpectMessage(kRecovery);
        for (const char *field : {"txtVenue", "txtSource", "txtStoredIn"}) {
            program.SelectListing();
            Press(program.Enter(field), u"y"_s);
            QCoreApplication::processEvents();
        }
        QVERIFY(QFile::remove(program.folder.Path(u"Recovery"_s)));
#ifdef Q_OS_LINUX
        const QScopedValueRollback<bool> hasNone(g_hasLocks, false);
        program.Enter("trv");
        QCOMPARE(Journals(program).size(), 0);
        g_hasLocks = true;
#endif
        program.Enter("txtVenue");
        QCOMPARE(Journals(program).size(), 1);
    }

    void aSaveThatFailsEndsTheCommand()
    {
        Program program;
        program.folder.Write(u"gone/Live.xml"_s, kLive);
        program.Start({u"gone/Live.xml"_s});
        QVERIFY(QDir(program.folder.Path(u"gone"_s)).removeRecursively());
        program.Edit();
        program.prompts.ExpectMessage(kSave, Answer::Yes);
        program.Choose("mnuFileOpenCatalog");
        QCOMPARE(program.failures.Names(), QStringList(u"frmMain.mnuFileSave_Click"_s));
        QCOMPARE(program.window->windowTitle(), kLiveTitle);
        program.folder.Write(u"gone/Live.xml"_s, kLive);
        program.Choose("mnuFileSave");
        QCOMPARE(Copies(program, u"Backups"_s), {kLive});
    }

    void anotherProgramsChangeIsAskedAbout()
    {
        // What the other program has left, nothing when it took the file away, and the answer where it is asked about.
        const std::vector<std::pair<QByteArray, std::optional<Answer>>> rows = {
            {kTheirs, Answer::No}, {kTheirs, Answer::Yes}, {kLive, {}}, {{}, {}}};
        for (const auto &[left, answer] : rows) {
            for (const bool leaves : {false, true}) {
                Program program(kLive);
                program.Edit();
                const QString live = program.folder.Write(u"Live.xml"_s, kTheirs);
                program.folder.Write(u"Live.xml"_s, left);
                QVERIFY(!left.isEmpty() || QFile::remove(live));
                if (leaves)
                    program.prompts.ExpectMessage(kSave, Answer::Yes);
                if (answer)
                    program.prompts.ExpectMessage(kSave, *answer);
                if (answer == Answer::Yes)
                    program.prompts.ExpectMessage(u"Save"_s);
                program.Choose(leaves ? "mnuFileExit" : "mnuFileSave");
                program.prompts.VerifyDone();
                const bool saved = answer != Answer::No;
                const QByteArray now = program.folder.Read(u"Live.xml"_s);
                QVERIFY(saved ? now.contains("Venue=\"yx\"") : now == left);
                QCOMPARE(program.Item("mnuFileSave")->isEnabled(), !saved);
                QCOMPARE(program.window->isVisible(), !saved || !leaves);
                QCOMPARE(Copies(program, u"Backups"_s), QByteArrayList(left == kLive ? 1 : 0, kLive));
                QCOMPARE(Copies(program, u"Recovery"_s), QByteArrayList(answer == Answer::Yes ? 1 : 0, kTheirs));
                if (answer == Answer::Yes)
                    QVERIFY(program.prompts.LastAsked().text.contains(program.folder.Path(u"Recovery/Live "_s)));
                if (answer != Answer::No)
                    continue;
                const auto question = program.prompts.LastAsked();
                QCOMPARE(
                    question.text,
                    u"This catalog was changed by another program since it was opened.  Overwrite it?"_s);
                QCOMPARE(question.buttons, UserPrompts::Buttons::YesNoDefaultNo);
            }
        }
    }

    void aSecondChangeIsAskedAboutAgain()
    {
        Program program(kLive);
        program.Edit();
        program.folder.Write(u"Live.xml"_s, kTheirs);
        program.prompts.ExpectMessage(kSave, Answer::Yes);
        program.prompts.ExpectMessage(u"Save"_s);
        program.prompts.ExpectMessage(kSave, Answer::No);
        program.prompts.SetWhileAsked([&program](const ScriptedPrompts::Asked &asked) {
            if (asked.title == "Save"_L1)
                program.folder.Write(u"Live.xml"_s, "<Catalog/>");
        });
        program.Choose("mnuFileSave");
        QCOMPARE(program.folder.Read(u"Live.xml"_s), "<Catalog/>");
    }

    void backupsOfTheLastFiveRuns()
    {
        Program program;
        const auto saveTwice = [&program](const QString &path) {
            program.Start({path});
            for (int i = 0; i < 2; ++i) {
                program.Edit();
                program.Choose("mnuFileSave");
            }
        };
        const QString cutOff = program.folder.Write(u"Backups/Old.xml.discbook-saving-1"_s, {});
        QVERIFY(QFile::setPermissions(program.folder.Write(u"Live.xml"_s, kLive), kOwner));
        saveTwice(u"Live.xml"_s);
        QVERIFY(!QFileInfo::exists(cutOff));
        const QString backups = program.folder.Path(u"Backups"_s);
        const QString written = InFolder(backups, FilesInFolder(backups, u"*.xml"_s)[0]);
        QCOMPARE(QFile::permissions(written) & ~(QFile::ReadUser | QFile::WriteUser), kOwner);
        WriteFileAtomically(written, kLive + "\n"_ba);
        // The clock was a year ahead: what comes now is newer all the same.
        const QString thisYear = QString::number(QDate::currentDate().year());
        const QString nextYear = QString::number(QDate::currentDate().year() + 1);
        QVERIFY(QFile::rename(written, QString(written).replace(thisYear, nextYear)));
        program.folder.Write(u"sub/Live.xml"_s, kLive);
        saveTwice(u"sub/Live.xml"_s);
        for (int run = 0; run < 6; ++run)
            saveTwice(u"Live.xml"_s);
        QList<qsizetype> letters;
        for (const QByteArray &copy : Copies(program, u"Backups"_s))
            letters += copy.count('y') - 1;
        std::ranges::sort(letters);
        // The one that was written to, the other catalog's, and those of the last five runs.
        QCOMPARE(letters, QList<qsizetype>({0, 0, 4, 6, 8, 10, 12}));
    }

    void copiesThatCannotBeMade()
    {
        Program program;
        for (const QString &file : {u"Backups"_s, u"Recovery"_s})
            program.folder.Write(file, {});
        program.prompts.ExpectMessage(u"Backup"_s);
        program.prompts.SetWhileAsked([&program](const ScriptedPrompts::Asked &asked) {
            QVERIFY(asked.title == kSave || program.folder.Read(u"Live.xml"_s).contains("Venue=\"yx\""));
        });
        program.WriteSettings(Recent({program.folder.Write(u"Other.xml"_s, kLive)}));
        program.folder.Write(u"Live.xml"_s, kLive);
        program.Start({u"Live.xml"_s});
        for (const QString &name : {u"Live.xml"_s, u"Other.xml"_s}) {
            if (name != FileTitle(program.workspace->document.Path(), true))
                program.Choose("mnuFileMRU1");
            program.Edit();
            program.Choose("mnuFileSave");
            QVERIFY(program.folder.Read(name).contains("Venue=\"yx\""));
        }
        program.Edit();
        program.folder.Write(u"Other.xml"_s, kTheirs);
        program.prompts.ExpectMessage(kSave, Answer::Yes);
        program.Choose("mnuFileSave");
        QCOMPARE(program.failures.Names(), QStringList(u"frmMain.mnuFileSave_Click"_s));
        QCOMPARE(program.folder.Read(u"Other.xml"_s), kTheirs);
    }

    void newCatalogIsWrittenAndOpened()
    {
        Program program;
        program.Start();
        const QString path = program.folder.Write(u"New.xml"_s, kTheirs);
        program.prompts.ExpectSaveFile(u"New Catalog"_s, path);
        program.Choose("mnuFileNewCatalog");
        QCOMPARE(program.folder.Read(u"New.xml"_s).trimmed(), "<Catalog />");
        QCOMPARE(program.window->windowTitle(), u"Discbook: New"_s);
        QCOMPARE(program.Settings(), Recent({path}));
        const auto &request = program.prompts.AllAsked().back().request;
        QCOMPARE(request.filter, u"XML Files (*.xml)|*.xml|All files (*.*)|*.*"_s);
        QCOMPARE(request.extension, u"xml"_s);
        QCOMPARE(request.folder, ProgramFolder());
        program.workspace->document.MarkModified();
        program.Choose("mnuFileSave");
        QCOMPARE(Copies(program, u"Backups"_s), QByteArrayList({kTheirs}));
        program.prompts.ExpectSaveFile(u"New Catalog"_s, path);
        program.Choose("mnuFileNewCatalog");
        program.folder.Write(u"New.xml"_s, kTheirs);
        program.Choose("mnuFileMRU0");
        program.workspace->document.MarkModified();
        program.Choose("mnuFileSave");
        QCOMPARE(Copies(program, u"Backups"_s), QByteArrayList({kTheirs, "<Catalog />\n", kTheirs}));
        program.prompts.ExpectSaveFile(u"New Catalog"_s, program.folder.Path(u"no/such/folder.xml"_s));
        program.Choose("mnuFileNewCatalog");
        QCOMPARE(program.failures.Names(), QStringList(u"frmMain.mnuFileNewCatalog_Click"_s));
        QCOMPARE(program.workspace->document.Path(), path);
    }

    void recentListHasTheLastFourAndNoneTwice()
    {
        TestWorkspace workspace;
        workspace.settings.LoadINI(workspace.folder.Path(u"discbook.ini"_s));
        RecentCatalogs recent(workspace.settings);
        QStringList lists;
        for (const QChar path : u"abcaadeA"_s) {
            recent.AddToMRU(path);
            lists += recent.Paths().join(QString());
        }
        recent.Load();
        lists += recent.Paths().join(QString());
        QCOMPARE(lists.join(u' '), u"a ba cba acb acb dacb edac Aeda Aeda"_s);
    }

    void commandLine()
    {
        const TestProgramFolder folder;
        const QString shows = folder.Write(u"My Shows.xml"_s, "x");
        QCOMPARE(CatalogFromCommandLine({}), QString());
        QCOMPARE(CatalogFromCommandLine({u"\"My"_s, u"Shows.xml\""_s}), shows);
        QCOMPARE(CatalogFromCommandLine({u"none.xml"_s}), folder.Path(u"none.xml"_s));
        QCOMPARE(CatalogFromCommandLine({folder.Path(u"x y.xml"_s)}), folder.Path(u"x y.xml"_s));
        QCOMPARE(AfterProgramName(u"\"C:\\a b\\Discbook.exe\"  \"C:\\x  y.xml\" "_s), u"\"C:\\x  y.xml\""_s);
        QCOMPARE(AfterProgramName(u"Discbook.exe x y.xml"_s) + AfterProgramName(u"Discbook"_s), u"x y.xml"_s);
#ifndef Q_OS_WIN
        // A file in the working folder is found when the program's folder has none of that name.
        const QString earlier = QDir::currentPath();
        const QTemporaryDir working;
        QDir::setCurrent(working.path());
        WriteFileAtomically(u"12:30.xml"_s, "x");
        QCOMPARE(CatalogFromCommandLine({u"12:30.xml"_s}), QDir::currentPath() + u"/12:30.xml"_s);
        QDir::setCurrent(earlier);
#endif
    }
};

QTEST_MAIN(TestCatalogFiles)
#include "test_catalogfiles.moc"
