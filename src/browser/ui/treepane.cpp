#include "treepane.h"

#include "browsetree.h"
#include "waitcursor.h"

using namespace Qt::StringLiterals;

TreePane::TreePane(BrowseTree &tree, QWidget &parent) : QObject(&parent), m_tree(tree), trv(new BrowseTreeView(&parent))
{
    trv->setObjectName("trv"_L1);
    trv->setAccessibleName(u"Listings"_s);
    trv->setModel(&m_tree.Model());
    connect(trv, &QTreeView::collapsed, this, &TreePane::trv_Collapse);
    connect(trv, &QTreeView::expanded, this, &TreePane::trv_Expand);

    const BrowseTreeModel &model = m_tree.Model();
    connect(&model, &QAbstractItemModel::modelReset, this, &TreePane::shownCountChanged);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &TreePane::shownCountChanged);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &TreePane::shownCountChanged);
    // Rows move when the current listing is edited, which may carry it out of sight.
    connect(&model, &QAbstractItemModel::rowsMoved, this, [this] { trv->scrollTo(trv->currentIndex()); });
}

void TreePane::ShowCatalog()
{
    m_tree.LoadTypeMenu();
    ShowAll();
}

void TreePane::ShowAll()
{
    const WaitCursor wait;
    m_tree.LoadShows();
    SelectFirst();
}

bool TreePane::ShowFound(const std::vector<pugi::xml_node> &listings)
{
    m_tree.LoadShowList(listings);
    SelectFirst();
    return trv->currentIndex().isValid();
}

void TreePane::ShowNothing()
{
    m_tree.Model().Clear();
}

void TreePane::SelectFirst()
{
    trv->setCurrentIndex(m_tree.Model().index(0, 0));
}

void TreePane::trv_Collapse(const QModelIndex &node)
{
    ChangeGroupPicture(node, u"Open"_s, u"Closed"_s);
}

void TreePane::trv_Expand(const QModelIndex &node)
{
    ChangeGroupPicture(node, u"Closed"_s, u"Open"_s);
}

void TreePane::ChangeGroupPicture(const QModelIndex &node, const QString &from, const QString &to)
{
    BrowseTree::Group *group = m_tree.Model().GroupAt(node);
    if (group && group->picture == from)
        m_tree.Model().SetPicture(*group, to);
}
