#pragma once

#include <QString>

#include <vector>

/// Whether a new key is inserted before an existing one. Between two numbers the existing one counts as a whole number;
/// a name that is none is ordinary text among numbers too.
bool ComesBefore(const QString &newName, const QString &existing);

/// The order in which keys stand that were inserted one after the other, each before the first that it comes before:
/// their places in `names`. That first one need not be where a search by halves would look, since numbers and texts
/// have orders of their own.
std::vector<int> KeyOrder(const std::vector<const QString *> &names);
