// A process that is given no more memory.

#pragma once

#include <QtTest>

#include <malloc.h>

#include "ProcessLimit.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define NV_SKIP_WITHOUT_SHORT_MEMORY()                                                                       \
    QSKIP("The sanitizer ends the program when it is given no memory; the plain build has this test.")
#else
#define NV_SKIP_WITHOUT_SHORT_MEMORY()
#endif

// Large blocks are never taken from what lies ready, on any thread.
inline const bool TakesLargeBlocksAnew = mallopt(M_MMAP_THRESHOLD, 1000 * 1000) && mallopt(M_ARENA_MAX, 1);

// While it lives, blocks of more than a megabyte fail, and small ones do not. Threads that are needed
// meanwhile must be there before.
class ShortMemory
{
public:
    ShortMemory() { QVERIFY(TakesLargeBlocksAnew); }
    Q_DISABLE_COPY(ShortMemory)

private:
    const ProcessLimit m_limit{RLIMIT_AS, AddressesTaken() + 1000 * 1000};
};
