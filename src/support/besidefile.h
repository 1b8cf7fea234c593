#pragma once

#include <QString>

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
/// file.
class BesideFile
{
public:
    enum class Rights { Usual, OwnerOnly };

    /// Throws ProgramError when no file can be made there.
    BesideFile(QString target, Rights rights);
    ~BesideFile();
    BesideFile(const BesideFile &) = delete;
    BesideFile &operator=(const BesideFile &) = delete;

    int handle() const { return m_handle; }

    /// Appends bytes. Throws ProgramError with the system's reason when they could not all be written.
    void Write(const char *bytes, qsizetype size);

    /// Writes it to the disk, then puts it in the target's place. Throws ProgramError with the target untouched.
    void Place();

private:
    bool OpenNameless(int mode);
    void OpenNamed(int mode);
    bool IsMine() const;
    void GiveName();
    void Close();
    [[noreturn]] void Fail() const;

    QString m_target;
    QString m_path; ///< empty as long as it has no name
    int m_handle = -1;
};
