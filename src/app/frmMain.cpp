#include "frmMain.h"

#include "commandline.h"
#include "detailpanel.h"
#include "dialogcommands.h"
#include "emptytreehint.h"
#include "failures.h"
#include "filedrop.h"
#include "listingcommands.h"
#include "listkinds.h"
#include "mainkeys.h"
#include "modConvertTo12.h"
#include "modGlobal.h"
#include "modHelp.h"
#include "optionsmenu.h"
#include "paths.h"
#include "prompts.h"
#include "recentmenu.h"
#include "tallarea.h"
#include "treemouse.h"
#include "treepane.h"
#include "twips.h"
#include "websourcesmenu.h"
#include "workspace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>

#include <algorithm>
#include <iostream>

using namespace Qt::StringLiterals;

// The icons lie in a static library, whose resources are linked only when they are named. Outside of any namespace.
static void RegisterIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace {

constexpr auto kModule = "frmMain";
constexpr auto kPositionSection = "Main"_L1;

/// The window's design size, also the smallest it can have, in pixels. Low enough for a laptop's screen.
constexpr QSize kDesignSize{900, 514};
/// Smallest size when the window runs without size limits, in twips.
constexpr QSize kSmallestSize{9000, 7710};

// Form_Resize, in twips.
constexpr int kTreeMargin = 120;
constexpr int kTreeBottomMargin = 360;
constexpr int kFrameWidth = 6000;

QIcon ProgramIcon()
{
    RegisterIcons();
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(u":/icons/discbook-%1.png"_s.arg(size));
    return icon;
}

/// For whoever started the program in a terminal.
void TellTerminal(const QString &text)
{
    std::cerr << ExecutableName().toStdString() << ": " << text.toLocal8Bit().constData() << '\n';
}

} // namespace

frmMain::frmMain(Workspace &workspace, UserPrompts &prompts, StartUp startUp)
    : m_workspace(workspace),
      m_prompts(prompts),
      m_startUp(std::move(startUp)),
      m_recent(workspace.settings),
      m_menu(*menuBar()),
      m_helpKey(*m_menu.mnuHelpContents)
{
    setObjectName("frmMain"_L1);
    setWindowTitle(ApplicationTitle());
    QApplication::setWindowIcon(ProgramIcon());
    MakeControls();
    MakeCommands();
    ConnectCommands();
    resize(WithinScreen(*this, kDesignSize));
}

frmMain::~frmMain() = default;

void frmMain::MakeControls()
{
    auto *client = new QWidget(this);
    client->installEventFilter(this);
    setCentralWidget(client);
    m_pane = new TreePane(m_workspace.tree, *client);
    fra = new DetailPanel(
        m_workspace.document, m_workspace.tree, m_workspace.formats, m_workspace.types, m_pane->View(), client);
    m_frameArea = new TallArea(*fra, client);
}

void frmMain::MakeCommands()
{
    auto &[settings, formats, document, types, options, tree] = m_workspace;
    QTreeView &trv = m_pane->View();
    m_files = std::make_unique<CatalogFiles>(document, *m_pane, m_recent, m_prompts);
    m_commands = std::make_unique<ListingCommands>(document, tree, types, *fra, trv, m_prompts);
    m_keys = std::make_unique<MainKeys>(trv, tree.Model(), *m_menu.mnuEditCopyListing, *m_menu.mnuEditDeleteListing);
    m_mouse = std::make_unique<TreeMouse>(trv, tree.Model(), formats, *fra);
    m_dialogs =
        new DialogCommands({document, *m_pane, tree.Model(), formats, types, settings, m_limits, m_prompts}, *this);
    m_optionsMenu = new OptionsMenu(m_menu, settings, options, types, tree, *m_pane);
    m_recentMenu = new RecentMenu(*m_menu.mnuFile, *m_menu.mnuFileDashMRU, *m_menu.mnuFileDashExit, m_recent);
    m_webSourcesMenu = new WebSourcesMenu(*m_menu.mnuWebSources, *m_menu.mnuWebSourcesDash, document);
}

void frmMain::ConnectCommands()
{
    ConnectFileMenu();
    ConnectEditMenu();
    ConnectDialogs();
    connect(m_webSourcesMenu, &WebSourcesMenu::chosen, this, [this](const QString &address) {
        m_prompts.OpenWithDefaultProgram(address);
    });
    connect(fra, &DetailPanel::listingSelected, this, &frmMain::EnableListingCommands);
    connect(m_pane, &TreePane::shownCountChanged, this, &frmMain::UpdateCaption);
    connect(m_files.get(), &CatalogFiles::opening, fra, [this] { fra->ShowHideInfoFrame(false); });
    connect(m_files.get(), &CatalogFiles::opened, this, &frmMain::EnableCatalogMenus);
    EnableListingCommands(false);
}

