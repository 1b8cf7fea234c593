#include "atomicfile.h"
#include "contentdigest.h"
#include "filecopy.h"
#include "filesizelimit.h"
#include "kit.h"

#include <QScopedValueRollback>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <cerrno>
#include <cstdarg>
#include <sys/syscall.h>
#include <sys/xattr.h>
#endif

namespace {

/// The description of the failure with which writing a file in pieces ends; empty when it succeeds.
QString WriteError(const QString &path, const QByteArray &piece, int pieces = 1)
{
    try {
        AtomicFile file(path);
        for (int i = 0; i < pieces; ++i)
            file.Write(piece.constData(), piece.size());
        file.Commit();
    } catch (const ProgramError &error) {
        return error.failure() == Failure::Write ? error.description() : u"(another failure)"_s;
    }
    return {};
}

} // namespace

#ifdef Q_OS_LINUX

namespace {
bool g_hasNamelessFiles = true;
bool g_keepsModes = true;
} // namespace

// The library's own, as on a file system that has no nameless files or no modes.
extern "C" int open(const char *path, int flags, ...)
{
    if (!g_hasNamelessFiles && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
    const auto handle = syscall(SYS_openat, AT_FDCWD, path, flags, mode);
    va_end(more);
    return static_cast<int>(handle);
}

extern "C" int fsetxattr(int handle, const char *name, const void *value, size_t size, int flags) noexcept
{
    errno = ENOSPC;
    return g_keepsModes ? static_cast<int>(syscall(SYS_fsetxattr, handle, name, value, size, flags)) : -1;
}

extern "C" int fchown(int handle, uid_t owner, gid_t group) noexcept
{
    const bool keeps = g_keepsModes || owner == static_cast<uid_t>(-1);
    return keeps ? static_cast<int>(syscall(SYS_fchown, handle, owner, group)) : -1;
}

extern "C" int fchmod(int handle, mode_t mode) noexcept
{
    errno = EPERM;
    return g_keepsModes ? static_cast<int>(syscall(SYS_fchmod, handle, mode)) : -1;
}

#endif

class TestFiles : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<TestProgramFolder>(); }

    void decodesAndEncodes()
    {
        const std::vector<std::pair<QByteArray, QString>> texts = {
            {"a\r\nb", u"a\r\nb"_s},
            {"\xEF\xBB\xBF\xC3\xA9", u"é"_s},
            {"\xEF\xBB\xBF", u""_s},
            {"\xEF\xBB\xBF\xEF\xBB\xBF-", u"\uFEFF-"_s},
            {"\xFF\xFE\xE9\x00"_ba, u"é"_s},
            {"\xFE\xFF\x00\xE9"_ba, u"é"_s},
#ifndef Q_OS_WIN
            {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB5", u"é€\U0001F3B5"_s},
            // What is cut off is not UTF-8, and so Windows-1252.
            {"\xC3\xA9\xC3", u"Ã©Ã"_s},
            {"Caf\xE9 \x7F\xA0\xFF", u"Café \u007F\u00A0ÿ"_s},
            {"\x80\x81\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8D\x8E\x8F"
             "\x90\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9D\x9E\x9F",
             u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—˜™š›œ\u009DžŸ"_s},
#endif
        };
        for (const auto &[bytes, text] : texts) {
            QCOMPARE(DecodeFlatText(bytes), text);
            QCOMPARE(DecodeFlatText(EncodeFlatText(text)), text);
        }
        QVERIFY(EncodeFlatText(u"Gr\u00FC\u00DFe, \u65E5\u672C\r\n"_s).endsWith("Gr\u00FC\u00DFe, \u65E5\u672C\r\n"));
        QCOMPARE(EncodeFlatText(u"plain"_s), "plain");
    }

    void reads()
    {
        QVERIFY_THROWS_EXCEPTION(ProgramError, ReadWholeFile(Target()));
        QVERIFY_THROWS_EXCEPTION(ProgramError, ReadWholeFile(m_folder->Path({})));
        QVERIFY(!FileDigest(Target()));
        QVERIFY_THROWS_EXCEPTION(ProgramError, FileDigest(m_folder->Path({})));
        const QByteArray bytes = QByteArray("a\r\n").repeated(200'000);
        WriteFlatFile(Target(), QString::fromUtf8(bytes));
        QCOMPARE(ReadWholeFile(Target()), bytes);
        QCOMPARE(FileDigest(Target()), ContentDigest(bytes));
        QCOMPARE(ContentDigest("abc"), 0x78AF5F94892F3950U); // in every run
    }

    void replacesOnlyWhenCommitted()
    {
        const QByteArray old = "a longer one that was there before";
        WriteFileAtomically(Target(), old);
        AtomicFile(Target()).Write("new", 3);
        QCOMPARE(ReadWholeFile(Target()), old);
        for (const QByteArray &bytes : {QByteArray(), "x"_ba, QByteArray(3'000'001, 'x')}) {
            QCOMPARE(WriteError(Target(), old), QString());
            AtomicFile file(Target());
            for (qsizetype at = 0; at < bytes.size(); at += 1000)
                file.Write(bytes.constData() + at, std::min<qsizetype>(1000, bytes.size() - at));
            QCOMPARE(ReadWholeFile(Target()), old);
            file.Commit();
            QVERIFY(ReadWholeFile(Target()) == bytes);
            QCOMPARE(Names(), {u"target"_s});
        }
    }

    void refusedTargets()
    {
        m_folder->Write(u"file"_s, "old");
        QVERIFY(QDir().mkdir(m_folder->Path(u"folder"_s)));
        std::vector<std::pair<QString, QString>> reasons = {
            {u"folder"_s, u"Filename refers to a directory: "_s}, {u"gone/target"_s, u"No such file or directory: "_s}};
#ifdef Q_OS_UNIX
        QCOMPARE(mkfifo(QFile::encodeName(m_folder->Path(u"pipe"_s)).constData(), 0600), 0);
        reasons.emplace_back(u"pipe"_s, u"Not an ordinary file: "_s);
        reasons.emplace_back(u"file/target"_s, u"Not a directory: "_s);
#endif
        const QStringList before = Names();
        for (const auto &[name, reason] : reasons) {
            const QString path = m_folder->Path(name);
            QCOMPARE(WriteError(path, "new"), reason + QDir::toNativeSeparators(path));
            QCOMPARE(Names(), before);
        }
    }

    void noPermission()
    {
#ifdef Q_OS_UNIX
        if (geteuid() == 0)
            QSKIP("Permissions do not hold for root");
#endif
        WriteFileAtomically(Target(), "old");
        QVERIFY(QFile::setPermissions(Target(), QFile::ReadOwner));
        QVERIFY(!WriteError(Target(), "new").isEmpty());
        QVERIFY(QFile::setPermissions(Target(), QFile::ReadOwner | QFile::WriteOwner));
        QCOMPARE(ReadWholeFile(Target()), "old");
    }

#ifdef Q_OS_UNIX
    void fullDisk()
    {
        const std::vector<std::array<int, 3>> writes = {
            {65536, 1, 100'000}, {1000, 1, 1001}, {65536, 1000, 100}, {65536, 65537, 1}, {0, 1, 10}};
        for (const auto &[limit, pieces, pieceSize] : writes) {
            m_folder->Write(u"target"_s, "old");
            QString reason;
            {
                const FileSizeLimit full(limit);
                reason = WriteError(Target(), QByteArray(pieceSize, 'x'), pieces);
            }
            QCOMPARE(reason, u"File too large: "_s + Target());
            QCOMPARE(m_folder->Read(u"target"_s), "old");
            QCOMPARE(Names(), {u"target"_s});
        }
    }

    void followsLinks()
    {
        const QStringList links = {m_folder->Path(u"link"_s), m_folder->Path(u"link to a link"_s)};
        QVERIFY(QFile::link(u"target"_s, links[0]));
        QVERIFY(QFile::link(u"link"_s, links[1]));
        for (const QString &link : links) {
            QFile::remove(Target()); // at first they lead to nothing
            for (const QByteArray &bytes : {"first"_ba, "second"_ba}) {
                QCOMPARE(WriteError(link, bytes), QString());
                QCOMPARE(ReadWholeFile(Target()), bytes);
                QVERIFY(!QFileInfo(Target()).isSymbolicLink());
            }
        }
        for (const QString &link : links)
            QVERIFY(QFileInfo(link).isSymbolicLink());
    }

    void keepsPermissions()
    {
        const QByteArray path = QFile::encodeName(Target());
        const auto mode = [&path] {
            struct stat info = {};
            return stat(path.constData(), &info) == 0 ? info.st_mode & 07777U : 0U;
        };
        const mode_t before = umask(027);
        WriteFileAtomically(Target(), "old");
        umask(before);
        QCOMPARE(mode(), 0640U);
        QCOMPARE(chmod(path.constData(), 0604), 0);
        WriteFileAtomically(Target(), "new");
        QCOMPARE(mode(), 0604U);
#ifdef Q_OS_LINUX
        const bool hasMore = setxattr(path.constData(), "user.note", "x", 1, 0) == 0;
        WriteFileAtomically(m_folder->Path(u"copy"_s), "new", Target());
        const QByteArray copy = QFile::encodeName(m_folder->Path(u"copy"_s));
        QVERIFY(!hasMore || getxattr(copy.constData(), "user.note", nullptr, 0) == 1);
        QCOMPARE(mode(), 0604U);
        QStringList lost = {u"its permissions"_s};
        if (chown(path.constData(), 65534, static_cast<gid_t>(-1)) == 0)
            lost += u"its owner"_s;
        if (hasMore)
            lost += u"its extended attributes"_s;
        const QScopedValueRollback<bool> keepsNone(g_keepsModes, false);
        QCOMPARE(AtomicFile(Target()).Commit(), lost);
        QCOMPARE(AtomicFile(Target()).Commit(), {});
#endif
    }
#endif

#ifdef Q_OS_LINUX
    void namesOfUnfinishedFiles()
    {
        const QScopedValueRollback<bool> named(g_hasNamelessFiles, false);
        AtomicFile saving(Target());
        const QString held = Names().value(0);
        const QStringList others = {u"target.backup"_s, QString(held).replace(u"target"_s, u"target2"_s)};
        for (const QString &name : others + QStringList(held + u'0'))
            QFile(m_folder->Path(name)).open(QIODevice::NewOnly);
        WriteFileAtomically(Target(), "other");
        QCOMPARE(Names(), QStringList({u"target"_s, others[0], held, others[1]}));
        saving.Write("new", 3);
        saving.Commit();
        QCOMPARE(ReadWholeFile(Target()), "new");
        QCOMPARE(Names(), QStringList({u"target"_s, others[0], others[1]}));
    }

    void longestName()
    {
        for (const bool nameless : {true, false}) {
            const QScopedValueRollback<bool> mode(g_hasNamelessFiles, nameless);
            QCOMPARE(WriteError(m_folder->Path(u"x"_s + QString(127, u'é')), "new"), QString());
        }
    }
#endif

private:
    QString Target() const
    {
        return m_folder->Path(u"target"_s);
    }
    QStringList Names() const
    {
        return QDir(m_folder->Path({})).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<TestProgramFolder> m_folder;
};

QTEST_GUILESS_MAIN(TestFiles)
#include "test_files.moc"
