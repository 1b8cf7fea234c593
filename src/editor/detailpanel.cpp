#include "detailpanel.h"

#include "browsetree.h"
#include "catalogdocument.h"
#include "failures.h"
#include "modXMLSubs.h"
#include "notebox.h"
#include "numbers.h"
#include "showntypes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frm";

/// The types whose listings have a title where others have a venue.
bool HasTitle(const QString &type)
{
    return type == "Album"_L1 || type == "Bootleg"_L1 || type == "Video"_L1 || type == "Outtakes"_L1;
}

/// A stored date as "YYYY-MM-DD", without the time that older catalogs may hold; any other text as it is.
QString DateText(const QString &stored)
{
    const QDate date = QDate::fromString(stored.section(u' ', 0, 0), u"yyyy-M-d"_s);
    return date.isValid() ? date.toString(Qt::ISODate) : stored;
}

/// A group box takes "&" for the mark of an access key.
QString FrameCaption(QString id)
{
    return u"Recording Information for ID "_s + id.replace(u'&', "&&"_L1);
}

} // namespace

DetailPanel::DetailPanel(
    CatalogDocument &document, BrowseTree &tree, FormatRegistry &formats, const ShownTypes &types, QTreeView &trv,
    QWidget *parent, Today today)
    : QGroupBox(u"Recording Information"_s, parent),
      PanelControls(static_cast<QGroupBox &>(*this)),
      m_document(document),
      m_tree(tree),
      m_formats(formats),
      m_types(types),
      m_trv(trv),
      m_today(std::move(today))
{
    setObjectName("fra"_L1);
    icbFormat->setModel(&m_formats);
    FillTypeList();
    ConnectFields();
    ConnectTree(trv);
}

void DetailPanel::ConnectFields()
{
    // A choice by a letter key is told by the index alone.
    connect(cboType, &QComboBox::currentIndexChanged, this, &DetailPanel::cboType_Click);
    connect(cboYear, &QComboBox::editTextChanged, this, &DetailPanel::cboYear_Change);
    connect(cboMonth, &QComboBox::editTextChanged, this, &DetailPanel::cboMonth_Change);
    connect(cboDay, &QComboBox::editTextChanged, this, &DetailPanel::cboDay_Change);
    connect(txtVenue, &QLineEdit::textChanged, this, &DetailPanel::txtVenue_Change);
    connect(txtShow, &QLineEdit::textChanged, this, &DetailPanel::txtShow_Change);
    connect(txtLength, &QLineEdit::textChanged, this, &DetailPanel::txtLength_Change);
    connect(txtSource, &QLineEdit::textChanged, this, &DetailPanel::txtSource_Change);
    connect(txtGrade, &QLineEdit::textChanged, this, &DetailPanel::txtGrade_Change);
    connect(txtSeeder, &QLineEdit::textChanged, this, &DetailPanel::txtSeeder_Change);
    connect(txtStoredIn, &QLineEdit::textChanged, this, &DetailPanel::txtStoredIn_Change);
    connect(icbFormat, &QComboBox::currentIndexChanged, this, &DetailPanel::icbFormat_Click);
    connect(icbFormat, &QComboBox::activated, this, &DetailPanel::icbFormat_Activated);
    connect(chkWrongDate, &QCheckBox::toggled, this, &DetailPanel::chkWrongDate_Click);
    connect(cmdClearDate, &QPushButton::clicked, this, &DetailPanel::cmdClearDate_Click);
    connect(txtSetList, &NoteBox::textChanged, this, &DetailPanel::txtSetList_Change);
    connect(txtSetNotes, &NoteBox::textChanged, this, &DetailPanel::txtSetNotes_Change);
    connect(txtComment, &NoteBox::textChanged, this, &DetailPanel::txtComment_Change);
}

void DetailPanel::ConnectTree(const QTreeView &trv)
{
    connect(trv.selectionModel(), &QItemSelectionModel::currentChanged, this, &DetailPanel::trv_NodeClick);
    // A reset takes the current node away without a word.
    connect(&m_tree.Model(), &QAbstractItemModel::modelReset, this, [this] { trv_NodeClick(m_trv.currentIndex()); });
    connect(&m_types, &ShownTypes::changed, this, &DetailPanel::FillTypeList);
    const auto forget = [this] {
        m_item = {};
        m_leftField.clear();
    };
    connect(&m_document, &CatalogDocument::aboutToBeReplaced, this, forget);
    // When the window goes, the catalog does so first, and the picker loses its list after that.
    connect(&m_tree.Model(), &QObject::destroyed, this, forget);
    connect(&m_document, &CatalogDocument::listingAboutToBeRemoved, this, [this](pugi::xml_node listing) {
        if (m_item == listing)
            m_item = {};
    });
}

void DetailPanel::FillTypeList()
{
    const QScopedValueRollback filling(m_filling, true);
    const QString type = cboType->currentIndex() >= 0 ? cboType->currentText() : cboType->placeholderText();
    cboType->clear();
    cboType->addItems(m_types.ShownNames());
    SelectType(type);
}

