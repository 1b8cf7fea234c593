#pragma once

#include <QPalette>

/// The palette's colour of a role as it stands out from the background of a list or page: drawn towards that of the
/// text until it can be read, since not every dark desktop sets the rarer roles.
QColor ReadableColour(const QPalette &palette, QPalette::ColorRole role);
