#include "kit.h"

#include <QProcess>
#include <QTextStream>

namespace {

QStringList EntriesOf(const QString &folder)
{
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    return QDir(folder).entryList(all, QDir::Name | QDir::IgnoreCase);
}

/// A copy of this program in an installed layout; started, it prepares its folder and says where that is.
class InstalledCopy : public TestProgramFolder
{
public:
    InstalledCopy()
    {
        QDir().mkpath(Path(u"bin"_s));
        QFile::copy(QCoreApplication::applicationFilePath(), Path(u"bin/discbook"_s));
        for (const QString &name :
             {u"formats.ini"_s, u"Formats/CD.bmp"_s, u"samples/Live.xml"_s, u"samples/README.md"_s}) {
            const QString shipped = Write(u"share/discbook/"_s + name, name.toUtf8());
            QFile::setPermissions(shipped, QFile::ReadOwner);
        }
    }

    /// The names of the two folders, or the reason why they could not be prepared.
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
};

} // namespace

class TestPaths : public QObject
{
    Q_OBJECT

private slots:
    void partsOfPaths()
    {
        // Of a path, with and without what follows the last dot.
        const std::vector<std::pair<QString, QString>> titles = {
            {{}, u"|"_s},
            {u"C:\\a/b.xml"_s, u"b.xml|b"_s},
            {u"/a/b\\c.xml"_s, u"c.xml|c"_s},
            {u"a.b.xml"_s, u"a.b.xml|a.b"_s},
            {u"/a.d/live"_s, u"live|live"_s},
            {u"/a/.xml"_s, u".xml|"_s},
            {u"/a/b/"_s, u"|"_s}};
        for (const auto &[path, expected] : titles)
            QCOMPARE(FileTitle(path, true) + u'|' + FileTitle(path), expected);
        QCOMPARE(QDir::fromNativeSeparators(InFolder(u"/"_s, u"c.ini"_s)), u"/c.ini"_s);
        QCOMPARE(FullPath(u"a/../b/./c.ini"_s), InFolder(QDir::currentPath(), QDir::toNativeSeparators(u"b/c.ini"_s)));
    }

    void canonicalPath()
    {
        const TestProgramFolder folder;
        folder.Write(u"a/Live.xml"_s, {});
        QVERIFY(QFile::link(folder.Path(u"a"_s), folder.Path(u"b.lnk"_s)));
        QVERIFY(QFile::link(folder.Path(u"b.lnk/Live.xml"_s), folder.Path(u"c.lnk"_s)));
        for (const auto &[path, real] :
             {std::pair(u"c.lnk"_s, u"a/Live.xml"_s),
              {u"b.lnk/./Live.xml"_s, u"a/Live.xml"_s},
              {u"b.lnk/gone"_s, u"a/gone"_s}})
            QCOMPARE(
                CanonicalPath(folder.Path(path)), QDir(QFileInfo(folder.Path(u"a"_s)).canonicalPath()).filePath(real));
    }

    void filesInFolder()
    {
        const TestProgramFolder folder;
        for (const QString &name :
             {u"b.bmp"_s, u"C.BMP"_s, u"a.bmp"_s, u"a_b.bmp"_s, u"AAB.Bmp"_s, u"d.bmp.txt"_s, u"bmp"_s})
            folder.Write(name, {});
        QVERIFY(QDir().mkdir(folder.Path(u"folder.bmp"_s)));
        QStringList expected = {u"a.bmp"_s, u"AAB.Bmp"_s, u"a_b.bmp"_s, u"b.bmp"_s, u"C.BMP"_s};
#ifdef Q_OS_UNIX
        folder.Write(u".hidden.bmp"_s, {});
        folder.Write(u"B.bmp"_s, {});
        expected.insert(3, u"B.bmp"_s);
#endif
        QCOMPARE(FilesInFolder(folder.Path({}), u"*.bmp"_s), expected);
        QCOMPARE(FilesInFolder(folder.Path(u"gone"_s), u"*"_s), QStringList());
    }

    void portableCopy()
    {
        QCOMPARE(ExecutableName(), u"test_support_paths"_s);
        QCOMPARE(QDir(ProgramFolder()), QDir(QCoreApplication::applicationDirPath()));
        QCOMPARE(SharedFolder(), ProgramFolder());
        const QStringList before = EntriesOf(ProgramFolder());
        PrepareProgramFolder();
        QCOMPARE(EntriesOf(ProgramFolder()), before);
    }

#ifdef Q_OS_LINUX
    void firstStartOfAnInstalledCopy()
    {
        const InstalledCopy copy;
        const QString folders = copy.Path(u"data/discbook\n"_s) + copy.Path(u"share/discbook"_s);
        // Left over from a first start that was cut off.
        copy.Write(u"data/discbook.new/old"_s, {});
        QCOMPARE(copy.Start(), folders);
        QCOMPARE(EntriesOf(copy.Path(u"data"_s)), {u"discbook"_s});
        QCOMPARE(
            EntriesOf(copy.Path(u"data/discbook"_s)), QStringList({u"Formats"_s, u"formats.ini"_s, u"Live.xml"_s}));
        QCOMPARE(copy.Read(u"data/discbook/Formats/CD.bmp"_s), "Formats/CD.bmp");
        QVERIFY(QFile::permissions(copy.Path(u"data/discbook/formats.ini"_s)) & QFile::WriteOwner);

        copy.Write(u"data/discbook/formats.ini"_s, "mine");
        QVERIFY(QFile::remove(copy.Path(u"data/discbook/Live.xml"_s)));
        QCOMPARE(copy.Start(), folders);
        QCOMPARE(EntriesOf(copy.Path(u"data/discbook"_s)), QStringList({u"Formats"_s, u"formats.ini"_s}));
        QCOMPARE(copy.Read(u"data/discbook/formats.ini"_s), "mine");
    }

    void failedFirstStartIsMadeUpFor()
    {
        const InstalledCopy copy;
        const std::vector<std::pair<QString, QString>> inTheWay = {
            {u"data"_s, u"data/discbook.new"_s}, {u"data/discbook"_s, u"data/discbook"_s}};
        for (const auto &[file, failing] : inTheWay) {
            copy.Write(file, "a file");
            QCOMPARE(copy.Start(), u"Cannot make the folder "_s + copy.Path(failing));
            QVERIFY(QFile::remove(copy.Path(file)));
        }
        copy.Start();
        QCOMPARE(copy.Read(u"data/discbook/Live.xml"_s), "samples/Live.xml");
    }
#endif
};

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "prepare") == 0) {
        try {
            PrepareProgramFolder();
            QTextStream(stdout) << ProgramFolder() << '\n' << SharedFolder();
        } catch (const ProgramError &error) {
            QTextStream(stdout) << error.description();
        }
        return 0;
    }
    TestPaths test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_paths.moc"
