#include "conversionfiles.h"

#include "besidefile.h"
#include "catalogcopies.h"
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
    if (!IsMissing(files.catalog))
        throw ProgramError(Failure::Write, u"Destination file exists: "_s + QDir::toNativeSeparators(files.catalog));
    RenameFile(files.merged, files.catalog);
    FlushFolder(QFileInfo(files.catalog).absolutePath());
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

QString ConversionFiles::PutMergedAside() const
{
    if (IsMissing(merged))
        return {};
    QString copy = CopyToRecovery(merged).path;
    Delete(merged);
    return copy;
}

/// Nothing is deleted before everything that is needed to go on lies on the disk. Once the catalog is gone, the merged
/// file stays whatever happens: Complete goes on from there.
QStringList
ConversionFiles::Replace(const XmlFile &mergedCatalog, const std::function<void(ConversionStep)> &stepDone) const
{
    auto dropMerged = qScopeGuard([this] { QFile::remove(merged); });
    QStringList lost = SaveXml(*mergedCatalog.document, mergedCatalog.encoding, merged, catalog).lost;
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
    return IsMissing(catalog) && QFileInfo::exists(merged) && QFileInfo::exists(catalogBackup) &&
           QFileInfo::exists(userBackup) && (IsMissing(user) || ReadWholeFile(user) == ReadWholeFile(userBackup));
}

void ConversionFiles::Complete() const
{
    if (!IsMissing(user))
        Delete(user);
    PutInPlace(*this);
}
