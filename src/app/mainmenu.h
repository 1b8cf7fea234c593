#pragma once

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

#include <array>

/// The main window's menu bar. Makes the menus and their items; what they do is connected by the window.
class MainMenu
{
public:
    explicit MainMenu(QMenuBar &bar);

    /// Adds the keys to the captions of commands whose keys the window handles itself.
    void AddShortcutTexts();

    QMenu *mnuFile;
    QAction *mnuFileNewSource;
    QAction *mnuFileNewCatalog;
    QAction *mnuFileOpenCatalog;
    QAction *mnuFileSave;
    QAction *mnuFileMakeCatalogShortcut;
    QAction *mnuFileDashMRU; ///< the separator above the recent catalogs
    QAction *mnuFileDashExit;
    QAction *mnuFileExit;

    QMenu *mnuEdit;
    QAction *mnuEditSearch;
    QAction *mnuEditSelectAll;
    QAction *mnuEditCopyListing;
    QAction *mnuEditDeleteListing;
    QAction *mnuEditRefresh;

    QMenu *mnuOptions;
    QMenu *mnuFilter;
    std::array<QAction *, 5> mnuViewFilter;
    QMenu *mnuEditGroups;
    QAction *mnuOptionsSetupTypes;
    QAction *mnuEditShowWrongDate;
    QAction *mnuEditShowYearTotals;
    QAction *mnuOptionsOpenMRUOnStartup;

    QMenu *mnuView;
    std::array<QAction *, 4> mnuListType;
    QAction *mnuViewAsWebPage;

    QMenu *mnuWebSources;
    QAction *mnuWebSourcesDash;
    QAction *mnuWebSourcesSetup;

    QMenu *mnuHelp;
    QAction *mnuHelpContents;
    QAction *mnuHelpAbout;

private:
    void MakeFileMenu(QMenuBar &bar);
    void MakeEditMenu(QMenuBar &bar);
    void MakeOptionsMenu(QMenuBar &bar);
    void MakeViewMenu(QMenuBar &bar);
    void MakeWebSourcesMenu(QMenuBar &bar);
    void MakeHelpMenu(QMenuBar &bar);
};

/// Text that a user wrote as it must stand in a menu, where "&" marks the access key.
QString MenuText(const QString &text);
