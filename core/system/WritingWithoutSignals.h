// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>

namespace ZEP::Core
{

/** A file that grows beyond the user's limit and a pipe whose reader has left are errors to be told, not the end of the process,
    while this lasts. For the thread that makes it. */
class WritingWithoutSignals final
{
public:
    WritingWithoutSignals()
    {
        sigset_t raised = none();

        for (const int signal : raisedByWriting)
            sigaddset (&raised, signal);

        pthread_sigmask (SIG_BLOCK, &raised, &before);
    }

    WritingWithoutSignals (const WritingWithoutSignals&) = delete;
    WritingWithoutSignals& operator= (const WritingWithoutSignals&) = delete;

    ~WritingWithoutSignals()
    {
        const int error = errno; // what the caller is going to tell
        const timespec noTime {};
        sigset_t ours = none();

        for (const int signal : raisedByWriting)
            if (sigismember (&before, signal) == 0)
                sigaddset (&ours, signal);

        while (sigtimedwait (&ours, nullptr, &noTime) > 0)
        {
            // takes away what has come
        }

        pthread_sigmask (SIG_SETMASK, &before, nullptr);
        errno = error;
    }

private:
    static constexpr std::array raisedByWriting { SIGXFSZ, SIGPIPE };

    static sigset_t none()
    {
        sigset_t signals {};
        sigemptyset (&signals);
        return signals;
    }

    sigset_t before {};
};

} // namespace ZEP::Core
