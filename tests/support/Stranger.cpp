// SPDX-License-Identifier: GPL-3.0-only
#include "support/Stranger.h"

#include <sys/syscall.h>

namespace
{
bool isPretended = false;
}

/** In the place of the system's own. */
extern "C" uid_t geteuid() noexcept
{
    const auto user = static_cast<uid_t> (::syscall (SYS_geteuid));
    return isPretended ? user + 1 : user;
}

namespace ZEP::Overmarks::Testing
{

PretendedUser::PretendedUser() { isPretended = true; }

PretendedUser::~PretendedUser() { isPretended = false; }

} // namespace ZEP::Overmarks::Testing
