#include "filedrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

bool IsDrag(const QEvent &event)
{
    return event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove || event.type() == QEvent::Drop;
}

QStringList DraggedFiles(const QDropEvent &event)
{
    QStringList paths;
    for (const QUrl &address : event.mimeData()->urls()) {
        if (address.isLocalFile())
            paths += address.toLocalFile();
    }
    return paths;
}

} // namespace

FileDrop::FileDrop(QWidget &window) : QObject(&window), m_window(window)
{
    m_window.setAcceptDrops(true);
    QCoreApplication::instance()->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    if (!widget || !IsDrag(*event) || widget->window() != &m_window || QApplication::activeModalWidget())
        return false;
    auto &drag = *static_cast<QDropEvent *>(event);
    const QStringList paths = DraggedFiles(drag);
    if (paths.isEmpty())
        return false;
    // Several are refused: a box below would write their names into the catalog.
    const bool isTaken = paths.size() == 1 && drag.possibleActions().testFlag(Qt::CopyAction);
    drag.setDropAction(Qt::CopyAction); // the file stays where it is, whatever its owner proposes
    drag.setAccepted(isTaken);
    if (isTaken && event->type() == QEvent::Drop)
        emit dropped(paths.first());
    return true;
}
