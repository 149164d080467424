// Counts what the toolkit asks the system for. Include it in the one source of a test that counts: the
// functions below stand in front of those of the C library and of the library for regular expressions.

#pragma once

#include <QtGlobal>

#include <atomic>
#include <functional>
#include <utility>

#include <dirent.h>
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

// Of all threads, since Reset().
struct SystemCalls
{
    static inline std::atomic<int> looks{0}; // statx()
    static inline std::atomic<int> accesses{0}; // access()
    static inline std::atomic<int> folders{0}; // opendir()
    static inline std::atomic<int> expressions{0}; // regular expressions that are compiled

    static void Reset() { looks = accesses = folders = expressions = 0; }

    // Called once, behind the next look at a path: what stands there may go between two looks.
    static inline std::function<void()> behindNextLook;
};

namespace SystemCallsDetail
{

template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace SystemCallsDetail

#define NV_FROM_OUTSIDE extern "C" __attribute__((visibility("default")))

NV_FROM_OUTSIDE int statx(int folder, const char* path, int flags, unsigned mask,
                          struct statx* buffer) noexcept
{
    static auto* const original = SystemCallsDetail::next<decltype(statx)>("statx");
    ++SystemCalls::looks;
    const int result = original(folder, path, flags, mask, buffer);
    if (SystemCalls::behindNextLook)
        std::exchange(SystemCalls::behindNextLook, nullptr)();
    return result;
}

NV_FROM_OUTSIDE int access(const char* path, int mode) noexcept
{
    static auto* const original = SystemCallsDetail::next<decltype(access)>("access");
    ++SystemCalls::accesses;
    return original(path, mode);
}

NV_FROM_OUTSIDE DIR* opendir(const char* path)
{
    static auto* const original = SystemCallsDetail::next<decltype(opendir)>("opendir");
    ++SystemCalls::folders;
    return original(path);
}

// The library's header is not needed for what it is called with.
NV_FROM_OUTSIDE void* pcre2_compile_16(const ushort* pattern, size_t size, uint options, int* error,
                                       size_t* at, void* context)
{
    static auto* const original = SystemCallsDetail::next<decltype(pcre2_compile_16)>("pcre2_compile_16");
    ++SystemCalls::expressions;
    return original(pattern, size, options, error, at, context);
}

#undef NV_FROM_OUTSIDE
