#pragma once

#include <QModelIndex>

/// The node after a node: its first child, else its next sibling, else its parent's next sibling, else the node itself.
/// It climbs one level only.
QModelIndex GetNextNode(const QModelIndex &node);

/// The node before a node: the deepest last node under its previous sibling, else its parent, else the node itself.
QModelIndex GetPreviousNode(const QModelIndex &node);
