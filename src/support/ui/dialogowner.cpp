#include "dialogowner.h"

#include <QApplication>
#include <QWidget>

QWidget *DialogOwner(QWidget *mainWindow)
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget *active = QApplication::activeWindow()) {
        return active;
    }
    // A window that is yet to be shown has no frame. As the owner of a dialog it would be placed without one, and stand
    // higher by its title with every start.
    return mainWindow != nullptr && mainWindow->isVisible() ? mainWindow : nullptr;
}
