// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/Descriptor.h"

#include <juce_core/juce_core.h>

#include <sys/stat.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** A document on its way to the disk: it takes the place of an older one as a whole, or the older one stays as it was,
    unless it is meant to go.

    It is written to a hidden file beside its target, which a crash may leave behind. Only in a folder in which nobody may make a
    file the older document is written over; should that fail, nothing of it is left either. What isn't a regular file (a folder in the file's place, a device behind a link) is never removed; a link to
    a file goes, and the file behind it stays. What somebody else has put into a folder of everybody's, such as /tmp, is neither replaced nor
    written into, nor followed to where it leads, also where a link of the user leads to it.

    The rule that is easily missed: until finish() has returned true nothing stands in the target's place, and what was written
    is removed again when this object goes.

    One thread. */
class OVERMARKS_API OutputFile final
{
public:
    /** What becomes of an older document when the new one can't be written. */
    enum class OnFailure
    {
        theOlderStays, ///< and what was written of the new one goes
        nothingStaysThere ///< for an exporter that has no words for a failure: its caller looks whether there is a file
    };

    /** Begins the document. What fails here shows in finish(). */
    explicit OutputFile (const juce::File& target, OnFailure onFailure = OnFailure::theOlderStays);
    ~OutputFile();

    OutputFile (const OutputFile&) = delete;
    OutputFile& operator= (const OutputFile&) = delete;

    void write (const void* bytes, std::size_t numberOfBytes); ///< What fails here shows in finish().

    /** UTF-8 and a closing zero byte. */
    void writeString (const juce::String& text);

    /** Hands everything to the system, without waiting for the disk itself, and puts the document into its place. Nothing is written after
        it.
        @returns whether the document stands there, whole */
    [[nodiscard]] bool finish();

private:
    void open();
    void openBeside();
    void openInPlace();
    [[nodiscard]] Core::Descriptor openFormer (int flags) const;
    void writeBuffer();
    void writeThrough (std::string_view bytes);
    void removeUnfinished();
    void removeOlder() const;

    juce::String target;
    OnFailure whenItFails;
    std::string buffer;
    std::string removedUnlessKept; ///< path of the file that is being written; empty for a device
    Core::Descriptor file;
    struct stat former
    {
    }; ///< what stood in the target's place, if anything
    bool isBeside = false;
    bool complete = true; ///< nothing has failed so far
    bool keep = false;
};

} // namespace ZEP::Overmarks
