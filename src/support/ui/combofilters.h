#pragma once

class QComboBox;

/// Keeps a combo box from changing, or taking the focus, when the wheel is turned over it in passing.
void IgnoreWheelWithoutFocus(QComboBox &box);

/// Lets a format picker step to the next item with the pressed letter or digit, and to the first on Delete and
/// Backspace. A failure is reported under "icbFormat_KeyDown" of the module. A step is signalled by
/// `currentIndexChanged` only.
void StepByKeys(QComboBox &picker, const char *moduleName);
