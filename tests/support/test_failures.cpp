#include "kit.h"

#include <new>
#include <stdexcept>

namespace {

/// What is reported of something thrown; with its line where that is known.
template<class Thrown>
QString ReportOf(const Thrown &thrown)
{
    const FailureRecorder failures;
    if (Guarded("frmMain", "LoadShows", [&thrown] { throw thrown; }) || failures.reports.size() != 1)
        return u"(not reported once)"_s;
    const FailureReport &report = failures.reports.front();
    return u"%1: %2 %3 (%4)%5"_s.arg(failures.Names().join(u' '))
        .arg(report.number)
        .arg(report.description, report.source, report.line > 0 ? u", line %1"_s.arg(report.line) : QString());
}

} // namespace

class TestFailures : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(CallStack().CallStack(), QString()); }

    void reports()
    {
        const QString at = u"frmMain.LoadShows: "_s;
        const QString here = u", test_failures.cpp), line %1"_s.arg(__LINE__ + 1);
        const ProgramError own(Failure::Missing, u"Gerät"_s), broken(Failure::BadFile, u"bad"_s, u"Formats"_s);
        QCOMPARE(ReportOf(own), at + u"4 Gerät (Discbook"_s + here);
        QCOMPARE(ReportOf(broken), at + u"5 bad (Formats"_s + here);
        QCOMPARE(ReportOf(std::runtime_error("it broke")), at + u"1 it broke (std::exception)"_s);
        QCOMPARE(ReportOf(std::bad_alloc()), at + u"1 std::bad_alloc (std::exception)"_s);
        QCOMPARE(ReportOf(7), at + u"1 Unknown exception (Discbook)"_s);
    }

    void callStackOfWhatIsReportedOnce()
    {
        const FailureRecorder failures;
        Guarded("a", "b", [&] {
            Guarded("c", "d", [] {});
            Guarded("e", "f", [] { throw std::runtime_error(""); });
            QCOMPARE(CallStack().CallStack(), u"Module: a\tProc: b"_s);
        });
        QCOMPARE(failures.reports.at(0).callStack, u"Module: a\tProc: b\r\nModule: e\tProc: f"_s);
        QVERIFY(!Guarded("a", "b", [] { Reported("c", "d", [] { throw 7; }); }));
        QCOMPARE(failures.Names(), QStringList({u"e.f"_s, u"c.d"_s}));
        QCOMPARE(failures.reports.at(1).callStack, u"Module: a\tProc: b\r\nModule: c\tProc: d"_s);
    }

    void failureInsideTheReporter()
    {
        const FailureRecorder restored;
        int calls = 0;
        InstallFailureReporter([&](const FailureReport &) {
            ++calls;
            Guarded("frmError", "cmdSave_Click", [] { throw std::runtime_error("inside"); });
            throw std::runtime_error("the reporter itself");
        });
        // The failure is reported, and the one inside its report; what fails inside that one is not.
        for (const int expected : {2, 4}) {
            QVERIFY(!Guarded("a", "b", [] { throw 7; }));
            QCOMPARE(calls, expected);
        }
    }

    void resultTellsSuccessAlsoWithoutReporter()
    {
        const FailureRecorder failures;
        const FailureReporter before = InstallFailureReporter({});
        QVERIFY(Guarded("a", "b", [] {}));
        QCOMPARE(Guarded("a", "b", [] { return 0; }), std::optional<int>(0));
        QCOMPARE(Guarded("a", "b", []() -> int { throw 7; }), std::optional<int>());
        before({});
        QCOMPARE(failures.reports.size(), 1U);
    }
};

QTEST_GUILESS_MAIN(TestFailures)
#include "test_failures.moc"
