#pragma once

#include <QString>

#include <optional>

/// A copy of a catalog's file, in a folder of the program's folder.
struct CatalogCopy
{
    QString path;
    quint64 digest = 0; ///< of its content
};

/// The path for a file that belongs to a catalog: "Live 2026-11-21 20.49.07 3f2a91c4-5be01c77.xml" in a folder of the
/// program's folder, which is made when it is missing. The digits at its end tell catalogs of one name apart, and
/// contents of one second, whoever writes them. Throws ProgramError.
QString NewCopyPath(const QString &folder, const QString &catalogPath, quint64 contentDigest);

/// Copies a catalog's file as it is now into "Recovery". Throws ProgramError.
CatalogCopy CopyToRecovery(const QString &catalogPath);

/// Copies a catalog's file, where there is one, into "Backups", where the last five of each catalog are kept, besides
/// those that were written to since. False when it has not the content of that digest. Throws ProgramError.
bool BackUpCatalog(const QString &catalogPath, std::optional<quint64> digest = {});
