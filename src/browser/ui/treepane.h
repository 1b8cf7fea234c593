#pragma once

#include "browsetreeview.h"

#include <pugixml.hpp>

#include <QObject>

#include <vector>

class BrowseTree;

/// The tree's part of the window: decides what the tree shows, and keeps the view in step with it.
class TreePane : public QObject
{
    Q_OBJECT

public:
    /// The view is made inside `parent`, which owns it. `tree` must outlive the pane.
    TreePane(BrowseTree &tree, QWidget &parent);

    BrowseTreeView &View() { return *trv; }

    /// Reads the catalog's types anew, then shows all.
    void ShowCatalog();
    /// Fills the tree with the whole catalog, as far as the view options show it, and selects the first group.
    void ShowAll();
    /// Fills the tree with these listings alone, and selects the first group. False when there is none.
    bool ShowFound(const std::vector<pugi::xml_node> &listings);
    /// Empties the tree.
    void ShowNothing();

signals:
    /// The number of listings in the tree may be another.
    void shownCountChanged();

private:
    void SelectFirst();
    void trv_Collapse(const QModelIndex &node);
    void trv_Expand(const QModelIndex &node);
    void ChangeGroupPicture(const QModelIndex &node, const QString &from, const QString &to);

    BrowseTree &m_tree;
    BrowseTreeView *trv;
};
