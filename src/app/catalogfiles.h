#pragma once

#include "catalogdocument.h"
#include "recovery.h"
#include "safeoverwrite.h"

#include <QObject>
#include <QString>

class RecentCatalogs;
class TreePane;
class UserPrompts;

/// Opens, creates and saves catalogs, and asks before edits are lost.
class CatalogFiles : public QObject
{
    Q_OBJECT

public:
    /// All must outlive this object.
    CatalogFiles(CatalogDocument &document, TreePane &pane, RecentCatalogs &recent, UserPrompts &prompts);

    /// Opens a catalog file, which is remembered by its full path. One that does not open is told to the user and
    /// leaves the recent list, and the catalog that was open before is opened again from its file.
    void OpenCatalog(const QString &givenPath);

    /// The commands of the File menu.
    void mnuFileNewCatalog_Click();
    void mnuFileOpenCatalog_Click();
    void mnuFileMRU_Click(const QString &path);
    /// A file that was dropped on the window, opened as a recent catalog is.
    void OpenDropped(const QString &path);
    /// False when the save failed, which was reported, or the user keeps what another program wrote.
    bool mnuFileSave_Click();

    /// Offers to save a changed catalog. False when the user cancelled or nothing was saved: the command ends there.
    bool OfferToSave();

    /// Gives up what is not saved: the window closes.
    void DropEdits() { m_recovery.DropEdits(); }

signals:
    /// A catalog file is about to be opened.
    void opening();
    /// From now on a catalog is open, or none.
    void opened(bool isOpen);

private:
    void OpenInstead(const QString &path);
    bool Convert(const QString &path, const QString &companion);
    CatalogDocument::LoadResult Load(const QString &path);
    SavedXml Save();
    void ReplaceByEmptyDocument();
    void GoBack(const QString &failedPath);

    CatalogDocument &m_document;
    TreePane &m_pane;
    RecentCatalogs &m_recent;
    UserPrompts &m_prompts;
    SafeOverwrite m_overwrite;
    Recovery m_recovery;
};
