#pragma once

#include "besidefile.h"

#include <QString>
#include <QStringList>

/// A file that comes into being whole or not at all. Bytes are written beside the target; Commit() flushes them to
/// disk and only then renames them over the target. Anything else leaves the target as it was.
class AtomicFile
{
public:
    /// The new file gets what the one at `like` has: group, permissions, extended attributes. That is the target's own
    /// file unless another one is named. Throws ProgramError when no file can be made beside the target, or the target
    /// is a folder or may not be written.
    explicit AtomicFile(const QString &path, const QString &like = {});

    /// Appends bytes. Throws ProgramError with the system's reason when they could not all be written.
    void Write(const char *bytes, qsizetype size) { m_file.Write(bytes, size); }

    /// Ends the writing and puts the file in its place. Throws ProgramError, with the target untouched, when that
    /// fails. Returns what could not be kept of the old file, in the user's words; nobody has more rights than before.
    QStringList Commit();

private:
    QString m_like; ///< empty for a file that is like no other
    BesideFile m_file;
};
