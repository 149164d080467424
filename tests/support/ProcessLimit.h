// A limit of the process that is lower for a while, and what the process has taken of one.

#pragma once

#include <QFile>

#include <sys/resource.h>
#include <unistd.h>

class ProcessLimit
{
public:
    ProcessLimit(__rlimit_resource_t what, rlim_t value) : m_what(what)
    {
        getrlimit(what, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = value;
        setrlimit(what, &limit);
    }
    ~ProcessLimit() { setrlimit(m_what, &m_before); }
    Q_DISABLE_COPY(ProcessLimit)

private:
    const __rlimit_resource_t m_what;
    rlimit m_before;
};

// Bytes of addresses that this process has: what RLIMIT_AS limits.
inline rlim_t AddressesTaken()
{
    QFile file("/proc/self/statm");
    return file.open(QIODevice::ReadOnly)
        ? file.readAll().split(' ').first().toULongLong() * rlim_t(sysconf(_SC_PAGESIZE))
        : RLIM_INFINITY;
}
