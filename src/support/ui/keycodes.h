#pragma once

class QKeyEvent;

/// Codes of keys (not of characters), as the key handlers compare them.
enum VirtualKey {
    VkBackspace = 8,
    VkTab = 9,
    VkEnter = 13,
    VkEscape = 27,
    VkPageUp = 33,
    VkPageDown = 34,
    VkEnd = 35,
    VkHome = 36,
    VkLeft = 37,
    VkUp = 38,
    VkRight = 39,
    VkDown = 40,
    VkInsert = 45,
    VkDelete = 46,
    Vk0 = 48,
    Vk9 = 57,
    VkA = 65,
    VkZ = 90,
    VkKeypad0 = 96,
    VkF1 = 112,
};

/// Bits of the shift state.
enum ShiftBit { ShiftBitShift = 1, ShiftBitCtrl = 2, ShiftBitAlt = 4 };

/// The code of the pressed key: letters upper case (65 to 90), digits 48 to 57, digits of the keypad 96 to 105, F1 112
/// and so on; 0 for a key that has none of these.
int VirtualKeyCode(const QKeyEvent &event);

/// The shift bits of the modifiers held down with the key.
int ShiftState(const QKeyEvent &event);

/// The code of the character that the key types, 8, 13 and 27 for Backspace, Enter and Escape included. 0 for a key
/// that types none: arrows, function keys, Delete, Tab and whatever is pressed with Alt alone.
int CharacterCode(const QKeyEvent &event);

/// Whether the key types something that can be seen; commands by Ctrl do not.
bool TypesText(const QKeyEvent &event);

/// Whether a letter is pressed with Alt, or with the key of the system's own shortcuts. As an access key it has found
/// its control by now; one that belongs to nobody is still a letter to boxes and lists.
bool IsStrayAccessKey(const QKeyEvent &event);

/// Whether the key pastes under X11 only: F18, and Shift+Ctrl+Insert from the selection instead of the clipboard.
bool IsPasteOfX11(const QKeyEvent &event);
