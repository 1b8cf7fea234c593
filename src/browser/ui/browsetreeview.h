#pragma once

#include <QTreeView>

/// The tree of groups and listings on the screen. The current row is the highlighted one, always, since it is the one
/// that the panel edits.
class BrowseTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit BrowseTreeView(QWidget *parent);

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override;

private:
    void LeaveGroup(const QModelIndex &group);
};
