#include "program.h"

#include <iostream>
#include <sstream>

using Answer = UserPrompts::Answer;

namespace {

constexpr auto kLive =
    "<Catalog><Type>Radio</Type><Item ID='1' Type='Concert' Year='1994' Format='CD'/><Item ID='2' Type='Album'/>"
    "<Item ID='3' Type='Video' Format='MP3'/><Item ID='4' Type='Video' WrongDate='1' Format='MP3'/>"
    "<Item ID='5' Type='Radio' Format='FLAC'/><WebSource>https://example.org/?a=1&amp;b=2</WebSource></Catalog>";
constexpr auto kTitle = "Discbook: Live (Showing 5 Items)"_L1;

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
 E&xit [Ctrl+Q]
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
  &Radio *
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

/// A menu as text: a line an item, indented by level, with its keys; "*" is checked, "-" disabled.
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

/// Triggers an item, and tells what is to be seen: the dialog that opens (and is closed), the caption, the groups with
/// a mark on the current one.
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
    seen += program.window->windowTitle().section(u' ', 1).remove(u"Showing "_s).remove(u" Items"_s) + u" |"_s;
    const QAbstractItemModel &tree = *program.Tree()->model();
    for (int row = 0; row < tree.rowCount(); ++row) {
        const QModelIndex group = tree.index(row, 0);
        seen += (group == program.Tree()->currentIndex() ? u" >"_s : u" "_s) + group.data().toString().remove(u' ');
    }
    if (!program.window->isVisible())
        seen.prepend(u"closed: "_s);
    return seen + (program.Item("mnuFileSave")->isEnabled() ? u" | modified"_s : u""_s);
}

/// How light the darkest spot of a widget is, from 0 to 255.
int DarkestInk(QWidget &widget)
{
    const QImage shown = widget.grab().toImage();
    int darkest = 255;
    for (int i = 0; i < shown.width() * shown.height(); ++i)
        darkest = std::min(darkest, qGray(shown.pixel(i % shown.width(), i / shown.width())));
    return darkest;
}

} // namespace

class TestFrmMain : public QObject
{
    Q_OBJECT

private slots:
    void startsWithoutACatalogOrHelp()
    {
        Program program;
        QVERIFY(QFile::remove(program.folder.Path(ExecutableName() + u".chm"_s)));
        program.prompts.ExpectMessage(u"No help file"_s);
        program.Start();
        QCOMPARE(program.prompts.LastAsked().text, ExecutableName() + u".chm was not found.  No help is available."_s);
        QCOMPARE(program.window->windowTitle(), u"Discbook"_s);
        QCOMPARE(program.Field("fra").property("title"), u"Recording Information"_s);
        QVERIFY(!program.Tree()->isEnabled() && program.Hint().startsWith(u"No catalog is open."_s));
        QVERIFY(DarkestInk(*program.Tree()->viewport()) < 140);
        for (const char *menu : {"mnuEdit", "mnuOptions", "mnuView", "mnuWebSources"})
            QVERIFY2(!program.Field(menu).isEnabled(), menu);
        QVERIFY(!program.Item("mnuFileSave")->isEnabled() && !program.Item("mnuHelpContents")->isEnabled());
        QVERIFY(!program.Item("mnuFileDashMRU")->isVisible() && !program.Field("txtVenue").isVisible());
        QVERIFY(program.failures.reports.empty());
    }

    void aMissingCatalogIsToldInTheTerminalToo()
    {
        std::ostringstream terminal;
        std::streambuf *const before = std::cerr.rdbuf(terminal.rdbuf());
        Program program;
        program.prompts.ExpectMessage(u"Discbook"_s);
        program.Start({u"gone.xml"_s});
        std::cerr.rdbuf(before);
        QVERIFY(terminal.str().ends_with("gone.xml does not exist\n"));
    }