void DetailPanel::ShowHideInfoFrame(bool show)
{
    Guarded("frmMain", "ShowHideInfoFrame", [&] {
        QWidget *focused = window()->focusWidget();
        for (QWidget *control : findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
            const bool belongs = m_hasConcert || (control != lblShow && control != txtShow);
            if (control == focused && !(show && belongs)) {
                m_leftField = focused;
                HandFocusToTree();
            }
            control->setVisible(show && belongs);
        }
        if (m_leftField && !m_leftField->isHidden())
            TakeFocusBack();
    });
}

void DetailPanel::HandFocusToTree()
{
    m_trv.setFocus(Qt::OtherFocusReason);
}

/// Nothing is selected: who comes back goes on where he was.
void DetailPanel::TakeFocusBack()
{
    if (window()->focusWidget() == &m_trv)
        m_leftField->setFocus(Qt::ActiveWindowFocusReason);
    m_leftField.clear();
}

void DetailPanel::trv_NodeClick(const QModelIndex &node)
{
    Guarded(kModule, "trv_NodeClick", [&] {
        const BrowseTree::Listing *listing = m_tree.Model().ListingAt(node);
        const pugi::xml_node item = listing ? listing->element : pugi::xml_node();
        if (item) {
            const QScopedValueRollback filling(m_filling, true);
            const QScopedValueRollback refilling(m_refilling, item == m_item && !cboType->isHidden());
            Fill(item);
        }
        ShowHideInfoFrame(!item.empty());
        emit listingSelected(!item.empty());
    });
}

void DetailPanel::Fill(pugi::xml_node item)
{
    m_item = item;
    if (!item.attribute("Type"))
        WriteAttribute(item, "Type", u"Concert"_s);
    ShowType(ReadAttribute(item, "Type"));
    icbFormat->setCurrentIndex(m_formats.FindFormat(ReadAttribute(item, "Format")) + 1);
    setTitle(FrameCaption(ReadAttribute(item, "ID")));
    ShowDatePart(*cboYear, "Year");
    ShowDatePart(*cboMonth, "Month");
    ShowDatePart(*cboDay, "Day");
    ShowText(*txtVenue, "Venue");
    ShowText(*txtShow, "Show");
    ShowText(*txtLength, "Length");
    ShowText(*txtSource, "Source");
    ShowText(*txtGrade, "Grade");
    ShowText(*txtSeeder, "Seeder");
    ShowText(*txtStoredIn, "Stored");
    chkWrongDate->setChecked(ReadNumber(item, "WrongDate") != 0);
    ShowDateAdded();
    for (const char *element : {"SetList", "Notes", "Comment"}) {
        if (!item.child(element))
            item.append_child(element);
    }
    ShowNotes(*txtSetList, ParseSetList(ReadTextElement(item, "SetList")));
    ShowNotes(*txtSetNotes, ReadTextElement(item, "Notes"));
    ShowNotes(*txtComment, ReadTextElement(item, "Comment"));
}

/// A type that is not in the list is shown all the same.
void DetailPanel::SelectType(const QString &type)
{
    const int row = cboType->findText(type);
    cboType->setPlaceholderText(row < 0 ? type : QString());
    cboType->setCurrentIndex(row);
}

void DetailPanel::ShowType(const QString &type)
{
    SelectType(type);
    lblVenue->setText(HasTitle(type) ? u"T&itle"_s : u"Ven&ue"_s);
    m_hasConcert = !HasTitle(type) && type != "Interview"_L1;
}

void DetailPanel::ShowText(QLineEdit &box, const char *attribute) const
{
    const QString text = ReadAttribute(m_item, attribute);
    if (m_refilling && box.text() == text)
        return;
    box.setText(text);
    box.home(false);
}

void DetailPanel::ShowDatePart(QComboBox &box, const char *attribute) const
{
    const QString text = NumberText(ReadNumber(m_item, attribute));
    if (m_refilling && box.currentText() == text)
        return;
    box.setCurrentIndex(box.findText(text));
    box.setEditText(text);
    box.lineEdit()->home(false);
}

void DetailPanel::ShowDateAdded()
{
    lblDateAdded->setText(DateText(ReadAttribute(m_item, "DateAdded")));
    EnableClearDate();
}

/// A button that is disabled would hand the focus on to the next field, which takes the next press of Space for text.
void DetailPanel::EnableClearDate()
{
    const bool dated = !lblDateAdded->text().isEmpty();
    if (!dated && cmdClearDate == window()->focusWidget())
        HandFocusToTree();
    cmdClearDate->setEnabled(dated);
}

void DetailPanel::ShowNotes(NoteBox &box, const QString &text) const
{
    if (m_refilling)
        box.RefreshText(text);
    else
        box.SetText(text);
}

bool DetailPanel::IsWrongDate() const
{
    return chkWrongDate->isChecked();
}

int DetailPanel::FormatRow() const
{
    return icbFormat->currentIndex();
}

void DetailPanel::SelectFormat(int row)
{
    if (row == icbFormat->currentIndex())
        icbFormat_Activated();
    else
        icbFormat->setCurrentIndex(row);
}

void DetailPanel::StepFormat()
{
    if (chkWrongDate->isChecked())
        chkWrongDate->setChecked(false);
    else
        SelectFormat((icbFormat->currentIndex() + 1) % icbFormat->count());
}

void DetailPanel::FocusType()
{
    cboType->setFocus();
}
