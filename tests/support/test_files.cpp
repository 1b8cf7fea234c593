#include "atomicfile.h"
#include "failures.h"
#include "filesizelimit.h"
#include "flatfile.h"
#include "table.h"

#include <QDir>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

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

class TestFiles : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"target"_s);
    }

    void decode_data()
    {
        Table<QByteArray, QString>("bytes", "text")
            .Row("empty", "", u""_s)
            .Row("ASCII", "a\r\nb", u"a\r\nb"_s)
            .Row("UTF-8 with mark", "\xEF\xBB\xBF\xC3\xA9", u"é"_s)
            .Row("mark alone", "\xEF\xBB\xBF", u""_s)
            .Row("UTF-16 LE", QByteArray("\xFF\xFE\xE9\x00", 4), u"é"_s)
            .Row("UTF-16 BE", QByteArray("\xFE\xFF\x00\xE9", 4), u"é"_s)
#ifndef Q_OS_WIN
            .Row("UTF-8", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB5", u"é€\U0001F3B5"_s)
            .Row("cut UTF-8", "\xC3\xA9\xC3", u"Ã©Ã"_s)
            .Row("Windows-1252", "Caf\xE9 \x7F\xA0\xFF", u"Café \u007F\u00A0ÿ"_s)
            .Row(
                "Windows-1252, where it is not Latin-1",
                "\x80\x81\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8D\x8E\x8F"
                "\x90\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9D\x9E\x9F",
                u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—˜™š›œ\u009DžŸ"_s)
#endif
            ;
    }
    void decode()
    {
        QFETCH(const QByteArray, bytes);
        QTEST(DecodeFlatText(bytes), "text");
    }

    void encode()
    {
        const QString text = u"Gr\u00FC\u00DFe, \u65E5\u672C \U0001F3B5\r\n"_s;
        const QByteArray bytes = EncodeFlatText(text);
        QVERIFY(bytes.endsWith("Gr\u00FC\u00DFe, \u65E5\u672C \U0001F3B5\r\n"));
        QCOMPARE(DecodeFlatText(bytes), text);
        QCOMPARE(EncodeFlatText(u"plain"_s), "plain");
    }

    void read()
    {
        QVERIFY_THROWS_EXCEPTION(ProgramError, ReadWholeFile(m_path));
        QVERIFY_THROWS_EXCEPTION(ProgramError, ReadWholeFile(m_folder->path()));
        WriteFlatFile(m_path, u"a\r\n"_s);
        QCOMPARE(ReadWholeFile(m_path), "a\r\n");
    }

    void replacesOnlyWhenCommitted()
    {
        const QByteArray old = "a longer one that was there before";
        WriteFileAtomically(m_path, old);
        AtomicFile(m_path).Write("new", 3);
        QCOMPARE(ReadWholeFile(m_path), old);
        for (const QByteArray &bytes : {QByteArray(), "x"_ba, QByteArray(3'000'001, 'x')}) {
            QCOMPARE(WriteError(m_path, old), QString());
            AtomicFile file(m_path);
            for (qsizetype at = 0; at < bytes.size(); at += 1000)
                file.Write(bytes.constData() + at, std::min<qsizetype>(1000, bytes.size() - at));
            QCOMPARE(ReadWholeFile(m_path), old);
            file.Commit();
            QVERIFY(ReadWholeFile(m_path) == bytes);
            QCOMPARE(Names(), {u"target"_s});
        }
    }

    void refusedTargets()
    {
        QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
        WriteFileAtomically(m_folder->filePath(u"file"_s), "old");
        std::vector<std::pair<QString, QString>> reasons = {
            {u"folder"_s, u"Filename refers to a directory: "_s}, {u"gone/target"_s, u"No such file or directory: "_s}};
#ifdef Q_OS_UNIX
        QCOMPARE(mkfifo(QFile::encodeName(m_folder->filePath(u"pipe"_s)).constData(), 0600), 0);
        reasons.emplace_back(u"pipe"_s, u"Not an ordinary file: "_s);
        reasons.emplace_back(u"file/target"_s, u"Not a directory: "_s);
#endif
        const QStringList before = Names();
        for (const auto &[name, reason] : reasons) {
            const QString path = m_folder->filePath(name);
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
        WriteFileAtomically(m_path, "old");
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner));
        QVERIFY(!WriteError(m_path, "new").isEmpty());
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner));
#ifdef Q_OS_UNIX
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
        const QString error = WriteError(m_path, "new");
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(error.startsWith(u"Permission denied"_s));
#endif
        QCOMPARE(ReadWholeFile(m_path), "old");
    }

#ifdef Q_OS_UNIX
    void fullDisk_data()
    {
        Table<int, int, int>("limit", "pieces", "pieceSize")
            .Row("one write", 65536, 1, 100'000)
            .Row("found by the flush", 1000, 1, 1001)
            .Row("many small writes", 65536, 1000, 100)
            .Row("last small write", 65536, 65537, 1)
            .Row("nothing fits", 0, 1, 10);
    }
    void fullDisk()
    {
        QFETCH(const int, limit);
        QFETCH(const int, pieces);
        QFETCH(const int, pieceSize);
        WriteFileAtomically(m_path, "old");
        QString reason;
        {
            const FileSizeLimit full(limit);
            reason = WriteError(m_path, QByteArray(pieceSize, 'x'), pieces);
        }
        QCOMPARE(reason, u"File too large: "_s + m_path);
        QCOMPARE(ReadWholeFile(m_path), "old");
        QCOMPARE(Names(), {u"target"_s});
    }

    void followsLinks()
    {
        const QStringList links = {u"link"_s, u"link to a link"_s};
        QVERIFY(QFile::link(u"target"_s, m_folder->filePath(links[0])));
        QVERIFY(QFile::link(links[0], m_folder->filePath(links[1])));
        for (const QString &link : links) {
            QFile::remove(m_path); // at first they lead to nothing
            for (const QByteArray &bytes : {"first"_ba, "second"_ba}) {
                QCOMPARE(WriteError(m_folder->filePath(link), bytes), QString());
                QCOMPARE(ReadWholeFile(m_path), bytes);
                QVERIFY(!QFileInfo(m_path).isSymbolicLink());
            }
        }
        for (const QString &link : links)
            QVERIFY(QFileInfo(m_folder->filePath(link)).isSymbolicLink());
    }

    void keepsPermissions()
    {
        const auto mode = [this] {
            struct stat info = {};
            return stat(QFile::encodeName(m_path).constData(), &info) == 0 ? info.st_mode & 07777U : 0U;
        };
        const mode_t before = umask(027);
        WriteFileAtomically(m_path, "old");
        umask(before);
        QCOMPARE(mode(), 0640U);
        QCOMPARE(chmod(QFile::encodeName(m_path).constData(), 0604), 0);
        WriteFileAtomically(m_path, "new");
        QCOMPARE(mode(), 0604U);
    }
#endif

private:
    QStringList Names() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestFiles)
#include "test_files.moc"
