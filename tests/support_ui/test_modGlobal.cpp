#include "clsINI.h"
#include "clsResizeLimits.h"
#include "frmError.h"
#include "kit.h"
#include "modGlobal.h"
#include "waitcursor.h"

#include <QtWidgets>

#include <optional>

namespace {

const FailureReport kSample{
    .number = 4,
    .moduleName = u"frmMain"_s,
    .procName = u"LoadShows"_s,
    .line = 12,
    .description = u"No <Item> & no\nnode\u00a0s1"_s,
    .source = u"Discbook"_s,
    .callStack = u"Module: frmMain\tProc: Form_Load\r\nModule: frmMain\tProc: LoadShows"_s};

frmError *OpenForm()
{
    return qobject_cast<frmError *>(QApplication::activeModalWidget());
}

void Click(frmError &form, const QString &button)
{
    QTest::mouseClick(form.findChild<QPushButton *>(button), Qt::LeftButton);
}

/// Shows a report and closes it after `action` has had the open dialog.
template<class Action>
void ShowAnd(const FailureReport &report, UserPrompts &prompts, Action action)
{
    bool shown = false;
    QTimer::singleShot(0, qApp, [&] {
        frmError *form = OpenForm();
        QVERIFY(form);
        shown = true;
        action(*form);
        Click(*form, u"cmdOK"_s);
    });
    ShowFailureReport(report, prompts);
    QVERIFY(shown);
}

} // namespace

