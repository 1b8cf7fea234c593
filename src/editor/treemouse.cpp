#include "treemouse.h"

#include "browsetreemodel.h"
#include "controls.h"
#include "detailpanel.h"
#include "failures.h"
#include "formatregistry.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionViewItem>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace {

/// The caption of a format's menu item: its first letter is the access key, and an "&" in the name is shown.
QString MenuCaption(const QModelIndex &format)
{
    QString caption = format.data(FormatRegistry::PopupCaptionRole).toString();
    if (format.row() == 0)
        return caption;
    return u'&' + ShownCaption(caption.sliced(1));
}

/// The picture that a listing in a format has in the tree.
QIcon MenuPicture(const QModelIndex &format, const FormatRegistry &formats)
{
    return format.row() == 0 ? formats.Pictures().Picture(kUncheckedPicture)
                             : format.data(Qt::DecorationRole).value<QIcon>();
}

/// Whether a key for the menu was pressed. Shift+F10 is nothing to some systems.
bool AsksForMenu(const QEvent &event)
{
    if (event.type() == QEvent::ContextMenu)
        return static_cast<const QContextMenuEvent &>(event).reason() == QContextMenuEvent::Keyboard;
    const auto isShiftF10 = [](const QKeyEvent &key) {
        return key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier;
    };
    return event.type() == QEvent::KeyPress && isShiftF10(static_cast<const QKeyEvent &>(event));
}

} // namespace

TreeMouse::TreeMouse(QTreeView &trv, const BrowseTreeModel &model, const FormatRegistry &formats, DetailPanel &panel)
    : m_trv(trv),
      m_model(model),
      m_formats(formats),
      m_panel(panel)
{
    m_popup.setObjectName("mnuPopup"_L1);
    connect(&m_popup, &QMenu::triggered, this, &TreeMouse::mnuPopupFormat_Click);
    m_trv.installEventFilter(this);
    m_trv.viewport()->installEventFilter(this);
}

bool TreeMouse::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && watched == m_trv.viewport())
        Guarded("frm", "trv_MouseUp", [&] { trv_MouseUp(*static_cast<QMouseEvent *>(event)); });
    if (watched != &m_trv || !AsksForMenu(*event))
        return false;
    Guarded("frm", "trv_MenuKey", [this] { trv_MenuKey(); });
    return true;
}

void TreeMouse::trv_MouseUp(const QMouseEvent &event)
{
    if (!m_model.ListingAt(m_trv.currentIndex()))
        return;
    if (event.button() == Qt::RightButton)
        ShowPopup(event.globalPosition().toPoint());
    else if (event.button() == Qt::LeftButton && IsOnPicture(event.position().toPoint()))
        m_panel.StepFormat();
}

void TreeMouse::trv_MenuKey()
{
    if (!m_model.ListingAt(m_trv.currentIndex()))
        return;
    m_trv.scrollTo(m_trv.currentIndex());
    ShowPopup(m_trv.viewport()->mapToGlobal(m_trv.visualRect(m_trv.currentIndex()).bottomLeft()));
}

bool TreeMouse::IsOnPicture(const QPoint &position) const
{
    const QModelIndex node = m_trv.indexAt(position);
    if (node != m_trv.currentIndex() || !m_model.ListingAt(node))
        return false;
    QStyleOptionViewItem option;
    option.initFrom(&m_trv);
    option.rect = m_trv.visualRect(node);
    option.features = QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasDisplay;
    option.decorationAlignment = Qt::AlignCenter;
    const int side = m_trv.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &m_trv);
    option.decorationSize = m_trv.iconSize().isValid() ? m_trv.iconSize() : QSize(side, side);
    const QRect picture = m_trv.style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &option, &m_trv);
    return position.x() >= picture.left() && position.x() <= picture.right();
}

void TreeMouse::ShowPopup(const QPoint &globalPosition)
{
    m_popup.clear();
    for (int row = 0; row < m_formats.rowCount(); ++row) {
        const QModelIndex format = m_formats.index(row);
        QAction *item = m_popup.addAction(MenuPicture(format, m_formats), MenuCaption(format));
        // Also where the desktop's menus have no pictures.
        item->setIconVisibleInMenu(true);
        item->setData(row);
        item->setCheckable(true);
        item->setActionGroup(&m_choice);
        item->setChecked(row == m_panel.FormatRow());
    }
    m_popup.popup(globalPosition);
    // From there the arrow keys go on.
    m_popup.setActiveAction(m_choice.checkedAction());
}

void TreeMouse::mnuPopupFormat_Click(const QAction *item)
{
    Guarded("frm", "mnuPopupFormat_Click", [&] { m_panel.SelectFormat(item->data().toInt()); });
}
