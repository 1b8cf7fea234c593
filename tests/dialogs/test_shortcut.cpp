#include "desktopentry.h"
#include "flatfile.h"
#include "modCreateShortcut.h"
#include "scriptedprompts.h"
#include "tests.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestShortcut : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        m_earlierHome = qgetenv("HOME");
        qputenv("HOME", m_home->path().toUtf8());
        qunsetenv("XDG_CONFIG_HOME");
    }

    void cleanup() { qputenv("HOME", m_earlierHome); }

    void quoting_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("nameLine");
        QTest::addColumn<QString>("execLine");
        const auto row = [](const char *title, const char16_t *name, const char16_t *target, const char16_t *arguments,
                            const char16_t *nameLine, const char16_t *execLine) {
            QTest::newRow(title) << QString::fromUtf16(name) << QString::fromUtf16(target)
                                 << QString::fromUtf16(arguments) << QString::fromUtf16(nameLine)
                                 << QString::fromUtf16(execLine);
        };
        row("plain", u"Discbook Shows", u"/usr/bin/discbook", u"Shows.xml", u"Name=Discbook Shows",
            u"Exec=\"/usr/bin/discbook\" \"Shows.xml\"");
        row("blanks", u"  my shows ", u"/opt/my programs/discbook", u"my  shows.xml", u"Name=\\s my shows ",
            u"Exec=\"/opt/my programs/discbook\" \"my  shows.xml\"");
        row("percent signs", u"100% %f", u"/opt/discbook", u"100% %f %%.xml", u"Name=100% %f",
            u"Exec=\"/opt/discbook\" \"100%% %%f %%%%.xml\"");
        for (const char16_t c : {u'%', u'='}) {
            const QString folder = u"/opt/50"_s + c;
            QTest::addRow("%c in the program's path", static_cast<char>(c))
                << u"a"_s << folder + u"/discbook"_s << u"a.xml"_s << u"Name=a"_s
                << u"Exec=/bin/sh -c \"exec \\\\\"\\\\$0\\\\\" \\\\\"\\\\$1\\\\\"\" \""_s +
                       QString(folder).replace(u'%', u"%%"_s) + u"/discbook\" \"a.xml\""_s;
        }
        row("quotes", u"\"a\" 'b'", u"/opt/discbook", u"\"a\" 'b' `c`.xml", u"Name=\"a\" 'b'",
            u"Exec=\"/opt/discbook\" \"\\\\\"a\\\\\" 'b' \\\\`c\\\\`.xml\"");
        row("backslash and dollar", u"a\\b$", u"/opt/discbook", u"a\\b$HOME.xml", u"Name=a\\\\b$",
            u"Exec=\"/opt/discbook\" \"a\\\\\\\\b\\\\$HOME.xml\"");
        row("shell characters", u"a;b&c", u"/opt/discbook", u"a;b&c>(d)*?#~|.xml", u"Name=a;b&c",
            u"Exec=\"/opt/discbook\" \"a;b&c>(d)*?#~|.xml\"");
        row("line breaks and tabs", u"a\nb\tc", u"/opt/discbook", u"a\nb\tc\rd.xml", u"Name=a\\nb\\tc",
            u"Exec=\"/opt/discbook\" \"a\\nb\\tc\\rd.xml\"");
        row("other letters", u"Grüße 日本 😀", u"/home/jörg/discbook", u"Grüße 日本 😀.xml", u"Name=Grüße 日本 😀",
            u"Exec=\"/home/jörg/discbook\" \"Grüße 日本 😀.xml\"");
    }

    void quoting()
    {
        QFETCH(QString, name);
        QFETCH(QString, target);
        QFETCH(QString, arguments);
        const QByteArray entry = DesktopEntry(name, target, arguments);
        const QStringList lines = QString::fromUtf8(entry).split(u'\n');
        QCOMPARE(lines[0], u"[Desktop Entry]"_s);
        QTEST(lines.filter(u"Name="_s).value(0), "nameLine");
        QTEST(lines.filter(u"Exec="_s).value(0), "execLine");

        const QString validator = QStandardPaths::findExecutable(u"desktop-file-validate"_s);
        if (validator.isEmpty())
            QSKIP("desktop-file-validate is not there");
        const QString path = m_home->filePath(u"test.desktop"_s);
        WriteFileAtomically(path, entry);
        QProcess process;
        process.start(validator, {path});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAll(), QByteArray());
        QCOMPARE(process.exitCode(), 0);
    }

#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    void written()
    {
        QVERIFY(CreateDesktopShortcut(u"My 100% shows"_s, u"/bin/old"_s, u"old.xml"_s));
        QVERIFY(CreateDesktopShortcut(u"My 100% shows"_s, u"/bin/new"_s, u"new.xml"_s));
        const QDir desktop(m_home->filePath(u"Desktop"_s));
        QCOMPARE(desktop.entryList(QDir::Files | QDir::Hidden), QStringList(u"My 100% shows.desktop"_s));
        const QString path = desktop.filePath(u"My 100% shows.desktop"_s);
        QVERIFY(QFileInfo(path).isExecutable());
        QCOMPARE(ReadWholeFile(path), DesktopEntry(u"My 100% shows"_s, u"/bin/new"_s, u"new.xml"_s));
    }

    void command_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("fails");
        QTest::newRow("a name") << u"Mine"_s << u"Mine.desktop"_s << false;
        QTest::newRow("cancelled") << QString() << QString() << false;
        QTest::newRow("a name with a slash") << u"a/b"_s << QString() << true;
        QTest::newRow("a name too long for a file") << QString(300, u'x') << QString() << true;
    }

    void command()
    {
        QFETCH(QString, answer);
        QFETCH(QString, file);
        QFETCH(bool, fails);
        ScriptedPrompts prompts;
        prompts.ExpectInput(u"Shortcut Name"_s, answer);
        if (fails)
            prompts.ExpectMessage(u"Discbook"_s);
        mnuFileMakeCatalogShortcut_Click(u"/some/where/My Shows.old.xml"_s, prompts);
        QCOMPARE(prompts.AllAsked()[0].proposed, u"Discbook My Shows.old"_s);
        QCOMPARE(
            prompts.AllAsked()[0].text, u"This will create a shortcut to this catalog on your desktop.\r\n\r\n"
                                        "Please enter a name for the shortcut."_s);
        if (fails)
            QCOMPARE(prompts.LastAsked().text, u"Error creating shortcut."_s);
        const QDir desktop(m_home->filePath(u"Desktop"_s));
        QCOMPARE(desktop.entryList(QDir::Files).join(u','), file);
        if (!file.isEmpty())
            QVERIFY(
                ReadWholeFile(desktop.filePath(file))
                    .contains('"' + QCoreApplication::applicationFilePath().toUtf8() + "\" \"My Shows.old.xml\"\n"));
    }
#endif

private:
    std::unique_ptr<QTemporaryDir> m_home;
    QByteArray m_earlierHome;
};

std::unique_ptr<QObject> CreateShortcutTest()
{
    return std::make_unique<TestShortcut>();
}

#include "test_shortcut.moc"
