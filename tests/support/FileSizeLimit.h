#pragma once

#include <csignal>
#include <sys/resource.h>

// A disk that fills up part-way, without root: while this lives the process
// may not write files larger than `limit` bytes, and a write beyond it fails
// (SIGXFSZ is ignored, so the write returns an error instead of ending the
// process).
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t limit)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit lowered = m_old;
        lowered.rlim_cur = limit;
        setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};
