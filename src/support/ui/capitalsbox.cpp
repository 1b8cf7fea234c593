#include "capitalsbox.h"

#include <algorithm>

/// Letter by letter: "ß" must not become two.
QString CapitalsBox::Typed(const QString &text) const
{
    QString capitals = text;
    std::ranges::transform(capitals, capitals.begin(), [](QChar c) { return c.toUpper(); });
    return capitals;
}
