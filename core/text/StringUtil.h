// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/text/TextEncoding.h"

#include <juce_core/juce_core.h>
#include <span>
#include <string>
#include <string_view>

namespace ZEP::Core
{

/** What every text of a cue list passes through on its way in and out.

    A juce::String made from bytes that aren't UTF-8 corrupts memory later on; so bytes of a file become text
    here and nowhere else. All operations may be called from any thread.
*/
class ZEP_CORE_API StringUtil final
{
public:
    StringUtil() = delete;

    /** A range of characters that word processors put in and plain-text formats lose, and what is written
        instead. */
    struct PlainCounterpart
    {
        juce::juce_wchar first;  ///< code point
        juce::juce_wchar last;   ///< code point, itself in the range
        const char* replacement; ///< ASCII; empty: the character disappears
    };

    /** The text with typographic quotes, dashes, special spaces, invisible characters and control codes
        replaced by their plain counterparts. Letters of any language, emoji and music notes stay, and so
        do tabs and line breaks. A text with nothing to replace comes back without being copied. */
    [[nodiscard]] static juce::String replaceIllegalASCIICharacters (juce::String text);

    /** Whether replaceIllegalASCIICharacters() would change the text. */
    [[nodiscard]] static bool hasIllegalASCIICharacters (const juce::String& text);

    /** What stands for a character in plain text; null when it stays as it is. */
    [[nodiscard]] static const char* plainCounterpart (juce::juce_wchar character) noexcept;

    /** The table behind replaceIllegalASCIICharacters(), in the order of the characters. */
    [[nodiscard]] static std::span<const PlainCounterpart> plainCounterparts() noexcept;

    /** Decodes `length` bytes.

        With TextEncodingUnknown the bytes decide, and the reference is set to what they show: UTF-8,
        UTF-16 or Windows-1252. Pure ASCII shows nothing, so the reference stays as it is and a later cell
        of the file can still decide. A byte order mark is no part of the text, NUL characters are left
        out, and what can't be decoded becomes U+FFFD. ASCII with a byte above 127 is read as Windows-1252. */
    [[nodiscard]] static juce::String stringWithTextEncoding (const char* bytes, unsigned long length,
                                                              TextEncoding& encoding);

    /** The text of UTF-8 bytes of unknown quality: each bad sequence becomes U+FFFD, NUL characters are
        left out. Unlike stringWithTextEncoding() it keeps a byte order mark. */
    [[nodiscard]] static juce::String fromUTF8 (std::string_view bytes);

    /** The UTF-8 bytes of a text. */
    [[nodiscard]] static std::string toUTF8 (const juce::String& text);
};

} // namespace ZEP::Core
