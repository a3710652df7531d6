// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Core
{
/** What the library has to know of the application around it.

    An application calls configure() once at start, before other threads ask; without it the defaults below
    hold. Paths have no separator at their end.
*/
class ZEP_CORE_API SystemUtility final
{
public:
    /** An empty text means the default. */
    struct Configuration
    {
        /** 0 is the one application, any other value the other. It decides how a list is sorted by timecode,
            how line breaks of subtitles are imported, and a colour.
        */
        int applicationType = 1;

        /** Written into exports. Default: the library's version. */
        juce::String executableVersion;

        /** Full path of the icons and tools. Default: share/overmarks/resources beside the folder of the
            library.
        */
        juce::String resourcePath;

        /** Full path of the folder for what belongs to this user. Default: overmarks in the user's data
            folder.
        */
        juce::String supportPath;
    };

    SystemUtility() = delete;

    static void configure (const Configuration& configuration); ///< Once, at start; replaces all values.

    [[nodiscard]] static int getApplicationType(); ///< See Configuration::applicationType.

    /** The folder need not exist yet. */
    [[nodiscard]] static juce::String applicationSupportDirectoryPath();

    [[nodiscard]] static juce::String bundleResourcePath(); ///< Of icons and tools; may be missing.

    [[nodiscard]] static juce::String executableVersion(); ///< As exports show it; never empty.
};
} // namespace ZEP::Core
