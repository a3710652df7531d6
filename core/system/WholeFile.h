// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <span>
#include <string_view>

namespace ZEP::Core
{

/** Writing a file that must never be half there: a project, a list in JSON.

    The bytes go into a hidden file beside the target, which takes the target's place once the disk has everything. So a crash,
    a power cut or a full disk at any moment leaves the old file or the new one, whole. A hidden file may stay behind after a
    crash.

    An existing file keeps its permissions, and its owner and group where the system allows that; one that the user may not write to
    is refused. A new one gets the permissions that the process gives to its files. A symbolic link stays and what it points to
    is replaced, or made. Into a device, or a pipe that is being read, the bytes are simply written. But a link or a pipe that
    somebody else has put into a folder of everybody's, such as /tmp, is refused (SharedFolder.h). Other names of the same file
    (hard links) keep the old content.

    Any thread; of two writers of one file the later one wins. */
class ZEP_CORE_API WholeFile final
{
public:
    WholeFile() = delete;

    /** How far writing goes. */
    enum class Until
    {
        theDiskHasIt, ///< nothing that happens afterwards loses the file
        theSystemHasIt ///< a power cut within seconds may; for what can be made anew, since waiting for the disk takes its time
    };

    /** Writes the pieces one behind the other. @returns on failure "Can't write PATH: " and what the system says */
    [[nodiscard]] static juce::Result write (const juce::File& target,
                                             std::span<const std::string_view> pieces,
                                             Until until = Until::theDiskHasIt);
    [[nodiscard]] static juce::Result write (const juce::File& target, std::string_view bytes,
                                             Until until = Until::theDiskHasIt); ///< The same for one piece.

    /** Whether something stands there that is written into and never replaced. */
    [[nodiscard]] static bool isDeviceOrPipe (const juce::File& file);
};

} // namespace ZEP::Core
