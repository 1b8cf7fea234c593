#include "atomicfile.h"

#include "failures.h"

#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void ThrowWriteError(const QString &reason, const QString &path)
{
    throw ProgramError(Failure::Write, reason + u": "_s + QDir::toNativeSeparators(path));
}

#ifdef Q_OS_UNIX

// QSaveFile flushes to disk too, but overlooks that this fails. "Invalid" is the answer of file systems that cannot
// flush.
QString FlushToDisk(int handle)
{
    return ::fsync(handle) == 0 || errno == EINVAL ? QString() : QString::fromLocal8Bit(std::strerror(errno));
}

// Makes the renaming last through a power cut. The file is in its place whether this succeeds or not, so that a failure
// to save is not what to call it.
void FlushFolder(const QString &folder)
{
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}

#else

// QSaveFile::commit() flushes; there is no handle to do it by.
QString FlushToDisk(int)
{
    return {};
}

// The renaming is journaled.
void FlushFolder(const QString &) {}

#endif

} // namespace

AtomicFile::AtomicFile(const QString &path) : m_file(path)
{
    if (path.isEmpty())
        throw ProgramError(Failure::Write, u"No file name"_s);
    const QFileInfo target(path);
    if (target.exists() && !target.isFile() && !target.isDir())
        ThrowWriteError(u"Not an ordinary file"_s, path);
    if (!m_file.open(QIODevice::WriteOnly))
        ThrowWriteError(m_file.errorString(), path);
}

void AtomicFile::Write(const char *bytes, qsizetype size)
{
    // A short write tells no reason; trying to write the rest does.
    for (qsizetype at = 0; at < size;) {
        const qint64 written = m_file.write(bytes + at, size - at);
        if (written <= 0)
            Fail();
        at += written;
    }
    m_written += size;
}

void AtomicFile::Commit()
{
    // A short write may show no error, and commit() looks at none of this: it would put a stump in the place of a good
    // file.
    if (!m_file.flush() || m_file.error() != QFileDevice::NoError || m_file.size() != m_written)
        Fail();
    const QString flushError = FlushToDisk(m_file.handle());
    if (!flushError.isEmpty())
        Fail(flushError);
    if (!m_file.commit())
        Fail();
    FlushFolder(QFileInfo(m_file.fileName()).canonicalPath());
}

void AtomicFile::Fail()
{
    // When the buffer went to disk only in part, the reason shows with what is left of it.
    m_file.flush();
    Fail(m_file.error() == QFileDevice::NoError ? u"Not everything could be written"_s : m_file.errorString());
}

void AtomicFile::Fail(const QString &reason)
{
    m_file.cancelWriting();
    ThrowWriteError(reason, m_file.fileName());
}
