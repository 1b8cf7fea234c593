#include "modGlobal.h"

#include "clsINI.h"
#include "failures.h"
#include "frmError.h"
#include "modaldialog.h"
#include "twips.h"
#include "waitcursor.h"

#include <QApplication>
#include <QScreen>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int kNormal = 0;
constexpr int kMaximised = 2;

QString InfoText(const FailureReport &report)
{
    QString text = u"Error #%1\r\n"_s.arg(report.number) + u"Module: "_s + report.moduleName + u"\r\nProcedure: "_s +
                   report.procName + u"\r\n"_s;
    if (report.line > 0)
        text += u"Line #%1\r\n"_s.arg(report.line);
    return text;
}

QString DetailsText(const FailureReport &report)
{
    return u"Description: "_s + report.description + u"\r\nSource: "_s + report.source + u"\r\n\r\nCallStack:\r\n"_s +
           report.callStack;
}

/// Whether the same failure is being shown now. One that comes with every repaint would otherwise pile up dialogs.
bool IsShown(const QString &info)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.cbegin(), windows.cend(), [&info](const QWidget *window) {
        const auto *form = qobject_cast<const frmError *>(window);
        return form && form->isVisible() && form->Info() == info;
    });
}

/// What a window manager is taken to draw above a window; it is not known before the window is shown.
constexpr int kTitleHeight = 24;

/// Where a window's title must be for the user to get hold of it.
bool TitleIsReachable(QPoint corner, int width)
{
    constexpr int kEnoughWidth = 48;
    constexpr int kEnoughHeight = 8;
    const QRect title(corner, QSize(width, kTitleHeight));
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.cbegin(), screens.cend(), [&](const QScreen *screen) {
        const QRect visible = screen->availableGeometry() & title;
        return visible.width() >= std::min(kEnoughWidth, title.width()) && visible.height() >= kEnoughHeight;
    });
}

/// A corner on a monitor that has been taken away would leave the window out of reach.
QPoint ReachableCorner(QPoint corner, QSize size)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen || TitleIsReachable(corner, size.width()))
        return corner;
    const QRect area = screen->availableGeometry();
    const auto within = [](int value, int first, int last) { return std::max(first, std::min(value, last)); };
    return {
        within(corner.x(), area.left(), area.right() + 1 - size.width()),
        within(corner.y(), area.top(), area.bottom() + 1 - size.height())};
}

void SaveNormalPosition(const QWidget &window, const QString &section, clsINI &settings)
{
    const auto write = [&](const QString &key, int pixels) {
        settings.WriteValue(section, key, QString::number(TwipsFromPixels(pixels)));
    };
    // The size is the one inside the frame. Under X11 the frame's margins are not known before the window is first
    // shown, so that an outer size could not be given back, and the window would grow or shrink with every start.
    write(u"Left"_s, window.x());
    write(u"Top"_s, window.y());
    write(u"Width"_s, window.width());
    write(u"Height"_s, window.height());
}

void ReadPosition(QWidget &window, const QString &section, const clsINI &settings)
{
    // A window that nobody has given a size gets it when it is shown; it is needed now.
    if (!window.testAttribute(Qt::WA_Resized))
        window.adjustSize();
    const auto read = [&](const QString &key, int pixels) {
        return PixelsFromTwips(settings.ReadLong(section, key, TwipsFromPixels(pixels)));
    };
    const QPoint corner(std::max(0, read(u"Left"_s, 0)), std::max(0, read(u"Top"_s, 0)));
    const QSize stored(read(u"Width"_s, window.width()), read(u"Height"_s, window.height()));
    const QSize size = stored.expandedTo(window.size());
    const qint32 state = settings.ReadLong(section, u"WindowState"_s, kNormal);
    window.resize(size);
    window.move(ReachableCorner(corner, size));
    window.setWindowState(
        state == kMaximised ? window.windowState() | Qt::WindowMaximized : window.windowState() & ~Qt::WindowMaximized);
}

} // namespace

void ShowFailureReport(const FailureReport &report, UserPrompts &prompts, QWidget *mainWindow)
{
    ResetMousePointer();
    const QString info = InfoText(report);
    if (IsShown(info)) {
        QApplication::beep();
        return;
    }
    frmError form(prompts, DialogOwner(mainWindow));
    form.SetInfo(info);
    form.SetDetails(DetailsText(report));
    ShowModal(form);
}

QSize WithinScreen(const QWidget &window, QSize wanted)
{
    return wanted.boundedTo(window.screen()->availableSize() - QSize(0, kTitleHeight));
}

void SaveFormPosition(QWidget &window, const QString &section, clsINI &settings)
{
    Guarded("modGlobal", "SaveFormPosition", [&] {
        if (window.isMinimized())
            return;
        const OneSave save(settings);
        const bool maximised = window.isMaximized() || window.isFullScreen();
        if (!maximised)
            SaveNormalPosition(window, section, settings);
        settings.WriteValue(section, u"WindowState"_s, QString::number(maximised ? kMaximised : kNormal));
    });
}

void LoadFormPosition(QWidget &window, const QString &section, const clsINI &settings)
{
    Guarded("modGlobal", "LoadFormPosition", [&] { ReadPosition(window, section, settings); });
}
