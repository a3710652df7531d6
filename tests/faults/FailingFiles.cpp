// SPDX-License-Identifier: GPL-3.0-only
// The names that the system has for large files are told apart here; elsewhere the one stands for the other.
#undef _FILE_OFFSET_BITS
#include "FailingFiles.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <sstream>

namespace
{

using ZEP::Overmarks::Testing::FileFault;
using Call = FileFault::Call;

struct Plan
{
    std::string partOfPath;
    std::vector<FileFault> faults;
    std::vector<int> seen; ///< calls of each fault's kind
    int struck = 0;
};

std::recursive_mutex lock;
std::optional<Plan> plan;         // guarded
thread_local bool isBusy = false; // what a fault does itself is spared

/** The next function of this name: the system's, or a sanitizer's. */
template <typename Function>
Function* next (const char* name)
{
    return reinterpret_cast<Function*> (::dlsym (RTLD_NEXT, name));
}

std::string pathOf (int descriptor)
{
    char path[PATH_MAX] {};
    const auto link = "/proc/self/fd/" + std::to_string (descriptor);
    const auto length = ::readlink (link.c_str(), path, sizeof (path) - 1);
    return length > 0 ? std::string (path, static_cast<std::size_t> (length)) : std::string();
}

struct Verdict
{
    int error = 0;
    long most = -1;
};

/** What becomes of a call. */
Verdict judge (Call call, const std::string& path)
{
    Verdict verdict;
    std::function<void()> before;

    for (std::size_t i = 0; i < plan->faults.size() && path.find (plan->partOfPath) != std::string::npos; ++i)
    {
        const auto& fault = plan->faults[i];

        if (fault.call != call)
            continue;

        const int number = ++plan->seen[i];

        if (number < fault.first || number - fault.first >= fault.times)
            continue;

        ++plan->struck;
        verdict.error = fault.error != 0 ? fault.error : verdict.error;
        verdict.most = fault.most >= 0 ? fault.most : verdict.most;

        if (fault.before && number == fault.first)
            before = fault.before;
    }

    if (before)
        before();

    return verdict;
}

template <typename Path>
Verdict verdictOn (Call call, Path path)
{
    if (isBusy)
        return {};

    const std::scoped_lock guard (lock);

    if (! plan.has_value())
        return {};

    const int errorBefore = errno;
    isBusy = true;
    const auto verdict = judge (call, path());
    isBusy = false;
    errno = verdict.error != 0 ? verdict.error : errorBefore;
    return verdict;
}

Verdict verdictOn (Call call, int descriptor)
{
    return verdictOn (call, [descriptor] { return pathOf (descriptor); });
}

Verdict verdictOn (Call call, const char* path)
{
    return verdictOn (call, [path] { return std::string (path); });
}

std::size_t cut (std::size_t length, const Verdict& verdict)
{
    return verdict.most < 0 ? length : std::min (length, static_cast<std::size_t> (verdict.most));
}

void begin (std::string partOfPath, std::vector<FileFault> faults)
{
    const std::scoped_lock guard (lock);
    const auto number = faults.size();
    plan = Plan { std::move (partOfPath), std::move (faults), std::vector<int> (number) };
}

/** The orders of a program that has been started with this loaded into it. */
[[gnu::constructor]] void obeyEnvironment()
{
    const auto* const orders = std::getenv ("OVERMARKS_FAULTS");

    if (orders == nullptr)
        return;

    std::istringstream words (orders);
    std::string path, line;
    std::getline (words, path, '|');
    std::vector<FileFault> faults;

    while (std::getline (words, line, '|'))
    {
        FileFault fault;
        int call = 0;
        std::istringstream (line) >> call >> fault.error >> fault.first >> fault.times >> fault.most;
        fault.call = static_cast<Call> (call);
        faults.push_back (fault);
    }

    begin (path, faults);
}

} // namespace

namespace ZEP::Overmarks::Testing
{

FailingFiles::FailingFiles (std::string partOfPath, std::vector<FileFault> faults)
{
    begin (std::move (partOfPath), std::move (faults));
}

FailingFiles::~FailingFiles()
{
    const std::scoped_lock guard (lock);
    plan.reset();
}

int FailingFiles::struck() const
{
    const std::scoped_lock guard (lock);
    return plan->struck;
}

} // namespace ZEP::Overmarks::Testing

