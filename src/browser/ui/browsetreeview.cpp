#include "browsetreeview.h"

#include "readable.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSidewaysStep = 40; ///< pixels
constexpr int kHintMargin = 16;   ///< pixels

/// A label for a tool tip, which would take "<" for markup: on one line unless that is too long for a screen.
QString ToolTipText(const QString &label)
{
    constexpr qsizetype kLongestLine = 120;
    const QLatin1StringView space(label.size() <= kLongestLine ? "pre" : "pre-wrap");
    return u"<p style='white-space:%1'>%2</p>"_s.arg(space, label.toHtmlEscaped());
}

} // namespace

BrowseTreeView::BrowseTreeView(QWidget *parent) : QTreeView(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    horizontalScrollBar()->setSingleStep(kSidewaysStep);
    connect(this, &QTreeView::collapsed, this, &BrowseTreeView::LeaveGroup);
}

void BrowseTreeView::SetHint(const QString &hint)
{
    if (hint == m_hint)
        return;
    m_hint = hint;
    setAccessibleDescription(hint);
    viewport()->update();
}

void BrowseTreeView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (!m_hint.isEmpty())
        PaintHint();
}

/// The hint stands below the groups, or over the last of them where they leave no room.
void BrowseTreeView::PaintHint()
{
    constexpr int kLayout = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
    QRect area = viewport()->rect().marginsRemoved(QMargins(kHintMargin, kHintMargin, kHintMargin, kHintMargin));
    const int lowestTop = area.bottom() - fontMetrics().boundingRect(area, kLayout, m_hint).height();
    const QRect last = visualRect(model()->index(model()->rowCount() - 1, 0));
    if (last.isValid())
        area.setTop(std::min(last.bottom() + 1 + kHintMargin, lowestTop));
    // Those of a disabled tree are not to be read.
    QPalette colours = palette();
    colours.setColor(QPalette::Active, QPalette::Base, colours.color(QPalette::Base));
    colours.setCurrentColorGroup(QPalette::Active);
    QPainter painter(viewport());
    painter.fillRect(
        area.adjusted(-kHintMargin, -kHintMargin, kHintMargin, kHintMargin), colours.color(QPalette::Base));
    painter.setPen(ReadableColour(colours, QPalette::PlaceholderText));
    painter.drawText(area, kLayout, m_hint);
}

/// What is painted over the rows stays while they are scrolled.
void BrowseTreeView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (!m_hint.isEmpty())
        viewport()->update();
}

/// Walking from row to row leaves the view where it is sideways.
void BrowseTreeView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const int sideways = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(sideways);
}

void BrowseTreeView::reset()
{
    QTreeView::reset();
    header()->setMinimumSectionSize(-1);
}

void BrowseTreeView::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QTreeView::drawRow(painter, option, index);
    // The header stretches its only section to the width of the view, but not below this; it does so later by itself.
    if (const int width = RowWidth(index); width > header()->minimumSectionSize())
        header()->setMinimumSectionSize(width);
}

/// While it is scrolled sideways, the tree would take Left for scrolling back and not close a group by it.
QModelIndex BrowseTreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action == MoveLeft)
        horizontalScrollBar()->setValue(0);
    return QTreeView::moveCursor(action, modifiers);
}

/// A click beside all rows does nothing, and neither does Ctrl with a click or a blank on the highlighted one.
QItemSelectionModel::SelectionFlags
BrowseTreeView::selectionCommand(const QModelIndex &index, const QEvent *event) const
{
    const QItemSelectionModel::SelectionFlags command = QTreeView::selectionCommand(index, event);
    const bool takesAway = !index.isValid() || command.testFlag(QItemSelectionModel::Deselect);
    return event && takesAway ? QItemSelectionModel::NoUpdate : command;
}

/// The scroll bar that comes up for a wide row does not cover the current one.
void BrowseTreeView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    if (QRect(QPoint(), event->oldSize()).intersects(visualRect(currentIndex())))
        scrollTo(currentIndex());
}

bool BrowseTreeView::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QTreeView::viewportEvent(event);
    const auto &help = *static_cast<QHelpEvent *>(event);
    ShowLabel(indexAt(help.pos()), help.globalPos());
    return true;
}

int BrowseTreeView::RowWidth(const QModelIndex &row) const
{
    const int levels = row.parent().isValid() ? 2 : 1;
    return levels * indentation() + sizeHintForIndex(row).width();
}

bool BrowseTreeView::IsCut(const QModelIndex &row) const
{
    return visualRect(row).left() < 0 || columnViewportPosition(0) + RowWidth(row) > viewport()->width();
}

/// A tool tip with the label of a row that is cut; none elsewhere.
void BrowseTreeView::ShowLabel(const QModelIndex &row, const QPoint &globalPosition) const
{
    const bool tells = row.isValid() && IsCut(row);
    QToolTip::showText(
        globalPosition, tells ? ToolTipText(row.data().toString()) : QString(), viewport(), visualRect(row));
}

/// The current row does not disappear in a group that is closed: the group takes its place.
void BrowseTreeView::LeaveGroup(const QModelIndex &group)
{
    if (currentIndex().parent() == group)
        setCurrentIndex(group);
}
