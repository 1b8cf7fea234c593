#pragma once

#include "failures.h"

#include <QStringList>

#include <vector>

/// Takes down the failures that are reported as long as it lives.
class FailureRecorder
{
public:
    FailureRecorder()
        : m_earlier(InstallFailureReporter([this](const FailureReport &report) { reports.push_back(report); }))
    {
    }
    ~FailureRecorder() { InstallFailureReporter(m_earlier); }
    FailureRecorder(const FailureRecorder &) = delete;
    FailureRecorder &operator=(const FailureRecorder &) = delete;

    /// "module.procedure" of each, in their order.
    QStringList Names() const
    {
        QStringList names;
        for (const FailureReport &report : reports)
            names += report.moduleName + u'.' + report.procName;
        return names;
    }

    std::vector<FailureReport> reports;

private:
    FailureReporter m_earlier;
};
