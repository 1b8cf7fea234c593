#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <csignal>
#include <sys/resource.h>

/// As long as it lives no file can grow beyond a size, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(int bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {static_cast<rlim_t>(bytes), m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        (void)std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    void (*m_handler)(int);
    rlimit m_before = {};
};

#endif
