#include "listingcommands.h"

#include "browsetree.h"
#include "catalogdocument.h"
#include "detailpanel.h"
#include "failures.h"
#include "modXMLSubs.h"
#include "prompts.h"
#include "showntypes.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeView>

using namespace Qt::StringLiterals;

using Answer = UserPrompts::Answer;
using Buttons = UserPrompts::Buttons;
using Icon = UserPrompts::Icon;

ListingCommands::ListingCommands(
    CatalogDocument &document, BrowseTree &tree, const ShownTypes &types, DetailPanel &panel, QTreeView &trv,
    UserPrompts &prompts)
    : m_document(document),
      m_tree(tree),
      m_types(types),
      m_panel(panel),
      m_trv(trv),
      m_prompts(prompts)
{
}

void ListingCommands::mnuFileNewSource_Click()
{
    Guarded("frm", "mnuFileNewItem_Click", [this] {
        const QStringList types = m_types.ShownNames();
        if (types.isEmpty()) {
            m_prompts.Message(
                u"You are currently not viewing any recording types so none can be added."_s, u"Can't Add"_s,
                Icon::Information);
            return;
        }
        if (!m_tree.ShowsNewListings()) {
            m_prompts.Message(
                u"The current filter would not show a new recording so none can be added."_s, u"Can't Add"_s,
                Icon::Information);
            return;
        }
        if (HasNextID())
            ShowNew(m_document.AppendListing(types.front()));
    });
}

void ListingCommands::mnuEditCopyListing_Click()
{
    Guarded("frm", "mnuEditCopyListing_Click", [this] {
        if (IsWrongDate(m_panel.CurrentItem()) &&
            m_prompts.Message(
                u"Are you sure you want to make a copy of a listing marked as a wrong date?"_s, u"Verification"_s,
                Icon::Question, Buttons::YesNo) == Answer::No)
            return;
        AddNewShowToList(m_panel.CurrentItem());
    });
}

void ListingCommands::AddNewShowToList(pugi::xml_node listing)
{
    Guarded("frmMain", "AddNewShowToList", [&] {
        if (HasNextID())
            ShowNew(m_document.AppendCopy(listing));
    });
}

/// Whether a new listing can have an ID. Reports it when there is none left.
bool ListingCommands::HasNextID() const
{
    return Guarded("frmMain", "GetNextID", [this] { return m_document.GetNextID(); }).has_value();
}

/// A listing that the view options keep out of the tree is in the catalog all the same; nothing else is selected then.
void ListingCommands::ShowNew(pugi::xml_node listing)
{
    const BrowseTree::Listing *node = m_tree.FindNode(listing);
    if (!node)
        return;
    const QModelIndex index = m_tree.Model().IndexOf(*node);
    m_trv.setCurrentIndex(index);
    m_trv.scrollTo(index);
    m_panel.FocusType();
}

void ListingCommands::mnuEditDeleteListing_Click()
{
    Guarded("frm", "mnuEditDeleteListing_Click", [this] {
        if (!m_tree.Model().ListingAt(m_trv.currentIndex()))
            return;
        const Answer answer = m_prompts.Message(
            u"Are you sure you want to delete this listing?"_s, u"Delete Confirmation"_s, Icon::None, Buttons::YesNo);
        if (answer != Answer::No)
            DeleteShow(m_tree.Model().NodeKey(m_trv.currentIndex()));
    });
}

void ListingCommands::DeleteShow(const QString &key)
{
    Guarded("frmMain", "DeleteShow", [&] {
        BrowseTreeModel &model = m_tree.Model();
        const BrowseTree::Listing *node = model.FindListing(key.sliced(1));
        if (!node)
            throw ProgramError(Failure::Missing, u"There is no node \"%1\""_s.arg(key));
        const BrowseTree::Group *group = node->group;
        m_document.RemoveListing(node->element);
        // The view goes on to a neighbour; the last listing of a group has none, and the emptied group stays.
        if (!m_trv.currentIndex().isValid())
            m_trv.setCurrentIndex(model.IndexOf(*group));
    });
}

void ListingCommands::mnuEditSelectAll_Click()
{
    QWidget *focused = m_trv.window()->focusWidget();
    if (auto *line = qobject_cast<QLineEdit *>(focused))
        line->selectAll();
    else if (auto *box = qobject_cast<QPlainTextEdit *>(focused))
        box->selectAll();
}
