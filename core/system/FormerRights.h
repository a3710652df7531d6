// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <sys/stat.h>
#include <unistd.h>

namespace ZEP::Core
{

/** Gives a file that is about to replace another one that one's owner, group and permissions, as far as the system lets this user;
    nobody may read the new list who might not read the old one. False if the permissions can't be set; errno tells why. */
[[nodiscard]] inline bool takeFormerRights (int descriptor, const struct stat& former)
{
    auto mode = former.st_mode & 0777;

    // The rights of a group that can't be kept are not for another one.
    if (::fchown (descriptor, former.st_uid, former.st_gid) != 0
        && ::fchown (descriptor, static_cast<uid_t> (-1), former.st_gid) != 0)
        mode = (mode & 0707) | (mode & 07) << 3;

    return ::fchmod (descriptor, mode) == 0;
}

} // namespace ZEP::Core
