#pragma once

#include <Qt>

class QComboBox;

/// The data role under which an image combo's items carry their key.
inline constexpr int kItemKeyRole = Qt::UserRole;

/// Steps an image combo to the next item whose text begins with the pressed letter or digit, around the end; Delete and
/// Backspace go to the first item. `keyCode` and `shift` are those of VirtualKeyCode and ShiftState. The key stays free
/// for the combo to process too.
///
/// A step is a choice of the user, but as it sets the current index it is signalled by `currentIndexChanged` only,
/// never by `activated`: listen to the former, under the flag that marks the filling of the form.
void ImageComboKeyDown(QComboBox &imageCombo, int keyCode, int shift);
