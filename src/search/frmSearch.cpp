#include "frmSearch.h"

#include "datecombos.h"
#include "failures.h"
#include "fieldhelpers.h"
#include "formatregistry.h"
#include "numbers.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmSearch";
constexpr int kTextBoxWidth = 320;

/// Without the blanks at both ends; other white space stays.
QString TrimBlanks(const QString &text)
{
    const auto isText = [](QChar character) { return character != u' '; };
    const auto first = std::ranges::find_if(text, isText);
    const auto last = std::find_if(text.crbegin(), std::make_reverse_iterator(first), isText).base();
    return QString(first, last - first);
}

QString TextOf(const QLineEdit &box)
{
    return TrimBlanks(box.text());
}

qint32 NumberOf(const QComboBox &box)
{
    return WholeNumber(LeadingNumber(box.currentText()));
}

void ShowNumber(QComboBox &box, qint32 number)
{
    if (number <= 0)
        return;
    const QString text = QString::number(number);
    box.setCurrentIndex(box.findText(text));
    box.setEditText(text);
}

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

QLineEdit *AddTextBox(QGridLayout &fields, const QString &caption, QLatin1StringView name)
{
    auto *box = AddField<QLineEdit>(fields, caption, name);
    SelectAllOnEntry(*box);
    return box;
}

} // namespace

frmSearch::frmSearch(SearchCriteria &remembered, const QStringList &types, FormatRegistry &formats, QWidget *parent)
    : QDialog(parent),
      m_criteria(remembered)
{
    setObjectName("frmSearch"_L1);
    setWindowTitle(u"Search"_s);
    CreateControls();
    ConnectControls();
    Form_Load(types, formats);
}

void frmSearch::CreateControls()
{
    auto *columns = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    columns->addLayout(left);
    auto *fields = new QGridLayout;
    left->addLayout(fields);
    CreateFields(*fields);
    left->addWidget(CreateSearchType());
    left->addStretch();
    columns->addLayout(CreateButtons());
}

void frmSearch::CreateFields(QGridLayout &fields)
{
    cboType = AddField<QComboBox>(fields, u"&Type:"_s, "cboType"_L1);
    CreateDateRow(fields);
    txtShow = AddTextBox(fields, u"&Concert:"_s, "txtShow"_L1);
    txtVenue = AddTextBox(fields, u"Ven&ue:"_s, "txtVenue"_L1);
    txtLength = AddTextBox(fields, u"&Length:"_s, "txtLength"_L1);
    txtSource = AddTextBox(fields, u"Sou&rce:"_s, "txtSource"_L1);
    txtGrade = AddTextBox(fields, u"&Grade:"_s, "txtGrade"_L1);
    icbFormat = AddField<QComboBox>(fields, u"For&mat:"_s, "icbFormat"_L1);
    txtSeeder = AddTextBox(fields, u"&Seeder:"_s, "txtSeeder"_L1);
    txtStoredIn = AddTextBox(fields, u"Stored &in:"_s, "txtStoredIn"_L1);
    txtSetList = AddTextBox(fields, u"&Track list"_s, "txtSetList"_L1);
    txtSetNotes = AddTextBox(fields, u"&Notes:"_s, "txtSetNotes"_L1);
    txtComment = AddTextBox(fields, u"&Comments:"_s, "txtComment"_L1);
    txtVenue->setMinimumWidth(kTextBoxWidth);

    IgnoreWheelWithoutFocus(*cboType);
    IgnoreWheelWithoutFocus(*icbFormat);
    StepByKeys(*icbFormat, kModule);
    FilterLengthKeys(*txtLength);
}

void frmSearch::CreateDateRow(QGridLayout &fields)
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

QWidget *frmSearch::CreateSearchType()
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

QLayout *frmSearch::CreateButtons()
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

void frmSearch::ConnectControls()
{
    for (const QLineEdit *box : findChildren<QLineEdit *>())
        connect(box, &QLineEdit::textChanged, this, &frmSearch::EnableOK);
    for (const QComboBox *box : {cboType, icbFormat})
        connect(box, &QComboBox::currentIndexChanged, this, &frmSearch::EnableOK);
    connect(cmdOK, &QPushButton::clicked, this, &frmSearch::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdReset, &QPushButton::clicked, this, &frmSearch::cmdReset_Click);
}

