#include "htmlhelp.h"

#include "failures.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>

#include <qt_windows.h>

using namespace Qt::StringLiterals;

namespace {

constexpr UINT kHelpContext = 15;
constexpr UINT kCloseAll = 18;

using HtmlHelp = HWND(WINAPI *)(HWND, LPCWSTR, UINT, DWORD_PTR);

HtmlHelp Load()
{
    QLibrary control(u"hhctrl.ocx"_s);
    const auto htmlHelp = reinterpret_cast<HtmlHelp>(control.resolve("HtmlHelpW"));
    if (!htmlHelp)
        throw ProgramError(Failure::Missing, control.errorString());
    // Its windows run in a thread of their own, which the end of the program must not meet at work.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, [htmlHelp] { htmlHelp(nullptr, nullptr, kCloseAll, 0); });
    return htmlHelp;
}

} // namespace

void ShowHtmlHelp(const QString &path, int context)
{
    static const HtmlHelp htmlHelp = Load();
    const QString native = QDir::toNativeSeparators(path);
    const auto *file = reinterpret_cast<LPCWSTR>(native.utf16());
    if (!htmlHelp(nullptr, file, kHelpContext, static_cast<DWORD_PTR>(context)))
        throw ProgramError(Failure::Read, u"The help file cannot be shown: "_s + native);
}
