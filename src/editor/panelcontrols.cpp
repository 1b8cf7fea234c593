#include "panelcontrols.h"

#include "capitalsbox.h"
#include "datecombos.h"
#include "fieldhelpers.h"
#include "lengthbox.h"
#include "notebox.h"
#include "twips.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// The left margin of the frame, in twips.
constexpr int kFrameMargin = 120;
constexpr int kSpacing = 4;
/// The letters of a type or format that can be read at least.
constexpr int kShortestName = 8;

template<class Control>
Control *Make(QGroupBox &fra, const char *name)
{
    auto *control = new Control(&fra);
    control->setObjectName(QLatin1StringView(name));
    return control;
}

/// A caption that belongs to a control: its access key goes there, and screen readers name the control by it.
QLabel *MakeLabel(QGroupBox &fra, const char *name, const QString &caption, QWidget *control)
{
    auto *label = Make<QLabel>(fra, name);
    label->setTextFormat(Qt::PlainText);
    label->setText(caption);
    label->setBuddy(control);
    return label;
}

} // namespace

PanelControls::PanelControls(QGroupBox &fra)
    : cboType(Make<QComboBox>(fra, "cboType")),
      cboYear(Make<QComboBox>(fra, "cboYear")),
      cboMonth(Make<QComboBox>(fra, "cboMonth")),
      cboDay(Make<QComboBox>(fra, "cboDay")),
      txtVenue(Make<TextBox>(fra, "txtVenue")),
      txtShow(Make<TextBox>(fra, "txtShow")),
      txtLength(Make<LengthBox>(fra, "txtLength")),
      txtSource(Make<TextBox>(fra, "txtSource")),
      txtGrade(Make<CapitalsBox>(fra, "txtGrade")),
      txtSeeder(Make<TextBox>(fra, "txtSeeder")),
      txtStoredIn(Make<TextBox>(fra, "txtStoredIn")),
      icbFormat(Make<QComboBox>(fra, "icbFormat")),
      chkWrongDate(Make<QCheckBox>(fra, "chkWrongDate")),
      lblDateAdded(Make<QLabel>(fra, "lblDateAdded")),
      cmdClearDate(Make<QPushButton>(fra, "cmdClearDate")),
      txtSetList(Make<NoteBox>(fra, "txtSetList")),
      txtSetNotes(Make<NoteBox>(fra, "txtSetNotes")),
      txtComment(Make<NoteBox>(fra, "txtComment")),
      lblType(MakeLabel(fra, "lblType", u"&Type:"_s, cboType)),
      lblYear(MakeLabel(fra, "lblYear", u"&Year:"_s, cboYear)),
      lblMonth(MakeLabel(fra, "lblMonth", u"Month:"_s, cboMonth)),
      lblDay(MakeLabel(fra, "lblDay", u"Day:"_s, cboDay)),
      lblVenue(MakeLabel(fra, "lblVenue", u"Ven&ue:"_s, txtVenue)),
      lblShow(MakeLabel(fra, "lblShow", u"&Concert:"_s, txtShow)),
      lblLength(MakeLabel(fra, "lblLength", u"&Length:"_s, txtLength)),
      lblSource(MakeLabel(fra, "lblSource", u"Sou&rce:"_s, txtSource)),
      lblGrade(MakeLabel(fra, "lblGrade", u"&Grade:"_s, txtGrade)),
      lblSeeder(MakeLabel(fra, "lblSeeder", u"&Seeder:"_s, txtSeeder)),
      lblStoredIn(MakeLabel(fra, "lblStoredIn", u"Stored &in:"_s, txtStoredIn)),
      lblFormat(MakeLabel(fra, "lblFormat", u"For&mat:"_s, icbFormat)),
      lblDateLabel(MakeLabel(fra, "lblDateLabel", u"Date Added:"_s, lblDateAdded)),
      lblSetList(MakeLabel(fra, "lblSetList", u"&Track list"_s, txtSetList)),
      lblSetNotes(MakeLabel(fra, "lblSetNotes", u"Set/Show &Notes"_s, txtSetNotes)),
      lblComments(MakeLabel(fra, "lblComments", u"Recording &Comments:"_s, txtComment))
{
    PrepareCombos();
    PrepareDateAdded();
    LayOut(fra);
}