void frmSearch::Form_Load(const QStringList &types, FormatRegistry &formats)
{
    FillDateBoxes(*cboYear, *cboMonth, *cboDay);
    KeepCapitals(*txtGrade);
    cboType->addItem(QString());
    cboType->addItems(types);
    icbFormat->setModel(&formats);
    icbFormat->setCurrentIndex(0);
    ShowCriteria();
    m_criteria.joiner = Joiner();
}

void frmSearch::ShowCriteria()
{
    ShowType();
    ShowNumber(*cboYear, m_criteria.year);
    ShowNumber(*cboMonth, m_criteria.month);
    ShowNumber(*cboDay, m_criteria.day);
    txtVenue->setText(m_criteria.venue);
    txtShow->setText(m_criteria.concert);
    if (LeadingNumber(m_criteria.length) > 0)
        txtLength->setText(m_criteria.length);
    txtSource->setText(m_criteria.source);
    txtGrade->setText(m_criteria.grade);
    ShowFormat();
    txtSeeder->setText(m_criteria.seeder);
    txtStoredIn->setText(m_criteria.storedIn);
    txtSetList->setText(m_criteria.trackList);
    txtSetNotes->setText(m_criteria.notes);
    txtComment->setText(m_criteria.comments);
}

void frmSearch::ShowType()
{
    const int row = m_criteria.type.isEmpty() ? -1 : cboType->findText(m_criteria.type);
    if (row >= 0)
        cboType->setCurrentIndex(row);
}

void frmSearch::ShowFormat()
{
    if (m_criteria.format.isEmpty())
        return;
    const int row = icbFormat->findData(m_criteria.format, FormatRegistry::KeyRole);
    if (row < 0)
        throw ProgramError(Failure::OutOfRange, u"No such format: "_s + m_criteria.format);
    icbFormat->setCurrentIndex(row);
}

void frmSearch::EnableOK()
{
    const auto hasText = [](const QLineEdit *box) { return !box->text().isEmpty(); };
    // The line edits are those of the date boxes too.
    const bool any = std::ranges::any_of(findChildren<QLineEdit *>(), hasText) || !cboType->currentText().isEmpty() ||
                     !icbFormat->currentText().isEmpty();
    cmdOK->setEnabled(any);
}

QString frmSearch::Joiner() const
{
    return optSearchType[optSearchType[0]->isChecked() ? 0 : 1]->text();
}

SearchCriteria frmSearch::CriteriaFromControls() const
{
    return {
        .type = TrimBlanks(cboType->currentText()),
        .year = NumberOf(*cboYear),
        .month = NumberOf(*cboMonth),
        .day = NumberOf(*cboDay),
        .venue = TextOf(*txtVenue),
        .concert = TextOf(*txtShow),
        .length = TextOf(*txtLength),
        .source = TextOf(*txtSource),
        .grade = TextOf(*txtGrade),
        .format = TrimBlanks(icbFormat->currentText()),
        .seeder = TextOf(*txtSeeder),
        .storedIn = TextOf(*txtStoredIn),
        .trackList = TextOf(*txtSetList),
        .notes = TextOf(*txtSetNotes),
        .comments = TextOf(*txtComment),
        .joiner = Joiner().toLower()};
}

void frmSearch::cmdOK_Click()
{
    Guarded(kModule, "cmdOK_Click", [this] {
        m_criteria = CriteriaFromControls();
        m_cancelled = false;
        accept();
    });
}

void frmSearch::cmdReset_Click()
{
    Guarded(kModule, "cmdReset_Click", [this] {
        // The date boxes keep their texts.
        for (QLineEdit *box : findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly))
            box->clear();
        cboType->setCurrentIndex(0);
        icbFormat->setCurrentIndex(0);
        optSearchType[0]->setChecked(true);
        m_criteria = CriteriaFromControls();
        cmdOK->setEnabled(false);
    });
}
