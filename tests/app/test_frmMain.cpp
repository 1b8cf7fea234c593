#include "program.h"
#include "table.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

using namespace Qt::StringLiterals;
using Answer = UserPrompts::Answer;

namespace {

constexpr auto kLive = "<Catalog><Item ID='1' Type='Concert' Year='1994' Venue='x' Format='CD'/>"
                       "<Item ID='2' Type='Album' Year='1990' Venue='a'/>"
                       "<WebSource>https://example.org/?a=1&amp;b=2</WebSource></Catalog>";

} // namespace

class TestFrmMain : public QObject
{
    Q_OBJECT

private slots:
    void startsWithoutACatalog()
    {
        Program program;
        program.Start();
        QCOMPARE(program.window->windowTitle(), u"Discbook"_s);
        QVERIFY(!program.Tree()->isEnabled());
        for (const char *menu : {"mnuEdit", "mnuOptions", "mnuView", "mnuWebSources"})
            QVERIFY2(!program.window->findChild<QMenu *>(QLatin1StringView(menu))->isEnabled(), menu);
        QVERIFY(!program.Item("mnuFileSave")->isEnabled());
        QVERIFY(!program.Item("mnuFileDashMRU")->isVisible());
        QVERIFY(program.failures.reports.empty());
    }

    void missingHelpFileIsTold()
    {
        Program program;
        QVERIFY(QFile::remove(program.folder.Path(ExecutableName() + u".chm"_s)));
        program.prompts.ExpectMessage(u"No help file"_s);
        program.Start();
        QCOMPARE(program.prompts.LastAsked().text, ExecutableName() + u".chm was not found.  No help is available."_s);
        QVERIFY(!program.Item("mnuHelpContents")->isEnabled());
    }

