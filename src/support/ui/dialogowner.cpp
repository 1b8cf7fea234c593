#include "dialogowner.h"

#include <QApplication>

QWidget *DialogOwner(QWidget *mainWindow)
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget *active = QApplication::activeWindow()) {
        return active;
    }
    return mainWindow;
}
