// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace ZEP::Overmarks::Testing
{

/** No file grows beyond this size while it lasts, as on a disk that is full. */
class FullDisk final
{
public:
    explicit FullDisk (rlim_t bytes, void (*handlerMeanwhile) (int) = SIG_IGN)
    {
        handler = std::signal (SIGXFSZ, handlerMeanwhile);
        ::getrlimit (RLIMIT_FSIZE, &before);
        const rlimit limit { bytes, before.rlim_max };
        ::setrlimit (RLIMIT_FSIZE, &limit);
    }

    FullDisk (const FullDisk&) = delete;
    FullDisk& operator= (const FullDisk&) = delete;

    ~FullDisk()
    {
        ::setrlimit (RLIMIT_FSIZE, &before);
        std::signal (SIGXFSZ, handler);
    }

private:
    rlimit before {};
    void (*handler) (int);
};

} // namespace ZEP::Overmarks::Testing
