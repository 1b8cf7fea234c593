#include "modaldialog.h"

#include "waitcursor.h"

#include <QApplication>
#include <QDialog>

QWidget *DialogOwner(QWidget *mainWindow)
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    // A window that is yet to be shown has no frame. As the owner of a dialog it would be placed without one, and stand
    // higher by its title with every start.
    return mainWindow && mainWindow->isVisible() ? mainWindow : nullptr;
}

int ShowModal(QDialog &dialog)
{
    const OrdinaryCursor ordinary;
    dialog.setWindowModality(Qt::WindowModal);
    return dialog.exec();
}
