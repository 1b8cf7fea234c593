#pragma once

#include <QSize>
#include <QString>

class QWidget;
class UserPrompts;
class clsINI;
struct FailureReport;

/// The global error handler: shows a report in frmError and waits until it is closed. The mouse pointer becomes the
/// ordinary one and stays it. `mainWindow` owns the dialog while no other is open.
void ShowFailureReport(const FailureReport &report, UserPrompts &prompts, QWidget *mainWindow = nullptr);

/// The size inside the frame that a window may have at most on its screen, or `wanted` where that is less.
QSize WithinScreen(const QWidget &window, QSize wanted);

/// Remembers a window's position and size under a section of the settings: nothing for a minimised window, only the
/// state for a maximised one, so that its earlier normal position is kept.
void SaveFormPosition(QWidget &window, const QString &section, clsINI &settings);

/// Puts a window, before it is first shown, where SaveFormPosition saw it. Its present size is the smallest it gets.
void LoadFormPosition(QWidget &window, const QString &section, const clsINI &settings);
