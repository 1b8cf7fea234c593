#include "program.h"
#include "table.h"
#include "typist.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

using namespace Qt::StringLiterals;
using Answer = UserPrompts::Answer;

namespace {

constexpr auto kEveryKind =
    "<Catalog><Type>Radio</Type><Item ID='1' Type='Concert' Year='1994' Format='CD'/><Item ID='2' Type='Album'/>"
    "<Item ID='3' Type='Video' Format='MP3'/><Item ID='4' Type='Video' WrongDate='1' Format='MP3'/>"
    "<Item ID='5' Type='Radio' Format='FLAC'/></Catalog>";

/// The sections of windows' places and recent catalogs.
constexpr auto kPlaces = "\\[(Main|List|MRU)\\][^\\[]*"_L1;

constexpr auto kMenu = R"(&File
 &New Source [Ctrl+N]
 --
 New &Catalog...
 &Open Catalog... [Ctrl+O]
 &Save [Ctrl+S] -
 --
 &Make Catalog Shortcut
 --
 &1 Live
 --
 E&xit
&Edit
 &Search... [Ctrl+F]
 --
 Select &All -
 &Copy Current Listing to New	Shift+Ctrl+Ins -
 &Delete Current Listing	Shift+Ctrl+Del -
 --
 &Refresh [F5]
&Options
 &Filter
  &All *
  &Lossless Only
  L&ossy Only
  &Need Lossless
  &Do Not Have
 &Types to Show
  &Album *
  &Concert *
  &Bootleg *
  &Interview *
  &Outtakes *
  &Video *
 &Setup Types
 --
 Show "&Wrong Date" Items *
 Show &Year Totals *
 Open most recent catalog at startup
&View
 &Lossless
 L&ossy
 &Need Lossless
 &Do Not Have
 --
 As &Webpage
&Web sources
 https://example.org/?a=1&&b=2
 &Setup
&Help
 &Contents	F1
 &About
)";

constexpr auto kLive = "<Catalog><Item ID='1' Type='Concert' Year='1994' Venue='x' Format='CD'/>"
                       "<Item ID='2' Type='Album' Year='1990' Venue='a'/>"
                       "<WebSource>https://example.org/?a=1&amp;b=2</WebSource></Catalog>";

/// A menu as text: a line an item, indented by level, with its keys; "*" is checked, "-" disabled, hidden ones left
/// out.
QString Text(const QList<QAction *> &items, int level = 0)
{
    QString text;
    for (const QAction *item : items) {
        if (!item->isVisible())
            continue;
        const QString keys = item->shortcut().isEmpty() ? QString() : u" ["_s + item->shortcut().toString() + u']';
        text += QString(level, u' ') + (item->isSeparator() ? u"--"_s : item->text() + keys) +
                (item->isChecked() ? u" *"_s : u""_s) + (item->isEnabled() ? u"\n"_s : u" -\n"_s);
        if (item->menu())
            text += Text(item->menu()->actions(), level + 1);
    }
    return text;
}