/// Error reports, and the places and limits of windows.
class TestGlobal : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_prompts.VerifyDone(); }

    void shownAndSaved()
    {
        const QString path = m_folder.Path(u"my.log"_s);
        m_prompts.ExpectSaveFile(u"Save error log"_s, path);
        m_prompts.ExpectMessage(u"Error report saved"_s);
        ShowAnd(kSample, m_prompts, [](frmError &form) {
            QCOMPARE(form.windowTitle(), u"Discbook Error"_s);
            const auto &info = *form.findChild<QLabel *>(u"lblInfo"_s);
            QCOMPARE(info.text(), u"Error #4\r\nModule: frmMain\r\nProcedure: LoadShows\r\nLine #12\r\n"_s);
            QCOMPARE(info.textFormat(), Qt::PlainText);
            QCOMPARE(
                form.findChild<QPlainTextEdit *>(u"txtDetails"_s)->toPlainText(),
                u"Description: No <Item> & no\nnode s1\nSource: Discbook\n\nCallStack:\n"
                "Module: frmMain\tProc: Form_Load\nModule: frmMain\tProc: LoadShows"_s);
            Click(form, u"cmdSave"_s);
        });
        QVERIFY(QFileInfo::exists(path));
        QCOMPARE(
            m_folder.Read(u"my.log"_s),
            QByteArray("Discbook Error\r\n\r\n"
                       "Error #4\r\nModule: frmMain\r\nProcedure: LoadShows\r\nLine #12\r\n\r\n"
                       "Description: No <Item> & no\r\nnode\u00a0s1\r\nSource: Discbook\r\n\r\n"
                       "CallStack:\r\nModule: frmMain\tProc: Form_Load\r\n"
                       "Module: frmMain\tProc: LoadShows\r\n"));
        QCOMPARE(m_prompts.LastAsked().text, u"Error report saved as: "_s + path);
        QCOMPARE(m_prompts.LastAsked().icon, UserPrompts::Icon::Information);
    }

    void proposedName()
    {
        frmError form(m_prompts);
        const auto proposed = [&] {
            m_prompts.ExpectSaveFile(u"Save error log"_s, QString());
            Click(form, u"cmdSave"_s);
            return m_prompts.LastAsked().request.proposed;
        };
        for (const QString &name : {u"Error.log"_s, u"Error-001.log"_s, u"Error-002.log"_s}) {
            QCOMPARE(proposed(), name);
            m_folder.Write(name, {});
        }
        for (const QString &gap : {u"Error-001.log"_s, u"Error.log"_s}) {
            QFile::remove(m_folder.Path(gap));
            QCOMPARE(proposed(), gap);
        }
        m_folder.Write(u"Error.log"_s, {});
        for (int i = 1; i < 1000; ++i) {
            QFile log(m_folder.Path(u"Error-%1.log"_s.arg(i, 3, 10, QChar(u'0'))));
            QVERIFY(log.open(QIODevice::WriteOnly)); // not flushed: there are many
        }
        QCOMPARE(proposed(), u"Error-1000.log"_s);
        const UserPrompts::FileRequest request = m_prompts.LastAsked().request;
        QCOMPARE(request.folder, ProgramFolder());
        QCOMPARE(request.extension, u"log"_s);
        QCOMPARE(request.filter, u"Log files (*.log)|*.log|All files (*.*)|*.*"_s);
    }

    void lineNotKnownAndSaveThatFails()
    {
        m_prompts.ExpectSaveFile(u"Save error log"_s, m_folder.Path(u"no/such/folder.log"_s));
        QString info;
        const FailureReporter earlier = InstallFailureReporter([&](const FailureReport &report) {
            ShowAnd(report, m_prompts, [&info](const frmError &form) { info = form.Info(); });
        });
        FailureReport report = kSample;
        report.line = 0;
        ShowAnd(report, m_prompts, [](frmError &form) {
            QCOMPARE(form.Info(), u"Error #4\r\nModule: frmMain\r\nProcedure: LoadShows\r\n"_s);
            Click(form, u"cmdSave"_s);
            QCOMPARE(OpenForm(), &form);
        });
        InstallFailureReporter(earlier);
        QVERIFY2(info.startsWith(u"Error #7\r\nModule: frmError\r\nProcedure: cmdSave_Click\r\n"_s), qPrintable(info));
    }

    void sameFailureIsNotShownTwice()
    {
        int others = 0;
        ShowAnd(kSample, m_prompts, [&](frmError &form) {
            QTimer::singleShot(0, &form, [&] {
                ++others;
                OpenForm()->reject();
            });
            ShowFailureReport(kSample, m_prompts);
            QCOMPARE(others, 0);
            QVERIFY(form.isVisible());
        });
    }

    void mousePointer()
    {
        {
            const WaitCursor outer, failing;
            ShowAnd(kSample, m_prompts, [](frmError &) { QVERIFY(!QGuiApplication::overrideCursor()); });
            QVERIFY(!QGuiApplication::overrideCursor());
            const WaitCursor next;
            QVERIFY(QGuiApplication::overrideCursor());
        }
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void lastNet()
    {
        const FailureRecorder recorder;
        QTimer::singleShot(0, qApp, [] { throw ProgramError(Failure::Missing, u"lost"_s); });
        QCoreApplication::processEvents();
        QCOMPARE(recorder.Names(), QStringList(u"modGlobal.notify"_s));
        QCOMPARE(recorder.reports[0].description, u"lost"_s);
        QCOMPARE(recorder.reports[0].callStack, u"Module: modGlobal\tProc: notify"_s);
    }

    void load()
    {
        bool maximised = false;
        const auto placed = [&](const QString &values) { // on a screen of 800 x 800
            WithSettings(values);
            QLabel window(u"which could be smaller"_s);
            window.resize(300, 200);
            LoadFormPosition(window, u"List"_s, *m_settings);
            maximised = window.isMaximized();
            return QRect(window.pos(), window.size());
        };
        QCOMPARE(placed({}), QRect(0, 0, 300, 200));
        QCOMPARE(placed(u"Left=1500 Top=750 Width=6000 Height=4500 WindowState=0"_s), QRect(100, 50, 400, 300));
        QCOMPARE(placed(u"Left=-300 Top=-15"_s), QRect(0, 0, 300, 200));
        QCOMPARE(placed(u"Width=1500 Height=6000"_s), QRect(0, 0, 300, 400));
        QCOMPARE(placed(u"Width=6000 Height=15"_s), QRect(0, 0, 400, 200));
        QCOMPARE(placed(u"Left=x Width="_s), QRect(0, 0, 300, 200));
        QCOMPARE(placed(u"Left=30000 Width=15000 Height=15000"_s), QRect(0, 0, 1000, 1000));
        // 48 x 8 pixels of it in reach, a part too narrow, and one too low.
        QCOMPARE(placed(u"Left=11280 Top=11880"_s), QRect(752, 792, 300, 200));
        QCOMPARE(placed(u"Left=11295 Top=750"_s), QRect(500, 50, 300, 200));
        QCOMPARE(placed(u"Left=1500 Top=11895"_s), QRect(100, 600, 300, 200));
        QVERIFY(!maximised);
        QCOMPARE(placed(u"Left=1500 Top=750 WindowState=2"_s), QRect(100, 50, 300, 200));
        QVERIFY(maximised);
    }

    void save()
    {
        const std::vector<std::pair<Qt::WindowStates, QString>> states = {
            {Qt::WindowNoState, u"Height=3000 Left=1500 Top=750 Width=4500 WindowState=0"_s},
            {Qt::WindowMaximized, u"Left=15 WindowState=2"_s},
            {Qt::WindowFullScreen, u"Left=15 WindowState=2"_s},
            {Qt::WindowMinimized, u"Left=15"_s},
            {Qt::WindowMinimized | Qt::WindowMaximized, u"Left=15"_s}};
        for (const auto &[state, stored] : states) {
            WithSettings(u"Left=15"_s);
            QWidget window;
            window.setGeometry(100, 50, 300, 200);
            window.setWindowState(state);
            SaveFormPosition(window, u"List"_s, *m_settings);
            QCOMPARE(Stored(), stored);
        }
    }

    void numbersStayOverRestarts()
    {
        const QString values = u"Height=4500 Left=1500 Top=750 Width=6000 WindowState=0"_s;
        WithSettings(values);
        for (int round = 0; round < 3; ++round) {
            QLabel window(u"which nobody has given a size"_s);
            LoadFormPosition(window, u"List"_s, *m_settings);
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            SaveFormPosition(window, u"List"_s, *m_settings);
            QCOMPARE(Stored(), values);
        }
    }

    void limits()
    {
        clsResizeLimits limits;
        QWidget window;
        window.setMinimumSize(5, 5);
        const auto sizeAfter = [&window](QSize asked) {
            window.resize(asked);
            return window.size();
        };
        limits.AddLimits(window, 50, 50, 60, 60, true);
        limits.AddLimits(window, 200, 100, 400, 0, true);
        QCOMPARE(sizeAfter({10, 10}), QSize(200, 100));
        QCOMPARE(sizeAfter({900, 900}), QSize(400, 900));
        limits.AddLimits(window, 9000, 7710, 0, 9000, false);
        QCOMPARE(sizeAfter({10, 900}), QSize(600, 600));
        QCOMPARE(sizeAfter({4000, 10}), QSize(4000, 514));
        limits.RemoveFormLimits(window);
        QCOMPARE(sizeAfter({1, 2000}), QSize(5, 2000));

        {
            QWidget goes;
            limits.AddLimits(goes, 50, 50, 0, 0, true);
            limits.AddLimits(window, 50, 50, 0, 0, true);
        }
        limits.RemoveAllLimits();
        QCOMPARE(sizeAfter({1, 2000}), QSize(5, 2000));
    }

private:
    void WithSettings(QString values)
    {
        m_settings.emplace(m_prompts);
        m_settings->LoadINI(m_folder.Write(u"a.ini"_s, "[List]\r\n" + values.replace(u' ', u"\r\n"_s).toUtf8()));
    }

    QString Stored() const { return QString::fromUtf8(m_folder.Read(u"a.ini"_s).simplified().mid(7)); }

    const TestProgramFolder m_folder;
    ScriptedPrompts m_prompts;
    std::optional<clsINI> m_settings;
};

TEST_OF_SUITE(TestGlobal)
#include "test_modGlobal.moc"
