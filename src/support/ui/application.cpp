#include "application.h"

#include "failures.h"
#include "keycodes.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

namespace {

/// Menus take their letters with Alt held down too.
bool IsMenu(const QObject *watched)
{
    return qobject_cast<const QMenu *>(watched) || qobject_cast<const QMenuBar *>(watched);
}

} // namespace

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    // The filter that is installed first is asked last, so that every command has had its key by then.
    installEventFilter(this);
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    // Not Guarded: events nest, and each would add a line to the call stack of every report.
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        const ProcedureScope scope("modGlobal", "notify");
        ReportCurrentFailure("modGlobal", "notify");
    }
    return false;
}

bool Application::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType() || IsMenu(watched))
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    return IsStrayAccessKey(key) || IsPasteOfX11(key);
}
