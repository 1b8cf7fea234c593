#pragma once

#include <array>

class QComboBox;
class QDialog;
class QGridLayout;
class QLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QWidget;

/// The controls of the search dialog with their captions, their place and whatever they do by themselves. They are made
/// in the order in which Tab goes through them, and belong to the dialog.
struct SearchControls
{
    explicit SearchControls(QDialog &dialog);

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

private:
    void MakeFields(QGridLayout &fields);
    void MakeDateRow(QGridLayout &fields);
    QWidget *MakeSearchType(QWidget *dialog);
    QLayout *MakeButtons(QWidget *dialog);
};
