#include "searchcontrols.h"

#include "capitalsbox.h"
#include "combofilters.h"
#include "controls.h"
#include "datecombos.h"
#include "lengthbox.h"
#include "tallarea.h"

#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int kTextBoxWidth = 320;

template<class Field>
Field *MakeField(QGridLayout &fields, const QString &caption, QLatin1StringView name)
{
    auto *field = MakeControl<Field>(fields.parentWidget(), name);
    const int row = fields.rowCount();
    fields.addWidget(MakeLabel(*field, caption), row, 0);
    fields.addWidget(field, row, 1);
    return field;
}

} // namespace

SearchControls::SearchControls(QDialog &dialog)
{
    auto *columns = new QHBoxLayout(&dialog);
    auto *left = new QWidget;
    columns->addWidget(new TallArea(*left, &dialog));
    auto *column = new QVBoxLayout(left);
    column->setContentsMargins({});
    auto *fields = new QGridLayout;
    column->addLayout(fields);
    MakeFields(*fields);
    column->addWidget(MakeSearchType(left));
    column->addStretch();
    columns->addLayout(MakeButtons(&dialog));
}

void SearchControls::MakeFields(QGridLayout &fields)
{
    cboType = MakeField<QComboBox>(fields, u"&Type:"_s, "cboType"_L1);
    MakeDateRow(fields);
    txtShow = MakeField<TextBox>(fields, u"&Concert:"_s, "txtShow"_L1);
    txtVenue = MakeField<TextBox>(fields, u"Ven&ue:"_s, "txtVenue"_L1);
    txtLength = MakeField<LengthBox>(fields, u"&Length:"_s, "txtLength"_L1);
    txtSource = MakeField<TextBox>(fields, u"Sou&rce:"_s, "txtSource"_L1);
    txtGrade = MakeField<CapitalsBox>(fields, u"&Grade:"_s, "txtGrade"_L1);
    icbFormat = MakeField<QComboBox>(fields, u"For&mat:"_s, "icbFormat"_L1);
    txtSeeder = MakeField<TextBox>(fields, u"&Seeder:"_s, "txtSeeder"_L1);
    txtStoredIn = MakeField<TextBox>(fields, u"Stored &in:"_s, "txtStoredIn"_L1);
    txtSetList = MakeField<TextBox>(fields, u"&Track list"_s, "txtSetList"_L1);
    txtSetNotes = MakeField<TextBox>(fields, u"&Notes:"_s, "txtSetNotes"_L1);
    txtComment = MakeField<TextBox>(fields, u"&Comments:"_s, "txtComment"_L1);
    txtVenue->setMinimumWidth(kTextBoxWidth);

    IgnoreWheelWithoutFocus(*cboType);
    IgnoreWheelWithoutFocus(*icbFormat);
}

void SearchControls::MakeDateRow(QGridLayout &fields)
{
    cboYear = MakeControl<QComboBox>(fields.parentWidget(), "cboYear"_L1);
    cboMonth = MakeControl<QComboBox>(fields.parentWidget(), "cboMonth"_L1);
    cboDay = MakeControl<QComboBox>(fields.parentWidget(), "cboDay"_L1);
    auto *boxes = new QHBoxLayout;
    boxes->addWidget(cboYear, 1);
    boxes->addWidget(MakeLabel(*cboMonth, u"Month:"_s));
    boxes->addWidget(cboMonth, 1);
    boxes->addWidget(MakeLabel(*cboDay, u"Day:"_s));
    boxes->addWidget(cboDay, 1);
    const int row = fields.rowCount();
    fields.addWidget(MakeLabel(*cboYear, u"&Year:"_s), row, 0);
    fields.addLayout(boxes, row, 1);
    MakeDateBoxes(*cboYear, *cboMonth, *cboDay);
}

QWidget *SearchControls::MakeSearchType(QWidget *dialog)
{
    auto *fra = MakeControl<QGroupBox>(dialog, "fra"_L1, u"Search Type"_s);
    auto *row = new QHBoxLayout(fra);
    optSearchType = {new QRadioButton(u"AND"_s), new QRadioButton(u"OR"_s)};
    optSearchType[0]->setChecked(true);
    for (QRadioButton *option : optSearchType)
        row->addWidget(option);
    row->addStretch();
    return fra;
}

QLayout *SearchControls::MakeButtons(QWidget *dialog)
{
    auto *column = new QVBoxLayout;
    const auto add = [&](const QString &caption, QLatin1StringView name) {
        auto *button = MakeControl<QPushButton>(dialog, name, caption);
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
