#include "panelcontrols.h"

#include "capitalsbox.h"
#include "combofilters.h"
#include "controls.h"
#include "datecombos.h"
#include "lengthbox.h"
#include "notebox.h"
#include "twips.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The left margin of the frame, in twips.
constexpr int kFrameMargin = 120;
constexpr int kSpacing = 4;
/// The letters of a type or format that can be read at least.
constexpr int kShortestName = 8;

/// A list of names, as narrow as the column however long a name is.
QComboBox *MakeNameList(QGroupBox &fra, const char *name)
{
    auto *box = MakeControl<QComboBox>(&fra, name);
    IgnoreWheelWithoutFocus(*box);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(kShortestName);
    return box;
}

QMargins MarginsInside(const QGroupBox &fra)
{
    const QMargins frame = fra.contentsMargins();
    const int margin = PixelsFromTwips(kFrameMargin);
    return {
        std::max(0, margin - frame.left()), kSpacing, std::max(0, margin - frame.right()),
        std::max(0, margin - frame.bottom())};
}

} // namespace

PanelControls::PanelControls(QGroupBox &fra)
{
    auto *column = new QVBoxLayout(&fra);
    column->setContentsMargins(MarginsInside(fra));
    column->setSpacing(kSpacing);
    auto *grid = new QGridLayout;
    column->addLayout(grid);
    grid->setSpacing(kSpacing);
    for (const int stretched : {1, 3, 5})
        grid->setColumnStretch(stretched, 1);

    MakeFields(fra, *grid);
    MakeDateAdded(fra, *grid);
    MakeNoteBoxes(fra, *column);
    PrepareDateBoxes();
    KeepPlaces(fra);
}

void PanelControls::MakeFields(QGroupBox &fra, QGridLayout &grid)
{
    for (const PanelField &field : kPanelFields) {
        QWidget *control = MakeBox(fra, field);
        grid.addWidget(MakeLabel(*control, field.caption.toString(), field.label), field.row, field.column - 1);
        grid.addWidget(control, field.row, field.column, 1, field.columns);
    }
    lblVenue = fra.findChild<QLabel *>("lblVenue"_L1);
    lblShow = fra.findChild<QLabel *>("lblShow"_L1);
    txtShow = fra.findChild<QLineEdit *>("txtShow"_L1);
}

QWidget *PanelControls::MakeBox(QGroupBox &fra, const PanelField &field)
{
    const auto textBox = [&](QLineEdit *box) {
        textBoxes.push_back({field, *box});
        return box;
    };
    switch (field.kind) {
    case PanelField::Kind::Type:
        return cboType = MakeNameList(fra, field.control);
    case PanelField::Kind::Format:
        icbFormat = MakeNameList(fra, field.control);
        StepByKeys(*icbFormat, "frm");
        return icbFormat;
    case PanelField::Kind::Date:
        dateBoxes.push_back({field, *MakeControl<QComboBox>(&fra, field.control)});
        return &dateBoxes.back().box;
    case PanelField::Kind::Length:
        return textBox(MakeControl<LengthBox>(&fra, field.control));
    case PanelField::Kind::Capitals:
        return textBox(MakeControl<CapitalsBox>(&fra, field.control));
    case PanelField::Kind::Line:
        return textBox(MakeControl<TextBox>(&fra, field.control));
    case PanelField::Kind::Text:
    case PanelField::Kind::TrackList:
        break;
    }
    noteBoxes.push_back({field, *MakeControl<NoteBox>(&fra, field.control)});
    return &noteBoxes.back().box;
}

void PanelControls::MakeDateAdded(QGroupBox &fra, QGridLayout &grid)
{
    chkWrongDate = MakeControl<QCheckBox>(&fra, "chkWrongDate"_L1, u"Wrong Date"_s);
    lblDateAdded = MakeControl<QLabel>(&fra, "lblDateAdded"_L1);
    lblDateAdded->setTextFormat(Qt::PlainText);
    cmdClearDate = MakeControl<QPushButton>(&fra, "cmdClearDate"_L1, u"Clear"_s);
    cmdClearDate->setToolTip(u"Clear date added."_s);
    cmdClearDate->setAccessibleName(u"Clear date added"_s);

    grid.addWidget(chkWrongDate, 6, 4, 1, 2);
    grid.addWidget(MakeLabel(*lblDateAdded, u"Date Added:"_s, "lblDateLabel"_L1), 7, 0, 1, 2);
    grid.addWidget(lblDateAdded, 7, 2, 1, 2);
    grid.addWidget(cmdClearDate, 7, 4, 1, 2);
}

/// The boxes share evenly what the fields leave of the height.
void PanelControls::MakeNoteBoxes(QGroupBox &fra, QVBoxLayout &column)
{
    for (const PanelField &field : kPanelTexts) {
        QWidget *box = MakeBox(fra, field);
        column.addWidget(MakeLabel(*box, field.caption.toString(), field.label));
        column.addWidget(box, 1);
    }
}

void PanelControls::PrepareDateBoxes()
{
    QComboBox &year = dateBoxes[0].box;
    QComboBox &month = dateBoxes[1].box;
    QComboBox &day = dateBoxes[2].box;
    MakeDateBoxes(year, month, day);
    FillDateBoxes(year, month, day);
    for (const auto &[field, box] : dateBoxes)
        box.setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

/// Hidden controls keep their places: the fields below when a type has no concert name, and the size of the frame,
/// which is asked for while nothing is shown.
void PanelControls::KeepPlaces(const QGroupBox &fra)
{
    for (QWidget *control : fra.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        QSizePolicy policy = control->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        control->setSizePolicy(policy);
    }
}
