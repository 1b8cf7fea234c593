#include "frmSearch.h"

#include "combofilters.h"
#include "datecombos.h"
#include "failures.h"
#include "formatregistry.h"
#include "modGlobal.h"
#include "numbers.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmSearch";

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

} // namespace

frmSearch::frmSearch(SearchCriteria &remembered, const QStringList &types, FormatRegistry &formats, QWidget *parent)
    : QDialog(parent),
      SearchControls(static_cast<QDialog &>(*this)),
      m_criteria(remembered)
{
    setObjectName("frmSearch"_L1);
    setWindowTitle(u"Search"_s);
    ConnectControls();
    Form_Load(types, formats);
    resize(WithinScreen(*this, sizeHint()));
}

void frmSearch::ConnectControls()
{
    for (const QLineEdit *box : findChildren<QLineEdit *>())
        connect(box, &QLineEdit::textChanged, this, &frmSearch::EnableOK);
    for (const QComboBox *box : {cboType, icbFormat})
        connect(box, &QComboBox::currentIndexChanged, this, &frmSearch::EnableOK);
    // The entry that a box shows already, chosen again, changes nothing but is a choice.
    for (const QComboBox *box : findChildren<QComboBox *>())
        connect(box, &QComboBox::activated, this, &frmSearch::EnableOK);
    connect(cmdOK, &QPushButton::clicked, this, &frmSearch::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdReset, &QPushButton::clicked, this, &frmSearch::cmdReset_Click);
}

void frmSearch::Form_Load(const QStringList &types, FormatRegistry &formats)
{
    FillDateBoxes(*cboYear, *cboMonth, *cboDay);
    StepByKeys(*icbFormat, kModule);
    cboType->addItem(QString());
    cboType->setItemData(0, u"any type"_s, Qt::AccessibleTextRole);
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
    // A format whose name begins or ends with a blank is remembered without it, and is none of the list then.
    icbFormat->setCurrentIndex(std::max(0, icbFormat->findData(m_criteria.format, FormatRegistry::KeyRole)));
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
        for (QLineEdit *box : txtVenue->parent()->findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly))
            box->clear();
        cboType->setCurrentIndex(0);
        icbFormat->setCurrentIndex(0);
        optSearchType[0]->setChecked(true);
        m_criteria = CriteriaFromControls();
        cmdOK->setEnabled(false);
    });
}
