#include "catalogcopies.h"

#include "contentdigest.h"
#include "filecopy.h"
#include "paths.h"

#include <QDateTime>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// How the copies of a catalog are called; by name they are in the order of their times.
class CopyNames
{
public:
    explicit CopyNames(const QString &catalogPath);

    QString Name(const QDateTime &time) const { return m_start + time.toString(kTime) + m_end; }

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

CatalogCopy Copy(const QString &catalogPath, const QString &folder)
{
    CatalogCopy copy{.path = NewCopyPath(folder, catalogPath)};
    copy.digest = CopyWholeFile(catalogPath, copy.path);
    return copy;
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