void frmMain::ConnectFileMenu()
{
    OnClick(m_menu.mnuFileNewSource, [this] { m_commands->mnuFileNewSource_Click(); });
    OnClick(m_menu.mnuFileNewCatalog, [this] { m_files->mnuFileNewCatalog_Click(); });
    OnClick(m_menu.mnuFileOpenCatalog, [this] { m_files->mnuFileOpenCatalog_Click(); });
    OnClick(m_menu.mnuFileSave, [this] { m_files->mnuFileSave_Click(); });
    OnClick(m_menu.mnuFileMakeCatalogShortcut, [this] { m_dialogs->mnuFileMakeCatalogShortcut_Click(); });
    OnClick(m_menu.mnuFileExit, [this] { close(); });
    connect(m_recentMenu, &RecentMenu::chosen, this, [this](const QString &path) { m_files->mnuFileMRU_Click(path); });
    connect(new FileDrop(*this), &FileDrop::dropped, m_files.get(), &CatalogFiles::OpenDropped, Qt::QueuedConnection);
    connect(&m_workspace.document, &CatalogDocument::modifiedChanged, m_menu.mnuFileSave, &QAction::setEnabled);
    m_menu.mnuFileSave->setEnabled(false);
}

void frmMain::ConnectEditMenu()
{
    OnClick(m_menu.mnuEditSearch, [this] { m_dialogs->mnuEditSearch_Click(); });
    OnClick(m_menu.mnuEditSelectAll, [this] { m_commands->mnuEditSelectAll_Click(); });
    OnClick(m_menu.mnuEditCopyListing, [this] { m_commands->mnuEditCopyListing_Click(); });
    OnClick(m_menu.mnuEditDeleteListing, [this] { m_commands->mnuEditDeleteListing_Click(); });
    OnClick(m_menu.mnuEditRefresh, [this] { m_pane->ShowAll(); });
}

void frmMain::ConnectDialogs()
{
    for (size_t i = 0; i < m_menu.mnuListType.size(); ++i)
        OnClick(m_menu.mnuListType[i], [this, i] { m_dialogs->mnuListType_Click(static_cast<ListKind>(i)); });
    OnClick(m_menu.mnuViewAsWebPage, [this] { m_dialogs->mnuViewAsWebPage_Click(); });
    OnClick(m_menu.mnuOptionsSetupTypes, [this] { m_dialogs->mnuOptionsSetupTypes_Click(); });
    OnClick(m_menu.mnuWebSourcesSetup, [this] { m_dialogs->mnuWebSourcesSetup_Click(); });
    OnClick(m_menu.mnuHelpContents, [this] { m_dialogs->mnuHelpContents_Click(); });
    OnClick(m_menu.mnuHelpAbout, [this] { m_dialogs->mnuHelpAbout_Click(); });
}

template<class Command>
void frmMain::OnClick(QAction *item, Command &&command)
{
    connect(item, &QAction::triggered, this, std::forward<Command>(command));
}

void frmMain::Form_Load()
{
    const auto step = [](auto &&work) { Guarded(kModule, "Form_Load", work); };
    step([this] {
        if (m_startUp.sizeLimits)
            m_limits.AddLimits(*this, width(), height(), 0, 0, true);
    });
    step([this] { FindHelpFile(); });
    step([this] { m_workspace.settings.LoadINI(InFolder(ProgramFolder(), ExecutableName() + u".ini"_s)); });
    step([this] {
        m_optionsMenu->LoadSettings();
        m_menu.AddShortcutTexts();
    });
    step([this] { m_workspace.formats.LoadFormats(); });
    step([this] {
        EnableCatalogMenus(false);
        m_recent.Load();
    });
    step([] { FinishInterruptedConversions(ProgramFolder()); });
    step([this] { OpenFirstCatalog(); });
    step([this] {
        fra->ShowHideInfoFrame(false);
        LoadFormPosition(*this, kPositionSection, m_workspace.settings);
    });
}

void frmMain::FindHelpFile()
{
    if (QFileInfo(HelpFilePath()).isFile())
        return;
    const QString name = ExecutableName() + u".chm"_s;
    m_menu.mnuHelpContents->setEnabled(false);
    m_prompts.Message(
        name + u" was not found.  No help is available."_s, u"No help file"_s, UserPrompts::Icon::Information);
}

