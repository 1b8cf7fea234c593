#pragma once

class QDialog;
class QWidget;

/// The window that a new dialog belongs to: the dialog that is open now, else `mainWindow` once it is shown.
QWidget *DialogOwner(QWidget *mainWindow);

/// Shows a dialog until it is closed, and returns its result. The windows that it belongs to take no input meanwhile,
/// the help window does; the mouse pointer is the ordinary one.
int ShowModal(QDialog &dialog);
