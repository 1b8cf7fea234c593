#include "mainmenu.h"

#include "controls.h"
#include "listkinds.h"

using namespace Qt::StringLiterals;

namespace {

QMenu *AddMenu(QMenuBar &bar, const char *name, const QString &caption)
{
    QMenu *menu = bar.addMenu(caption);
    menu->setObjectName(QLatin1StringView(name));
    return menu;
}

QAction *AddItem(QMenu &menu, const char *name, const QString &caption, const QKeySequence &shortcut = {})
{
    QAction *item = menu.addAction(caption);
    item->setObjectName(QLatin1StringView(name));
    item->setShortcut(shortcut);
    item->setMenuRole(QAction::NoRole);
    return item;
}

QAction *AddSeparator(QMenu &menu, const char *name)
{
    QAction *separator = menu.addSeparator();
    separator->setObjectName(QLatin1StringView(name));
    return separator;
}

QAction *AddCheckItem(QMenu &menu, const char *name, const QString &caption)
{
    QAction *item = AddItem(menu, name, caption);
    item->setCheckable(true);
    return item;
}

} // namespace

MainMenu::MainMenu(QMenuBar &bar)
{
    MakeFileMenu(bar);
    MakeEditMenu(bar);
    MakeOptionsMenu(bar);
    MakeViewMenu(bar);
    MakeWebSourcesMenu(bar);
    MakeHelpMenu(bar);
}

void MainMenu::MakeFileMenu(QMenuBar &bar)
{
    mnuFile = AddMenu(bar, "mnuFile", u"&File"_s);
    mnuFileNewSource = AddItem(*mnuFile, "mnuFileNewSource", u"&New Source"_s, QKeySequence::New);
    mnuFile->addSeparator();
    mnuFileNewCatalog = AddItem(*mnuFile, "mnuFileNewCatalog", u"New &Catalog..."_s);
    mnuFileOpenCatalog = AddItem(*mnuFile, "mnuFileOpenCatalog", u"&Open Catalog..."_s, QKeySequence::Open);
    mnuFileSave = AddItem(*mnuFile, "mnuFileSave", u"&Save"_s, QKeySequence::Save);
    mnuFile->addSeparator();
    mnuFileMakeCatalogShortcut = AddItem(*mnuFile, "mnuFileMakeCatalogShortcut", u"&Make Catalog Shortcut"_s);
    mnuFileDashMRU = AddSeparator(*mnuFile, "mnuFileDashMRU");
    mnuFileDashExit = AddSeparator(*mnuFile, "mnuFileDashExit");
    mnuFileExit = AddItem(*mnuFile, "mnuFileExit", u"E&xit"_s, Qt::CTRL | Qt::Key_Q);
    mnuFileExit->setMenuRole(QAction::QuitRole);
}

void MainMenu::MakeEditMenu(QMenuBar &bar)
{
    mnuEdit = AddMenu(bar, "mnuEdit", u"&Edit"_s);
    mnuEditSearch = AddItem(*mnuEdit, "mnuEditSearch", u"&Search..."_s, QKeySequence(Qt::CTRL | Qt::Key_F));
    mnuEdit->addSeparator();
    mnuEditSelectAll = AddItem(*mnuEdit, "mnuEditSelectAll", u"Select &All"_s);
    mnuEditCopyListing = AddItem(*mnuEdit, "mnuEditCopyListing", u"&Copy Current Listing to New"_s);
    mnuEditDeleteListing = AddItem(*mnuEdit, "mnuEditDeleteListing", u"&Delete Current Listing"_s);
    mnuEdit->addSeparator();
    mnuEditRefresh = AddItem(*mnuEdit, "mnuEditRefresh", u"&Refresh"_s, QKeySequence(Qt::Key_F5));
}

void MainMenu::MakeOptionsMenu(QMenuBar &bar)
{
    mnuOptions = AddMenu(bar, "mnuOptions", u"&Options"_s);
    mnuFilter = mnuOptions->addMenu(u"&Filter"_s);
    mnuFilter->setObjectName("mnuFilter"_L1);
    mnuViewFilter = {
        AddCheckItem(*mnuFilter, "mnuViewFilter0", u"&All"_s),
        AddCheckItem(*mnuFilter, "mnuViewFilter1", u"&Lossless Only"_s),
        AddCheckItem(*mnuFilter, "mnuViewFilter2", u"L&ossy Only"_s),
        AddCheckItem(*mnuFilter, "mnuViewFilter3", u"&Need Lossless"_s),
        AddCheckItem(*mnuFilter, "mnuViewFilter4", u"&Do Not Have"_s),
    };
    auto *filters = new QActionGroup(mnuFilter);
    for (QAction *filter : mnuViewFilter)
        filters->addAction(filter);
    mnuViewFilter.front()->setChecked(true);

    mnuEditGroups = mnuOptions->addMenu(u"&Types to Show"_s);
    mnuEditGroups->setObjectName("mnuEditGroups"_L1);
    mnuOptionsSetupTypes = AddItem(*mnuOptions, "mnuOptionsSetupTypes", u"&Setup Types"_s);
    mnuOptions->addSeparator();
    mnuEditShowWrongDate = AddCheckItem(*mnuOptions, "mnuEditShowWrongDate", u"Show \"&Wrong Date\" Items"_s);
    mnuEditShowYearTotals = AddCheckItem(*mnuOptions, "mnuEditShowYearTotals", u"Show &Year Totals"_s);
    mnuOptionsOpenMRUOnStartup =
        AddCheckItem(*mnuOptions, "mnuOptionsOpenMRUOnStartup", u"Open most recent catalog at startup"_s);
}

void MainMenu::MakeViewMenu(QMenuBar &bar)
{
    mnuView = AddMenu(bar, "mnuView", u"&View"_s);
    for (size_t i = 0; i < mnuListType.size(); ++i) {
        const QByteArray name = "mnuListType" + QByteArray::number(i);
        mnuListType[i] = AddItem(*mnuView, name.constData(), ListKindCaption(static_cast<ListKind>(i)));
    }
    mnuView->addSeparator();
    mnuViewAsWebPage = AddItem(*mnuView, "mnuViewAsWebPage", u"As &Webpage"_s);
}

void MainMenu::MakeWebSourcesMenu(QMenuBar &bar)
{
    mnuWebSources = AddMenu(bar, "mnuWebSources", u"&Web sources"_s);
    mnuWebSourcesDash = AddSeparator(*mnuWebSources, "mnuWebSourcesDash");
    mnuWebSourcesDash->setVisible(false);
    mnuWebSourcesSetup = AddItem(*mnuWebSources, "mnuWebSourcesSetup", u"&Setup"_s);
}

void MainMenu::MakeHelpMenu(QMenuBar &bar)
{
    mnuHelp = AddMenu(bar, "mnuHelp", u"&Help"_s);
    mnuHelpContents = AddItem(*mnuHelp, "mnuHelpContents", u"&Contents"_s);
    mnuHelpAbout = AddItem(*mnuHelp, "mnuHelpAbout", u"&About"_s);
}

void MainMenu::AddShortcutTexts()
{
    mnuHelpContents->setText(mnuHelpContents->text() + u"\tF1"_s);
    mnuEditCopyListing->setText(mnuEditCopyListing->text() + u"\tShift+Ctrl+Ins"_s);
    mnuEditDeleteListing->setText(mnuEditDeleteListing->text() + u"\tShift+Ctrl+Del"_s);
}

QString MenuText(const QString &text)
{
    return ShownCaption(text);
}
