#pragma once

class NoteBox;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

/// The controls of the detail panel with their captions, their place and whatever they do by themselves. They are made
/// in the order in which Tab goes through them, and belong to the frame.
struct PanelControls
{
    explicit PanelControls(QGroupBox &fra);

    QComboBox *cboType;
    QComboBox *cboYear;
    QComboBox *cboMonth;
    QComboBox *cboDay;
    QLineEdit *txtVenue;
    QLineEdit *txtShow;
    QLineEdit *txtLength;
    QLineEdit *txtSource;
    QLineEdit *txtGrade;
    QLineEdit *txtSeeder;
    QLineEdit *txtStoredIn;
    QComboBox *icbFormat;
    QCheckBox *chkWrongDate;
    QLabel *lblDateAdded;
    QPushButton *cmdClearDate;
    NoteBox *txtSetList;
    NoteBox *txtSetNotes;
    NoteBox *txtComment;

    QLabel *lblType;
    QLabel *lblYear;
    QLabel *lblMonth;
    QLabel *lblDay;
    QLabel *lblVenue;
    QLabel *lblShow;
    QLabel *lblLength;
    QLabel *lblSource;
    QLabel *lblGrade;
    QLabel *lblSeeder;
    QLabel *lblStoredIn;
    QLabel *lblFormat;
    QLabel *lblDateLabel;
    QLabel *lblSetList;
    QLabel *lblSetNotes;
    QLabel *lblComments;

private:
    void PrepareCombos();
    void PrepareDateAdded();
    void LayOut(QGroupBox &fra);
    void LayOutFields(QGridLayout &grid);
    void LayOutBoxes(QVBoxLayout &column);
};
