#pragma once

class QWidget;

/// The window that a new modal dialog belongs to: the dialog that is open now, else the active window, else
/// `mainWindow` once it is shown.
QWidget *DialogOwner(QWidget *mainWindow);
