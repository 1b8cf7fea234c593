#include "paths.h"

#include "besidefile.h"
#include "failures.h"
#include "flatfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString &SetFolder()
{
    static QString folder;
    return folder;
}

#ifdef Q_OS_MACOS
constexpr QStringView kInstalledIn = u"MacOS";
constexpr QStringView kShippedFiles = u"../Resources/discbook";
#else
constexpr QStringView kInstalledIn = u"bin";
constexpr QStringView kShippedFiles = u"../share/discbook";
#endif

// The folder of the shipped files in an installed layout, empty in a portable copy.
QString InstalledFolder()
{
    const QDir executable(QCoreApplication::applicationDirPath());
    const QDir shipped(executable.filePath(kShippedFiles.toString()));
    const bool installed = executable.dirName() == kInstalledIn && shipped.exists();
    return installed ? shipped.canonicalPath() : QString();
}

// Written anew and not copied with their permissions, so that the user may change them where the shipped ones are
// read-only.
void CopyFiles(const QString &from, const QString &pattern, const QString &to)
{
    MakeFolder(to);
    for (const QString &name : FilesInFolder(from, pattern))
        WriteFileAtomically(InFolder(to, name), ReadWholeFile(InFolder(from, name)));
}

} // namespace

QString ApplicationTitle()
{
    return u"Discbook"_s;
}

QString ExecutableName()
{
    return FileTitle(QCoreApplication::applicationFilePath());
}

QString ProgramFolder()
{
    if (!SetFolder().isEmpty())
        return SetFolder();
    return QDir::toNativeSeparators(
        InstalledFolder().isEmpty() ? QCoreApplication::applicationDirPath()
                                    : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

QString SharedFolder()
{
    const QString installed = SetFolder().isEmpty() ? InstalledFolder() : QString();
    return installed.isEmpty() ? ProgramFolder() : QDir::toNativeSeparators(installed);
}

void PrepareProgramFolder()
{
    const QString shared = SharedFolder();
    const QString folder = ProgramFolder();
    if (shared == folder || !QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        return;
    // Filled beside its place, so that a first start that fails half-way is made up for by the next one.
    const QString newFolder = folder + u".new"_s;
    QDir(newFolder).removeRecursively();
    CopyFiles(shared, u"formats.ini"_s, newFolder);
    CopyFiles(InFolder(shared, u"Formats"_s), u"*"_s, InFolder(newFolder, u"Formats"_s));
    CopyFiles(InFolder(shared, u"samples"_s), u"*.xml"_s, newFolder);
    QDir().rmdir(folder);
    if (!QDir().rename(newFolder, folder))
        throw ProgramError(Failure::Write, u"Cannot make the folder "_s + folder);
}

void SetProgramFolder(const QString &folder)
{
    SetFolder() = QDir::toNativeSeparators(folder);
}

QString InFolder(const QString &folder, const QString &name)
{
    const QString native = QDir::toNativeSeparators(folder);
    return native.endsWith(QDir::separator()) ? native + name : native + QDir::separator() + name;
}

QString FullPath(const QString &path)
{
    return QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
}

QString CanonicalPath(const QString &path)
{
    const QFileInfo file(WithoutLinks(path));
    if (file.exists())
        return file.canonicalFilePath();
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? file.absoluteFilePath() : QDir(folder).filePath(file.fileName());
}

void MakeFolder(const QString &folder)
{
    if (QFileInfo(folder).isDir())
        return;
    if (!QDir().mkpath(folder))
        throw ProgramError(Failure::Write, u"Cannot make the folder "_s + QDir::toNativeSeparators(folder));
    FlushFolder(QFileInfo(folder).absolutePath());
}

QString ShortName(QString name)
{
    constexpr qsizetype kLongest = 80;
    while (QFile::encodeName(name).size() > kLongest || (!name.isEmpty() && name.back().isHighSurrogate()))
        name.chop(1);
    return name;
}

QString FileTitle(const QString &path, bool keepExtension)
{
    const QString name = path.sliced(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
    return keepExtension ? name : name.first(name.contains(u'.') ? name.lastIndexOf(u'.') : name.size());
}

QStringList FilesInFolder(const QString &folder, const QString &pattern)
{
    QStringList names = QDir(folder).entryList({pattern}, QDir::Files, QDir::NoSort);
    // Upper case, not lower, is what tells whether "_" stands before or behind the letters on Windows' own file system.
    std::sort(names.begin(), names.end(), [](const QString &left, const QString &right) {
        const int order = left.toUpper().compare(right.toUpper());
        return order != 0 ? order < 0 : left < right;
    });
    return names;
}
