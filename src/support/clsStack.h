#pragma once

#include <QString>

#include <vector>

/// The chain of guarded procedures that are running now, oldest first. Names are literals, kept by address.
class clsStack
{
public:
    /// Entering a procedure needs memory only where they nest deeper than they do.
    clsStack() { m_entries.reserve(kUsualDepth); }

    /// Enters a procedure. Both names must outlive the entry; string literals do.
    void Push(const char *moduleName, const char *procName) { m_entries.push_back({moduleName, procName}); }

    /// Leaves the procedure entered last. Every Pop answers an earlier Push.
    void Pop() { m_entries.pop_back(); }

    /// One line a procedure, "Module: …<tab>Proc: …", joined by CR LF; empty when nothing is running.
    QString CallStack() const;

private:
    static constexpr size_t kUsualDepth = 64;

    struct Entry
    {
        const char *moduleName;
        const char *procName;
    };

    std::vector<Entry> m_entries;
};
