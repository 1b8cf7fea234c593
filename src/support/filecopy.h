#pragma once

#include <QString>

#include <optional>

/// The digest of a file's whole content, which is read piece by piece; nothing when there is no file. Throws
/// ProgramError when there is one that cannot be read.
std::optional<quint64> FileDigest(const QString &path);

/// Copies a file, whole or not at all, and returns the digest of the copy. It has the group, permissions and extended
/// attributes of the original, never more. Throws ProgramError.
quint64 CopyWholeFile(const QString &from, const QString &to);
