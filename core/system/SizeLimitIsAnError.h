// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <csignal>
#include <ctime>

namespace ZEP::Core
{

/** A file that grows beyond the user's limit is an error to be told, not the end of the process, while this lasts. For the
    thread that makes it. */
class SizeLimitIsAnError final
{
public:
    SizeLimitIsAnError()
    {
        sigemptyset (&limit);
        sigaddset (&limit, SIGXFSZ);
        pthread_sigmask (SIG_BLOCK, &limit, &before);
    }

    SizeLimitIsAnError (const SizeLimitIsAnError&) = delete;
    SizeLimitIsAnError& operator= (const SizeLimitIsAnError&) = delete;

    ~SizeLimitIsAnError()
    {
        const timespec noTime {};

        if (sigismember (&before, SIGXFSZ) == 0)
            sigtimedwait (&limit, nullptr, &noTime); // takes the signal away if it has come

        pthread_sigmask (SIG_SETMASK, &before, nullptr);
    }

private:
    sigset_t limit {};
    sigset_t before {};
};

} // namespace ZEP::Core
