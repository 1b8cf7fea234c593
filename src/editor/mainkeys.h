#pragma once

#include <QModelIndex>
#include <QObject>

class BrowseTreeModel;
class QAction;
class QTreeView;

/// The keys of the main window that work wherever the focus is: copying and deleting, and stepping through the tree.
/// Every key press is seen once, before the control that has the focus.
class MainKeys : public QObject
{
    Q_OBJECT

public:
    /// The window is that of the tree. The actions run only while they are enabled. All must outlive this object.
    MainKeys(QTreeView &trv, const BrowseTreeModel &model, QAction &copyListing, QAction &deleteListing);

    /// Handles a key by its code and shift state (VirtualKeyCode, ShiftState). True when the key is used up.
    bool Form_KeyDown(int keyCode, int shift);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using Walker = QModelIndex (*)(const QModelIndex &);

    bool IsKeyTarget(const QObject *watched) const;
    bool RunCommand(int keyCode);
    bool WouldStep(const QObject *watched) const;
    static Walker Step(int keyCode, int shift);
    QModelIndex FindHeld(Walker step) const;

    QTreeView &m_trv;
    const BrowseTreeModel &m_model;
    QAction &m_copyListing;
    QAction &m_deleteListing;
};
