#pragma once

#include "clsStack.h"

#include <QString>

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

/// The numbers by which an error report names a kind of failure. 1 is a failure that a library reported as an
/// exception.
enum class Failure {
    Unexpected = 1,
    OutOfRange = 2, ///< an index or key that does not exist
    Overflow = 3,   ///< a number beyond 32 bits
    Missing = 4,    ///< something that had to be there is not: an element, a selected listing
    BadFile = 5,    ///< a file whose contents cannot be used: a broken picture, a key line outside any section
    Read = 6,       ///< a file that cannot be read
    Write = 7,      ///< a file that cannot be written
    BadQuery = 8,   ///< an XPath expression that does not parse
};

/// A failure that the user is to see in an error report. File and line are those of the throwing statement.
class ProgramError : public std::exception
{
public:
    ProgramError(
        Failure failure, QString description, const QString &source = QStringLiteral("Discbook"),
        const char *file = __builtin_FILE(), int line = __builtin_LINE());

    int number() const { return static_cast<int>(m_failure); }
    Failure failure() const { return m_failure; }
    const QString &description() const { return m_description; }
    /// Who failed, and the name of the source file: "Discbook, paths.cpp".
    const QString &source() const { return m_source; }
    /// The source line, 0 when not known.
    int line() const { return m_line; }
    const char *what() const noexcept override { return m_what.c_str(); }

private:
    Failure m_failure;
    QString m_description;
    QString m_source;
    int m_line;
    std::string m_what;
};

/// What an error report tells of one failure.
struct FailureReport
{
    int number = 0;
    QString moduleName;
    QString procName;
    int line = 0; ///< 0: not known
    QString description;
    QString source;
    QString callStack; ///< of clsStack, with the failed procedure as its last line
};

using FailureReporter = std::function<void(const FailureReport &)>;

/// The call stack of the program: the one global, since every room enters its procedures here.
clsStack &CallStack();

/// Sets who shows reports, and returns who did before. Without a reporter, reports go to the standard error output.
FailureReporter InstallFailureReporter(FailureReporter reporter);

/// Reports the exception that is being handled, unless that was done; to be called from a catch block.
void ReportCurrentFailure(const char *moduleName, const char *procName);

/// Keeps the call stack true for as long as a procedure runs.
class ProcedureScope
{
public:
    ProcedureScope(const char *moduleName, const char *procName) { CallStack().Push(moduleName, procName); }
    ~ProcedureScope() { CallStack().Pop(); }
    ProcedureScope(const ProcedureScope &) = delete;
    ProcedureScope &operator=(const ProcedureScope &) = delete;
};

/// Thrown in place of a failure that was reported: whoever catches it stops, and says nothing more.
class ReportedFailure
{
};

/// Runs a procedure that reports its own failures although others depend on its result: its names stand on the call
/// stack while it runs, and what it throws is reported under them and goes on as a ReportedFailure.
template<class Procedure>
auto Reported(const char *moduleName, const char *procName, Procedure &&procedure)
{
    const ProcedureScope scope(moduleName, procName);
    try {
        return std::forward<Procedure>(procedure)();
    } catch (...) {
        ReportCurrentFailure(moduleName, procName);
        throw ReportedFailure();
    }
}

/// Runs a procedure under the error convention: its names stand on the call stack while it runs, and whatever it throws
/// is reported and goes no further. Returns true (or the procedure's value) when it ran to its end, false (or nothing)
/// when it failed, so that a caller can stop there.
template<class Procedure>
auto Guarded(const char *moduleName, const char *procName, Procedure &&procedure)
{
    using Result = std::invoke_result_t<Procedure>;
    const ProcedureScope scope(moduleName, procName);
    try {
        if constexpr (std::is_void_v<Result>) {
            std::forward<Procedure>(procedure)();
            return true;
        } else {
            return std::optional<Result>(std::forward<Procedure>(procedure)());
        }
    } catch (...) {
        ReportCurrentFailure(moduleName, procName);
    }
    if constexpr (std::is_void_v<Result>)
        return false;
    else
        return std::optional<Result>();
}
