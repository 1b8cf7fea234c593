#pragma once

#include <QString>

/// A copy of a catalog's file, in a folder of the program's folder.
struct CatalogCopy
{
    QString path;
    quint64 digest = 0; ///< of its content
};

/// The path of a file that is not there yet, for something that belongs to a catalog: "Live 2026-11-21 20.49.07
/// 3f2a91c4.xml" in a folder of the program's folder, which is made when it is missing. The digits at its end tell
/// catalogs of one name apart. Throws ProgramError.
QString NewCopyPath(const QString &folder, const QString &catalogPath);

/// Copies a catalog's file as it is now into "Recovery". Throws ProgramError.
CatalogCopy CopyToRecovery(const QString &catalogPath);
