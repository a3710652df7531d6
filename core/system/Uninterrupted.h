// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cerrno>

namespace ZEP::Core
{

/** What a call of the system comes to. One that a signal has interrupted, as disks of a network let it happen, is made again.
    Not for close(), after which the descriptor is gone in any case. */
template <typename Call>
auto uninterrupted (Call call)
{
    for (;;)
        if (const auto result = call(); result >= 0 || errno != EINTR)
            return result;
}

} // namespace ZEP::Core
