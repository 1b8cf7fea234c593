#include "catalogcopies.h"

#include "besidefile.h"
#include "contentdigest.h"
#include "filecopy.h"
#include "flatfile.h"
#include "paths.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kBackups = "Backups"_L1;
constexpr qsizetype kKept = 5;

constexpr QStringView kTime = u"yyyy-MM-dd HH.mm.ss";

/// How the copies of a catalog are called; by name they are in the order of their times.
class CopyNames
{
public:
    explicit CopyNames(const QString &catalogPath);

    /// The name up to what tells the content.
    QString Start(const QDateTime &time) const { return m_start + time.toString(kTime) + m_mark; }
    QString Name(const QDateTime &time, quint64 contentDigest) const;
    bool IsOne(const QString &name) const;

private:
    QString m_start;
    QString m_mark; ///< behind the time
};

CopyNames::CopyNames(const QString &catalogPath)
{
    const QString path = CanonicalPath(catalogPath);
    m_start = ShortName(FileTitle(path)) + u' ';
    m_mark = u' ' + DigestDigits(ContentDigest(path.toUtf8())) + u'-';
}

QString CopyNames::Name(const QDateTime &time, quint64 contentDigest) const
{
    return Start(time) + DigestDigits(contentDigest) + u".xml"_s;
}

bool CopyNames::IsOne(const QString &name) const
{
    const bool isAsLong = name.size() == Name(QDateTime::currentDateTime(), 0).size();
    return isAsLong && name.startsWith(m_start) && name.sliced(m_start.size() + kTime.size()).startsWith(m_mark);
}

CatalogCopy Copy(const QString &catalogPath, const QString &folder, std::optional<quint64> digest = {})
{
    const quint64 expected = digest ? *digest : FileDigest(catalogPath).value_or(0);
    CatalogCopy copy{.path = NewCopyPath(folder, catalogPath, expected)};
    copy.digest = CopyWholeFile(catalogPath, copy.path);
    // Copies have names of their own, so that none would come by what another has left.
    RemoveUnfinishedIn(InFolder(ProgramFolder(), folder));
    return copy;
}

// Who opens a backup and goes on in it does not lose that.
bool IsAsMade(const QString &backup)
{
    return FileTitle(backup).endsWith(DigestDigits(FileDigest(backup).value_or(0)));
}

// Whatever the clock says, the newest stays.
void RemoveOldBackups(const QString &catalogPath, const QString &newest)
{
    const CopyNames names(catalogPath);
    const QString folder = InFolder(ProgramFolder(), kBackups);
    QStringList copies = FilesInFolder(folder, u"*.xml"_s);
    copies.removeIf([&names](const QString &name) { return !names.IsOne(name); });
    for (qsizetype i = 0; i < copies.size() - kKept; ++i) {
        const QString path = InFolder(folder, copies[i]);
        if (path != newest && IsAsMade(path))
            QFile::remove(path);
    }
}

} // namespace

// Where something of that second is there, one of a later takes care of the order.
QString NewCopyPath(const QString &folder, const QString &catalogPath, quint64 contentDigest)
{
    const QString fullFolder = InFolder(ProgramFolder(), folder);
    MakeFolder(fullFolder);
    const CopyNames names(catalogPath);
    const QStringList files = QDir(fullFolder).entryList(QDir::Files);
    const auto isTaken = [&](const QDateTime &time) {
        const QString start = names.Start(time);
        return std::ranges::any_of(files, [&start](const QString &name) { return name.startsWith(start); });
    };
    QDateTime time = QDateTime::currentDateTime();
    while (isTaken(time))
        time = time.addSecs(1);
    return InFolder(fullFolder, names.Name(time, contentDigest));
}

CatalogCopy CopyToRecovery(const QString &catalogPath)
{
    return Copy(catalogPath, u"Recovery"_s);
}

bool BackUpCatalog(const QString &catalogPath, std::optional<quint64> digest)
{
    if (IsMissing(catalogPath))
        return true;
    const CatalogCopy copy = Copy(catalogPath, kBackups, digest);
    if (digest && copy.digest != *digest) {
        QFile::remove(copy.path);
        return false;
    }
    RemoveOldBackups(catalogPath, copy.path);
    return true;
}
