#include "catalogfiles.h"
#include "commandline.h"
#include "failurerecorder.h"
#include "recentcatalogs.h"
#include "testworkspace.h"
#include "treepane.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Answer = UserPrompts::Answer;

namespace {

constexpr auto kError = "Discbook"_L1;
constexpr auto kInvalid = "Invalid file"_L1;
constexpr auto kSave = "Save Confirmation"_L1;

struct Fixture : TestWorkspace
{
    QWidget window;
    TreePane pane{tree, window};
    RecentCatalogs recent{settings};
    CatalogFiles files{document, pane, recent, prompts};
    QStringList signalled;
    FailureRecorder failures;

    Fixture()
    {
        settings.LoadINI(folder.Path(u"discbook.ini"_s));
        QObject::connect(&files, &CatalogFiles::opening, &files, [this] { signalled += u"opening"_s; });
        QObject::connect(&files, &CatalogFiles::opened, &files, [this](bool isOpen) {
            signalled += isOpen ? u"open"_s : u"closed"_s;
        });
    }

    QString Catalog(const QString &name) const
    {
        return folder.Write(name, "<Catalog><Item ID=\"1\" Venue=\"" + name.toUtf8() + "\" /></Catalog>");
    }
    QString Signalled() { return std::exchange(signalled, {}).join(u' '); }
    QString Venue() const { return QString::fromUtf8(document.Catalog().child("Item").attribute("Venue").value()); }
};

constexpr auto kOpened = "opening open"_L1;

} // namespace

class TestCatalogFiles : public QObject
{
    Q_OBJECT

private slots:
    void opening()
    {
        Fixture f;
        const QString path = f.Catalog(u"Live.xml"_s);
        const QString oddPath = f.folder.Path(u"./gone/..//Live.xml"_s);
        f.recent.AddToMRU(oddPath);
        f.files.OpenCatalog(oddPath);
        QCOMPARE(f.Signalled(), kOpened);
        QCOMPARE(f.document.Path(), path);
        QCOMPARE(f.tree.ShownCount(), 1);
        QCOMPARE(f.pane.View().currentIndex(), f.tree.Model().index(0, 0));
        QCOMPARE(f.recent.Paths(), QStringList(path));
        QCOMPARE(f.folder.Read(u"discbook.ini"_s), "[MRU]\r\n0=" + path.toUtf8() + "\r\n");
    }

    void aFileThatDoesNotOpenLeavesTheListAndTheEarlierCatalogComesBack()
    {
        const auto notACatalog = u"This file does not appear to be a valid catalog file.  Please try another file."_s;
        for (const auto &[contents, title, text] :
             {std::tuple("<Catalog>", kError, u"Error loading concert data!"_s),
              {"<catalog/>", kInvalid, notACatalog}}) {
            Fixture f;
            const QString bad = f.Catalog(u"Bad.xml"_s);
            const QString good = f.Catalog(u"Good.xml"_s);
            f.files.OpenCatalog(bad);
            f.files.OpenCatalog(good);
            f.folder.Write(u"Bad.xml"_s, contents);
            f.document.MarkModified();
            f.Signalled();

            f.prompts.ExpectMessage(title);
            f.recent.AddToMRU(f.folder.Path(u"./Bad.xml"_s));
            f.files.OpenCatalog(f.folder.Path(u"./Bad.xml"_s));
            QCOMPARE(f.prompts.LastAsked().text, text);
            QCOMPARE(f.Signalled(), u"opening closed "_s + kOpened);
            QCOMPARE(f.recent.Paths(), QStringList(good));
            QCOMPARE(f.Venue(), u"Good.xml"_s);
            QVERIFY(!f.document.IsModified());
        }
    }

    void interruptedConversionIsTakenToItsEnd()
    {
        Fixture f;
        f.Catalog(u"Shows.xml.converted"_s);
        f.Catalog(u"Conversion Backup/Shows.xml"_s);
        f.folder.Write(u"Conversion Backup/Shows User.xml"_s, "<User/>");
        f.folder.Write(u"Shows User.xml"_s, "<User/>");
        f.files.OpenCatalog(f.folder.Path(u"Shows.xml"_s));
        QCOMPARE(f.Signalled(), kOpened);
        QCOMPARE(f.Venue(), u"Shows.xml.converted"_s);
    }

    void declinedConversionLeavesAnEmptyDocument()
    {
        Fixture f;
        const QString earlier = f.Catalog(u"New.xml"_s);
        const QString old = f.Catalog(u"Shows.xml"_s);
        f.folder.Write(u"Shows User.xml"_s, "<User/>");
        f.files.OpenCatalog(earlier);
        f.document.MarkModified();
        f.Signalled();
        f.prompts.ExpectMessage(u"Confirm conversion"_s, Answer::No);
        f.files.OpenCatalog(old);
        QCOMPARE(f.Signalled(), u"opening closed"_s);
        QCOMPARE(f.document.Path(), earlier);
        QVERIFY(!f.document.IsModified() && !f.document.Catalog());
        QCOMPARE(f.recent.Paths(), QStringList(earlier));
        f.prompts.ExpectSaveFile(u"New Catalog"_s, old);
        f.prompts.ExpectMessage(u"Confirm conversion"_s, Answer::No);
        f.files.mnuFileNewCatalog_Click();
        QCOMPARE(f.recent.Paths(), QStringList({old, earlier}));
    }

