// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_MIDIIO/Export.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace ZEP::MIDIIO
{

/** What a spanner message says: where a panned object stands, or that the lines are to go.

    | byte   | length | meaning                                                                                  |
    |--------|--------|------------------------------------------------------------------------------------------|
    | 0      | 4      | F0 7D 53 50; only the MIDI system looks at it                                            |
    | 4      | 5      | identity of the object, digits of seven bits, most significant first; 32 bits are kept   |
    | 9      | 1      | group                                                                                    |
    | 10     | 1      | 0 creates a line, 2 updates lines, everything else removes all of them                   |
    | 11     | 1      | position, 0 to 127; not read for a removal                                               |
    | 12     | 3      | red, green, blue, 0 to 127 each; read for a new line only                                |
    | last   | 1      | F7; not read                                                                             |

    Any thread. */
struct ZEP_MIDIIO_API SpannerMessage final
{
    /** What is to become of the lines. */
    enum class Command
    {
        create,   ///< a new line
        update,   ///< moves the lines of this identity
        removeAll ///< every line goes
    };

    std::uint32_t lineID = 0;             ///< which object; lines may share one
    std::uint32_t group = 0;              ///< 0 to 127
    Command command = Command::removeAll; ///< byte 10

    /** Each 0.0 to 1.0; 0 where the command has none. */
    float position = 0.0f, red = 0.0f /**< to 1.0 */, green = 0.0f /**< to 1.0 */, blue = 0.0f; ///< to 1.0

    /** Whether the bytes begin as a spanner message does. */
    [[nodiscard]] static bool hasHeader (std::string_view bytes);

    /** Reads the bytes without a look at the header, and whatever their values are; nothing if there are fewer than the command needs.
        In a message that is a byte short its end would pass for a value, so leave the end out to learn whether one is whole. */
    [[nodiscard]] static std::optional<SpannerMessage> fromBytes (std::string_view bytes);
};

} // namespace ZEP::MIDIIO
