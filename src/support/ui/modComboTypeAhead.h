#pragma once

class QComboBox;

/// Completes what is typed into an editable combo box from the box's own list: the first entry that begins with the
/// typed text (case ignored) is shown with its untyped tail selected. With `limitToList`, a character that leads to no
/// entry is refused. Returns the character code that the key press goes on with, 0 when it is used up.
///
/// A completed text is signalled by `editTextChanged`; `activated` is not emitted.
int ComboTypeAhead(QComboBox &combo, int keyAscii, bool limitToList);
