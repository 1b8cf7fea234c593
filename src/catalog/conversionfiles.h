#pragma once

#include <QString>
#include <QStringList>

#include <functional>

struct XmlFile;

/// Where the old files of converted catalogs are kept.
QString ConversionBackupFolder();

/// The steps of a conversion that change something on disk, in their order.
enum class ConversionStep {
    MergedFileWritten, ///< beside the catalog, under a name of its own
    CatalogBackedUp,
    UserFileBackedUp,
    CatalogDeleted,
    UserFileDeleted,
    MergedFileRenamed,
};

/// All files that a conversion touches, and what it does with them.
struct ConversionFiles
{
    ConversionFiles(const QString &catalogPath, const QString &userPath);

    /// Whether the catalog lies where its own backup would go.
    bool IsInBackupFolder() const;

    /// Moves what an earlier conversion has left of a merged catalog, perhaps all that there is of it, into "Recovery".
    /// Returns where, nothing when there is none. Throws ProgramError.
    QString PutMergedAside() const;

    /// Puts the merged catalog in the catalog's place, after both files were backed up. Throws ProgramError when a step
    /// fails. Returns what could not be kept of the old catalog's file, in the user's words.
    QStringList Replace(const XmlFile &mergedCatalog, const std::function<void(ConversionStep)> &stepDone) const;

    /// Whether a conversion was cut off after it had begun to delete.
    bool IsInterrupted() const;
    /// Does what such a conversion has left to do.
    void Complete() const;

    QString catalog;
    QString user;
    QString merged;
    QString backupFolder;
    QString catalogBackup;
    QString userBackup;
};
