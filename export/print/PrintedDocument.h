// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/Descriptor.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <filesystem>
#include <string_view>

namespace ZEP::Overmarks
{

/** A printed document on its way from the browser to its place. It waits on the disk, not in the memory.

    Addresses in a cue list lead nowhere: whatever could be clicked in the document is taken out of it, and their texts are left.

    Everything throws PrintError. */
class OVERMARKS_API PrintedDocument final
{
public:
    /** What a document may come to. */
    struct Limits
    {
        std::size_t pages = 0; ///< at most
        std::size_t bytes = std::size_t { 256 }
                            << 20; ///< a sheet of two thousand cues has one or two million
    };

    /** @param folder  for the temporary file */
    PrintedDocument (const std::filesystem::path& folder, Limits limitsOfDocument);

    void write (std::string_view bytes); ///< The next bytes of the document.

    /** Replaces the file, unless this is no document or one beyond its limits. */
    void moveTo (const juce::File& file);

    [[nodiscard]] const Limits& limits() const noexcept { return limitsToKeep; } ///< What it must keep to.

private:
    void requireRoom (bool isThere) const;

    Limits limitsToKeep;
    std::size_t written = 0;
    std::filesystem::path path;
    Core::Descriptor temporary;
};

} // namespace ZEP::Overmarks
