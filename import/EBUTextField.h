// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/TextEncoding.h"

#include <juce_core/juce_core.h>

#include <string_view>

namespace ZEP::Overmarks
{

/** Whether a text field can be decoded in an encoding: ASCII, UTF-8, UTF-16, Windows-1252 or Latin-1. */
[[nodiscard]] bool canDecodeEBUText (Core::TextEncoding encoding);

/** The text of the text field of an EBU subtitle block.

    The text ends at the first byte 8F, which fills the unused rest, or at a zero, in UTF-16 at a zero unit. All other
    control codes stay in it: 8A for a line break, 80 to 85 for italics and underlining, 00 to 1F for colours.

        encoding       decoding
        ASCII          byte for byte; one above 127 becomes the character of that code
        UTF-8, UTF-16  as such; what is none becomes U+FFFD
        Windows-1252   as such; the codes that it leaves open become the character of that code
        Latin-1        as such
        any other      none: the text is empty */
[[nodiscard]] juce::String decodedEBUText (std::string_view field, Core::TextEncoding encoding);

} // namespace ZEP::Overmarks
