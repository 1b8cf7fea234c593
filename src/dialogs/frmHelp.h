#pragma once

#include "chmfile.h"

#include <QMainWindow>

class HelpBrowser;
class QTreeWidget;
class QTreeWidgetItem;
class UserPrompts;
class clsINI;

/// The help window of systems that have none of their own: the table of contents and a page.
class frmHelp : public QMainWindow
{
    Q_OBJECT

public:
    /// Throws ProgramError when the help file cannot be used. The others must outlive the window.
    frmHelp(const QString &helpFile, clsINI &settings, UserPrompts &prompts);

    const QString &HelpFile() const { return m_helpFile; }

    /// Shows the page of a context number.
    void ShowTopic(int context);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void MakeControls(UserPrompts &prompts);
    void MakeActions();
    void LoadContents();
    void LoadPosition();
    void Form_ShowItem(QTreeWidgetItem *item);
    void helpPage_SourceChanged(const QUrl &source);
    QTreeWidgetItem *FindItem(const QUrl &address) const;

    QString m_helpFile;
    ChmFile m_file;
    clsINI &m_settings;
    bool m_following = false; ///< the contents are being set to the page, and not the page to the contents
    QTreeWidget *trvContents = nullptr;
    HelpBrowser *helpPage = nullptr;
};
