#pragma once

#include "catalogfiles.h"
#include "clsResizeLimits.h"
#include "helpkey.h"
#include "mainmenu.h"
#include "recentcatalogs.h"

#include <QMainWindow>
#include <QStringList>

#include <memory>

class DetailPanel;
class DialogCommands;
class ListingCommands;
class MainKeys;
class OptionsMenu;
class RecentMenu;
class TallArea;
class TreeMouse;
class TreePane;
class UserPrompts;
class WebSourcesMenu;
struct Workspace;

/// The main window. Connects menus, tree and panel to the rooms that do the work.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    struct StartUp
    {
        QStringList arguments;  ///< the command line without the program's name
        bool sizeLimits = true; ///< false: the window itself keeps its smallest size
    };

    /// Both must outlive the window.
    frmMain(Workspace &workspace, UserPrompts &prompts, StartUp startUp);
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
    void MakeCommands();
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

    void EnableCatalogMenus(bool enable);
    void EnableListingCommands(bool listing);
    void UpdateCaption();

    Workspace &m_workspace;
    UserPrompts &m_prompts;
    StartUp m_startUp;
    RecentCatalogs m_recent;
    clsResizeLimits m_limits;
    bool m_activated = false;

    TreePane *m_pane = nullptr;
    DetailPanel *fra = nullptr;
    TallArea *m_frameArea = nullptr;
    MainMenu m_menu;
    HelpKey m_helpKey;
    RecentMenu *m_recentMenu = nullptr;
    OptionsMenu *m_optionsMenu = nullptr;
    WebSourcesMenu *m_webSourcesMenu = nullptr;
    DialogCommands *m_dialogs = nullptr;
    std::unique_ptr<CatalogFiles> m_files;
    std::unique_ptr<ListingCommands> m_commands;
    std::unique_ptr<MainKeys> m_keys;
    std::unique_ptr<TreeMouse> m_mouse;
};
