#include "helpkey.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>

namespace {

bool IsHelpKey(const QKeyEvent &key)
{
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

/// Whether help may come up over a window. An open menu or list would keep mouse and keys from it.
bool MayHelp(const QWidget *window)
{
    return !QApplication::activePopupWidget() && !qobject_cast<const QMessageBox *>(window);
}

} // namespace

HelpKey::HelpKey(QAction &helpContents) : m_helpContents(helpContents)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !IsHelpKey(*static_cast<QKeyEvent *>(event)))
        return false;
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget || !MayHelp(widget->window()))
        return false;
    m_helpContents.trigger();
    return true;
}