/// Triggers an item, and tells what is to be seen: the dialog that opens (and is closed), the caption, the groups.
QString Trigger(const Program &program, const char *name)
{
    QString seen;
    QTimer::singleShot(0, program.window.get(), [&] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            seen = dialog->windowTitle() + u": "_s;
            dialog->close();
        }
    });
    program.Choose(name);
    QCoreApplication::processEvents();
    seen += program.window->windowTitle().section(u' ', 1) + u" |"_s;
    const QAbstractItemModel &tree = *program.Tree()->model();
    for (int row = 0; row < tree.rowCount(); ++row)
        seen += u' ' + tree.index(row, 0).data().toString().remove(u' ');
    if (!program.window->isVisible())
        seen.prepend(u"closed: "_s);
    return seen + (program.Item("mnuFileSave")->isEnabled() ? u" | modified"_s : u""_s);
}

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

    void menu()
    {
        Program program;
        program.folder.Write(u"Live.xml"_s, kLive);
        program.Start(u"Live.xml"_s);
        QCOMPARE(Text(program.window->menuBar()->actions()), QString::fromUtf8(kMenu).replace(u"\\t"_s, u"\t"_s));
    }

    void triggers_data()
    {
        const QString all = u"Live (Showing 5 Items) | 1994(1/0/1) Albums(0/0/1) Radio(1/0/1) Videos(0/1/1)"_s;
        const QString none = {};
        Table<QString, QString, QString>("asks", "seen", "kept")
            .Row("mnuFileNewSource", none, QString(all).replace(u'5', u'6') + u" | modified"_s, none)
            .Row("mnuFileNewCatalog", u"New Catalog"_s, all, none)
            .Row("mnuFileOpenCatalog", u"Open Catalog"_s, all, none)
            .Row("mnuFileMakeCatalogShortcut", u"Shortcut Name"_s, all, none)
            .Row("mnuFileExit", none, u"closed: "_s + all, none)
            .Row("mnuEditSearch", none, u"Search: "_s + all, none)
            .Row("mnuEditCopyListing", none, QString(all).replace(u'5', u'6') + u" | modified"_s, none)
            .Row(
                "mnuEditDeleteListing", u"Delete Confirmation"_s, QString(all).replace(u'5', u'4') + u" | modified"_s,
                none)
            .Row("mnuEditRefresh", none, all, none)
            .Row(
                "mnuViewFilter1", none,
                u"Live (Showing 2 Items) | 1994(1/0/1) Albums(0/0/0) Radio(1/0/1) Videos(0/0/0)"_s, none)
            .Row(
                "mnuViewFilter2", none,
                u"Live (Showing 2 Items) | 1994(0/0/0) Albums(0/0/0) Radio(0/0/0) Videos(0/1/1)"_s, none)
            .Row(
                "mnuViewFilter3", none,
                u"Live (Showing 3 Items) | 1994(0/0/0) Albums(0/0/1) Radio(0/0/0) Videos(0/1/1)"_s, none)
            .Row(
                "mnuViewFilter4", none,
                u"Live (Showing 1 Items) | 1994(0/0/0) Albums(0/0/1) Radio(0/0/0) Videos(0/0/0)"_s, none)
            .Row(
                "mnuEditGroupsItem0", none, u"Live (Showing 4 Items) | 1994(1/0/1) Radio(1/0/1) Videos(0/1/1)"_s,
                u"[Live] Show-Album=False"_s)
            .Row(
                "mnuEditGroupsItem6", none, u"Live (Showing 4 Items) | 1994(1/0/1) Albums(0/0/1) Videos(0/1/1)"_s,
                u"[Live] Show-Radio=False"_s)
            .Row("mnuOptionsSetupTypes", none, u"Setup recording types: "_s + all + u" | modified"_s, none)
            .Row("mnuEditShowWrongDate", none, QString(all).replace(u'5', u'4'), u"[Settings] WrongDate=False"_s)
            .Row(
                "mnuEditShowYearTotals", none, u"Live (Showing 5 Items) | 1994 Albums Radio Videos"_s,
                u"[Settings] YearTotals=False"_s)
            .Row("mnuOptionsOpenMRUOnStartup", none, all, u"[Settings] OpenMRUOnStartup=True"_s)
            .Row("mnuListType0", none, u"List: Lossless - 2 out of 4: "_s + all, none)
            .Row("mnuListType1", none, u"List: Lossy - 1 out of 4: "_s + all, none)
            .Row("mnuListType2", none, u"List: Need Lossless - 2 out of 4: "_s + all, none)
            .Row("mnuListType3", none, u"List: Do Not Have - 1 out of 4: "_s + all, none)
            .Row("mnuViewAsWebPage", none, u"View as Webpage: "_s + all, none)
            .Row("mnuWebSourcesSetup", none, u"Setup web sources: "_s + all + u" | modified"_s, none)
            .Row("mnuHelpAbout", none, u"About Discbook: "_s + all, none);
    }

    /// Every item of the menu does its work.
    void triggers()
    {
        QFETCH(QString, asks);
        Program program;
        program.folder.Write(u"Live.xml"_s, kEveryKind);
        program.Start(u"Live.xml"_s);
        const QByteArray item = QTest::currentDataTag();
        if (item.endsWith("Listing"))
            program.Tree()->setCurrentIndex(program.Tree()->model()->index(0, 0, program.Tree()->currentIndex()));
        if (item == "mnuFileNewCatalog")
            program.prompts.ExpectSaveFile(asks, {});
        else if (item == "mnuFileOpenCatalog")
            program.prompts.ExpectOpenFile(asks, {});
        else if (item == "mnuFileMakeCatalogShortcut")
            program.prompts.ExpectInput(asks, {});
        else if (!asks.isEmpty())
            program.prompts.ExpectMessage(asks, Answer::Yes);
        QTEST(Trigger(program, item.constData()), "seen");
        const QString settings = QString::fromUtf8(program.Settings()).remove(QRegularExpression(kPlaces));
        QTEST(settings.simplified(), "kept");
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
        DoubleClick(*program.Tree(), albums);
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
