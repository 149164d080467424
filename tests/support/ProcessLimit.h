// A limit of the process that is lower for a while.

#pragma once

#include <QtGlobal>

#include <sys/resource.h>

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