    void opensTheCatalogOfTheCommandLineWithItsMenu()
    {
        Program program(kLive);
        QCOMPARE(program.window->windowTitle(), kTitle);
        QCOMPARE(program.Tree()->currentIndex().data().toString(), u"1994       ( 1 / 0 / 1 )"_s);
        QVERIFY(program.Tree()->hasFocus() && program.Tree()->isHeaderHidden());
        QCOMPARE(Text(program.window->menuBar()->actions()), QString::fromUtf8(kMenu));
        QCOMPARE(program.Item("mnuFileMRU0")->toolTip(), program.workspace->document.Path());
        QVERIFY(program.Field("mnuFile").property("toolTipsVisible").toBool());
        program.Choose("mnuWebSourcesOpen0");
        program.workspace->document.AddEntry(CatalogList::WebSources, u"b.org"_s);
        program.Choose("mnuWebSourcesOpen1");
        QCOMPARE(program.prompts.Opened(), QStringList({u"https://example.org/?a=1&b=2"_s, u"b.org"_s}));
        QCOMPARE(program.Hint(), QString());
        for (const char *item : {"mnuEditGroupsItem1", "mnuEditGroupsItem6", "mnuEditShowWrongDate", "mnuViewFilter1"})
            program.Choose(item);
        QCOMPARE(
            program.Hint().section(u"\n\n"_s, 1, 1),
            u"Filter: Lossless Only\nHidden types: Concert, Radio\nListings with a wrong date are hidden."_s);
    }

    void triggers_data()
    {
        const QString all = u"Live (5) | >1994(1/0/1) Albums(0/0/1) Radio(1/0/1) Videos(0/1/1)"_s;
        const QString more = QString(all).replace(u'5', u'6').remove(u'>') + u" | modified"_s;
        const QString less = QString(all).replace(u'5', u'4');
        Table<QString, QString, QString>("asks", "seen", "kept")
            .Row("mnuFileNewSource", "", more, "")
            .Row("mnuFileNewCatalog", "New Catalog", all, "")
            .Row("mnuFileOpenCatalog", "Open Catalog", all, "")
            .Row("mnuFileMakeCatalogShortcut", "Shortcut Name", all, "")
            .Row("mnuFileExit", "", u"closed: "_s + all, "")
            .Row("mnuEditSearch", "", u"Search: "_s + all, "")
            .Row("mnuEditCopyListing", "", more, "")
            .Row("mnuEditDeleteListing", "Delete Confirmation", less + u" | modified"_s, "")
            .Row("mnuEditRefresh", "", all, "")
            .Row("mnuViewFilter1", "", "Live (2) | >1994(1/0/1) Albums(0/0/0) Radio(1/0/1) Videos(0/0/0)", "")
            .Row("mnuViewFilter2", "", "Live (2) | >1994(0/0/0) Albums(0/0/0) Radio(0/0/0) Videos(0/1/1)", "")
            .Row("mnuViewFilter3", "", "Live (3) | >1994(0/0/0) Albums(0/0/1) Radio(0/0/0) Videos(0/1/1)", "")
            .Row("mnuViewFilter4", "", "Live (1) | >1994(0/0/0) Albums(0/0/1) Radio(0/0/0) Videos(0/0/0)", "")
            .Row("mnuEditGroupsItem0", "", QString(less).remove(u" Albums(0/0/1)"_s), "[Live] Show-Album=False")
            .Row("mnuEditGroupsItem6", "", QString(less).remove(u" Radio(1/0/1)"_s), "[Live] Show-Radio=False")
            .Row("mnuOptionsSetupTypes", "", u"Setup recording types: "_s + all + u" | modified"_s, "")
            .Row("mnuEditShowWrongDate", "", less, "[Settings] WrongDate=False")
            .Row("mnuEditShowYearTotals", "", "Live (5) | >1994 Albums Radio Videos", "[Settings] YearTotals=False")
            .Row("mnuOptionsOpenMRUOnStartup", "", all, "[Settings] OpenMRUOnStartup=True")
            .Row("mnuListType0", "", u"List: Lossless - 2 out of 4: "_s + all, "")
            .Row("mnuListType1", "", u"List: Lossy - 1 out of 4: "_s + all, "")
            .Row("mnuListType2", "", u"List: Need Lossless - 2 out of 4: "_s + all, "")
            .Row("mnuListType3", "", u"List: Do Not Have - 1 out of 4: "_s + all, "")
            .Row("mnuWebSourcesSetup", "", u"Setup web sources: "_s + all + u" | modified"_s, "")
            .Row("mnuHelpAbout", "", u"About Discbook: "_s + all, "");
    }

