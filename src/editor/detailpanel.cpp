#include "detailpanel.h"

#include "browsetree.h"
#include "catalogdocument.h"
#include "controls.h"
#include "failures.h"
#include "keycodes.h"
#include "modXMLSubs.h"
#include "notebox.h"
#include "numbers.h"
#include "recordingtypes.h"
#include "showntypes.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frm";

/// A stored date as "YYYY-MM-DD", without the time that older catalogs may hold; any other text as it is.
QString DateText(const QString &stored)
{
    const QDate date = QDate::fromString(stored.section(u' ', 0, 0), u"yyyy-M-d"_s);
    return date.isValid() ? date.toString(Qt::ISODate) : stored;
}

/// A group box takes "&" for the mark of an access key.
QString FrameCaption(const QString &id)
{
    return u"Recording Information for ID "_s + ShownCaption(id);
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
    ConnectTree();
}

void DetailPanel::ConnectFields()
{
    for (const auto &shown : dateBoxes) {
        connect(&shown.box, &QComboBox::editTextChanged, this, [this, &shown](const QString &text) {
            Edit(shown.field.handler, [&] { SetItemAttribute(shown.field.name, text); });
        });
    }
    for (const auto &shown : textBoxes) {
        connect(&shown.box, &QLineEdit::textChanged, this, [this, &shown](const QString &text) {
            Edit(shown.field.handler, [&] { SetItemAttribute(shown.field.name, text); });
        });
    }
    for (const auto &shown : noteBoxes) {
        connect(&shown.box, &NoteBox::textChanged, this, [this, &shown] {
            Edit(shown.field.handler, [&] { m_document.SetText(m_item, shown.field.name, shown.box.Text()); });
        });
    }
    // A choice by a letter key is told by the index alone.
    connect(cboType, &QComboBox::currentIndexChanged, this, &DetailPanel::cboType_Click);
    connect(icbFormat, &QComboBox::currentIndexChanged, this, &DetailPanel::icbFormat_Click);
    connect(icbFormat, &QComboBox::activated, this, &DetailPanel::icbFormat_Activated);
    connect(chkWrongDate, &QCheckBox::toggled, this, &DetailPanel::chkWrongDate_Click);
    connect(cmdClearDate, &QPushButton::clicked, this, &DetailPanel::cmdClearDate_Click);
}

void DetailPanel::ConnectTree()
{
    const auto showCurrent = [this] { trv_NodeClick(m_trv.currentIndex()); };
    connect(m_trv.selectionModel(), &QItemSelectionModel::currentChanged, this, &DetailPanel::trv_NodeClick);
    // A reset takes the current node away without a word.
    connect(&m_tree.Model(), &QAbstractItemModel::modelReset, this, showCurrent);
    connect(&m_types, &ShownTypes::changed, this, &DetailPanel::FillTypeList);
    m_trv.installEventFilter(this);
    m_trv.viewport()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, const QWidget *now) {
        if (now && isAncestorOf(now))
            m_leftField.clear();
    });
    // The clean-up takes empty texts away.
    connect(&m_document, &CatalogDocument::saved, this, showCurrent);
    connect(&m_document, &CatalogDocument::aboutToBeReplaced, this, &DetailPanel::Forget);
    connect(&m_document, &CatalogDocument::listingAboutToBeRemoved, this, [this](pugi::xml_node listing) {
        if (m_item == listing)
            Forget();
    });
}

/// The keys that walk from listing to listing do not come to the tree. Whatever else is done there by key or mouse is
/// meant for it.
bool DetailPanel::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    const bool isKey = event->type() == QEvent::KeyPress && VirtualKeyCode(*static_cast<QKeyEvent *>(event)) != 0;
    if (isPress || isKey)
        m_leftField.clear();
    return QGroupBox::eventFilter(watched, event);
}

void DetailPanel::Forget()
{
    m_item = {};
    m_leftField.clear();
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
    const bool isShown = Guarded(kModule, "trv_NodeClick", [&] {
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
    // Boxes that still hold another listing's values must not write them into this one.
    if (!isShown) {
        Forget();
        ShowHideInfoFrame(false);
    }
}

void DetailPanel::Fill(pugi::xml_node item)
{
    m_item = item;
    m_document.CompleteListing(item);
    ShowType(ReadAttribute(item, Field::kType));
    icbFormat->setCurrentIndex(m_formats.FindFormat(ReadAttribute(item, Field::kFormat)) + 1);
    setTitle(FrameCaption(ReadAttribute(item, Field::kId)));
    for (const auto &[field, box] : dateBoxes)
        ShowDatePart(box, field.name);
    for (const auto &[field, box] : textBoxes)
        ShowText(box, field.name);
    chkWrongDate->setChecked(IsWrongDate(item));
    ShowDateAdded();
    for (const auto &[field, box] : noteBoxes) {
        const QString text = ReadTextElement(item, field.name);
        ShowNotes(box, field.kind == PanelField::Kind::TrackList ? ParseSetList(text) : text);
    }
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
    const RecordingType &look = LookOf(type.toStdString());
    lblVenue->setText(look.hasTitle ? u"T&itle"_s : u"Ven&ue"_s);
    m_hasConcert = look.hasConcert;
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
    lblDateAdded->setText(DateText(ReadAttribute(m_item, Field::kDateAdded)));
    const bool dated = !lblDateAdded->text().isEmpty();
    // A disabled button would hand the focus on to the next field, which takes the next press of Space for text.
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

/// Runs what an edit of a field does; nothing while the panel is filled, or has no listing.
template<class Procedure>
void DetailPanel::Edit(const char *handler, Procedure &&procedure)
{
    if (!m_filling && m_item)
        Guarded(kModule, handler, std::forward<Procedure>(procedure));
}

void DetailPanel::SetItemAttribute(const char *name, const QString &value)
{
    m_document.SetField(m_item, name, value);
}

void DetailPanel::cboType_Click()
{
    if (cboType->currentIndex() < 0)
        return;
    Edit("cboType_Click", [this] {
        SetItemAttribute(Field::kType, cboType->currentText());
        trv_NodeClick(m_trv.currentIndex());
    });
}

void DetailPanel::chkWrongDate_Click(bool checked)
{
    Edit("chkWrongDate_Click", [&] { SetItemAttribute(Field::kWrongDate, checked ? u"1"_s : QString()); });
}

void DetailPanel::cmdClearDate_Click()
{
    Edit("cmdClearDate_Click", [this] {
        SetItemAttribute(Field::kDateAdded, {});
        ShowDateAdded();
    });
}

void DetailPanel::icbFormat_Click()
{
    if (icbFormat->currentIndex() < 0)
        return;
    Edit("icbFormat_Click", [this] {
        m_document.SetFormat(m_item, icbFormat->currentData().toString(), m_today());
        ShowDateAdded();
    });
}

/// The format that is there, chosen again: brings the date added in line like any choice, and is nothing otherwise.
void DetailPanel::icbFormat_Activated()
{
    const bool held = icbFormat->currentIndex() > 0;
    const bool dated = !lblDateAdded->text().isEmpty();
    if (held != dated)
        icbFormat_Click();
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
