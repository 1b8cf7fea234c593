#include "detailpanel.h"

#include "browsetree.h"
#include "catalogdocument.h"
#include "failures.h"
#include "modXMLSubs.h"
#include "notebox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

// What the panel does when the user changes a field.

namespace {

constexpr auto kModule = "frm";

} // namespace

void DetailPanel::SetItemAttribute(const char *name, const QString &value)
{
    if (!m_filling && m_item)
        WriteAttribute(m_item, name, value);
}

void DetailPanel::UpdateListName()
{
    BrowseTree::Listing *listing = m_tree.Model().ListingAt(m_trv.currentIndex());
    if (!listing)
        return;
    m_document.SetChanged(true);
    const auto place = [&] { return std::pair(listing->group, m_trv.currentIndex().row()); };
    const auto before = place();
    m_tree.UpdateListName(*listing);
    if (place() != before)
        m_trv.scrollTo(m_trv.currentIndex());
}

void DetailPanel::EditName(const char *attribute, const QString &value)
{
    if (m_filling)
        return;
    Guarded(kModule, "SetItemAttribute", [&] {
        SetItemAttribute(attribute, value);
        UpdateListName();
    });
}

void DetailPanel::txtStoredIn_Change(const QString &text)
{
    if (m_filling)
        return;
    Guarded(kModule, "txtStoredIn_Change", [&] {
        SetItemAttribute("Stored", text);
        m_document.SetChanged(true);
    });
}

void DetailPanel::EditNotes(const char *element, const NoteBox &box)
{
    if (m_filling || !m_item)
        return;
    Guarded(kModule, "EditNotes", [&] {
        WriteTextElement(m_item, element, box.Text());
        m_document.SetChanged(true);
    });
}

void DetailPanel::cboType_Click()
{
    if (m_filling || cboType->currentIndex() < 0)
        return;
    Guarded(kModule, "cboType_Click", [this] {
        SetItemAttribute("Type", cboType->currentText());
        UpdateListName();
        trv_NodeClick(m_trv.currentIndex());
    });
}

void DetailPanel::chkWrongDate_Click(bool checked)
{
    if (m_filling)
        return;
    Guarded(kModule, "chkWrongDate_Click", [&] {
        SetItemAttribute("WrongDate", checked ? u"1"_s : QString());
        UpdateShowImage();
        UpdateListName();
    });
}

void DetailPanel::cmdClearDate_Click()
{
    if (m_item)
        Guarded(kModule, "cmdClearDate_Click", [this] { ClearDate(); });
}

void DetailPanel::ClearDate()
{
    lblDateAdded->clear();
    SetItemAttribute("DateAdded", {});
    EnableClearDate();
    m_document.SetChanged(true);
}

void DetailPanel::icbFormat_Click()
{
    if (m_filling || !m_item || icbFormat->currentIndex() < 0)
        return;
    Guarded(kModule, "icbFormat_Click", [this] {
        BrowseTree::Listing *listing = m_tree.Model().ListingAt(m_trv.currentIndex());
        if (!listing)
            return;
        if (icbFormat->currentIndex() == 0) {
            ClearDate();
        } else if (lblDateAdded->text().isEmpty()) {
            lblDateAdded->setText(m_today().toString(Qt::ISODate));
            SetItemAttribute("DateAdded", lblDateAdded->text());
            EnableClearDate();
        }
        SetItemAttribute("Format", icbFormat->currentData().toString());
        m_document.SetChanged(true);
        UpdateShowImage();
        m_tree.AddYearCount(*listing->group);
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

void DetailPanel::UpdateShowImage()
{
    BrowseTreeModel &model = m_tree.Model();
    if (BrowseTree::Listing *listing = model.ListingAt(m_trv.currentIndex())) {
        const QString format = icbFormat->currentData().toString();
        model.SetPicture(*listing, m_formats.GetShowImageKey(format, chkWrongDate->isChecked()));
    }
}
