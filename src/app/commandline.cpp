#include "commandline.h"

#include "paths.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool IsAbsolute(const QString &path)
{
#ifndef Q_OS_WIN
    if (path.startsWith(u'/'))
        return true;
#endif
    return path.contains(u':');
}

} // namespace

QString CatalogFromCommandLine(const QStringList &arguments)
{
    QString path = arguments.join(u' ');
    path.remove(u'"');
    if (path.isEmpty() || IsAbsolute(path))
        return path;
    QString inProgramFolder = InFolder(ProgramFolder(), path);
    if (!QFileInfo::exists(inProgramFolder) && QFileInfo::exists(path))
        return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    return inProgramFolder;
}
