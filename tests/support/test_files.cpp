#include "atomicfile.h"
#include "failures.h"
#include "flatfile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

QByteArray Contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(no file)");
}

/// The description of the failure with which writing a file ends; empty when it succeeds.
QString WriteError(const QString &path, const QByteArray &bytes)
{
    try {
        WriteFileAtomically(path, bytes);
    } catch (const ProgramError &error) {
        return error.failure() == Failure::Write ? error.description() : u"(another failure)"_s;
    }
    return {};
}

#ifdef Q_OS_UNIX
/// As long as it lives no file can grow beyond a size, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        (void)std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    void (*m_handler)(int);
    rlimit m_before = {};
};
#endif

} // namespace

class TestFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void decode_data();
    void decode();
    void encode();
    void read();
    void replace_data();
    void replace();
    void abandoned();
    void refusedTargets_data();
    void refusedTargets();
    void noPermission();
    void fullDisk_data();
    void fullDisk();
    void followsLinks_data();
    void followsLinks();
    void keepsPermissions();

private:
    QStringList Names() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

void TestFiles::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(u"target"_s);
}

void TestFiles::decode_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QByteArray() << u""_s;
    QTest::newRow("ASCII") << QByteArray("a\r\nb") << u"a\r\nb"_s;
    QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBF\xC3\xA9") << u"é"_s;
    QTest::newRow("mark alone") << QByteArray("\xEF\xBB\xBF") << u""_s;
    QTest::newRow("UTF-16 LE") << QByteArray("\xFF\xFE\xE9\x00", 4) << u"é"_s;
    QTest::newRow("UTF-16 BE") << QByteArray("\xFE\xFF\x00\xE9", 4) << u"é"_s;
#ifndef Q_OS_WIN
    QTest::newRow("UTF-8") << QByteArray("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB5") << u"é€\U0001F3B5"_s;
    QTest::newRow("Windows-1252") << QByteArray("Caf\xE9 \x80\x8C\x99\x9F\xA0\xFF") << u"Café €Œ™Ÿ\u00A0ÿ"_s;
    QTest::newRow("cut UTF-8") << QByteArray("\xC3\xA9\xC3") << u"Ã©Ã"_s;
#endif
}

void TestFiles::decode()
{
    QFETCH(const QByteArray, bytes);
    QTEST(DecodeFlatText(bytes), "text");
}

void TestFiles::encode()
{
    const QString text = u"Gr\u00FC\u00DFe, \u65E5\u672C \U0001F3B5\r\n"_s;
    const QByteArray bytes = EncodeFlatText(text);
    QVERIFY(bytes.endsWith("Gr\xC3\xBC\xC3\x9F"
                           "e, \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\xB5\r\n"));
    QCOMPARE(DecodeFlatText(bytes), text);
    QCOMPARE(EncodeFlatText(u"plain"_s), "plain");
}

void TestFiles::read()
{
    QVERIFY_THROWS_EXCEPTION(ProgramError, ReadWholeFile(m_path));
    QVERIFY_THROWS_EXCEPTION(ProgramError, ReadWholeFile(m_folder->path()));
    WriteFlatFile(m_path, u"a\r\n"_s);
    QCOMPARE(ReadWholeFile(m_path), "a\r\n");
}

void TestFiles::replace_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("small") << QByteArray("x");
    QTest::newRow("larger than any buffer") << QByteArray(3'000'001, 'x');
}

void TestFiles::replace()
{
    QFETCH(const QByteArray, bytes);
    QCOMPARE(WriteError(m_path, "the longer one that was there before"), QString());
    AtomicFile file(m_path);
    for (qsizetype at = 0; at < bytes.size(); at += 1000)
        file.Write(bytes.constData() + at, std::min<qsizetype>(1000, bytes.size() - at));
    QCOMPARE(Contents(m_path), "the longer one that was there before");
    file.Commit();
    QVERIFY(Contents(m_path) == bytes);
    QCOMPARE(Names(), {u"target"_s});
}

void TestFiles::abandoned()
{
    WriteFileAtomically(m_path, "old");
    {
        AtomicFile file(m_path);
        file.Write("new", 3);
    }
    QCOMPARE(Contents(m_path), "old");
    QCOMPARE(Names(), {u"target"_s});
}

void TestFiles::refusedTargets_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");

    QTest::newRow("folder") << u"folder"_s << u"Filename refers to a directory: "_s;
    QTest::newRow("folder that is gone") << u"gone/target"_s << u"No such file or directory: "_s;
#ifdef Q_OS_UNIX
    QTest::newRow("pipe") << u"pipe"_s << u"Not an ordinary file: "_s;
    QTest::newRow("below a file") << u"file/target"_s << u"Not a directory: "_s;
