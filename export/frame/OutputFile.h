// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <optional>

namespace ZEP::Overmarks
{

/** A document on its way to the disk: the old file goes, the new one is there as a whole or not at all.

    The rule that is easily missed: until finish() has returned true the document isn't safe, and it is removed again when
    this object goes. What isn't a regular file (a folder in the file's place, a device behind a link) is never removed.

    One thread. */
class OVERMARKS_API OutputFile final
{
public:
    /** Removes an existing file and begins the new one. What fails here shows in finish(). */
    explicit OutputFile (const juce::File& target);
    ~OutputFile();

    OutputFile (const OutputFile&) = delete;
    OutputFile& operator= (const OutputFile&) = delete;

    void write (const void* bytes, std::size_t numberOfBytes); ///< What fails here shows in finish().

    /** UTF-8 and a closing zero byte. */
    void writeString (const juce::String& text);

    /** Hands everything to the system, without waiting for the disk itself. Nothing is written after it.
        @returns whether the file has taken every byte */
    [[nodiscard]] bool finish();

private:
    bool isRegularFile() const;

    juce::File file;
    std::optional<juce::FileOutputStream> stream;
    bool begun = false;   ///< the file was opened
    bool complete = true; ///< nothing has failed so far
    bool keep = false;
};

} // namespace ZEP::Overmarks
