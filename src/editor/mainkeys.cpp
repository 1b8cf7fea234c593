#include "mainkeys.h"

#include "browsetreemodel.h"
#include "failures.h"
#include "keycodes.h"
#include "treewalk.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace {

constexpr int kVkF2 = VkF1 + 1;
constexpr int kVkF3 = VkF1 + 2;

} // namespace

MainKeys::MainKeys(QTreeView &trv, const BrowseTreeModel &model, QAction &copyListing, QAction &deleteListing)
    : m_trv(trv),
      m_model(model),
      m_copyListing(copyListing),
      m_deleteListing(deleteListing)
{
    // The tree and the combo boxes take Ctrl with Page Up and Page Down for themselves, so the window would never see
    // them.
    QCoreApplication::instance()->installEventFilter(this);
}

bool MainKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !IsKeyTarget(watched))
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    const int keyCode = VirtualKeyCode(key);
    const int shift = ShiftState(key);
    const auto used = Guarded("frm", "Form_KeyDown", [&] { return Form_KeyDown(keyCode, shift); });
    return used.value_or(false) || (Step(keyCode, shift) && WouldStep(watched));
}

/// Where the walk ends, the tree must not turn a page instead, nor a combo box change its value.
bool MainKeys::WouldStep(const QObject *watched) const
{
    return watched == &m_trv || qobject_cast<const QComboBox *>(watched);
}

/// A key that its first receiver does not take goes on to the receiver's parents; only the first one counts.
bool MainKeys::IsKeyTarget(const QObject *watched) const
{
    const QWidget *window = m_trv.window();
    const QWidget *focused = window->focusWidget();
    return watched == (focused ? focused : window);
}

bool MainKeys::Form_KeyDown(int keyCode, int shift)
{
    if (!m_trv.currentIndex().isValid())
        return false;
    // A command may open a dialog, and a text box would take the same key for pasting or cutting afterwards.
    if (shift == (ShiftBitShift | ShiftBitCtrl) && RunCommand(keyCode))
        return true;
    const Walker step = Step(keyCode, shift);
    if (!step)
        return false;
    const QModelIndex target = shift == ShiftBitCtrl ? step(m_trv.currentIndex()) : FindHeld(step);
    if (!target.isValid() || target == m_trv.currentIndex())
        return false;
    m_trv.setCurrentIndex(target);
    return true;
}

bool MainKeys::RunCommand(int keyCode)
{
    QAction *command = nullptr;
    if (keyCode == VkInsert)
        command = &m_copyListing;
    else if (keyCode == VkDelete)
        command = &m_deleteListing;
    if (!command || !command->isEnabled())
        return false;
    command->trigger();
    return true;
}

/// The walker that a key asks for; none for any other key.
MainKeys::Walker MainKeys::Step(int keyCode, int shift)
{
    if ((shift & ~ShiftBitShift) != ShiftBitCtrl)
        return nullptr;
    if (keyCode == VkPageDown || keyCode == kVkF3)
        return &GetNextNode;
    return keyCode == VkPageUp || keyCode == kVkF2 ? &GetPreviousNode : nullptr;
}

/// The nearest listing that is held in some format and has no wrong date; no node when the walk comes to its end.
QModelIndex MainKeys::FindHeld(Walker step) const
{
    for (QModelIndex node = m_trv.currentIndex();;) {
        const QModelIndex next = step(node);
        if (next == node)
            return {};
        node = next;
        const QString picture = m_model.NodePicture(node);
        if (node.parent().isValid() && picture != "Unchecked"_L1 && picture != "WrongDate"_L1)
            return node;
    }
}
