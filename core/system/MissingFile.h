// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <sys/stat.h>

#include <cerrno>

namespace ZEP::Core
{

/** Whether there is no such file. Where the system can't tell, since the folder may not be searched or a disk of a network has gone,
    there may well be one: whoever took it for missing would begin anew and replace what somebody has stored. Any thread. */
[[nodiscard]] inline bool isMissing (const juce::File& file)
{
    struct stat found
    {
    };
    return ::stat (file.getFullPathName().toRawUTF8(), &found) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

} // namespace ZEP::Core
