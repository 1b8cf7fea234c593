#pragma once

#include <QString>

class UserPrompts;

/// Adds to the user's formats those that a newer program has brought: their classes to `formats.ini`, their pictures to
/// `Formats`. What the user has stays as it is, and what the user deleted does not come back. Does nothing in a
/// portable copy, where both folders are one.
void BringNewFormats(const QString &sharedFolder, const QString &programFolder, UserPrompts &prompts);
