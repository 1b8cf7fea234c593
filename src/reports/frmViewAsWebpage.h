#pragma once

#include "walk.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QPushButton;
class QWidget;
class UserPrompts;
class clsINI;

/// Asks what a page is to hold besides the main fields, remembers the choices, and makes the page.
class frmViewAsWebpage : public QDialog
{
    Q_OBJECT

public:
    /// What is referred to must outlive the dialog.
    frmViewAsWebpage(const ReportSource &source, clsINI &settings, UserPrompts &prompts, QWidget *parent = nullptr);

private:
    void MakeControls();
    void Form_Load();
    void chkCol_Click(const QCheckBox &box);
    void cmdView_Click();
    QString AskForPath(const QString &catalogName);
    void MakePage(const QString &path, const QString &catalogName);

    const ReportSource m_source;
    clsINI &m_settings;
    UserPrompts &m_prompts;
    std::array<QCheckBox *, 4> chkCol{};
    QPushButton *cmdView = nullptr;
};
