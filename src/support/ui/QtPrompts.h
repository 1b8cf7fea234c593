#pragma once

#include "prompts.h"

#include <QPointer>
#include <QWidget>

/// The prompts of the running program: modal dialogs over the dialog that is open, or else over the main window. Texts
/// are shown as they are, "<" and "&" included.
class QtPrompts : public UserPrompts
{
public:
    /// The owner of dialogs while no other dialog is open.
    void SetMainWindow(QWidget *window) { m_mainWindow = window; }

    Answer Message(const QString &text, const QString &title, Icon icon, Buttons buttons) override;
    QString Input(const QString &prompt, const QString &title, const QString &proposed) override;
    QString OpenFile(const FileRequest &request) override;
    QString SaveFile(const FileRequest &request) override;
    void OpenWithDefaultProgram(const QString &path) override;

private:
    QPointer<QWidget> m_mainWindow;
};
