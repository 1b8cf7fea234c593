#include "keycodes.h"

#include <QKeyEvent>

#include <array>

namespace {

struct KeyPair
{
    Qt::Key key;
    VirtualKey code;
};

constexpr auto kSingleKeys = std::to_array<KeyPair>({
    {Qt::Key_Backspace, VkBackspace},
    {Qt::Key_Tab, VkTab},
    {Qt::Key_Backtab, VkTab},
    {Qt::Key_Return, VkEnter},
    {Qt::Key_Enter, VkEnter},
    {Qt::Key_Escape, VkEscape},
    {Qt::Key_PageUp, VkPageUp},
    {Qt::Key_PageDown, VkPageDown},
    {Qt::Key_End, VkEnd},
    {Qt::Key_Home, VkHome},
    {Qt::Key_Left, VkLeft},
    {Qt::Key_Up, VkUp},
    {Qt::Key_Right, VkRight},
    {Qt::Key_Down, VkDown},
    {Qt::Key_Insert, VkInsert},
    {Qt::Key_Delete, VkDelete},
});

/// Alt together with Ctrl is AltGr, which does type.
bool IsAltAlone(const QKeyEvent &event)
{
    return (ShiftState(event) & (ShiftBitCtrl | ShiftBitAlt)) == ShiftBitAlt;
}

} // namespace

int VirtualKeyCode(const QKeyEvent &event)
{
    const int key = event.key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        const bool keypad = event.modifiers().testFlag(Qt::KeypadModifier);
        return key - Qt::Key_0 + (keypad ? VkKeypad0 : Vk0);
    }
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return key - Qt::Key_A + VkA;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return key - Qt::Key_F1 + VkF1;
    for (const KeyPair &pair : kSingleKeys) {
        if (pair.key == key)
            return pair.code;
    }
    return 0;
}

int ShiftState(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    return (modifiers.testFlag(Qt::ShiftModifier) ? ShiftBitShift : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? ShiftBitCtrl : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? ShiftBitAlt : 0);
}

int CharacterCode(const QKeyEvent &event)
{
    // The text of these keys differs from system to system.
    switch (event.key()) {
    case Qt::Key_Backspace:
        return VkBackspace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return VkEnter;
    case Qt::Key_Escape:
        return VkEscape;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete:
        return 0;
    default:
        break;
    }
    return IsAltAlone(event) || event.text().isEmpty() ? 0 : event.text().front().unicode();
}

bool TypesText(const QKeyEvent &event)
{
    const bool command = (ShiftState(event) & (ShiftBitCtrl | ShiftBitAlt)) == ShiftBitCtrl;
    return !command && !event.text().isEmpty() && (event.text().front().isPrint() || event.text().size() > 1);
}

bool IsStrayAccessKey(const QKeyEvent &event)
{
#ifdef Q_OS_MACOS
    // There Alt types, and the shortcuts of the system never come here.
    Q_UNUSED(event)
    return false;
#else
    return (IsAltAlone(event) || event.modifiers().testFlag(Qt::MetaModifier)) && TypesText(event);
#endif
}

bool IsPasteOfX11(const QKeyEvent &event)
{
    const bool fromSelection = event.key() == Qt::Key_Insert && ShiftState(event) == (ShiftBitShift | ShiftBitCtrl);
    return fromSelection || event.key() == Qt::Key_F18;
}
