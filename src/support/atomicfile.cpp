#include "atomicfile.h"

#include "failures.h"
#include "fileattributes.h"
#include "flatfile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString CheckedTarget(const QString &path)
{
    const auto refuse = [&path](const QString &reason) {
        throw ProgramError(Failure::Write, reason + u": "_s + QDir::toNativeSeparators(path));
    };
    if (path.isEmpty())
        throw ProgramError(Failure::Write, u"No file name"_s);
    const QFileInfo target(WithoutLinks(path));
    if (target.isSymbolicLink())
        refuse(u"A link that leads nowhere"_s);
    if (target.isDir())
        refuse(u"Filename refers to a directory"_s);
    if (target.exists() && !target.isFile())
        refuse(u"Not an ordinary file"_s);
    if (target.exists() && !target.isWritable())
        refuse(u"Permission denied"_s);
    return target.filePath();
}

// What stands there now, or is to be copied.
QString Model(const QString &path, const QString &like)
{
    const QString model = like.isEmpty() ? WithoutLinks(path) : like;
    return IsMissing(model) ? QString() : model;
}

} // namespace

AtomicFile::AtomicFile(const QString &path, const QString &like)
    : m_like(Model(path, like)),
      m_file(CheckedTarget(path), m_like.isEmpty() ? BesideFile::Rights::Usual : BesideFile::Rights::OwnerOnly)
{
}

QStringList AtomicFile::Commit()
{
    QStringList lost = m_like.isEmpty() ? QStringList() : CopyAttributes(m_like, m_file.handle());
    m_file.Place();
    return lost;
}