    void opensTheCatalogOfTheCommandLine()
    {
        Program program;
        program.folder.Write(u"Live.xml"_s, kLive);
        program.Start(u"Live.xml"_s);
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 2 Items)"_s);
        QCOMPARE(program.Tree()->currentIndex().data().toString(), u"1994       ( 1 / 0 / 1 )"_s);
        QVERIFY(program.Tree()->hasFocus());
        QCOMPARE(program.Item("mnuFileMRU0")->text(), u"&1 Live"_s);
        // One web source: its item shows, the separator does not.
        QCOMPARE(program.Item("mnuWebSourcesOpen0")->text(), u"https://example.org/?a=1&&b=2"_s);
        QVERIFY(!program.Item("mnuWebSourcesSetup")->menu());
        program.Choose("mnuWebSourcesOpen0");
        QCOMPARE(program.prompts.Opened(), QStringList(u"https://example.org/?a=1&b=2"_s));
    }

    void opensTheMostRecentOnlyWhenAskedTo_data()
    {
        Table<QByteArray, QString>("setting", "title")
            .Row("asked", QByteArray("OpenMRUOnStartup=True\r\n"), u"Discbook: Live (Showing 2 Items)"_s)
            .Row("not asked", QByteArray("OpenMRUOnStartup=False\r\n"), u"Discbook"_s)
            .Row("no setting", QByteArray(), u"Discbook"_s);
    }

    void opensTheMostRecentOnlyWhenAskedTo()
    {
        QFETCH(QByteArray, setting);
        QFETCH(QString, title);
        Program program;
        const QString path = program.folder.Write(u"sub/Live.xml"_s, kLive);
        program.WriteSettings("[Settings]\r\n" + setting + "[MRU]\r\n0=" + path.toUtf8() + "\r\n");
        program.Start();
        QCOMPARE(program.window->windowTitle(), title);
        QVERIFY(program.Item("mnuFileDashMRU")->isVisible());
        program.Choose("mnuFileMRU0");
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 2 Items)"_s);
    }

    void stepsThatFailDoNotStopTheStart()
    {
        Program program;
        program.folder.Write(u"Live.xml"_s, kLive);
        program.WriteSettings("stray=1\r\n[Settings]\r\n");
        program.folder.Write(u"Formats/Broken.bmp"_s, "no picture");
        program.prompts.ExpectMessage(u"Unknown format"_s, Answer::Yes);
        program.Start(u"Live.xml"_s);
        QCOMPARE(program.failures.Names(), QStringList({u"frmMain.Form_Load"_s, u"frmMain.Form_Load"_s}));
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 2 Items)"_s);
    }

    void groupsShowAnOpenFolderWhileExpanded()
    {
        Program program;
        program.folder.Write(u"Live.xml"_s, kLive);
        program.Start(u"Live.xml"_s);
        const QModelIndex year = program.Tree()->model()->index(0, 0);
        const QModelIndex albums = program.Tree()->model()->index(1, 0);
        program.Tree()->expandAll();
        QCOMPARE(year.data(BrowseTreeModel::PictureRole).toString(), u"Open"_s);
        QCOMPARE(albums.data(BrowseTreeModel::PictureRole).toString(), u"CD"_s);
        QTest::keyClick(program.Tree(), Qt::Key_Left);
        QCOMPARE(year.data(BrowseTreeModel::PictureRole).toString(), u"Closed"_s);
        QTest::mouseDClick(program.Tree()->viewport(), Qt::LeftButton, {}, program.Tree()->visualRect(albums).center());
        QVERIFY(!program.Tree()->findChild<QLineEdit *>());
    }

    void closingAsksOnlyForAChangedCatalog_data()
    {
        Table<bool, Answer, bool, bool>("changed", "answer", "closes", "saved")
            .Row("unchanged", false, Answer::Ok, true, false)
            .Row("yes", true, Answer::Yes, true, true)
            .Row("no", true, Answer::No, true, false)
            .Row("cancel", true, Answer::Cancel, false, false);
    }

    void closingAsksOnlyForAChangedCatalog()
    {
        QFETCH(bool, changed);
        QFETCH(Answer, answer);
        QFETCH(bool, closes);
        QFETCH(bool, saved);
        Program program;
        program.folder.Write(u"Live.xml"_s, kLive);
        program.Start(u"Live.xml"_s);
        program.Tree()->setCurrentIndex(program.Tree()->model()->index(0, 0, program.Tree()->model()->index(0, 0)));
        QVERIFY(!program.Item("mnuFileSave")->isEnabled());
        if (changed) {
            QTest::keyClicks(program.window->findChild<QLineEdit *>(u"txtVenue"_s), u"y"_s);
            QVERIFY(program.Item("mnuFileSave")->isEnabled());
            program.prompts.ExpectMessage(u"Save Confirmation"_s, answer);
        }
        QCOMPARE(program.window->close(), closes);
        QCOMPARE(program.folder.Read(u"Live.xml"_s).contains("Venue=\"yx\""), saved);
        QCOMPARE(program.Settings().contains("[Main]"), closes);
    }

    void dialogsBlockTheMainWindowAlone()
    {
        Program program;
        program.folder.Write(u"Live.xml"_s, kLive);
        program.Start(u"Live.xml"_s);
        const QModelIndex current = program.Tree()->currentIndex();
        QAction &help = *program.Item("mnuHelpContents");
        help.disconnect();
        const QSignalSpy helped(&help, &QAction::triggered);
        QLineEdit beside;
        beside.show();
        qsizetype opened = 0;
        for (const char *command :
             {"mnuOptionsSetupTypes", "mnuEditSearch", "mnuListType0", "mnuViewAsWebPage", "mnuHelpAbout"}) {
            QTimer::singleShot(0, &beside, [&] {
                QWidget *dialog = QApplication::activeModalWidget();
                QVERIFY2(dialog, command);
                QTest::keyClick(program.window->windowHandle(), Qt::Key_F3, Qt::ControlModifier);
                QTest::keyClick(beside.windowHandle(), Qt::Key_X);
                QTest::keyClick(dialog, Qt::Key_F1);
                dialog->close();
            });
            program.Choose(command);
            ++opened;
            QTRY_COMPARE(helped.size(), opened);
        }
        QCOMPARE(program.Tree()->currentIndex(), current);
        QCOMPARE(beside.text(), u"xxxxx"_s);
    }

    void layoutFollowsTheWindow()
    {
        Program program;
        program.Start();
        program.window->resize(1200, 800);
        QTest::qWait(0);
        const QWidget *client = program.window->centralWidget();
        const QWidget *frame = program.window->findChild<QWidget *>(u"fra"_s);
        const QRect tree = program.Tree()->geometry();
        QCOMPARE(tree.topLeft(), QPoint(8, 8));
        QCOMPARE(tree.bottom() + 1, client->height() - 24);
        QCOMPARE(tree.right() + 1, frame->x() - 8);
        QCOMPARE(frame->width(), 400);
        QCOMPARE(frame->geometry().right() + 1, client->width() - 8);
    }

    void smallestSizeWithoutLimits()
    {
        Program program;
        program.Start({}, false);
        QVERIFY(program.window->minimumWidth() < 600);
        program.window->resize(100, 100);
        QTRY_COMPARE(program.window->size(), QSize(600, 514));
    }
};

QTEST_MAIN(TestFrmMain)
#include "test_frmMain.moc"
