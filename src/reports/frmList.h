#pragma once

#include "linesmodel.h"
#include "listkinds.h"

#include <QMainWindow>

class QListView;
class UserPrompts;
class clsINI;
class clsResizeLimits;

/// Shows the labels of one kind of listings and saves them as a text. The list is filled once and does not follow later
/// edits. While the window is open the one it belongs to takes no input.
class frmList : public QMainWindow
{
    Q_OBJECT

public:
    struct Services
    {
        clsINI &settings;
        clsResizeLimits &limits;
        UserPrompts &prompts;
    };

    /// What is referred to must outlive the window.
    frmList(const ReportSource &source, const Services &services, QWidget *parent = nullptr);

    /// Fills the window. False when that failed and was reported.
    bool LoadList(ListKind ListType);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void MakeControls();
    void Form_Load();
    void Form_Resize();
    void mnuFileExport_Click();

    const ReportSource m_source;
    const Services m_services;
    ListKind m_kind = ListKind::Lossless;
    LinesModel m_lines;
    QListView *lst = nullptr;
};
