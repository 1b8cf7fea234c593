#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

class CatalogDocument;
class UserPrompts;
struct SavedXml;

/// Sees to it that nothing is lost by the saving of catalogs: what this run has not written itself is backed up as it
/// was opened, and what another program wrote meanwhile is replaced only when the user says so, and kept then.
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

    /// After a catalog was written: tells what could not be kept of the file that was there.
    void Written(const QString &path, const SavedXml &saved);

    /// Tells the user what a new file could not have of the old one; once of each catalog in a run.
    void TellOfLost(const QString &path, const QStringList &lost);

private:
    bool BackUp(const QString &path, std::optional<quint64> digest);
    void TellOfNoBackup();
    bool IsOnDisk(quint64 digest) const;
    bool IsKept(quint64 digest);
    bool MayOverwrite() const;
    quint64 KeepOther();

    const CatalogDocument &m_document;
    UserPrompts &m_prompts;
    /// What this run has written to a catalog or copied of it last: its digest, by the canonical path.
    QHash<QString, quint64> m_kept;
    QSet<QString> m_toldOfLost; ///< canonical paths
    QString m_noBackup;         ///< why there is none of what is being overwritten
    bool m_toldOfNoBackup = false;
};
