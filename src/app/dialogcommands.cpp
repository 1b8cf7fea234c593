#include "dialogcommands.h"

#include "catalogdocument.h"
#include "failures.h"
#include "findlistings.h"
#include "frmAbout.h"
#include "frmList.h"
#include "frmSearch.h"
#include "frmSelectCatalog.h"
#include "frmSetup.h"
#include "frmViewAsWebpage.h"
#include "modCreateShortcut.h"
#include "modHelp.h"
#include "modaldialog.h"
#include "prompts.h"
#include "showntypes.h"
#include "treepane.h"
#include "waitcursor.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmMain";

} // namespace

DialogCommands::DialogCommands(const Services &services, QWidget &mainWindow)
    : QObject(&mainWindow),
      m_services(services),
      m_mainWindow(mainWindow)
{
}

void DialogCommands::mnuEditSearch_Click()
{
    Guarded(kModule, "mnuEditSearch_Click", [this] {
        frmSearch form(m_criteria, m_services.types.ShownNames(), m_services.formats, &m_mainWindow);
        ShowModal(form);
        if (form.Cancelled() || ShowFoundListings())
            return;
        m_services.prompts.Message(
            u"No matches were found."_s, u"No matches"_s, UserPrompts::Icon::Information, UserPrompts::Buttons::Ok);
        m_services.pane.ShowAll();
    });
}

/// False when nothing was found.
bool DialogCommands::ShowFoundListings()
{
    const WaitCursor wait;
    m_services.pane.ShowNothing();
    return m_services.pane.ShowFound(FindListings(m_services.document, BuildSearchQuery(m_criteria)));
}

void DialogCommands::mnuListType_Click(ListKind kind)
{
    Guarded(kModule, "mnuListType_Click", [&] {
        auto *form = new frmList(
            {m_services.tree, m_services.document, m_services.formats},
            {m_services.settings, m_services.limits, m_services.prompts}, &m_mainWindow);
        form->setAttribute(Qt::WA_DeleteOnClose);
        {
            const WaitCursor wait;
            form->LoadList(kind);
        }
        form->show();
    });
}

void DialogCommands::mnuViewAsWebPage_Click()
{
    Guarded(kModule, "mnuViewAsWebPage_Click", [this] {
        frmViewAsWebpage form(
            {m_services.tree, m_services.document, m_services.formats}, m_services.settings, m_services.prompts,
            &m_mainWindow);
        ShowModal(form);
    });
}

void DialogCommands::mnuOptionsSetupTypes_Click()
{
    Guarded(kModule, "mnuOptionsSetupTypes_Click", [this] {
        frmSetup form(m_services.document, m_services.types, m_services.prompts, m_services.limits, &m_mainWindow);
        form.Init(frmSetup::RecordingTypes);
        ShowModal(form);
        m_services.pane.ShowCatalog();
        m_services.document.MarkModified();
    });
}

void DialogCommands::mnuWebSourcesSetup_Click()
{
    Guarded(kModule, "mnuWebSourcesSetup_Click", [this] {
        frmSetup form(m_services.document, m_services.types, m_services.prompts, m_services.limits, &m_mainWindow);
        form.Init(frmSetup::WebSources);
        ShowModal(form);
        m_services.document.MarkModified();
    });
}

void DialogCommands::mnuFileMakeCatalogShortcut_Click()
{
    ::mnuFileMakeCatalogShortcut_Click(m_services.document.Path(), m_services.prompts);
}

void DialogCommands::mnuHelpContents_Click()
{
    Guarded(
        kModule, "mnuHelpContents_Click", [this] { ShowHelp(kHelpContents, m_services.settings, m_services.prompts); });
}

void DialogCommands::mnuHelpAbout_Click()
{
    Guarded(kModule, "mnuHelpAbout_Click", [this] {
        frmAbout form(&m_mainWindow);
        ShowModal(form);
    });
}

QString DialogCommands::SelectCatalog()
{
    frmSelectCatalog form(&m_mainWindow);
    ShowModal(form);
    return form.SelectedCatalog();
}
