#include "application.h"

#include "failures.h"

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
