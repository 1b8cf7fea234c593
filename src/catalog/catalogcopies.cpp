#include "catalogcopies.h"

#include "besidefile.h"
#include "contentdigest.h"
#include "failures.h"
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

    QString Name(const QDateTime &time, quint64 contentDigest) const;
    QDateTime Time(const QString &name) const;
    /// Those in a folder, in their order.
    QStringList In(const QString &folder) const;

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
    return m_start + time.toString(kTime) + m_mark + DigestDigits(contentDigest) + u".xml"_s;
}

QDateTime CopyNames::Time(const QString &name) const
{
    return QDateTime::fromString(name.sliced(m_start.size(), kTime.size()), kTime);
}

QStringList CopyNames::In(const QString &folder) const
{
    const qsizetype length = Name(QDateTime::currentDateTime(), 0).size();
    QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
    names.removeIf([&](const QString &name) {
        const bool isOne = name.size() == length && name.startsWith(m_start) &&
                           name.sliced(m_start.size() + kTime.size()).startsWith(m_mark) && Time(name).isValid();
        return !isOne;
    });
    names.sort();
    return names;
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

// Who opens a backup and goes on in it does not lose that, nor what cannot be read now.
bool IsAsMade(const QString &backup)
try {
    return FileTitle(backup).endsWith(DigestDigits(FileDigest(backup).value_or(0)));
} catch (const ProgramError &) {
    return false;
}

void RemoveOldBackups(const QString &catalogPath)
{
    const QString folder = InFolder(ProgramFolder(), kBackups);
    const QStringList copies = CopyNames(catalogPath).In(folder);
    for (qsizetype i = 0; i < copies.size() - kKept; ++i) {
        const QString path = InFolder(folder, copies[i]);
        if (IsAsMade(path))
            QFile::remove(path);
    }
}

} // namespace

// Later than all others, also when the clock was set back.
QString NewCopyPath(const QString &folder, const QString &catalogPath, quint64 contentDigest)
{
    const QString fullFolder = InFolder(ProgramFolder(), folder);
    MakeFolder(fullFolder);
    const CopyNames names(catalogPath);
    const QStringList copies = names.In(fullFolder);
    QDateTime time = QDateTime::currentDateTime();
    if (!copies.isEmpty())
        time = std::max(time, names.Time(copies.last()).addSecs(1));
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
    RemoveOldBackups(catalogPath);
    return true;
}
