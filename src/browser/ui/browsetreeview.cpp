#include "browsetreeview.h"

BrowseTreeView::BrowseTreeView(QWidget *parent) : QTreeView(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    connect(this, &QTreeView::collapsed, this, &BrowseTreeView::LeaveGroup);
}

/// A click beside all rows does nothing, and neither does Ctrl with a click or a blank on the highlighted one.
QItemSelectionModel::SelectionFlags
BrowseTreeView::selectionCommand(const QModelIndex &index, const QEvent *event) const
{
    const QItemSelectionModel::SelectionFlags command = QTreeView::selectionCommand(index, event);
    const bool takesAway = !index.isValid() || command.testFlag(QItemSelectionModel::Deselect);
    return event && takesAway ? QItemSelectionModel::NoUpdate : command;
}

/// The current row does not disappear in a group that is closed: the group takes its place.
void BrowseTreeView::LeaveGroup(const QModelIndex &group)
{
    if (currentIndex().parent() == group)
        setCurrentIndex(group);
}