#endif
}

void TestFiles::refusedTargets()
{
    QFETCH(const QString, name);
    QFETCH(const QString, reason);
    QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
    WriteFileAtomically(m_folder->filePath(u"file"_s), "old");
#ifdef Q_OS_UNIX
    QCOMPARE(mkfifo(QFile::encodeName(m_folder->filePath(u"pipe"_s)).constData(), 0600), 0);
#endif
    const QStringList before = Names();
    const QString path = m_folder->filePath(name);
    QCOMPARE(WriteError(path, "new"), reason + QDir::toNativeSeparators(path));
    QCOMPARE(Names(), before);
}

void TestFiles::noPermission()
{
#ifdef Q_OS_UNIX
    if (geteuid() == 0)
        QSKIP("Permissions do not hold for root");
#endif
    WriteFileAtomically(m_path, "old");
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner));
    QVERIFY(!WriteError(m_path, "new").isEmpty());
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner));
    QCOMPARE(Contents(m_path), "old");
#ifdef Q_OS_UNIX
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
    const QString error = WriteError(m_path, "new");
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(error.startsWith(u"Permission denied"_s));
    QCOMPARE(Contents(m_path), "old");
#endif
}

void TestFiles::fullDisk_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("pieces");
    QTest::addColumn<int>("pieceSize");

    QTest::newRow("one write") << 65536 << 1 << 100'000;
    QTest::newRow("found by the flush") << 1000 << 1 << 1001;
    QTest::newRow("many small writes") << 65536 << 1000 << 100;
    QTest::newRow("last small write") << 65536 << 65537 << 1;
    QTest::newRow("nothing fits") << 0 << 1 << 10;
}

void TestFiles::fullDisk()
{
#ifdef Q_OS_UNIX
    QFETCH(const int, limit);
    QFETCH(const int, pieces);
    QFETCH(const int, pieceSize);
    WriteFileAtomically(m_path, "old");
    const QByteArray piece(pieceSize, 'x');
    QString reason;
    {
        const FileSizeLimit full(static_cast<rlim_t>(limit));
        try {
            AtomicFile file(m_path);
            for (int i = 0; i < pieces; ++i)
                file.Write(piece.constData(), piece.size());
            file.Commit();
        } catch (const ProgramError &error) {
            reason = error.description();
        }
    }
    QCOMPARE(reason, u"File too large: "_s + m_path);
    QCOMPARE(Contents(m_path), "old");
    QCOMPARE(Names(), {u"target"_s});
#else
    QSKIP("No way to limit the size of files");
#endif
}

void TestFiles::followsLinks_data()
{
    QTest::addColumn<bool>("exists");
    QTest::addColumn<int>("links");

    QTest::newRow("link") << true << 1;
    QTest::newRow("link to a link") << true << 3;
    QTest::newRow("link to nothing") << false << 1;
    QTest::newRow("link to a link to nothing") << false << 3;
}

void TestFiles::followsLinks()
{
#ifdef Q_OS_UNIX
    QFETCH(const bool, exists);
    QFETCH(const int, links);
    if (exists)
        WriteFileAtomically(m_path, "old");
    QString link = u"target"_s;
    for (int i = 0; i < links; ++i) {
        const QString name = u"link%1"_s.arg(i);
        QCOMPARE(
            symlink(QFile::encodeName(link).constData(), QFile::encodeName(m_folder->filePath(name)).constData()), 0);
        link = name;
    }
    QCOMPARE(WriteError(m_folder->filePath(link), "new"), QString());
    QCOMPARE(Contents(m_path), "new");
    QVERIFY(!QFileInfo(m_path).isSymbolicLink());
    for (int i = 0; i < links; ++i)
        QVERIFY(QFileInfo(m_folder->filePath(u"link%1"_s.arg(i))).isSymbolicLink());
#else
    QSKIP("Links need a privilege");
#endif
}

void TestFiles::keepsPermissions()
{
#ifdef Q_OS_UNIX
    const auto mode = [](const QString &path) {
        struct stat info = {};
        return stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777U : 0U;
    };
    const mode_t before = umask(027);
    WriteFileAtomically(m_path, "old");
    umask(before);
    QCOMPARE(mode(m_path), 0640U);
    QCOMPARE(chmod(QFile::encodeName(m_path).constData(), 0604), 0);
    WriteFileAtomically(m_path, "new");
    QCOMPARE(mode(m_path), 0604U);
#else
    QSKIP("No modes");
#endif
}

QTEST_GUILESS_MAIN(TestFiles)
#include "test_files.moc"
