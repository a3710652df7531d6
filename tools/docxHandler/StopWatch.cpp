// SPDX-License-Identifier: GPL-3.0-only
#include "StopWatch.h"

#include "FileBytes.h"

#include <array>
#include <csignal>
#include <ctime>
#include <fstream>
#include <pthread.h>
#include <unistd.h>

namespace DocxHandler
{

namespace
{

constexpr std::array stopSignals { SIGTERM, SIGINT, SIGHUP };
constexpr int workIsDone = SIGUSR1;
constexpr long interval = 50'000'000; // nanoseconds

sigset_t watchedSignals()
{
    sigset_t signals;
    ::sigemptyset (&signals);
    ::sigaddset (&signals, workIsDone);

    for (const auto signal : stopSignals)
        ::sigaddset (&signals, signal);

    return signals;
}

std::string contents (const std::filesystem::path& file)
{
    constexpr std::size_t most = 4096;
    std::ifstream stream (file, std::ios::binary);
    std::string text (most, '\0');
    stream.read (text.data(), static_cast<std::streamsize> (text.size()));
    text.resize (static_cast<std::size_t> (stream.gcount()));
    return text;
}

[[noreturn]] void endBy (int signal)
{
    abandonPlacing();
    std::signal (signal, SIG_DFL);
    const auto signals = watchedSignals();
    static_cast<void> (std::raise (signal));
    ::pthread_sigmask (SIG_UNBLOCK, &signals, nullptr);
    ::_exit (128 + signal);
}

} // namespace

StopWatch::StopWatch()
{
    const auto signals = watchedSignals();
    ::pthread_sigmask (SIG_BLOCK, &signals, nullptr);
}

void StopWatch::watch (const std::filesystem::path& cancelFile, EarlierWord earlierWord)
{
    file = cancelFile;

    if (earlierWord == EarlierWord::isStale)
        stale = contents (file);

    thread = std::thread ([this] { run(); });
}

StopWatch::~StopWatch()
{
    if (! thread.joinable())
        return;

    ::pthread_kill (thread.native_handle(), workIsDone);
    thread.join();
}

bool StopWatch::isCancelled() const
{
    if (file.empty())
        return false;

    const auto text = contents (file);
    return text != stale && text.find ("cancel") != std::string::npos;
}

void StopWatch::run() const
{
    const auto signals = watchedSignals();
    const timespec wait { 0, interval };

    for (;;)
    {
        if (isCancelled())
        {
            abandonPlacing();
            ::_exit (cancelledStatus);
        }

        const auto signal = ::sigtimedwait (&signals, nullptr, &wait);

        if (signal == workIsDone)
            return;

        if (signal > 0)
            endBy (signal);
    }
}

} // namespace DocxHandler
