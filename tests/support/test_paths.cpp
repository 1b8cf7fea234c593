#include "paths.h"

#include "failures.h"
#include "flatfile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

using namespace Qt::StringLiterals;

class TestPaths : public QObject
{
    Q_OBJECT

private slots:
    void fileTitle_data();
    void fileTitle();
    void inFolder();
    void filesInFolder();
    void portableCopy();
    void folderSetByHand();
    void firstStartOfAnInstalledCopy();
};

void TestPaths::fileTitle_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<QString>("cut");

    QTest::newRow("empty") << u""_s << u""_s << u""_s;
    QTest::newRow("name alone") << u"Live.xml"_s << u"Live.xml"_s << u"Live"_s;
    QTest::newRow("backslash") << u"C:\\Music\\Live.xml"_s << u"Live.xml"_s << u"Live"_s;
    QTest::newRow("slash") << u"/home/me/Live.xml"_s << u"Live.xml"_s << u"Live"_s;
    QTest::newRow("slash last") << u"C:\\a/b.xml"_s << u"b.xml"_s << u"b"_s;
    QTest::newRow("backslash last") << u"/a/b\\c.xml"_s << u"c.xml"_s << u"c"_s;
    QTest::newRow("two dots") << u"a.b.xml"_s << u"a.b.xml"_s << u"a.b"_s;
    QTest::newRow("dot in the folder only") << u"/a.d/live"_s << u"live"_s << u"live"_s;
    QTest::newRow("dot first") << u"/a/.xml"_s << u".xml"_s << u""_s;
    QTest::newRow("folder") << u"/a/b/"_s << u""_s << u""_s;
}

void TestPaths::fileTitle()
{
    QFETCH(const QString, path);
    QTEST(FileTitle(path, true), "kept");
    QTEST(FileTitle(path), "cut");
}

void TestPaths::inFolder()
{
    QCOMPARE(QDir::fromNativeSeparators(InFolder(u"/a/b"_s, u"c.ini"_s)), u"/a/b/c.ini"_s);
    QCOMPARE(QDir::fromNativeSeparators(InFolder(u"/"_s, u"c.ini"_s)), u"/c.ini"_s);
}

void TestPaths::filesInFolder()
{
    const QTemporaryDir folder;
    for (const QString &name :
         {u"b.bmp"_s, u"C.BMP"_s, u"a.bmp"_s, u"a_b.bmp"_s, u"AAB.Bmp"_s, u"d.bmp.txt"_s, u"bmp"_s})
        WriteFileAtomically(folder.filePath(name), {});
    QVERIFY(QDir(folder.path()).mkdir(u"folder.bmp"_s));
    QStringList expected = {u"a.bmp"_s, u"AAB.Bmp"_s, u"a_b.bmp"_s, u"b.bmp"_s, u"C.BMP"_s};
#ifdef Q_OS_UNIX
    WriteFileAtomically(folder.filePath(u".hidden.bmp"_s), {});
    WriteFileAtomically(folder.filePath(u"B.bmp"_s), {});
    expected.insert(3, u"B.bmp"_s);
#endif
    QCOMPARE(FilesInFolder(folder.path(), u"*.bmp"_s), expected);
    QCOMPARE(FilesInFolder(folder.filePath(u"gone"_s), u"*"_s), QStringList());
}

void TestPaths::portableCopy()
{
    QCOMPARE(ExecutableName(), u"test_support_paths"_s);
    QCOMPARE(QDir(ProgramFolder()), QDir(QCoreApplication::applicationDirPath()));
    QCOMPARE(SharedFolder(), ProgramFolder());
    const QStringList before = QDir(ProgramFolder()).entryList();
    PrepareProgramFolder();
    QCOMPARE(QDir(ProgramFolder()).entryList(), before);
}

void TestPaths::folderSetByHand()
{
    const QTemporaryDir folder;
    SetProgramFolder(folder.path());
    QCOMPARE(QDir(ProgramFolder()), QDir(folder.path()));
    QCOMPARE(SharedFolder(), ProgramFolder());
    SetProgramFolder({});
    QCOMPARE(QDir(ProgramFolder()), QDir(QCoreApplication::applicationDirPath()));
}

#ifdef Q_OS_LINUX
namespace {

/// A copy of this program in an installed layout; started, it prepares its folder and says where that is.
class InstalledCopy
{
public:
    InstalledCopy()
    {
        for (const QString &name : {u"bin"_s, u"share/discbook/Formats"_s, u"share/discbook/samples"_s, u"data"_s})
            QDir().mkpath(Path(name));
        QFile::copy(QCoreApplication::applicationFilePath(), Path(u"bin/discbook"_s));
        for (const QString &name :
             {u"formats.ini"_s, u"Formats/CD.bmp"_s, u"samples/Live.xml"_s, u"samples/README.md"_s}) {
            const QString shipped = Path(u"share/discbook/"_s + name);
            WriteFileAtomically(shipped, name.toUtf8());
            QFile::setPermissions(shipped, QFile::ReadOwner);
        }
    }

    QString Path(const QString &name) const { return m_folder.filePath(name); }
    QString Data(const QString &name) const { return Path(u"data/discbook/"_s + name); }

    QString Start() const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_s, Path(u"data"_s));
        process.setProcessEnvironment(environment);
        process.start(Path(u"bin/discbook"_s), {u"prepare"_s});
        process.waitForFinished();
        return QString::fromUtf8(process.readAll());
    }

private:
    QTemporaryDir m_folder;
};

} // namespace
#endif

void TestPaths::firstStartOfAnInstalledCopy()
{
#ifdef Q_OS_LINUX
    const InstalledCopy copy;
    // Left over from a first start that was cut off.
    QVERIFY(QDir().mkpath(copy.Data(u"../discbook.new/old"_s)));
    const QString folders = copy.Path(u"data/discbook"_s) + u'\n' + copy.Path(u"share/discbook"_s) + u'\n';
    QCOMPARE(copy.Start(), folders);
    QCOMPARE(QDir(copy.Path(u"data"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), {u"discbook"_s});
    QCOMPARE(
        QDir(copy.Data(u""_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase),
        QStringList({u"Formats"_s, u"formats.ini"_s, u"Live.xml"_s}));
    QCOMPARE(ReadWholeFile(copy.Data(u"Formats/CD.bmp"_s)), "Formats/CD.bmp");
    QVERIFY(QFile::permissions(copy.Data(u"formats.ini"_s)) & QFile::WriteOwner);

    WriteFileAtomically(copy.Data(u"formats.ini"_s), "mine");
    QVERIFY(QFile::remove(copy.Data(u"Live.xml"_s)));
    QCOMPARE(copy.Start(), folders);
    QCOMPARE(ReadWholeFile(copy.Data(u"formats.ini"_s)), "mine");
    QVERIFY(!QFile::exists(copy.Data(u"Live.xml"_s)));
#else
    QSKIP("The user's data folder cannot be moved elsewhere");
#endif
}

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "prepare") == 0) {
        const auto done = Guarded("test", "prepare", [] { PrepareProgramFolder(); });
        QTextStream(stdout) << ProgramFolder() << '\n' << SharedFolder() << '\n';
        return done ? 0 : 1;
    }
    TestPaths test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_paths.moc"
