// Text of any encoding is read, and what is written is read back.
#include "kit.h"

void Check(const QByteArray &input)
{
    const QString text = DecodeFlatText(input);
    assert(!text.isValidUtf16() || DecodeFlatText(EncodeFlatText(text)) == text);
}
