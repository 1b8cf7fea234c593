#pragma once

#include <QString>

/// What is longer is cut where it is shown: laying out a line of megabytes takes minutes.
inline constexpr qsizetype kMostShown = 2000;

/// A text as it is shown, cut where nobody could read on.
inline QString ShownText(const QString &text)
{
    return text.size() <= kMostShown ? text : QString(text.first(kMostShown) + u'…');
}
