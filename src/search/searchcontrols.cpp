#include "capitalsbox.h"
#include "combofilters.h"
#include "datecombos.h"
#include "frmSearch.h"
#include "lengthbox.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int kTextBoxWidth = 320;

/// The label of a field that is in the dialog already.
QLabel *LabelFor(QWidget &field, const QString &caption)
{
    auto *label = new QLabel(caption, field.parentWidget());
    label->setBuddy(&field);
    return label;
}

template<class Field>
Field *NewField(QWidget *parent, QLatin1StringView name)
{
    auto *field = new Field(parent);
    field->setObjectName(name);
    return field;
}

template<class Field>
Field *AddField(QGridLayout &fields, const QString &caption, QLatin1StringView name)
{
    auto *field = NewField<Field>(fields.parentWidget(), name);
    const int row = fields.rowCount();
    fields.addWidget(LabelFor(*field, caption), row, 0);
    fields.addWidget(field, row, 1);
    return field;
}

} // namespace

void frmSearch::MakeControls()
{
    auto *columns = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    columns->addLayout(left);
    auto *fields = new QGridLayout;
    left->addLayout(fields);
    MakeFields(*fields);
    left->addWidget(MakeSearchType());
    left->addStretch();
    columns->addLayout(MakeButtons());
}

void frmSearch::MakeFields(QGridLayout &fields)
{
    cboType = AddField<QComboBox>(fields, u"&Type:"_s, "cboType"_L1);
    MakeDateRow(fields);
    txtShow = AddField<TextBox>(fields, u"&Concert:"_s, "txtShow"_L1);
    txtVenue = AddField<TextBox>(fields, u"Ven&ue:"_s, "txtVenue"_L1);
    txtLength = AddField<LengthBox>(fields, u"&Length:"_s, "txtLength"_L1);
    txtSource = AddField<TextBox>(fields, u"Sou&rce:"_s, "txtSource"_L1);
    txtGrade = AddField<CapitalsBox>(fields, u"&Grade:"_s, "txtGrade"_L1);
    icbFormat = AddField<QComboBox>(fields, u"For&mat:"_s, "icbFormat"_L1);
    txtSeeder = AddField<TextBox>(fields, u"&Seeder:"_s, "txtSeeder"_L1);
    txtStoredIn = AddField<TextBox>(fields, u"Stored &in:"_s, "txtStoredIn"_L1);
    txtSetList = AddField<TextBox>(fields, u"&Track list"_s, "txtSetList"_L1);
    txtSetNotes = AddField<TextBox>(fields, u"&Notes:"_s, "txtSetNotes"_L1);
    txtComment = AddField<TextBox>(fields, u"&Comments:"_s, "txtComment"_L1);
    txtVenue->setMinimumWidth(kTextBoxWidth);

    IgnoreWheelWithoutFocus(*cboType);
    IgnoreWheelWithoutFocus(*icbFormat);
}

void frmSearch::MakeDateRow(QGridLayout &fields)
{
    cboYear = NewField<QComboBox>(this, "cboYear"_L1);
    cboMonth = NewField<QComboBox>(this, "cboMonth"_L1);
    cboDay = NewField<QComboBox>(this, "cboDay"_L1);
    auto *boxes = new QHBoxLayout;
    boxes->addWidget(cboYear, 1);
    boxes->addWidget(LabelFor(*cboMonth, u"Month:"_s));
    boxes->addWidget(cboMonth, 1);
    boxes->addWidget(LabelFor(*cboDay, u"Day:"_s));
    boxes->addWidget(cboDay, 1);
    const int row = fields.rowCount();
    fields.addWidget(LabelFor(*cboYear, u"&Year:"_s), row, 0);
    fields.addLayout(boxes, row, 1);
    MakeDateBoxes(*cboYear, *cboMonth, *cboDay);
}

QWidget *frmSearch::MakeSearchType()
{
    auto *fra = new QGroupBox(u"Search Type"_s);
    fra->setObjectName("fra"_L1);
    auto *row = new QHBoxLayout(fra);
    optSearchType = {new QRadioButton(u"AND"_s), new QRadioButton(u"OR"_s)};
    optSearchType[0]->setChecked(true);
    for (QRadioButton *option : optSearchType)
        row->addWidget(option);
    row->addStretch();
    return fra;
}

QLayout *frmSearch::MakeButtons()
{
    auto *column = new QVBoxLayout;
    const auto add = [&](const QString &caption, QLatin1StringView name) {
        auto *button = new QPushButton(caption);
        button->setObjectName(name);
        column->addWidget(button);
        return button;
    };
    cmdOK = add(u"OK"_s, "cmdOK"_L1);
    cmdCancel = add(u"Cancel"_s, "cmdCancel"_L1);
    cmdReset = add(u"Reset"_s, "cmdReset"_L1);
    column->addStretch();
    cmdOK->setDefault(true);
    cmdOK->setEnabled(false);
    return column;
}
