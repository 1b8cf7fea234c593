#pragma once

class QComboBox;
class QLineEdit;

/// Selects a box's whole text when the user enters it, by key or by mouse. Coming back to the window or from a menu is
/// no entering.
void SelectAllOnEntry(QLineEdit &edit);
/// The same for an editable combo box.
void SelectAllOnEntry(QComboBox &box);

/// Keeps a combo box from changing, or taking the focus, when the wheel is turned over it in passing.
void IgnoreWheelWithoutFocus(QComboBox &box);

/// Lets only digits, one point and the editing keys into the box of a length. Only typing is judged: a length such as
/// "2:10:00" that comes from elsewhere can be shown and edited.
void FilterLengthKeys(QLineEdit &edit);

/// Turns the letters that come into a box, typed or pasted, into capitals. Line breaks become blanks.
void KeepCapitals(QLineEdit &edit);

/// Turns the line breaks that come into a box, by a paste or a drop, into blanks.
void KeepOneLine(QLineEdit &edit);

/// Lets a format picker step to the next item with the pressed letter or digit, and to the first on Delete and
/// Backspace. A failure is reported under "icbFormat_KeyDown" of the module. A step is told by `currentIndexChanged`
/// only.
void StepByKeys(QComboBox &picker, const char *moduleName);
