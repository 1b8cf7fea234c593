#include "catalogfiles.h"

#include "failures.h"
#include "modConvertTo12.h"
#include "paths.h"
#include "prompts.h"
#include "recentcatalogs.h"
#include "waitcursor.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmMain";
constexpr auto kFilter = "XML Files (*.xml)|*.xml|All files (*.*)|*.*"_L1;

} // namespace

CatalogFiles::CatalogFiles(CatalogDocument &document, RecentCatalogs &recent, UserPrompts &prompts, CatalogViews &views)
    : m_document(document),
      m_recent(recent),
      m_prompts(prompts),
      m_views(views)
{
}

void CatalogFiles::OpenCatalog(const QString &givenPath)
{
    const QString path = FullPath(givenPath);
    m_views.ShowHideInfoFrame(false);
    if (!QFileInfo::exists(path))
        FinishInterruptedConversion(path);
    const QString companion = UserFilePath(path);
    if (m_convert && QFileInfo::exists(companion) && !m_convert(path, companion)) {
        ReplaceByEmptyDocument();
        return;
    }
    // An entry under another spelling would stand beside that of the full path, or stay when the file does not open.
    if (givenPath != path)
        m_recent.Remove(givenPath);

    switch (Load(path)) {
    case CatalogDocument::LoadResult::Loaded:
        m_document.SetPath(path);
        m_views.EnableCatalogMenus(true);
        m_views.LoadTypeMenu();
        m_views.LoadShows();
        m_views.LoadWebSources();
        m_recent.AddToMRU(path);
        m_views.FocusTree();
        return;
    case CatalogDocument::LoadResult::Unreadable:
        m_prompts.Message(u"Error loading concert data!"_s, ApplicationTitle());
        break;
    case CatalogDocument::LoadResult::NotACatalog:
        m_prompts.Message(
            u"This file does not appear to be a valid catalog file.  Please try another file."_s, u"Invalid file"_s,
            UserPrompts::Icon::Information);
        break;
    }
    GoBack(path);
}

CatalogDocument::LoadResult CatalogFiles::Load(const QString &path)
{
    const WaitCursor wait;
    return m_document.Load(path);
}

void CatalogFiles::ReplaceByEmptyDocument()
{
    m_document.Clear();
    m_views.EnableCatalogMenus(false);
    m_views.UpdateCaption();
}

void CatalogFiles::GoBack(const QString &failedPath)
{
    const QString before = m_document.Path();
    // The file that was open may be the one that no longer opens; trying it again would go round for ever.
    if (before == failedPath)
        m_document.SetPath({});
    ReplaceByEmptyDocument();
    m_recent.Remove(failedPath);
    if (!m_document.Path().isEmpty())
        OpenCatalog(before);
}

void CatalogFiles::mnuFileNewCatalog_Click()
{
    Guarded(kModule, "mnuFileNewCatalog_Click", [this] {
        if (!OfferToSave())
            return;
        const QString path = FullPath(m_prompts.SaveFile(
            {.title = u"New Catalog"_s,
             .filter = kFilter,
             .folder = ProgramFolder(),
             .extension = u"xml"_s,
             .proposed = {}}));
        if (path.isEmpty())
            return;
        CatalogDocument::WriteNewCatalog(path);
        OpenCatalog(path);
        m_views.UpdateCaption();
        // Also when nothing was opened, since the conversion of its companion was declined.
        if (m_recent.Paths().value(0) != path)
            m_recent.AddToMRU(path);
    });
}

void CatalogFiles::mnuFileOpenCatalog_Click()
{
    Guarded(kModule, "mnuFileOpenCatalog_Click", [this] {
        if (!OfferToSave())
            return;
        const QString path = m_prompts.OpenFile(
            {.title = u"Open Catalog"_s,
             .filter = kFilter,
             .folder = ProgramFolder(),
             .extension = {},
             .proposed = m_document.Path()});
        if (!path.isEmpty())
            OpenCatalog(path);
    });
}

void CatalogFiles::mnuFileMRU_Click(const QString &path)
{
    Guarded(kModule, "mnuFileMRU_Click", [&] {
        if (!OfferToSave())
            return;
        m_document.DropEdits();
        OpenCatalog(path);
    });
}

bool CatalogFiles::mnuFileSave_Click()
{
    const auto saved = Guarded(kModule, "mnuFileSave_Click", [this] {
        const WaitCursor wait;
        if (!m_document.Save())
            return false;
        m_views.RefillPanel();
        // A listing without any content leaves the catalog, and the tree, when it is saved.
        m_views.UpdateCaption();
        return true;
    });
    return saved.value_or(false);
}

bool CatalogFiles::OfferToSave()
{
    if (!m_document.IsModified())
        return true;
    const UserPrompts::Answer answer = m_prompts.Message(
        u"Save your changes?"_s, u"Save Confirmation"_s, UserPrompts::Icon::None, UserPrompts::Buttons::YesNoCancel);
    if (answer == UserPrompts::Answer::Yes)
        return mnuFileSave_Click();
    return answer == UserPrompts::Answer::No;
}
