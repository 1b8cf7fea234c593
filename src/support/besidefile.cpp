#include "besidefile.h"

#include "failures.h"
#include "paths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QScopeGuard>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#include <qt_windows.h>
#include <share.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void ThrowWriteError(const QString &reason, const QString &path)
{
    throw ProgramError(Failure::Write, reason + u": "_s + QDir::toNativeSeparators(path));
}

[[noreturn]] void ThrowSystemError(int error, const QString &path)
{
    ThrowWriteError(QString::fromLocal8Bit(std::strerror(error)), path);
}

constexpr auto kUnfinished = ".discbook-saving-"_L1;

// What the names of all unfinished files of a target start with. The digest tells targets apart whose names were cut.
QString UnfinishedMark(const QString &target)
{
    const QString name = QFileInfo(target).fileName();
    const QByteArray digest = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Md5).toHex().first(8);
    return u"%1%2%3-"_s.arg(ShortName(name), kUnfinished, QLatin1StringView(digest));
}

QString UnfinishedName(const QString &target)
{
    const QString number = QString::number(QRandomGenerator::global()->generate(), 16);
    return QFileInfo(target).absolutePath() + u'/' + UnfinishedMark(target) + number;
}

#ifdef Q_OS_WIN

const wchar_t *Native(const QString &path)
{
    return reinterpret_cast<const wchar_t *>(path.utf16());
}

void Rename(const QString &from, const QString &to)
{
    if (!MoveFileExW(Native(from), Native(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        ThrowWriteError(qt_error_string(), to);
}

int OpenNew(const QString &path, int)
{
    int handle = -1;
    constexpr int kFlags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT;
    _wsopen_s(&handle, Native(path), kFlags, _SH_DENYNO, _S_IREAD | _S_IWRITE);
    return handle;
}

qint64 WriteSome(int handle, const char *bytes, qsizetype size)
{
    return _write(handle, bytes, static_cast<unsigned>(qMin<qsizetype>(size, 1 << 30)));
}

bool FlushHandle(int handle)
{
    return _commit(handle) == 0;
}

// Who has it open for writing lets nobody else do that.
int OpenHeld(const QString &path)
{
    int handle = -1;
    _wsopen_s(
        &handle, Native(path), _O_WRONLY | _O_APPEND | _O_BINARY | _O_NOINHERIT, _SH_DENYWR, _S_IREAD | _S_IWRITE);
    return handle;
}

// Nobody can remove a file that another process has open.
void RemoveUnlessHeld(const QString &path)
{
    QFile::remove(path);
}

#else

void Rename(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        ThrowSystemError(errno, to);
}

int OpenNew(const QString &path, int mode)
{
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    return ::open(QFile::encodeName(path).constData(), kFlags, static_cast<mode_t>(mode));
}

qint64 WriteSome(int handle, const char *bytes, qsizetype size)
{
    return ::write(handle, bytes, static_cast<size_t>(size));
}

// Between its opening and its locking, a file may have been removed or replaced by the one that held it.
bool HasName(int handle)
{
    struct stat info = {};
    return ::fstat(handle, &info) == 0 && info.st_nlink > 0;
}

// "Invalid" is the answer of file systems that cannot flush.
bool FlushHandle(int handle)
{
#ifdef F_FULLFSYNC
    // There a usual flush ends in the cache of the drive.
    if (::fcntl(handle, F_FULLFSYNC) == 0)
        return true;
#endif
    return ::fsync(handle) == 0 || errno == EINVAL;
}

int OpenHeld(const QString &path)
{
    constexpr int kFlags = O_RDWR | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int handle = ::open(QFile::encodeName(path).constData(), kFlags);
    if (handle < 0 || (::flock(handle, LOCK_EX | LOCK_NB) == 0 && HasName(handle)))
        return handle;
    ::close(handle);
    return -1;
}

void RemoveUnlessHeld(const QString &path)
{
    if (const auto file = BesideFile::Hold(path))
        file->Remove();
}

#endif

// What killed processes have left, of all files or of one.
void RemoveUnfinished(const QDir &folder, const QString &start)
{
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden, QDir::NoSort)) {
        if (name.startsWith(start) && name.contains(kUnfinished))
            RemoveUnlessHeld(folder.filePath(name));
    }
}

} // namespace

QString WithoutLinks(const QString &path)
{
    constexpr int kMaxLinks = 40;
    QFileInfo info(path);
    for (int links = 0; info.isSymbolicLink() && links < kMaxLinks; ++links)
        info.setFile(info.symLinkTarget());
    return info.filePath();
}

void RemoveUnfinishedIn(const QString &folder)
{
    RemoveUnfinished(QDir(folder), {});
}

void RenameFile(const QString &from, const QString &to)
{
    Rename(from, to);
}

#ifdef Q_OS_WIN

