#include "failures.h"
#include "frmError.h"
#include "modGlobal.h"
#include "programfolder.h"
#include "scriptedprompts.h"
#include "tests.h"
#include "waitcursor.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

FailureReport SampleReport()
{
    return {
        .number = 4,
        .moduleName = u"frmMain"_s,
        .procName = u"LoadShows"_s,
        .line = 12,
        .description = u"No <Item> & no\nnode\u00a0s1"_s,
        .source = u"Discbook"_s,
        .callStack = u"Module: frmMain\tProc: Form_Load\r\nModule: frmMain\tProc: LoadShows"_s};
}

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

/// An object that fails whenever it is told something.
class FailingObject : public QObject
{
public:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::User)
            throw ProgramError(Failure::Missing, u"lost"_s);
        return QObject::event(event);
    }
};

} // namespace

class TestErrorForm : public QObject
{
    Q_OBJECT

private slots:
    void texts_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("stack");
        QTest::addColumn<QString>("info");
        QTest::addColumn<QString>("details");

        QTest::newRow("all") << 12 << u"Module: a\tProc: b\r\nModule: c\tProc: d"_s
                             << u"Error #4\r\nModule: frmMain\r\nProcedure: LoadShows\r\nLine #12\r\n"_s
                             << u"Description: Why\r\nSource: Discbook\r\n\r\nCallStack:\r\n"
                                "Module: a\tProc: b\r\nModule: c\tProc: d"_s;
        QTest::newRow("no line, no stack") << 0 << u""_s << u"Error #4\r\nModule: frmMain\r\nProcedure: LoadShows\r\n"_s
                                           << u"Description: Why\r\nSource: Discbook\r\n\r\nCallStack:\r\n"_s;
    }

    void texts()
    {
        QFETCH(int, line);
        QFETCH(QString, stack);
        ScriptedPrompts prompts;
        FailureReport report = SampleReport();
        report.line = line;
        report.callStack = stack;
        report.description = u"Why"_s;
        ShowAnd(report, prompts, [](const frmError &form) {
            QCOMPARE(form.windowTitle(), u"Discbook Error"_s);
            QTEST(form.findChild<QLabel *>(u"lblInfo"_s)->text(), "info");
            QTEST(form.Details(), "details");
            const QString shown = form.findChild<QPlainTextEdit *>(u"txtDetails"_s)->toPlainText();
            QCOMPARE(shown.count(u'\n'), form.Details().count(u'\n'));
            QVERIFY(!form.findChild<QLabel *>(u"imgIcon"_s)->pixmap().isNull());
        });
    }

    void savedLog()
    {
        const TestProgramFolder folder;
        ScriptedPrompts prompts;
        const QString path = folder.Path(u"my.log"_s);
        prompts.ExpectSaveFile(u"Save error log"_s, path);
        prompts.ExpectMessage(u"Error report saved"_s);
        ShowAnd(SampleReport(), prompts, [](frmError &form) { Click(form, u"cmdSave"_s); });
        QCOMPARE(
            folder.Read(u"my.log"_s),
            QByteArray("Discbook Error\r\n\r\n"
                       "Error #4\r\nModule: frmMain\r\nProcedure: LoadShows\r\nLine #12\r\n\r\n"
                       "Description: No <Item> & no\r\nnode\u00a0s1\r\nSource: Discbook\r\n\r\n"
                       "CallStack:\r\nModule: frmMain\tProc: Form_Load\r\n"
                       "Module: frmMain\tProc: LoadShows\r\n"));
        QCOMPARE(prompts.LastAsked().text, u"Error report saved as: "_s + path);
        QCOMPARE(prompts.LastAsked().icon, UserPrompts::Icon::Information);
    }

    void proposedName_data()
    {
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QString>("proposed");

        QStringList many{u"Error.log"_s};
        for (int i = 1; i < 1000; ++i)
            many.append(u"Error-%1.log"_s.arg(i, 3, 10, QChar(u'0')));
        QTest::newRow("none") << QStringList{} << u"Error.log"_s;
        QTest::newRow("one") << QStringList{u"Error.log"_s} << u"Error-001.log"_s;
        QTest::newRow("two") << QStringList{u"Error.log"_s, u"Error-001.log"_s} << u"Error-002.log"_s;
        QTest::newRow("the plain one is gone") << QStringList{u"Error-001.log"_s} << u"Error.log"_s;
        QTest::newRow("a gap") << QStringList{u"Error.log"_s, u"Error-002.log"_s} << u"Error-001.log"_s;
        QTest::newRow("more digits") << many << u"Error-1000.log"_s;
    }

    void proposedName()
    {
        QFETCH(QStringList, present);
        const TestProgramFolder folder;
        for (const QString &name : present) {
            QVERIFY(QFile(folder.Path(name)).open(QIODevice::WriteOnly)); // not flushed: there are many
        }
        ScriptedPrompts prompts;
        prompts.ExpectSaveFile(u"Save error log"_s, QString());
        frmError form(prompts);
        Click(form, u"cmdSave"_s);
        const UserPrompts::FileRequest request = prompts.LastAsked().request;
        QTEST(request.proposed, "proposed");
        QCOMPARE(request.folder, ProgramFolder());
        QCOMPARE(request.extension, u"log"_s);
        QCOMPARE(request.filter, u"Log files (*.log)|*.log|All files (*.*)|*.*"_s);
    }

    void saveThatFails()
    {
        const TestProgramFolder folder;
        ScriptedPrompts prompts;
        prompts.ExpectSaveFile(u"Save error log"_s, folder.Path(u"no/such/folder.log"_s));
        QString info;
        const FailureReporter earlier = InstallFailureReporter([&](const FailureReport &report) {
            ShowAnd(report, prompts, [&info](const frmError &form) { info = form.Info(); });
        });
        ShowAnd(SampleReport(), prompts, [](frmError &form) {
            Click(form, u"cmdSave"_s);
            QCOMPARE(OpenForm(), &form);
        });
        InstallFailureReporter(earlier);
        QVERIFY2(info.startsWith(u"Error #7\r\nModule: frmError\r\nProcedure: cmdSave_Click\r\n"_s), qPrintable(info));
    }

    void sameFailureIsNotShownTwice()
    {
        ScriptedPrompts prompts;
        int others = 0;
        ShowAnd(SampleReport(), prompts, [&](frmError &form) {
            QTimer::singleShot(0, &form, [&] {
                ++others;
                OpenForm()->reject();
            });
            ShowFailureReport(SampleReport(), prompts);
            QCOMPARE(others, 0);
            QVERIFY(form.isVisible());
        });
    }

    void mousePointer()
    {
        ScriptedPrompts prompts;
        {
            const WaitCursor outer;
            {
                const WaitCursor failing;
                ShowAnd(SampleReport(), prompts, [](frmError &) { QVERIFY(!QGuiApplication::overrideCursor()); });
                QVERIFY(!QGuiApplication::overrideCursor());
            }
            const WaitCursor next;
            QVERIFY(QGuiApplication::overrideCursor());
        }
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void keys()
    {
        ScriptedPrompts prompts;
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
            frmError form(prompts);
            form.show();
            QVERIFY(QTest::qWaitForWindowActive(&form));
            QTest::keyClick(form.focusWidget(), key);
            QVERIFY(!form.isVisible());
        }
    }

    void lastNet()
    {
        QStringList reported;
        const FailureReporter earlier = InstallFailureReporter([&](const FailureReport &report) {
            reported = {report.moduleName, report.procName, report.description, report.callStack};
        });
        FailingObject object;
        QEvent event(QEvent::User);
        QVERIFY(!QCoreApplication::sendEvent(&object, &event));
        InstallFailureReporter(earlier);
        QCOMPARE(reported, QStringList({u"modGlobal"_s, u"notify"_s, u"lost"_s, u"Module: modGlobal\tProc: notify"_s}));
    }
};

std::unique_ptr<QObject> CreateErrorFormTest()
{
    return std::make_unique<TestErrorForm>();
}

#include "test_frmError.moc"
