#include "catalogcopies.h"

#include "besidefile.h"
#include "contentdigest.h"
#include "filecopy.h"
#include "flatfile.h"
#include "paths.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kBackups = "Backups"_L1;
constexpr qsizetype kKept = 5;

/// How the copies of a catalog are called; by name they are in the order of their times.
class CopyNames
{
public:
    explicit CopyNames(const QString &catalogPath);

    QString Name(const QDateTime &time) const { return m_start + time.toString(kTime) + m_end; }
    /// The time in a name, not valid in that of anything else.
    QDateTime Time(const QString &name) const;

private:
    static constexpr auto kTime = u"yyyy-MM-dd HH.mm.ss";

    QString m_start;
    QString m_end;
};

CopyNames::CopyNames(const QString &catalogPath)
{
    const QString path = CanonicalPath(catalogPath);
    const QString digest = u"%1"_s.arg(ContentDigest(path.toUtf8()), 16, 16, QChar(u'0'));
    m_start = ShortName(FileTitle(path)) + u' ';
    m_end = u' ' + digest.first(8) + u".xml"_s;
}

QDateTime CopyNames::Time(const QString &name) const
{
    const qsizetype size = name.size() - m_start.size() - m_end.size();
    const bool isCopy = size > 0 && name.startsWith(m_start) && name.endsWith(m_end);
    return isCopy ? QDateTime::fromString(name.sliced(m_start.size(), size), kTime) : QDateTime();
}

CatalogCopy Copy(const QString &catalogPath, const QString &folder)
{
    CatalogCopy copy{.path = NewCopyPath(folder, catalogPath)};
    copy.digest = CopyWholeFile(catalogPath, copy.path);
    // Copies have names of their own, so that none would come by what another has left.
    RemoveUnfinishedIn(InFolder(ProgramFolder(), folder));
    return copy;
}

// Who opens a backup and goes on in it does not lose that.
bool IsAsMade(const QString &backup, const QDateTime &time)
{
    constexpr qint64 kLongestCopying = 60;
    return time.isValid() && QFileInfo(backup).lastModified() <= time.addSecs(kLongestCopying);
}

// Whatever the clock says, the newest stays.
void RemoveOldBackups(const QString &catalogPath, const QString &newest)
{
    const CopyNames names(catalogPath);
    const QString folder = InFolder(ProgramFolder(), kBackups);
    QStringList old;
    for (const QString &name : FilesInFolder(folder, u"*.xml"_s)) {
        const QString path = InFolder(folder, name);
        if (path != newest && IsAsMade(path, names.Time(name)))
            old += path;
    }
    for (qsizetype i = 0; i <= old.size() - kKept; ++i)
        QFile::remove(old[i]);
}

} // namespace

QString NewCopyPath(const QString &folder, const QString &catalogPath)
{
    const QString fullFolder = InFolder(ProgramFolder(), folder);
    MakeFolder(fullFolder);
    const CopyNames names(catalogPath);
    QDateTime time = QDateTime::currentDateTime();
    while (QFileInfo::exists(InFolder(fullFolder, names.Name(time))))
        time = time.addSecs(1);
    return InFolder(fullFolder, names.Name(time));
}

CatalogCopy CopyToRecovery(const QString &catalogPath)
{
    return Copy(catalogPath, u"Recovery"_s);
}

bool BackUpCatalog(const QString &catalogPath, std::optional<quint64> digest)
{
    if (IsMissing(catalogPath))
        return false;
    const CatalogCopy copy = Copy(catalogPath, kBackups);
    if (digest && copy.digest != *digest) {
        QFile::remove(copy.path);
        return false;
    }
    RemoveOldBackups(catalogPath, copy.path);
    return true;
}
