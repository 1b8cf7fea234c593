#pragma once

#include <QString>

#include <memory>

/// The file itself, there or not, that a path leads to when it is a link.
QString WithoutLinks(const QString &path);

/// Renames a file, in place of one that has the new name; never copies. Throws ProgramError with the system's reason.
void RenameFile(const QString &from, const QString &to);

/// Makes what was renamed and deleted in a folder last through a power cut.
void FlushFolder(const QString &folder);

/// Removes what killed processes have left half written in a folder that is the program's own.
void RemoveUnfinishedIn(const QString &folder);

/// A new file that is open for writing in the folder of the one it is to become. It has no name yet where the file
/// system can do that, else one that tells whose it is. Held by a lock as long as it is being written, and gone with
/// this object or with the process; where it had a name and the process was killed, it goes with the next save of that
/// file. Once it is in its place it stays open and held: what is written then is appended.
class BesideFile
{
public:
    enum class Rights { Usual, OwnerOnly };
    enum class Flushing { Now, Later };

    /// Holds a file that was made by an earlier process, so that nobody takes it for one that is free. Null when some
    /// other process holds it, or that cannot be told.
    static std::unique_ptr<BesideFile> Hold(const QString &path);

    /// Throws ProgramError when no file can be made there.
    BesideFile(QString target, Rights rights);
    ~BesideFile();
    BesideFile(const BesideFile &) = delete;
    BesideFile &operator=(const BesideFile &) = delete;

    int handle() const { return m_handle; }
    const QString &Target() const { return m_target; }

    /// Throws ProgramError where the file system has no locks, so that nobody can tell who holds what.
    void CheckHeld() const;

    /// Appends bytes. Throws ProgramError with the system's reason when they could not all be written.
    void Write(const char *bytes, qsizetype size);

    /// Puts it in the target's place, after it was written to the disk unless that is left to Flush(). Throws
    /// ProgramError with the target untouched.
    void Place(Flushing flushing = Flushing::Now);

    /// Puts it in the place of one that is held there, written to the disk. Throws ProgramError with that one as it
    /// was.
    void PlaceOver(BesideFile &held);

    /// Writes it to the disk. Throws ProgramError.
    void Flush();

    /// Deletes it from its place, and lets go of it.
    void Remove();

private:
    BesideFile(int handle, QString target);
    bool OpenNameless(int mode);
    void OpenNamed(int mode);
    bool IsMine();
    void GiveName();
    void OpenPlaced();
    void LetReplace();
    void Close();
    [[noreturn]] void Fail() const;

    QString m_target;
    QString m_path; ///< empty as long as it has no name
    int m_handle = -1;
    int m_lockError = 0; ///< why no lock was to be had
};
