#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

/// The number at the start of a text: leading blanks, a sign, digits and a decimal fraction. No exponent, no inner
/// blanks; whatever follows is ignored, and a text that does not start with a number is 0.
double LeadingNumber(QStringView text);

/// The same for UTF-8 bytes, as the catalog document holds them.
double LeadingNumber(std::string_view text);

/// Whether the whole text is one number as LeadingNumber reads it (blanks around it allowed).
bool IsNumeric(QStringView text);

/// Rounds to a 32-bit integer, halves to the even neighbour. Throws ProgramError when the result does not fit.
qint32 WholeNumber(double number);

/// A number as plain decimal text: "1994", "1994.5", "-3".
QString NumberText(double number);

/// A number right-aligned in `width` places, filled with "0" on the left; a longer number is kept whole.
QString PadNumber(double number, int width);
