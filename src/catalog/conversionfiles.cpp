#include "conversionfiles.h"

#include "failures.h"
#include "flatfile.h"
#include "paths.h"
#include "xmlfile.h"
#include "xmlwriter.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

/// The file itself, there or not, when the path is a link to it: the link is to lead to the converted catalog.
QString WithoutLinks(const QString &path)
{
    constexpr int kMaxLinks = 40;
    QFileInfo info(path);
    for (int links = 0; info.isSymbolicLink() && links < kMaxLinks; ++links)
        info.setFile(info.symLinkTarget());
    return info.filePath();
}

void Delete(const QString &path)
{
    QFile file(path);
    if (!file.remove())
        throw ProgramError(Failure::Write, file.errorString() + u": "_s + QDir::toNativeSeparators(path));
}

void Rename(const QString &from, const QString &to)
{
    QFile file(from);
    if (!file.rename(to))
        throw ProgramError(Failure::Write, file.errorString() + u": "_s + QDir::toNativeSeparators(to));
}

void BackUp(const QString &path, const QString &backup)
{
    WriteFileAtomically(backup, ReadWholeFile(path));
}

void WriteMerged(const XmlFile &catalog, const ConversionFiles &files)
{
    // One that a conversion cut off earlier has left; write-protected, it could not be replaced.
    QFile::remove(files.merged);
    SaveXml(*catalog.document, catalog.encoding, files.merged);
    QFile::setPermissions(files.merged, QFile::permissions(files.catalog));
}

} // namespace

ConversionFiles::ConversionFiles(const QString &catalogPath, const QString &userPath)
    : catalog(WithoutLinks(catalogPath)),
      user(userPath),
      merged(catalog + kMergedSuffix),
      backupFolder(InFolder(ProgramFolder(), u"Conversion Backup"_s)),
      catalogBackup(InFolder(backupFolder, FileTitle(catalog, true))),
      userBackup(InFolder(backupFolder, FileTitle(userPath, true)))
{
}

bool ConversionFiles::IsInBackupFolder() const
{
    const QFileInfo backups(backupFolder);
    return backups.exists() && QFileInfo(QFileInfo(catalog).absolutePath()) == backups;
}

/// Nothing is deleted before everything that is needed to go on lies on the disk. Once the catalog is gone, the merged
/// file stays whatever happens: Complete goes on from there.
void ConversionFiles::Replace(const XmlFile &mergedCatalog, const std::function<void(ConversionStep)> &stepDone) const
{
    auto dropMerged = qScopeGuard([this] { QFile::remove(merged); });
    WriteMerged(mergedCatalog, *this);
    stepDone(ConversionStep::MergedFileWritten);
    if (!QDir().mkpath(backupFolder))
        throw ProgramError(Failure::Write, u"Cannot make the folder "_s + backupFolder);
    BackUp(catalog, catalogBackup);
    stepDone(ConversionStep::CatalogBackedUp);
    BackUp(user, userBackup);
    stepDone(ConversionStep::UserFileBackedUp);
    Delete(catalog);
    dropMerged.dismiss();
    stepDone(ConversionStep::CatalogDeleted);
    Delete(user);
    stepDone(ConversionStep::UserFileDeleted);
    Rename(merged, catalog);
    stepDone(ConversionStep::MergedFileRenamed);
}

/// A merged file alone does not tell that the backups of its conversion were made; a user file that is not the one
/// backed up belongs to something else.
bool ConversionFiles::IsInterrupted() const
{
    return !QFileInfo::exists(catalog) && QFileInfo::exists(merged) && QFileInfo::exists(catalogBackup) &&
           QFileInfo::exists(userBackup) &&
           (!QFileInfo::exists(user) || ReadWholeFile(user) == ReadWholeFile(userBackup));
}

void ConversionFiles::Complete() const
{
    if (QFileInfo::exists(user))
        Delete(user);
    Rename(merged, catalog);
}
