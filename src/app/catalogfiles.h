#pragma once

#include "catalogdocument.h"

#include <QString>

#include <functional>

class RecentCatalogs;
class UserPrompts;

/// What opening and saving a catalog asks of the window.
class CatalogViews
{
public:
    CatalogViews() = default;
    CatalogViews(const CatalogViews &) = delete;
    CatalogViews &operator=(const CatalogViews &) = delete;
    virtual ~CatalogViews() = default;

    virtual void ShowHideInfoFrame(bool show) = 0;
    virtual void EnableCatalogMenus(bool enable) = 0;
    virtual void LoadTypeMenu() = 0;
    virtual void LoadShows() = 0;
    virtual void LoadWebSources() = 0;
    virtual void UpdateCaption() = 0;
    /// Fills the detail panel afresh for the selected node.
    virtual void RefillPanel() = 0;
    virtual void FocusTree() = 0;
};

/// Opens, creates and saves catalogs, and asks before edits are lost.
class CatalogFiles
{
public:
    /// Brings an older catalog of two files up to date: catalog path, companion path; false when it was not done.
    using Converter = std::function<bool(const QString &, const QString &)>;

    /// All must outlive this object.
    CatalogFiles(CatalogDocument &document, RecentCatalogs &recent, UserPrompts &prompts, CatalogViews &views);

    void SetConverter(Converter converter) { m_convert = std::move(converter); }

    /// Opens a catalog file, which is remembered by its full path. One that does not open is told to the user and
    /// leaves the recent list, and the catalog that was open before is opened again from its file.
    void OpenCatalog(const QString &givenPath);

    /// The commands of the File menu.
    void mnuFileNewCatalog_Click();
    void mnuFileOpenCatalog_Click();
    void mnuFileMRU_Click(const QString &path);
    /// False when the save failed, which was reported.
    bool mnuFileSave_Click();

    /// Offers to save a changed catalog. False when the user cancelled or the save failed: the command ends there.
    bool OfferToSave();

private:
    CatalogDocument::LoadResult Load(const QString &path);
    void ReplaceByEmptyDocument();
    void GoBack(const QString &failedPath);

    CatalogDocument &m_document;
    RecentCatalogs &m_recent;
    UserPrompts &m_prompts;
    CatalogViews &m_views;
    Converter m_convert;
};