    /// In the commands that leave the catalog.
    void saveQuestion()
    {
        for (const auto &command : {u"open"_s, u"new"_s, u"recent"_s}) {
            for (const Answer answer : {Answer::Yes, Answer::No, Answer::Cancel}) {
                Fixture f;
                const QString first = f.Catalog(u"First.xml"_s);
                const QString second = f.Catalog(u"Second.xml"_s);
                f.files.OpenCatalog(first);
                f.document.Catalog().child("Item").attribute("Venue") = "edited";
                f.document.MarkModified();

                f.prompts.ExpectMessage(kSave, answer);
                const bool goesOn = answer != Answer::Cancel;
                if (goesOn && command == "open"_L1)
                    f.prompts.ExpectOpenFile(u"Open Catalog"_s, second);
                else if (goesOn && command == "new"_L1)
                    f.prompts.ExpectSaveFile(u"New Catalog"_s, second);
                if (command == "open"_L1)
                    f.files.mnuFileOpenCatalog_Click();
                else if (command == "new"_L1)
                    f.files.mnuFileNewCatalog_Click();
                else
                    f.files.mnuFileMRU_Click(second);
                f.prompts.VerifyDone();
                QCOMPARE(f.document.Path(), goesOn ? second : first);
                QCOMPARE(f.folder.Read(u"First.xml"_s).contains("edited"), answer == Answer::Yes);
                // Only the recent list takes No as the end of the edits; elsewhere the flag outlives the catalog.
                QCOMPARE(f.document.IsModified(), !goesOn || (answer == Answer::No && command != "recent"_L1));
            }
        }
    }

    void aSaveThatFailsEndsTheCommand()
    {
        Fixture f;
        QDir().mkpath(f.folder.Path(u"gone"_s));
        const QString path = f.Catalog(u"gone/Live.xml"_s);
        f.files.OpenCatalog(path);
        QVERIFY(QDir(f.folder.Path(u"gone"_s)).removeRecursively());
        f.document.MarkModified();

        f.prompts.ExpectMessage(kSave, Answer::Yes);
        f.files.mnuFileOpenCatalog_Click();
        QCOMPARE(f.failures.Names(), QStringList(u"frmMain.mnuFileSave_Click"_s));
        QCOMPARE(f.document.Path(), path);
        QVERIFY(f.document.IsModified());
        QVERIFY(f.document.Catalog());
    }

    void newCatalogThatCannotBeWrittenLeavesTheOpenOne()
    {
        Fixture f;
        const QString path = f.Catalog(u"Live.xml"_s);
        f.files.OpenCatalog(path);
        f.Signalled();
        f.prompts.ExpectSaveFile(u"New Catalog"_s, f.folder.Path(u"no/such/folder.xml"_s));
        f.files.mnuFileNewCatalog_Click();
        QCOMPARE(f.failures.Names(), QStringList(u"frmMain.mnuFileNewCatalog_Click"_s));
        QCOMPARE(f.Venue(), u"Live.xml"_s);
        QVERIFY(f.signalled.isEmpty());
    }

    void newCatalogIsWrittenAndOpened()
    {
        Fixture f;
        const QString path = f.folder.Path(u"New.xml"_s);
        f.prompts.ExpectSaveFile(u"New Catalog"_s, path);
        f.files.mnuFileNewCatalog_Click();
        QCOMPARE(f.folder.Read(u"New.xml"_s).trimmed(), QByteArray("<Catalog />"));
        QCOMPARE(f.Signalled(), kOpened);
        QCOMPARE(f.recent.Paths(), QStringList(path));
        const auto &request = f.prompts.LastAsked().request;
        QCOMPARE(request.filter, u"XML Files (*.xml)|*.xml|All files (*.*)|*.*"_s);
        QCOMPARE(request.extension, u"xml"_s);
        QCOMPARE(request.folder, ProgramFolder());
    }

    void recentListHasTheLastFourAndNoneTwice()
    {
        for (const auto &[opened, list] :
             {std::pair(u"a b c d e"_s, u"e d c b"_s),
              {u"a b c a"_s, u"a c b"_s},
              {u"a b b"_s, u"b a"_s},
              {u"a A"_s, u"A a"_s}}) {
            Fixture f;
            for (const QString &path : opened.split(u' '))
                f.recent.AddToMRU(path);
            QCOMPARE(f.recent.Paths().join(u' '), list);
            RecentCatalogs read(f.settings);
            read.Load();
            QCOMPARE(read.Paths().join(u' '), list);
        }
    }

    void commandLine()
    {
        const TestProgramFolder folder;
        const QString shows = folder.Write(u"My Shows.xml"_s, "x");
        QCOMPARE(CatalogFromCommandLine({}), QString());
        QCOMPARE(CatalogFromCommandLine({u"\"My"_s, u"Shows.xml\""_s}), shows);
        QCOMPARE(CatalogFromCommandLine({u"none.xml"_s}), folder.Path(u"none.xml"_s));
#ifdef Q_OS_WIN
        QCOMPARE(CatalogFromCommandLine({u"C:\\x y.xml"_s}), u"C:\\x y.xml"_s);
#else
        QCOMPARE(CatalogFromCommandLine({u"/tmp/x.xml"_s}), u"/tmp/x.xml"_s);
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