// Renaming and deleting are journaled.
void FlushFolder(const QString &) {}

#else

void FlushFolder(const QString &folder)
{
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}

#endif

BesideFile::BesideFile(QString target, Rights rights) : m_target(std::move(target))
{
    const int mode = rights == Rights::Usual ? 0666 : 0600;
    if (!OpenNameless(mode))
        OpenNamed(mode);
}

BesideFile::BesideFile(int handle, QString target) : m_target(std::move(target)), m_handle(handle) {}

std::unique_ptr<BesideFile> BesideFile::Hold(const QString &path)
{
    const int handle = OpenHeld(path);
    return handle < 0 ? nullptr : std::unique_ptr<BesideFile>(new BesideFile(handle, path));
}

BesideFile::~BesideFile()
{
    Close();
    if (!m_path.isEmpty())
        QFile::remove(m_path);
}

void BesideFile::Fail() const
{
    ThrowSystemError(errno, m_target);
}

void BesideFile::CheckHeld() const
{
    if (m_lockError != 0)
        ThrowSystemError(m_lockError, m_target);
}

void BesideFile::OpenNamed(int mode)
{
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        m_path = UnfinishedName(m_target);
        m_handle = OpenNew(m_path, mode);
        if (m_handle >= 0 && IsMine())
            return;
        if (m_handle < 0 && errno != EEXIST)
            break;
        Close();
    }
    m_path.clear();
    Fail();
}

#ifdef Q_OS_WIN

bool BesideFile::OpenNameless(int)
{
    return false;
}

bool BesideFile::IsMine()
{
    return true;
}

// An open file cannot be renamed.
void BesideFile::GiveName()
{
    Close();
}

void BesideFile::OpenPlaced()
{
    m_handle = OpenHeld(m_target);
}

// Nor can another file take its place.
void BesideFile::LetReplace()
{
    Close();
}

void BesideFile::Remove()
{
    Close();
    QFile::remove(m_target);
}

void BesideFile::Close()
{
    if (m_handle >= 0)
        _close(m_handle);
    m_handle = -1;
}

#else

bool BesideFile::OpenNameless(int mode)
{
#ifdef O_TMPFILE
    // It gets its name by way of this folder.
    if (::access("/proc/self/fd", X_OK) == 0) {
        const QByteArray folder = QFile::encodeName(QFileInfo(m_target).absolutePath());
        m_handle = ::open(folder.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, static_cast<mode_t>(mode));
    }
    return m_handle >= 0 && IsMine();
#else
    Q_UNUSED(mode)
    return false;
#endif
}

// Takes the lock. Between the making of a file and this, another save may have taken it for one that nobody holds.
// Where there are no locks, nobody ever removes what a killed save has left.
bool BesideFile::IsMine()
{
    m_lockError = ::flock(m_handle, LOCK_EX) == 0 ? 0 : errno;
    return m_path.isEmpty() || HasName(m_handle);
}

void BesideFile::GiveName()
{
    if (!m_path.isEmpty())
        return;
    const QByteArray nameless = "/proc/self/fd/" + QByteArray::number(m_handle);
    const QString path = UnfinishedName(m_target);
    const QByteArray name = QFile::encodeName(path);
    if (::linkat(AT_FDCWD, nameless.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) != 0)
        Fail();
    m_path = path;
}

// It is open still.
void BesideFile::OpenPlaced() {}

// Held to the end, so that nobody takes it for one that is free.
void BesideFile::LetReplace() {}

void BesideFile::Remove()
{
    QFile::remove(m_target);
    Close();
}

void BesideFile::Close()
{
    if (m_handle >= 0)
        ::close(m_handle);
    m_handle = -1;
}

#endif

// After a short write, trying to write the rest tells the reason.
void BesideFile::Write(const char *bytes, qsizetype size)
{
    for (qsizetype at = 0; at < size;) {
        const qint64 written = WriteSome(m_handle, bytes + at, size - at);
        if (written < 0 && errno != EINTR)
            Fail();
        at += qMax<qint64>(written, 0);
    }
}

void BesideFile::Place(Flushing flushing)
{
    if (flushing == Flushing::Now)
        Flush();
    GiveName();
    RenameFile(m_path, m_target);
    m_path.clear();
    OpenPlaced();
    // The file is in its place whatever becomes of the rest, so that a failure to save is not what to call it.
    if (flushing == Flushing::Now)
        FlushFolder(QFileInfo(m_target).absolutePath());
    RemoveUnfinished(QFileInfo(m_target).absoluteDir(), UnfinishedMark(m_target));
}

void BesideFile::PlaceOver(BesideFile &held)
{
    held.LetReplace();
    auto again = qScopeGuard([&held] { held.OpenPlaced(); });
    Place();
    again.dismiss();
}

void BesideFile::Flush()
{
    if (!FlushHandle(m_handle))
        Fail();
}
