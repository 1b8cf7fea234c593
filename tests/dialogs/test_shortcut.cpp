#include "desktopentry.h"
#include "flatfile.h"
#include "modCreateShortcut.h"
#include "scriptedprompts.h"
#include "suite.h"
#include "table.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class TestShortcut : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        qputenv("HOME", m_home->path().toUtf8());
        qunsetenv("XDG_CONFIG_HOME");
    }

    void quoting_data()
    {
        const QByteArray sh = R"(/bin/sh -c "exec \\"\\$0\\" \\"\\$1\\"" )";
        Table<QByteArray, QByteArray, QByteArray, QByteArray, QByteArray>("name", "target", "file", "label", "exec")
            .Row("plain", "My Shows", "/opt/discbook", "a.xml", "My Shows", R"("/opt/discbook" "a.xml")")
            .Row("blanks", "  my shows ", "/my programs/p", "a  b", R"(\s my shows )", R"("/my programs/p" "a  b")")
            .Row("percent signs", "100% %f", "/p", "100% %f %%", "100% %f", R"("/p" "100%% %%f %%%%")")
            .Row("% in the program's path", "a", "/50%/p", "a.xml", "a", sh + R"("/50%%/p" "a.xml")")
            .Row("= in the program's path", "a", "/50=/p", "a.xml", "a", sh + R"("/50=/p" "a.xml")")
            .Row("quotes", R"("a" 'b')", "/p", R"("a" 'b' `c`)", R"("a" 'b')", R"("/p" "\\"a\\" 'b' \\`c\\`")")
            .Row("backslash and dollar", R"(a\b$)", "/p", R"(a\b$HOME)", R"(a\\b$)", R"("/p" "a\\\\b\\$HOME")")
            .Row("shell characters", "a;b&c", "/p", "a;b&c>(d)*?#~|", "a;b&c", "\"/p\" \"a;b&c>(d)*?#~|\"")
            .Row("line breaks and tabs", "a\nb\tc", "/p", "a\nb\tc\rd", R"(a\nb\tc)", R"("/p" "a\nb\tc\rd")")
            .Row("other letters", "Grüße 日 😀", "/jörg/p", "Grüße 日 😀", "Grüße 日 😀", R"("/jörg/p" "Grüße 日 😀")");
    }

    void quoting()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, target);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, label);
        QFETCH(QByteArray, exec);
        const auto entry = DesktopEntry(QString::fromUtf8(name), QString::fromUtf8(target), QString::fromUtf8(file));
        const QByteArray lines = "[Desktop Entry]\nType=Application\nVersion=1.0\nName=" + label + "\nExec=" + exec;
        QCOMPARE(entry, lines + "\nIcon=discbook\nTerminal=false\n");
        QCOMPARE(Complaints(entry), QByteArray());
    }

#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    void command_data()
    {
        Table<QString, QString, QString>("answer", "files", "message")
            .Row("a name", u"Mine"_s, u"Mine.desktop"_s, {})
            .Row("cancelled", {}, {}, {})
            .Row("a name with a slash", u"../b"_s, {}, u"Error creating shortcut."_s)
            .Row("a name too long for a file", QString(300, u'x'), {}, u"Error creating shortcut."_s);
    }

    void command()
    {
        QFETCH(QString, answer);
        QFETCH(QString, message);
        ScriptedPrompts prompts;
        prompts.ExpectInput(u"Shortcut Name"_s, answer);
        if (!message.isEmpty())
            prompts.ExpectMessage(u"Discbook"_s);
        mnuFileMakeCatalogShortcut_Click(u"/some/where/My Shows.old.xml"_s, prompts);
        QCOMPARE(prompts.AllAsked()[0].proposed, u"Discbook My Shows.old"_s);
        QCOMPARE(
            prompts.AllAsked()[0].text, u"This will create a shortcut to this catalog on your desktop.\r\n\r\n"
                                        "Please enter a name for the shortcut."_s);
        QCOMPARE(message.isEmpty() ? QString() : prompts.LastAsked().text, message);
        const QDir desktop(m_home->filePath(u"Desktop"_s));
        QTEST(desktop.entryList(QDir::Files).join(u','), "files");
        const QByteArray program = QCoreApplication::applicationFilePath().toUtf8();
        for (const QFileInfo &file : desktop.entryInfoList(QDir::Files)) {
            QVERIFY(file.isExecutable());
            QVERIFY(ReadWholeFile(file.filePath()).contains("Exec=\"" + program + "\" \"My Shows.old.xml\"\n"));
        }
    }
#endif

private:
    /// What the desktop's own checker has to say about an entry, where there is one.
    QByteArray Complaints(const QByteArray &entry) const
    {
        const QString path = m_home->filePath(u"test.desktop"_s);
        WriteFileAtomically(path, entry);
        QProcess checker;
        checker.setProcessChannelMode(QProcess::MergedChannels);
        checker.start(u"desktop-file-validate"_s, {path});
        return checker.waitForFinished() ? checker.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_home;
};

TEST_OF_SUITE(TestShortcut)

#include "test_shortcut.moc"
