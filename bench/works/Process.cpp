// SPDX-License-Identifier: GPL-3.0-only
// compare_process OUT COMMAND...: runs a command with its output in the file OUT, and prints how long it took and the height of
// its memory, as JSON. A program this small starts it because what somebody larger starts has that one's memory for its height.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace
{

double now()
{
    timespec time {};
    ::clock_gettime (CLOCK_MONOTONIC, &time);
    return static_cast<double> (time.tv_sec) + 1e-9 * static_cast<double> (time.tv_nsec);
}

/** Uses free memory and gives it back. A virtual machine loses what has been free for some seconds to its host, and whoever comes next pays
    for its return: without this the one who is measured after a pause, and the one after it gets it for nothing. */
void bringMemoryBack()
{
    constexpr std::size_t most =
        1024 * 1024 * 1024; // nearly all that is measured with 100 000 rows takes less
    const auto pages = ::sysconf (_SC_AVPHYS_PAGES), bytesOfPage = ::sysconf (_SC_PAGESIZE);

    if (pages <= 0 || bytesOfPage <= 0)
        return;

    const auto bytes =
        std::min (most, static_cast<std::size_t> (pages) / 4 * static_cast<std::size_t> (bytesOfPage));
    auto* const memory = ::mmap (nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);

    if (memory == MAP_FAILED)
        return;

#ifdef MADV_HUGEPAGE
    ::madvise (memory, bytes, MADV_HUGEPAGE);
#endif
    std::memset (memory, 1, bytes);
    ::munmap (memory, bytes);
}

/** In the new process. */
[[noreturn]] void become (const char* out, char** command)
{
    constexpr int readableByAll = 0644;
    const auto file = ::open (out, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, readableByAll);

    if (file >= 0 && ::dup2 (file, STDOUT_FILENO) >= 0)
        ::execvp (command[0], command);

    ::_exit (127);
}

double seconds (const timeval& time)
{
    return static_cast<double> (time.tv_sec) + 1e-6 * static_cast<double> (time.tv_usec);
}

} // namespace

int main (int argumentCount, char** arguments)
{
    if (argumentCount < 3)
        return 2;

    bringMemoryBack();
    const auto start = now();
    const auto child = ::fork();

    if (child == 0)
        become (arguments[1], arguments + 2);

    int status = 0;
    rusage usage {};

    if (child < 0 || ::wait4 (child, &status, 0, &usage) != child)
        return 1;

    std::printf (R"({"seconds": %.6f, "cpuSeconds": %.6f, "peakKiB": %ld, "status": %d})"
                 "\n",
                 now() - start, seconds (usage.ru_utime) + seconds (usage.ru_stime), usage.ru_maxrss,
                 WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status));
    return 0;
}
