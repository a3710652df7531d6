// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <cstddef>
#include <string_view>

namespace ZEP::Overmarks
{

/** Lengthens a text by many pieces, in a time that grows with the pieces alone: the framework looks for the end of the text, and copies all
    of it, with each piece.

    Whoever reads the text finds all pieces in it at any time, but nobody else changes or copies it while this object lives. */
class LongText final
{
public:
    /** @param destination  lengthened; outlives this object
        @param room         in bytes, for what is expected to be added. Memory that nothing is written to takes none. */
    LongText (juce::String& destination, std::size_t room);

    void add (std::string_view bytes); ///< UTF-8; the caller's.

private:
    void makeRoom (std::size_t bytes);

    juce::String& text;
    std::size_t length;   // in bytes, without the zero behind the text
    std::size_t capacity; // the same
};

} // namespace ZEP::Overmarks
