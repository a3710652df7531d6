// SPDX-License-Identifier: GPL-3.0-only
#include "StopWatch.h"

#include "FileBytes.h"

#include "core/system/SharedFolder.h"

#include <array>
#include <csignal>
#include <ctime>
#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace DocxHandler
{

namespace
{

constexpr std::array stopSignals { SIGTERM, SIGINT, SIGHUP };
constexpr int workIsDone = SIGUSR1;
constexpr long interval = 50'000'000; // nanoseconds

/* Whoever has started the program may want it to outlive the terminal. */
bool isIgnored (int signal)
{
    struct sigaction now
    {
    };
    return ::sigaction (signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

sigset_t watchedSignals()
{
    sigset_t signals;
    ::sigemptyset (&signals);
    ::sigaddset (&signals, workIsDone);

    for (const auto signal : stopSignals)
        if (! isIgnored (signal))
            ::sigaddset (&signals, signal);

    return signals;
}

/* Nobody else stops the work of this user. */
StopWatch::Words wordsIn (const std::filesystem::path& file)
{
    constexpr std::size_t most = 4096;
    const auto opened = ZEP::Core::SharedFolder::openTrusted (file);
    const auto status = opened.status();
    auto text = opened.read (most);

    if (! status.has_value() || ! text.has_value())
        return {};

    return { std::move (*text), static_cast<std::uintmax_t> (status->st_size) };
}

[[noreturn]] void endBy (int signal)
{
    abandonPlacing();
    std::signal (signal, SIG_DFL);

    // This one alone: the end of the work may be told at the same moment, which must not be what ends the program.
    sigset_t ending;
    ::sigemptyset (&ending);
    ::sigaddset (&ending, signal);
    static_cast<void> (std::raise (signal));
    ::pthread_sigmask (SIG_UNBLOCK, &ending, nullptr);
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
        stale = wordsIn (file);

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

    const auto words = wordsIn (file);
    return words != stale && words.beginning.find ("cancel") != std::string::npos;
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
