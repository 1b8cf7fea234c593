#include "commandline.h"

#include "paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

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

#ifdef Q_OS_WIN

QStringList CommandLineArguments(int, char **)
{
    return {AfterProgramName(QString::fromWCharArray(GetCommandLineW()))};
}

#else

QStringList CommandLineArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
}

#endif

QString AfterProgramName(const QString &commandLine)
{
    const bool quoted = commandLine.startsWith(u'"');
    const qsizetype end = commandLine.indexOf(quoted ? u'"' : u' ', 1);
    return end < 0 ? QString() : commandLine.sliced(end + 1).trimmed();
}

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
