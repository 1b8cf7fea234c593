#pragma once

#include <QSet>
#include <QString>

#include <exception>
#include <optional>

class CatalogDocument;
class UserPrompts;

/// Sees to it that nothing is lost by the saving of catalogs: the first of a run backs up the file as it was opened,
/// and what another program wrote is replaced only when the user says so, and kept then.
class SafeOverwrite
{
public:
    /// Both must outlive this object.
    SafeOverwrite(const CatalogDocument &document, UserPrompts &prompts);

    /// Before the document is saved. False when the user keeps what another program wrote. Throws ProgramError when
    /// that cannot be read, or not be kept.
    bool BeforeSave();

    /// Before a new catalog is written, perhaps over another file: that is backed up, whatever this run saved in it.
    void BeforeNew(const QString &path) { BackUp(path, {}); }

    /// After a catalog was written: there is nothing of it to back up any more in this run.
    void Written(const QString &path);

private:
    void BackUp(const QString &path, std::optional<quint64> digest);
    void TellOfNoBackup(const std::exception &reason);
    bool IsOnDisk(quint64 digest) const;
    bool MayOverwrite() const;
    quint64 KeepOther() const;

    const CatalogDocument &m_document;
    UserPrompts &m_prompts;
    QSet<QString> m_backedUp; ///< canonical paths
    bool m_toldOfNoBackup = false;
};
