#pragma once

#include <QSaveFile>
#include <QString>

/// A file that comes into being whole or not at all. Bytes are written beside the target; Commit() flushes them to
/// disk, checks that all of them arrived and only then renames them over the target. Anything else leaves the target as
/// it was.
class AtomicFile
{
public:
    /// Throws ProgramError when no file can be made beside the target, or the target is a folder or may not be written.
    explicit AtomicFile(const QString &path);

    /// Appends bytes. Throws ProgramError with the system's reason when they could not all be written.
    void Write(const char *bytes, qsizetype size);

    /// Ends the writing and puts the file in its place. Throws ProgramError, with the target untouched, when that
    /// fails.
    void Commit();

private:
    [[noreturn]] void Fail();
    [[noreturn]] void Fail(const QString &reason);

    QSaveFile m_file;
    qint64 m_written = 0;
};
