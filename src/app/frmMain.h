#pragma once

#include "browsetree.h"
#include "catalogdocument.h"
#include "catalogfiles.h"
#include "clsINI.h"
#include "clsResizeLimits.h"
#include "formatregistry.h"
#include "helpkey.h"
#include "mainmenu.h"
#include "recentcatalogs.h"
#include "showntypes.h"

#include <QMainWindow>
#include <QStringList>

#include <memory>

class DetailPanel;
class DialogCommands;
class ListingCommands;
class MainKeys;
class OptionsMenu;
class QTreeView;
class RecentMenu;
class TreeMouse;
class UserPrompts;
class WebSourcesMenu;

/// The main window. Owns the catalog, the settings and the formats for the whole run, and connects menus, tree and
/// panel to the rooms that do the work.
class frmMain : public QMainWindow, private CatalogViews
{
    Q_OBJECT

public:
    struct StartUp
    {
        QStringList arguments;  ///< the command line without the program's name
        bool sizeLimits = true; ///< false: the window itself keeps its smallest size
    };

    /// `prompts` must outlive the window.
    frmMain(UserPrompts &prompts, StartUp startUp);
    ~frmMain() override;

    /// Brings the program up: settings, formats, recent catalogs, the catalog to open, the window's place. A step that
    /// fails is reported, and the next one is taken.
    void Form_Load();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void MakeControls();
    void ConnectCommands();
    void ConnectFileMenu();
    void ConnectEditMenu();
    void ConnectDialogs();
    template<class Command>
    void OnClick(QAction *item, Command &&command);
    void FindHelpFile();
    void OpenFirstCatalog();

    void Form_Activate();
    bool Form_Unload();
    void Form_Resize();
    void KeepSmallestSize();

    void ShowHideInfoFrame(bool show) override;
    void EnableCatalogMenus(bool enable) override;
    void LoadTypeMenu() override;
    void LoadShows() override;
    void LoadWebSources() override;
    void UpdateCaption() override;
    void RefillPanel() override;
    void FocusTree() override;

    void ReloadTypes();
    void ShowLoadedTree();
    void EnableListingCommands(bool listing);
    void trv_Collapse(const QModelIndex &node);
    void trv_Expand(const QModelIndex &node);
    void ChangeGroupPicture(const QModelIndex &node, const QString &from, const QString &to);

    UserPrompts &m_prompts;
    StartUp m_startUp;
    clsINI m_settings;
    FormatRegistry m_formats;
    CatalogDocument m_document;
    ShownTypes m_types;
    ViewOptions m_options;
    BrowseTree m_tree;
    RecentCatalogs m_recent;
    CatalogFiles m_files;
    clsResizeLimits m_limits;
    bool m_activated = false;

    QTreeView *trv = nullptr;
    DetailPanel *fra = nullptr;
    MainMenu m_menu;
    HelpKey m_helpKey;
    RecentMenu *m_recentMenu;
    OptionsMenu *m_optionsMenu = nullptr;
    WebSourcesMenu *m_webSourcesMenu;
    DialogCommands *m_dialogs;
    std::unique_ptr<ListingCommands> m_commands;
    std::unique_ptr<MainKeys> m_keys;
    std::unique_ptr<TreeMouse> m_mouse;
};
