#include "failures.h"

#include "paths.h"

#include <QScopedValueRollback>

#include <cstdio>

using namespace Qt::StringLiterals;

ProgramError::ProgramError(Failure failure, QString description, const QString &source, const char *file, int line)
    : m_failure(failure),
      m_description(std::move(description)),
      // Compilers give the path by which they were called.
      m_source(source + u", "_s + FileTitle(QString::fromUtf8(file), true)),
      m_line(line),
      m_what(m_description.toStdString())
{
}

namespace {

FailureReporter &Reporter()
{
    static FailureReporter reporter;
    return reporter;
}

/// False when the failure was reported before.
bool DescribeCurrentFailure(FailureReport &report)
{
    try {
        throw;
    } catch (const ReportedFailure &) {
        return false;
    } catch (const ProgramError &error) {
        report.number = error.number();
        report.description = error.description();
        report.source = error.source();
        report.line = error.line();
    } catch (const std::exception &error) {
        report.number = static_cast<int>(Failure::Unexpected);
        report.description = QString::fromUtf8(error.what());
        report.source = u"std::exception"_s;
    } catch (...) {
        report.number = static_cast<int>(Failure::Unexpected);
        report.description = u"Unknown exception"_s;
        report.source = u"Discbook"_s;
    }
    return true;
}

void PrintReport(const FailureReport &report)
{
    const QString text = u"Error #%1 in %2.%3, line %4: %5 (%6)\n%7\n"_s.arg(report.number)
                             .arg(report.moduleName, report.procName)
                             .arg(report.line)
                             .arg(report.description, report.source, report.callStack);
    std::fputs(text.toLocal8Bit().constData(), stderr);
}

// A failure while a report is open (its log cannot be saved, say) is reported over it; one inside that second report
// would go on like this for ever, so it is only printed.
void Deliver(const FailureReport &report)
{
    constexpr int kDeepest = 2;
    static int open = 0;
    if (open == kDeepest || !Reporter()) {
        PrintReport(report);
        return;
    }
    const QScopedValueRollback<int> guard(open, open + 1);
    const FailureReporter reporter = Reporter();
    try {
        reporter(report);
    } catch (...) {
        PrintReport(report);
        throw;
    }
}

} // namespace

clsStack &CallStack()
{
    static clsStack stack;
    return stack;
}

FailureReporter InstallFailureReporter(FailureReporter reporter)
{
    return std::exchange(Reporter(), std::move(reporter));
}

void ReportCurrentFailure(const char *moduleName, const char *procName)
{
    try {
        FailureReport report;
        report.moduleName = QString::fromUtf8(moduleName);
        report.procName = QString::fromUtf8(procName);
        report.callStack = CallStack().CallStack();
        if (DescribeCurrentFailure(report))
            Deliver(report);
    } catch (...) {
        // No memory for a report, or the reporter failed: what is left needs neither.
        std::fprintf(stderr, "A failure in %s.%s could not be reported.\n", moduleName, procName);
    }
}