void PanelControls::PrepareCombos()
{
    MakeDateBoxes(*cboYear, *cboMonth, *cboDay);
    FillDateBoxes(*cboYear, *cboMonth, *cboDay);
    for (QComboBox *box : {cboYear, cboMonth, cboDay})
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);

    for (QComboBox *box : {cboType, icbFormat}) {
        IgnoreWheelWithoutFocus(*box);
        // As narrow as the column, however long a name is.
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(kShortestName);
    }
    StepByKeys(*icbFormat, "frm");
}

void PanelControls::PrepareDateAdded()
{
    chkWrongDate->setText(u"Wrong Date"_s);
    lblDateAdded->setTextFormat(Qt::PlainText);
    cmdClearDate->setText(u"Clear"_s);
    cmdClearDate->setToolTip(u"Clear date added."_s);
    cmdClearDate->setAccessibleName(u"Clear date added"_s);
}

void PanelControls::LayOut(QGroupBox &fra)
{
    auto *column = new QVBoxLayout(&fra);
    const QMargins frame = fra.contentsMargins();
    const int margin = PixelsFromTwips(kFrameMargin);
    column->setContentsMargins(
        std::max(0, margin - frame.left()), kSpacing, std::max(0, margin - frame.right()),
        std::max(0, margin - frame.bottom()));
    column->setSpacing(kSpacing);

    auto *grid = new QGridLayout;
    column->addLayout(grid);
    LayOutFields(*grid);
    LayOutBoxes(*column);

    // The fields below keep their places when a type has no concert name.
    for (QWidget *control : {static_cast<QWidget *>(lblShow), static_cast<QWidget *>(txtShow)}) {
        QSizePolicy policy = control->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        control->setSizePolicy(policy);
    }
}

void PanelControls::LayOutFields(QGridLayout &grid)
{
    struct Place
    {
        QWidget *control;
        int row;
        int column;
        int columns = 1;
    };
    const std::array places{
        Place{lblType, 0, 0},         Place{cboType, 0, 1, 3},      Place{lblYear, 1, 0},
        Place{cboYear, 1, 1},         Place{lblMonth, 1, 2},        Place{cboMonth, 1, 3},
        Place{lblDay, 1, 4},          Place{cboDay, 1, 5},          Place{lblVenue, 2, 0},
        Place{txtVenue, 2, 1, 5},     Place{lblShow, 3, 0},         Place{txtShow, 3, 1, 5},
        Place{lblLength, 4, 0},       Place{txtLength, 4, 1},       Place{lblSource, 4, 2},
        Place{txtSource, 4, 3},       Place{lblGrade, 4, 4},        Place{txtGrade, 4, 5},
        Place{lblSeeder, 5, 0},       Place{txtSeeder, 5, 1, 2},    Place{lblStoredIn, 5, 3},
        Place{txtStoredIn, 5, 4, 2},  Place{lblFormat, 6, 0},       Place{icbFormat, 6, 1, 3},
        Place{chkWrongDate, 6, 4, 2}, Place{lblDateLabel, 7, 0, 2}, Place{lblDateAdded, 7, 2, 2},
        Place{cmdClearDate, 7, 4, 2},
    };
    for (const Place &place : places)
        grid.addWidget(place.control, place.row, place.column, 1, place.columns);
    grid.setSpacing(kSpacing);
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(3, 1);
    grid.setColumnStretch(5, 1);
}

/// The three boxes share evenly what the fields leave of the height.
void PanelControls::LayOutBoxes(QVBoxLayout &column)
{
    const auto add = [&column](QLabel *label, NoteBox *box) {
        box->setMinimumHeight(2 * box->fontMetrics().lineSpacing());
        column.addWidget(label);
        column.addWidget(box, 1);
    };
    add(lblSetList, txtSetList);
    add(lblSetNotes, txtSetNotes);
    add(lblComments, txtComment);
}
