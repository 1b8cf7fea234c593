#pragma once

#include <QString>

#include <vector>

/// The chain of guarded procedures that are running now, oldest first. Names are literals, kept by address.
class clsStack
{
public:
    /// Enters a procedure. Both names must outlive the entry; string literals do.
    void Push(const char *moduleName, const char *procName) { m_entries.push_back({moduleName, procName}); }

    /// Leaves the procedure entered last. Every Pop answers an earlier Push.
    void Pop() { m_entries.pop_back(); }

    /// One line a procedure, "Module: …<tab>Proc: …", joined by CR LF; empty when nothing is running.
    QString CallStack() const;

private:
    struct Entry
    {
        const char *moduleName;
        const char *procName;
    };

    std::vector<Entry> m_entries;
};