// ---- the system's functions ------------------------------------------------------------------------------------------------

#define REPLACES __attribute__ ((visibility ("default")))

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C"
{
    static mode_t modeOf (int flags, va_list arguments)
    {
        return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg (arguments, mode_t) : 0;
    }

    REPLACES int open (const char* path, int flags, ...)
    {
        static auto* const real = next<int (const char*, int, ...)> ("open");
        va_list arguments;
        va_start (arguments, flags);
        const auto mode = modeOf (flags, arguments);
        va_end (arguments);
        return verdictOn (Call::open, path).error != 0 ? -1 : real (path, flags, mode);
    }

    REPLACES int open64 (const char* path, int flags, ...)
    {
        static auto* const real = next<int (const char*, int, ...)> ("open64");
        va_list arguments;
        va_start (arguments, flags);
        const auto mode = modeOf (flags, arguments);
        va_end (arguments);
        return verdictOn (Call::open, path).error != 0 ? -1 : real (path, flags, mode);
    }

    REPLACES int mkostemp (char* pattern, int flags)
    {
        static auto* const real = next<int (char*, int)> ("mkostemp");
        return verdictOn (Call::open, static_cast<const char*> (pattern)).error != 0 ? -1
                                                                                     : real (pattern, flags);
    }

    REPLACES FILE* fopen (const char* path, const char* mode)
    {
        static auto* const real = next<FILE*(const char*, const char*)> ("fopen");
        return verdictOn (Call::open, path).error != 0 ? nullptr : real (path, mode);
    }

    REPLACES FILE* fopen64 (const char* path, const char* mode)
    {
        static auto* const real = next<FILE*(const char*, const char*)> ("fopen64");
        return verdictOn (Call::open, path).error != 0 ? nullptr : real (path, mode);
    }

    REPLACES ssize_t read (int descriptor, void* buffer, size_t length)
    {
        static auto* const real = next<ssize_t (int, void*, size_t)> ("read");
        const auto verdict = verdictOn (Call::read, descriptor);
        return verdict.error != 0 ? -1 : real (descriptor, buffer, cut (length, verdict));
    }

    REPLACES ssize_t write (int descriptor, const void* buffer, size_t length)
    {
        static auto* const real = next<ssize_t (int, const void*, size_t)> ("write");
        const auto verdict = verdictOn (Call::write, descriptor);
        return verdict.error != 0 ? -1 : real (descriptor, buffer, cut (length, verdict));
    }

    /** Whoever writes pieces at once goes on with what is left of them. */
    REPLACES ssize_t writev (int descriptor, const iovec* pieces, int number)
    {
        static auto* const real = next<ssize_t (int, const iovec*, int)> ("writev");
        const auto verdict = verdictOn (Call::write, descriptor);

        if (verdict.error != 0)
            return -1;
        if (verdict.most < 0 || number < 1)
            return real (descriptor, pieces, number);

        const iovec start { pieces->iov_base, cut (pieces->iov_len, verdict) };
        return real (descriptor, &start, 1);
    }

    REPLACES size_t fwrite (const void* items, size_t size, size_t number, FILE* file)
    {
        static auto* const real = next<size_t (const void*, size_t, size_t, FILE*)> ("fwrite");
        constexpr int failed = 0x20; // what ferror() looks at

        if (isBusy || verdictOn (Call::write, fileno (file)).error == 0)
            return real (items, size, number, file);

        file->_flags |= failed;
        return 0;
    }

    REPLACES int fsync (int descriptor)
    {
        static auto* const real = next<int (int)> ("fsync");
        return verdictOn (Call::sync, descriptor).error != 0 ? -1 : real (descriptor);
    }

    REPLACES int rename (const char* from, const char* to) noexcept
    {
        static auto* const real = next<int (const char*, const char*)> ("rename");
        const auto places = [from, to] { return std::string (from) + "\n" + to; };
        return verdictOn (Call::rename, places).error != 0 ? -1 : real (from, to);
    }

    /** What fails to be closed is closed all the same. */
    REPLACES int close (int descriptor)
    {
        static auto* const real = next<int (int)> ("close");
        const auto verdict = verdictOn (Call::close, descriptor);
        const int result = real (descriptor);

        if (verdict.error == 0)
            return result;

        errno = verdict.error;
        return -1;
    }

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
