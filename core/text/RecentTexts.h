// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ZEP::Core
{

/** The short texts that a reader has met lately. A cue list says the same characters, reasons and takes row after row: where the text is
    still known, the new cell shares it, and takes neither time nor memory for one of its own.

    Nothing is promised but equal characters: a text makes room for the next one that falls on its place, and a long one, which
    hardly comes again, isn't kept at all. One object belongs to one thread; the texts go where they like. */
class ZEP_CORE_API RecentTexts final
{
public:
    static constexpr std::size_t mostBytes = 24; ///< of a text that is kept
    static constexpr std::size_t places = 512;   ///< how many texts are kept at most

    /** The text of bytes.
        @param strictUTF8  known to be UTF-8 without a zero; any others corrupt memory */
    [[nodiscard]] juce::String textOf (std::string_view strictUTF8);

private:
    /** The bytes of a text, with zeros behind them, which no text has. */
    using Letters = std::array<std::uint64_t, mostBytes / sizeof (std::uint64_t)>;

    struct Known
    {
        Letters letters {};
        juce::String text;
    };

    std::array<Known, places> known; ///< each in its place
};

} // namespace ZEP::Core
