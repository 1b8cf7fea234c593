#include "catalogfiles.h"

#include "failures.h"
#include "modConvertTo12.h"
#include "paths.h"
#include "prompts.h"
#include "recentcatalogs.h"
#include "treepane.h"
#include "waitcursor.h"

#include <QFileInfo>
#include <QItemSelectionModel>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmMain";
constexpr auto kFilter = "XML Files (*.xml)|*.xml|All files (*.*)|*.*"_L1;

} // namespace

CatalogFiles::CatalogFiles(CatalogDocument &document, TreePane &pane, RecentCatalogs &recent, UserPrompts &prompts)
    : m_document(document),
      m_pane(pane),
      m_recent(recent),
      m_prompts(prompts),
      m_overwrite(document, prompts),
      m_recovery(document, prompts)
{
    connect(pane.View().selectionModel(), &QItemSelectionModel::currentChanged, &m_recovery, &Recovery::Flush);
}

void CatalogFiles::OpenCatalog(const QString &givenPath)
{
    const QString path = FullPath(givenPath);
    emit opening();
    if (!QFileInfo::exists(path))
        FinishInterruptedConversion(path);
    const QString companion = UserFilePath(path);
    if (QFileInfo(companion).isFile() && !Convert(path, companion)) {
        ReplaceByEmptyDocument();
        return;
    }
    // An entry under another spelling would stand beside that of the full path, or stay when the file does not open.
    if (givenPath != path)
        m_recent.Remove(givenPath);

    switch (Load(path)) {
    case CatalogDocument::LoadResult::Loaded:
        m_document.SetPath(path);
        m_recovery.Offer();
        emit opened(true);
        m_pane.ShowCatalog();
        m_recent.AddToMRU(path);
        m_pane.View().setFocus();
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

/// Brings an older catalog of two files up to date. False when it was not done.
bool CatalogFiles::Convert(const QString &path, const QString &companion)
{
    std::optional<WaitCursor> wait;
    const auto working = [&wait](bool starts) {
        if (starts)
            wait.emplace();
        else
            wait.reset();
    };
    const auto converted = [&](const QStringList &lost) { m_overwrite.TellOfLost(path, lost); };
    return ConvertFileTo12(path, companion, m_prompts, {.working = working, .stepDone = {}, .converted = converted});
}

CatalogDocument::LoadResult CatalogFiles::Load(const QString &path)
{
    const WaitCursor wait;
    return m_document.Load(path);
}

void CatalogFiles::ReplaceByEmptyDocument()
{
    m_document.Clear();
    emit opened(false);
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
        m_overwrite.BeforeNew(path);
        m_overwrite.Written(path, CatalogDocument::WriteNewCatalog(path));
        OpenCatalog(path);
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
    Guarded(kModule, "mnuFileMRU_Click", [&] { OpenInstead(path); });
}

void CatalogFiles::OpenDropped(const QString &path)
{
    Guarded(kModule, "OpenDropped", [&] { OpenInstead(path); });
}

void CatalogFiles::OpenInstead(const QString &path)
{
    if (!OfferToSave())
        return;
    m_document.DropEdits();
    OpenCatalog(path);
}

bool CatalogFiles::mnuFileSave_Click()
{
    const auto saved = Guarded(kModule, "mnuFileSave_Click", [this] {
        if (!m_overwrite.BeforeSave())
            return false;
        m_overwrite.Written(m_document.Path(), Save());
        return true;
    });
    return saved.value_or(false);
}

SavedXml CatalogFiles::Save()
{
    const WaitCursor wait;
    return m_document.Save();
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