    /// Every item of the menu does its work.
    void triggers()
    {
        QFETCH(QString, asks);
        Program program(kLive);
        const QByteArray item = QTest::currentDataTag();
        if (item.endsWith("Listing") || item == "mnuEditRefresh")
            program.SelectListing();
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

    void opensTheMostRecentOnlyWhenAskedTo()
    {
        for (const QByteArray setting : {"OpenMRUOnStartup=True\r\n", "OpenMRUOnStartup=False\r\n", ""}) {
            Program program;
            const QByteArray path = program.folder.Write(u"sub/Live.xml"_s, kLive).toUtf8();
            const QByteArray oddPath = program.folder.Path(u"./gone/..//sub/Live.xml"_s).toUtf8();
            program.WriteSettings("[Settings]\r\n" + setting + "[MRU]\r\n0=" + oddPath + "\r\n");
            program.Start();
            QCOMPARE(program.window->windowTitle(), setting.contains("True") ? kTitle : "Discbook"_L1);
            QVERIFY(program.Item("mnuFileDashMRU")->isVisible());
            program.Choose("mnuFileMRU0");
            QCOMPARE(program.window->windowTitle(), kTitle);
            QVERIFY(program.Tree()->hasFocus());
            QVERIFY(program.Settings().endsWith("[MRU]\r\n0=" + path + "\r\n"));
        }
    }

    void endsInterruptedConversionsAndOffersTheCatalogsOfItsFolder()
    {
        Program program;
        program.folder.Write(u"Live.xml.converted"_s, kLive);
        program.folder.Write(u"Conversion Backup/Live.xml"_s, "<Catalog/>");
        program.folder.Write(u"Conversion Backup/Live User.xml"_s, "<User/>");
        QTimer answer;
        connect(&answer, &QTimer::timeout, &answer, [] {
            if (QWidget *dialog = QApplication::activeModalWidget())
                QTest::keyClick(dialog, Qt::Key_Return);
        });
        answer.start(10);
        program.Start();
        QTRY_COMPARE(program.window->windowTitle(), kTitle);
    }

    void stepsThatFailDoNotStopTheStart()
    {
        Program program;
        program.folder.Write(u"Live.xml"_s, kLive);
        program.WriteSettings("stray=1\r\n[Settings]\r\n");
        program.folder.Write(u"Formats/Broken.bmp"_s, "no picture");
        program.prompts.ExpectMessage(u"Unknown format"_s, Answer::Yes);
        program.Start({u"Live.xml"_s});
        QCOMPARE(program.failures.Names(), QStringList({u"frmMain.Form_Load"_s, u"frmMain.Form_Load"_s}));
        QCOMPARE(program.window->windowTitle(), kTitle);
    }

    void groupsShowAnOpenFolderWhileExpanded()
    {
        Program program(kLive);
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

    void dialogsBlockTheMainWindowAlone()
    {
        Program program(kLive);
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

    void layoutFollowsTheWindowWhoseSizeIsKept()
    {
        Program program;
        program.Start();
        program.window->resize(1200, 800);
        QTest::qWait(0);
        const QWidget *client = program.window->centralWidget();
        const QRect tree = program.Tree()->geometry();
        const QWidget &fra = program.Field("fra");
        const QRect frame(fra.mapTo(client, QPoint()), fra.size());
        QCOMPARE(tree, QRect(8, 8, frame.x() - 16, client->height() - 32));
        QCOMPARE(frame, QRect(client->width() - 408, 8, 400, client->height() - 32));
        program.window->close();
        program.Start();
        QCOMPARE(program.window->size(), QSize(1200, 800));
    }

    /// The smallest window, 514 high, with a font that it is too low for.
    void nothingIsCutInLargeFonts()
    {
        Program program(kLive);
        program.window->setFont(QFont(u"DejaVu Sans"_s, 16));
        program.SelectListing();
        for (const QLabel *label : program.Field("fra").findChildren<QLabel *>())
            QTRY_VERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
        const QWidget &last = program.Enter("txtComment");
        QTRY_VERIFY2(last.visibleRegion().boundingRect().height() > last.height() / 2, "not scrolled to");
    }

    void smallestSizes()
    {
        Program program;
        program.Start();
        QCOMPARE(program.window->minimumSize(), QSize(800, 514)); // of a screen of 800 pixels
        program.Start({}, false);
        program.window->resize(100, 100);
        QTRY_COMPARE(program.window->size(), QSize(600, 514));
    }
};

QTEST_MAIN(TestFrmMain)
#include "test_frmMain.moc"
