#include "commandline.h"

#include "paths.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool IsAbsolute(const QString &path)
{
#ifdef Q_OS_WIN
    return path.contains(u':');
#else
    return path.startsWith(u'/');
#endif
}

} // namespace

QString CatalogFromCommandLine(const QStringList &arguments)
{
    QString path = arguments.join(u' ');
    path.remove(u'"');
    if (path.isEmpty() || IsAbsolute(path))
        return path;
    const QString inProgramFolder = FullPath(InFolder(ProgramFolder(), path));
    const QString inWorkingFolder = FullPath(InFolder(QDir::currentPath(), path));
    return QFileInfo::exists(inWorkingFolder) && !QFileInfo::exists(inProgramFolder) ? inWorkingFolder
                                                                                     : inProgramFolder;
}
