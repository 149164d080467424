// The one leak that the scan has on purpose: the nodes of the folder in work are lost when a scan is
// cancelled, deleted or started anew in the middle of it. Include it in the one source of a test that does
// such a thing: the leak sanitizer then lets nodes go. How few they are is shown by LiveBytes().

#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

// The compiler ships no header for it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
// Found by its name alone, so it must be seen from outside.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:ScanFunctor::operator()\n";
}

// What is allocated at present.
inline std::size_t LiveBytes()
{
    return __sanitizer_get_current_allocated_bytes();
}

#else

#include <malloc.h>

inline std::size_t LiveBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

#endif
