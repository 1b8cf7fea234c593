#pragma once

#include <QTreeView>

/// The tree of groups and listings on the screen. The current row is the highlighted one, always, since it is the one
/// that the panel edits.
///
/// Labels wider than the view are scrolled to, by the user alone, and told by a tool tip. The column is as wide as the
/// widest row that has been painted: measuring all rows would take as long as there are listings.
class BrowseTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit BrowseTreeView(QWidget *parent);

    /// The text that stands in the tree while it shows no listing; "" for none.
    void SetHint(const QString &hint);

    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void reset() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override;
    void resizeEvent(QResizeEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void PaintHint();
    int RowWidth(const QModelIndex &row) const;
    bool IsCut(const QModelIndex &row) const;
    void ShowLabel(const QModelIndex &row, const QPoint &globalPosition) const;
    void LeaveGroup(const QModelIndex &group);

    QString m_hint;
};