void frmMain::OpenFirstCatalog()
{
    const QString asked = m_startUp.arguments.join(u' ');
    QString path = CatalogFromCommandLine(m_startUp.arguments);
    if (path.isEmpty() && m_menu.mnuOptionsOpenMRUOnStartup->isChecked())
        path = m_workspace.settings.ReadString(u"MRU"_s, u"0"_s);
    if (path.isEmpty())
        return;
    if (!QFileInfo::exists(path) && !FinishInterruptedConversion(path))
        TellTerminal((asked.isEmpty() ? path : asked) + u" does not exist"_s);
    m_files->OpenCatalog(path);
}

bool frmMain::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && !m_activated) {
        m_activated = true;
        Form_Activate();
    }
    return QMainWindow::event(event);
}

void frmMain::Form_Activate()
{
    Guarded(kModule, "Form_Activate", [this] {
        if (!m_workspace.document.Path().isEmpty() || FilesInFolder(ProgramFolder(), u"*.xml"_s).isEmpty())
            return;
        if (const QString path = m_dialogs->SelectCatalog(); !path.isEmpty())
            m_files->OpenCatalog(path);
    });
}

bool frmMain::eventFilter(QObject *watched, QEvent *event)
{
    // What the panel needs changes with the font.
    const bool isForLayout = event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest;
    if (isForLayout && watched == centralWidget())
        Form_Resize();
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::closeEvent(QCloseEvent *event)
{
    event->setAccepted(Form_Unload());
}

bool frmMain::Form_Unload()
{
    const auto mayClose = Guarded(kModule, "Form_Unload", [this] { return m_files->OfferToSave(); });
    if (!mayClose.value_or(false))
        return false;
    Guarded(kModule, "Form_Unload", [this] {
        m_files->DropEdits();
        SaveFormPosition(*this, kPositionSection, m_workspace.settings);
        m_limits.RemoveAllLimits();
    });
    return true;
}

void frmMain::Form_Resize()
{
    Guarded(kModule, "Form_Resize", [this] {
        if (isMinimized())
            return;
        if (!m_startUp.sizeLimits)
            KeepSmallestSize();
        const int margin = PixelsFromTwips(kTreeMargin);
        const int height = centralWidget()->height() - margin - PixelsFromTwips(kTreeBottomMargin);
        // Large fonts need more room than the frame's design width.
        const int frameWidth = std::max(PixelsFromTwips(kFrameWidth), m_frameArea->WidthAt(height));
        const int frameLeft = centralWidget()->width() - margin - frameWidth;
        m_frameArea->setGeometry(frameLeft, margin, frameWidth, height);
        m_pane->View().setGeometry(margin, margin, frameLeft - 2 * margin, height);
    });
}

void frmMain::KeepSmallestSize()
{
    const QSize smallest(PixelsFromTwips(kSmallestSize.width()), PixelsFromTwips(kSmallestSize.height()));
    const QSize wanted = size().expandedTo(smallest);
    if (wanted != size())
        resize(wanted);
}

void frmMain::EnableCatalogMenus(bool enable)
{
    m_pane->View().setEnabled(enable);
    for (QMenu *menu : {m_menu.mnuEdit, m_menu.mnuOptions, m_menu.mnuView, m_menu.mnuWebSources})
        menu->setEnabled(enable);
    // The key of a command works although its menu is disabled, so those that have one are switched themselves.
    for (QAction *item :
         {m_menu.mnuFileNewSource, m_menu.mnuFileMakeCatalogShortcut, m_menu.mnuEditSearch, m_menu.mnuEditRefresh})
        item->setEnabled(enable);
    m_webSourcesMenu->LoadWebSources();
    UpdateCaption();
}

void frmMain::UpdateCaption()
{
    QString caption = ApplicationTitle();
    if (m_pane->View().isEnabled())
        caption += u": "_s + FileTitle(m_workspace.document.Path());
    if (const qsizetype shown = m_workspace.tree.ShownCount(); shown > 0)
        caption += u" (Showing %1 Items)"_s.arg(shown);
    setWindowTitle(caption);
    const auto filter = static_cast<size_t>(m_workspace.options.filter);
    const QString filterName = m_menu.mnuViewFilter[filter]->text().remove(u'&');
    m_pane->View().SetHint(EmptyTreeHint(m_workspace, m_pane->View().isEnabled(), filterName));
}

void frmMain::EnableListingCommands(bool listing)
{
    // Nothing is copied or deleted through a filtered view.
    const bool unfiltered = m_workspace.options.filter == ViewFilter::All;
    m_menu.mnuEditSelectAll->setEnabled(listing);
    m_menu.mnuEditCopyListing->setEnabled(listing && unfiltered);
    m_menu.mnuEditDeleteListing->setEnabled(listing && unfiltered);
}
