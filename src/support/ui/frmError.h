#pragma once

#include <QDialog>

class QLabel;
class QLayout;
class QPlainTextEdit;
class QPushButton;
class UserPrompts;

/// Tells the user of an unexpected failure and saves the report as a log file.
class frmError : public QDialog
{
    Q_OBJECT

public:
    /// `prompts` asks for the log's file name; it must outlive the dialog.
    explicit frmError(UserPrompts &prompts, QWidget *owner = nullptr);

    /// The text of lblInfo: what failed and where.
    QString Info() const;
    void SetInfo(const QString &NewInfo);

    /// The text of txtDetails: why, and by which way it was reached.
    const QString &Details() const { return m_details; }
    void SetDetails(const QString &NewDetails);

private:
    void MakeControls();
    QLayout *MakeTopRow();
    QLayout *MakeButtonRow();
    void cmdSave_Click();
    void SaveReport();

    UserPrompts &m_prompts;
    QString m_details; ///< the text box would give it back with other line ends and blanks
    QLabel *lblInfo = nullptr;
    QPlainTextEdit *txtDetails = nullptr;
    QPushButton *cmdSave = nullptr;
    QPushButton *cmdOK = nullptr;
};
