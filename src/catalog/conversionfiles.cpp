#include "conversionfiles.h"

#include "besidefile.h"
#include "contentdigest.h"
#include "failures.h"
#include "filecopy.h"
#include "flatfile.h"
#include "paths.h"
#include "xmlfile.h"
#include "xmlwriter.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

void Delete(const QString &path)
{
    QFile file(path);
    if (!file.remove())
        throw ProgramError(Failure::Write, file.errorString() + u": "_s + QDir::toNativeSeparators(path));
    FlushFolder(QFileInfo(path).absolutePath());
}

// Of a long name what tells it is enough, since the whole would be too long with something added.
QString MergedPath(const QString &catalog)
{
    const QString name = FileTitle(catalog, true);
    const QString start = ShortName(name);
    const QString digits = start == name ? QString() : u'-' + DigestDigits(ContentDigest(name.toUtf8()));
    return catalog.chopped(name.size()) + start + digits + u".converted"_s;
}

/// The merged file takes the catalog's place, unless something else has come into being there.
void PutInPlace(const ConversionFiles &files)
{
    if (QFileInfo::exists(files.catalog))
        throw ProgramError(Failure::Write, u"Destination file exists: "_s + QDir::toNativeSeparators(files.catalog));
    RenameFile(files.merged, files.catalog);
    FlushFolder(QFileInfo(files.catalog).absolutePath());
}

QStringList WriteMerged(const XmlFile &catalog, const ConversionFiles &files)
{
    // One that a conversion cut off earlier has left; write-protected, it could not be replaced.
    QFile::remove(files.merged);
    return SaveXml(*catalog.document, catalog.encoding, files.merged, files.catalog).lost;
}

} // namespace

QString ConversionBackupFolder()
{
    return InFolder(ProgramFolder(), u"Conversion Backup"_s);
}

ConversionFiles::ConversionFiles(const QString &catalogPath, const QString &userPath)
    : catalog(WithoutLinks(catalogPath)),
      user(userPath),
      merged(MergedPath(catalog)),
      backupFolder(ConversionBackupFolder()),
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
QStringList
ConversionFiles::Replace(const XmlFile &mergedCatalog, const std::function<void(ConversionStep)> &stepDone) const
{
    auto dropMerged = qScopeGuard([this] { QFile::remove(merged); });
    QStringList lost = WriteMerged(mergedCatalog, *this);
    stepDone(ConversionStep::MergedFileWritten);
    MakeFolder(backupFolder);
    CopyWholeFile(catalog, catalogBackup);
    stepDone(ConversionStep::CatalogBackedUp);
    CopyWholeFile(user, userBackup);
    stepDone(ConversionStep::UserFileBackedUp);
    Delete(catalog);
    dropMerged.dismiss();
    stepDone(ConversionStep::CatalogDeleted);
    Delete(user);
    stepDone(ConversionStep::UserFileDeleted);
    PutInPlace(*this);
    stepDone(ConversionStep::MergedFileRenamed);
    return lost;
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
    PutInPlace(*this);
}
