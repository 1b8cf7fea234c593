#include "treewalk.h"

#include <QAbstractItemModel>

namespace {

QModelIndex LastChild(const QModelIndex &node)
{
    const QAbstractItemModel &model = *node.model();
    return model.index(model.rowCount(node) - 1, 0, node);
}

} // namespace

QModelIndex GetNextNode(const QModelIndex &node)
{
    if (!node.isValid())
        return node;
    if (const QModelIndex child = node.model()->index(0, 0, node); child.isValid())
        return child;
    if (const QModelIndex next = node.siblingAtRow(node.row() + 1); next.isValid())
        return next;
    const QModelIndex parent = node.parent();
    const QModelIndex next = parent.siblingAtRow(parent.row() + 1);
    return next.isValid() ? next : node;
}

QModelIndex GetPreviousNode(const QModelIndex &node)
{
    if (!node.isValid())
        return node;
    QModelIndex previous = node.siblingAtRow(node.row() - 1);
    if (!previous.isValid()) {
        const QModelIndex parent = node.parent();
        return parent.isValid() ? parent : node;
    }
    while (previous.model()->hasChildren(previous))
        previous = LastChild(previous);
    return previous;
}
