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

/// The path of the file that is dragged; "" when it is none, or several.
QString DraggedFile(const QDropEvent &event)
{
    const QList<QUrl> addresses = event.mimeData()->urls();
    return addresses.size() == 1 ? addresses.first().toLocalFile() : QString();
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
    const QString path = DraggedFile(drag);
    // The file stays where it is, whatever its owner proposes.
    if (path.isEmpty() || !drag.possibleActions().testFlag(Qt::CopyAction))
        return false;
    drag.setDropAction(Qt::CopyAction);
    drag.accept();
    if (event->type() == QEvent::Drop)
        emit dropped(path);
    return true;
}
