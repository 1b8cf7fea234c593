#pragma once

#include <QActionGroup>
#include <QMenu>
#include <QObject>

class BrowseTreeModel;
class DetailPanel;
class FormatRegistry;
class QMouseEvent;
class QTreeView;

/// The mouse on the tree beyond selecting: a left click on the picture of the selected listing moves its format on, a
/// right click opens the menu of the formats, as the keys for menus do.
class TreeMouse : public QObject
{
    Q_OBJECT

public:
    /// All must outlive this object.
    TreeMouse(QTreeView &trv, const BrowseTreeModel &model, const FormatRegistry &formats, DetailPanel &panel);

    /// The pop-up menu, one item a row of the format picker; filled each time it opens.
    QMenu &mnuPopup() { return m_popup; }

    /// Whether a point of the tree lies on the picture column of the selected listing.
    bool IsOnPicture(const QPoint &position) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void trv_MouseUp(const QMouseEvent &event);
    void trv_MenuKey();
    void ShowPopup(const QPoint &globalPosition);
    void mnuPopupFormat_Click(const QAction *item);

    QTreeView &m_trv;
    const BrowseTreeModel &m_model;
    const FormatRegistry &m_formats;
    DetailPanel &m_panel;
    QMenu m_popup;
    QActionGroup m_choice{this};
};
