#include "modCreateShortcut.h"

#include "desktopentry.h"
#include "failures.h"
#include "flatfile.h"
#include "paths.h"
#include "prompts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <memory>

#ifdef Q_OS_WIN
#include <shlobj.h>
#endif

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_WIN
constexpr QStringView kNotInFileNames = u"\\/:*?\"<>|";
#else
constexpr QStringView kNotInFileNames = u"/";
#endif

bool IsFileName(const QString &name)
{
    return !name.isEmpty() &&
           std::none_of(name.cbegin(), name.cend(), [](QChar c) { return kNotInFileNames.contains(c); });
}

QString DesktopFile(const QString &nameAndSuffix)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    QDir().mkpath(folder);
    return InFolder(folder, nameAndSuffix);
}

#ifdef Q_OS_WIN

struct Release
{
    void operator()(IUnknown *object) const { object->Release(); }
};

template<class Interface>
using ComPtr = std::unique_ptr<Interface, Release>;

const wchar_t *Wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

bool WriteShortcut(const QString &name, const QString &target, const QString &arguments)
{
    void *created = nullptr;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &created)))
        return false;
    const ComPtr<IShellLinkW> link(static_cast<IShellLinkW *>(created));
    if (FAILED(link->QueryInterface(IID_IPersistFile, &created)))
        return false;
    const ComPtr<IPersistFile> file(static_cast<IPersistFile *>(created));
    return SUCCEEDED(link->SetPath(Wide(QDir::toNativeSeparators(target)))) &&
           SUCCEEDED(link->SetArguments(Wide(arguments))) &&
           SUCCEEDED(file->Save(Wide(DesktopFile(name + u".lnk"_s)), TRUE));
}

#else

void WriteExecutable(const QString &path, const QByteArray &contents)
{
    WriteFileAtomically(path, contents);
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner | QFile::ExeUser);
}

#ifdef Q_OS_MACOS

QString QuotedForShell(QString text)
{
    return u'\'' + text.replace(u"'"_s, u"'\\''"_s) + u'\'';
}

bool WriteShortcut(const QString &name, const QString &target, const QString &arguments)
{
    const QString script = u"#!/bin/sh\nexec "_s + QuotedForShell(target) + u' ' + QuotedForShell(arguments) + u'\n';
    WriteExecutable(DesktopFile(name + u".command"_s), script.toUtf8());
    return true;
}

#else

bool WriteShortcut(const QString &name, const QString &target, const QString &arguments)
{
    WriteExecutable(DesktopFile(name + u".desktop"_s), DesktopEntry(name, target, arguments));
    return true;
}

#endif
#endif

} // namespace

bool CreateDesktopShortcut(const QString &name, const QString &target, const QString &arguments)
{
    if (!IsFileName(name))
        return false;
    try {
        return WriteShortcut(name, target, arguments);
    } catch (const ProgramError &) {
        return false;
    }
}

void mnuFileMakeCatalogShortcut_Click(const QString &catalogPath, UserPrompts &prompts)
{
    Guarded("frmMain", "mnuFileMakeCatalogShortcut_Click", [&] {
        const QString name = prompts.Input(
            u"This will create a shortcut to this catalog on your desktop.\r\n\r\nPlease enter a name for the shortcut."_s,
            u"Shortcut Name"_s, ApplicationTitle() + u' ' + FileTitle(catalogPath));
        if (name.isEmpty())
            return;
        if (!CreateDesktopShortcut(name, QCoreApplication::applicationFilePath(), FileTitle(catalogPath, true)))
            prompts.Message(u"Error creating shortcut."_s, ApplicationTitle());
    });
}
