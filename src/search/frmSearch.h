#pragma once

#include "searchcriteria.h"

#include <QDialog>

#include <array>

class FormatRegistry;
class QComboBox;
class QGridLayout;
class QLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;

/// Asks what to search for. The criteria outlive the dialog: it shows the remembered ones, and OK and Reset store new
/// ones.
class frmSearch : public QDialog
{
    Q_OBJECT

public:
    /// `types` are the entries of the type box, `formats` those of the format picker.
    frmSearch(SearchCriteria &remembered, const QStringList &types, FormatRegistry &formats, QWidget *parent = nullptr);

    /// True unless the user pressed OK.
    bool Cancelled() const { return m_cancelled; }

private:
    void MakeControls();
    void MakeFields(QGridLayout &fields);
    void MakeDateRow(QGridLayout &fields);
    QWidget *MakeSearchType();
    QLayout *MakeButtons();
    void ConnectControls();
    void Form_Load(const QStringList &types, FormatRegistry &formats);
    void ShowCriteria();
    void ShowType();
    void ShowFormat();
    void EnableOK();
    QString Joiner() const;
    SearchCriteria CriteriaFromControls() const;
    void cmdOK_Click();
    void cmdReset_Click();

    SearchCriteria &m_criteria;
    bool m_cancelled = true;

    QComboBox *cboType = nullptr;
    QComboBox *cboYear = nullptr;
    QComboBox *cboMonth = nullptr;
    QComboBox *cboDay = nullptr;
    QLineEdit *txtShow = nullptr;
    QLineEdit *txtVenue = nullptr;
    QLineEdit *txtLength = nullptr;
    QLineEdit *txtSource = nullptr;
    QLineEdit *txtGrade = nullptr;
    QComboBox *icbFormat = nullptr;
    QLineEdit *txtSeeder = nullptr;
    QLineEdit *txtStoredIn = nullptr;
    QLineEdit *txtSetList = nullptr;
    QLineEdit *txtSetNotes = nullptr;
    QLineEdit *txtComment = nullptr;
    std::array<QRadioButton *, 2> optSearchType{};
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdReset = nullptr;
};
