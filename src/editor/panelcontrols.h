#pragma once

#include "panelfields.h"

#include <vector>

class NoteBox;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

/// The controls of the detail panel with their captions, their place and whatever they do by themselves. They are made
/// in the order in which Tab goes through them, and belong to the frame.
struct PanelControls
{
    explicit PanelControls(QGroupBox &fra);

    /// A field and the control that shows it.
    template<class Control>
    struct Shown
    {
        const PanelField &field;
        Control &box;
    };

    std::vector<Shown<QComboBox>> dateBoxes;
    std::vector<Shown<QLineEdit>> textBoxes;
    std::vector<Shown<NoteBox>> noteBoxes;

    QComboBox *cboType = nullptr;
    QComboBox *icbFormat = nullptr;
    QCheckBox *chkWrongDate = nullptr;
    QLabel *lblDateAdded = nullptr;
    QPushButton *cmdClearDate = nullptr;
    QLabel *lblVenue = nullptr;
    QLabel *lblShow = nullptr;
    QLineEdit *txtShow = nullptr;

private:
    QWidget *MakeBox(QGroupBox &fra, const PanelField &field);
    void MakeFields(QGroupBox &fra, QGridLayout &grid);
    void MakeDateAdded(QGroupBox &fra, QGridLayout &grid);
    void MakeNoteBoxes(QGroupBox &fra, QVBoxLayout &column);
    void PrepareDateBoxes();
    static void KeepPlaces(const QGroupBox &fra);
};
