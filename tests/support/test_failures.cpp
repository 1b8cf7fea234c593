#include "failures.h"

#include <QTest>

#include <new>
#include <stdexcept>

using namespace Qt::StringLiterals;

using Thrower = void (*)();
Q_DECLARE_METATYPE(Thrower)

class TestFailures : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_reports.clear();
        InstallFailureReporter([this](const FailureReport &report) { m_reports.push_back(report); });
    }

    void cleanup()
    {
        QCOMPARE(CallStack().CallStack(), QString());
        InstallFailureReporter({});
    }

    void reports_data()
    {
        QTest::addColumn<Thrower>("thrower");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("source");
        QTest::addColumn<bool>("hasLine");

        const auto row = [](const char *name, Thrower thrower, int number, const QString &description,
                            const QString &source, bool hasLine) {
            QTest::newRow(name) << thrower << number << description << source << hasLine;
        };
        row(
            "own", [] { throw ProgramError(Failure::Missing, u"Kein Gerät"_s); }, 4, u"Kein Gerät"_s,
            u"Discbook, test_failures.cpp"_s, true);
        row(
            "own, with a source", [] { throw ProgramError(Failure::BadFile, u"bad"_s, u"Formats"_s); }, 5, u"bad"_s,
            u"Formats, test_failures.cpp"_s, true);
        row(
            "library", [] { throw std::runtime_error("it broke"); }, 1, u"it broke"_s, u"std::exception"_s, false);
        row(
            "memory", [] { throw std::bad_alloc(); }, 1, u"std::bad_alloc"_s, u"std::exception"_s, false);
        row(
            "anything", [] { throw 7; }, 1, u"Unknown exception"_s, u"Discbook"_s, false);
    }
    void reports()
    {
        QFETCH(const Thrower, thrower);
        QFETCH(const bool, hasLine);
        QVERIFY(!Guarded("frmMain", "LoadShows", thrower));
        QCOMPARE(m_reports.size(), 1U);
        const FailureReport &report = m_reports.front();
        QCOMPARE(report.moduleName + u'.' + report.procName, u"frmMain.LoadShows"_s);
        QTEST(report.number, "number");
        QTEST(report.description, "description");
        QTEST(report.source, "source");
        QCOMPARE(report.line > 0, hasLine);
    }

    void lineOfTheThrowingStatement()
    {
        int line = 0;
        Guarded("a", "b", [&] {
            line = __LINE__ + 1;
            throw ProgramError(Failure::Missing, u""_s);
        });
        QCOMPARE(m_reports.at(0).line, line);
    }

    void callStack()
    {
        Guarded("frmMain", "Form_Load", [&] {
            Guarded("clsINI", "done", [] {});
            Guarded("frmViewAsWebpage", "mnuViewAsWebPage_Click", [] { throw std::runtime_error(""); });
            QCOMPARE(CallStack().CallStack(), u"Module: frmMain\tProc: Form_Load"_s);
        });
        QCOMPARE(
            m_reports.at(0).callStack,
            u"Module: frmMain\tProc: Form_Load\r\nModule: frmViewAsWebpage\tProc: mnuViewAsWebPage_Click"_s);
    }

    void resultTellsSuccess()
    {
        QVERIFY(Guarded("a", "b", [] {}));
        QCOMPARE(Guarded("a", "b", [] { return 0; }), std::optional<int>(0));
        QCOMPARE(Guarded("a", "b", []() -> int { throw 7; }), std::optional<int>());
        QCOMPARE(m_reports.size(), 1U);
    }

    void failureInsideTheReporter()
    {
        int calls = 0;
        InstallFailureReporter([&](const FailureReport &) {
            ++calls;
            Guarded("frmError", "cmdSave_Click", [] { throw std::runtime_error("inside"); });
            throw std::runtime_error("the reporter itself");
        });
        QVERIFY(!Guarded("a", "b", [] { throw 7; }));
        // The failure is reported, and the one inside its report; what fails inside that one is not.
        QCOMPARE(calls, 2);
        QVERIFY(!Guarded("a", "b", [] { throw 7; }));
        QCOMPARE(calls, 4);
    }

    void withoutReporter()
    {
        const FailureReporter before = InstallFailureReporter({});
        QVERIFY(!Guarded("a", "b", [] { throw 7; }));
        before({});
        QCOMPARE(m_reports.size(), 1U);
    }

private:
    std::vector<FailureReport> m_reports;
};

QTEST_GUILESS_MAIN(TestFailures)
#include "test_failures.moc"
