#include "fileattributes.h"

#include <QFile>

#include <algorithm>
#include <optional>
#include <utility>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif
#ifdef Q_OS_MACOS
#include <copyfile.h>
#include <fcntl.h>
#endif

using namespace Qt::StringLiterals;

#ifndef Q_OS_UNIX

// A new file has the access list of its folder.
QStringList CopyAttributes(const QString &, int)
{
    return {};
}

#else

namespace {

constexpr mode_t kModeBits = 07777;

struct stat Info(int handle)
{
    struct stat info = {};
    ::fstat(handle, &info);
    return info;
}

// Who may not give files away may still give them to a group.
void CopyOwner(const struct stat &other, int handle)
{
    for (const uid_t owner : {other.st_uid, static_cast<uid_t>(-1)}) {
        if (::fchown(handle, owner, other.st_gid) == 0)
            return;
    }
}

// Of another group and the old one nobody knows who is in which, so both get what group and others had in common.
// Without its list, the mode does not tell what anybody but the owner might do.
mode_t AllowedMode(mode_t mode, bool sameGroup, bool sameList)
{
    if (!sameList)
        return mode & 0700;
    const mode_t common = (mode >> 3) & mode & 07;
    return sameGroup ? mode & kModeBits : (mode & 0700) | (common << 3) | common;
}

#ifdef Q_OS_LINUX

constexpr auto kAccessList = "system.posix_acl_access";

// Asks for the size, then for as many bytes. Nothing when there is no such thing.
template<class Get>
std::optional<QByteArray> Bytes(Get &&get)
{
    QByteArray bytes(std::max<ssize_t>(get(nullptr, 0), 0), '\0');
    const ssize_t size = get(bytes.data(), static_cast<size_t>(bytes.size()));
    return size < 0 ? std::nullopt : std::optional(bytes.first(std::min<qsizetype>(size, bytes.size())));
}

std::optional<QByteArray> Attribute(const QByteArray &path, const char *name)
{
    return Bytes([&](void *bytes, size_t size) { return ::getxattr(path.constData(), name, bytes, size); });
}

std::optional<QByteArray> Attribute(int handle, const char *name)
{
    return Bytes([&](void *bytes, size_t size) { return ::fgetxattr(handle, name, bytes, size); });
}

/// Gives the attribute, or takes it away where the other file has none. False when that did not work.
bool CopyAttribute(const QByteArray &from, int handle, const char *name)
{
    const auto wanted = Attribute(from, name);
    if (wanted == Attribute(handle, name))
        return true;
    if (!wanted)
        return ::fremovexattr(handle, name) == 0;
    return ::fsetxattr(handle, name, wanted->constData(), static_cast<size_t>(wanted->size()), 0) == 0;
}

// What a list says of the group would be said of another one. The folder may have given the new file one of its own.
bool CopyAccessList(const QByteArray &from, int handle, bool sameGroup)
{
    if (sameGroup)
        return CopyAttribute(from, handle, kAccessList);
    ::fremovexattr(handle, kAccessList);
    return !Attribute(from, kAccessList) && !Attribute(handle, kAccessList);
}

bool CopyExtended(const QByteArray &from, int handle)
{
    const auto names = Bytes(
        [&](void *bytes, size_t size) { return ::listxattr(from.constData(), static_cast<char *>(bytes), size); });
    bool all = true;
    for (const QByteArray &name : names.value_or(QByteArray()).split('\0')) {
        if (!name.isEmpty() && name != kAccessList)
            all = CopyAttribute(from, handle, name.constData()) && all;
    }
    return all;
}

#elif defined(Q_OS_MACOS)

bool CopyByKind(const QByteArray &from, int handle, copyfile_flags_t kind)
{
    const int other = ::open(from.constData(), O_RDONLY | O_CLOEXEC);
    const bool copied = other >= 0 && ::fcopyfile(other, handle, nullptr, kind) == 0;
    if (other >= 0)
        ::close(other);
    return copied;
}

bool CopyAccessList(const QByteArray &from, int handle, bool sameGroup)
{
    return sameGroup && CopyByKind(from, handle, COPYFILE_ACL);
}

bool CopyExtended(const QByteArray &from, int handle)
{
    return CopyByKind(from, handle, COPYFILE_XATTR);
}

#else

bool CopyAccessList(const QByteArray &, int, bool)
{
    return true;
}

bool CopyExtended(const QByteArray &, int)
{
    return true;
}

#endif

} // namespace

QStringList CopyAttributes(const QString &from, int handle)
{
    const QByteArray path = QFile::encodeName(from);
    struct stat other = {};
    if (::stat(path.constData(), &other) != 0)
        return {u"its permissions"_s};
    CopyOwner(other, handle);
    const bool sameOwner = Info(handle).st_uid == other.st_uid;
    const bool sameGroup = Info(handle).st_gid == other.st_gid;
    const bool sameList = CopyAccessList(path, handle, sameGroup);
    ::fchmod(handle, AllowedMode(other.st_mode, sameGroup, sameList));
    const bool sameMode = ((Info(handle).st_mode ^ other.st_mode) & kModeBits) == 0;
    const bool sameExtended = CopyExtended(path, handle);

    QStringList lost;
    for (const auto &[kept, name] :
         {std::pair(sameMode, u"its permissions"_s), std::pair(sameOwner, u"its owner"_s),
          std::pair(sameGroup, u"its group"_s), std::pair(sameList, u"its access list"_s),
          std::pair(sameExtended, u"its extended attributes"_s)}) {
        if (!kept)
            lost += name;
    }
    return lost;
}

#endif
