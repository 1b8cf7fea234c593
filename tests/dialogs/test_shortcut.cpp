#include "desktopentry.h"
#include "kit.h"
#include "modCreateShortcut.h"

#include <QProcess>

class TestShortcut : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_home = std::make_unique<TestProgramFolder>();
        qputenv("HOME", m_home->Path({}).toUtf8());
        qunsetenv("XDG_CONFIG_HOME");
    }

    void quoting()
    {
        const QByteArray sh = R"(/bin/sh -c "exec \\"\\$0\\" \\"\\$1\\"" )";
        // Name, program and file; name and command line quoted.
        const std::vector<std::array<QByteArray, 5>> entries = {
            {"My Shows", "/opt/discbook", "a.xml", "My Shows", R"("/opt/discbook" "a.xml")"},
            {"  my shows ", "/my programs/p", "a  b", R"(\s my shows )", R"("/my programs/p" "a  b")"},
            {"100% %f", "/p", "100% %f %%", "100% %f", R"("/p" "100%% %%f %%%%")"},
            {"a", "/50%/p", "a.xml", "a", sh + R"("/50%%/p" "a.xml")"},
            {"a", "/50=/p", "a.xml", "a", sh + R"("/50=/p" "a.xml")"},
            {R"("a" 'b')", "/p", R"("a" 'b' `c`)", R"("a" 'b')", R"("/p" "\\"a\\" 'b' \\`c\\`")"},
            {R"(a\b$)", "/p", R"(a\b$HOME)", R"(a\\b$)", R"("/p" "a\\\\b\\$HOME")"},
            {"a;b&c", "/p", "a;b&c>(d)*?#~|", "a;b&c", "\"/p\" \"a;b&c>(d)*?#~|\""},
            {"a\nb\tc", "/p", "a\nb\tc\rd", R"(a\nb\tc)", R"("/p" "a\nb\tc\rd")"},
            {"Grüße 日 😀", "/jörg/p", "Grüße 日 😀", "Grüße 日 😀", R"("/jörg/p" "Grüße 日 😀")"}};
        for (const auto &[name, target, file, label, exec] : entries) {
            const auto entry =
                DesktopEntry(QString::fromUtf8(name), QString::fromUtf8(target), QString::fromUtf8(file));
            const QByteArray lines = "[Desktop Entry]\nType=Application\nVersion=1.0\nName=" + label + "\nExec=" + exec;
            QCOMPARE(entry, lines + "\nIcon=discbook\nTerminal=false\n");
            QCOMPARE(Complaints(entry), QByteArray());
        }
    }

#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    void command()
    {
        const QString error = u"Error creating shortcut."_s;
        // What is answered, the file that it makes, and what is said.
        const std::vector<std::array<QString, 3>> answers = {
            {u"Mine"_s, u"Mine.desktop"_s, u""_s},
            {u""_s, u""_s, u""_s},
            {u"../b"_s, u""_s, error},
            {QString(300, u'x'), u""_s, error}};
        for (const auto &[answer, files, message] : answers) {
            init();
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
            const QDir desktop(m_home->Path(u"Desktop"_s));
            QCOMPARE(desktop.entryList(QDir::Files).join(u','), files);
            const QByteArray program = QCoreApplication::applicationFilePath().toUtf8();
            for (const QFileInfo &file : desktop.entryInfoList(QDir::Files)) {
                QVERIFY(file.isExecutable());
                QVERIFY(ReadWholeFile(file.filePath()).contains("Exec=\"" + program + "\" \"My Shows.old.xml\"\n"));
            }
        }
    }
#endif

private:
    /// What the desktop's own checker has to say about an entry, where there is one.
    QByteArray Complaints(const QByteArray &entry) const
    {
        QProcess checker;
        checker.setProcessChannelMode(QProcess::MergedChannels);
        checker.start(u"desktop-file-validate"_s, {m_home->Write(u"test.desktop"_s, entry)});
        return checker.waitForFinished() ? checker.readAll() : QByteArray();
    }

    std::unique_ptr<TestProgramFolder> m_home;
};

TEST_OF_SUITE(TestShortcut)
#include "test_shortcut.moc"
