// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_MIDIIO/Export.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ZEP::MIDIIO
{

/** The text forms of the messages that can fire something, which are also what a trigger is stored and found by.

    | message          | bytes                              | text            |
    |------------------|------------------------------------|-----------------|
    | note on          | 9c note velocity (not 0)           | NoteOn 1 60     |
    | note off         | 8c note velocity, or 9c note 00    | NoteOff 1 60    |
    | control change   | Bc controller value                | CC 1 64         |
    | program change   | Cc program                         | PC 1 5          |
    | machine control  | F0 7F device 06 command ... F7     | MMC 02          |

    Channels count from 1, everything else from 0; the command is two hexadecimal digits in capitals. Velocity, value and
    device play no part, so a pedal that sends 127 and then 0 has arrived twice. Any thread. */
class ZEP_MIDIIO_API MIDIMessageText final
{
public:
    MIDIMessageText() = delete;

    /** @param message  one whole message, status first. @returns empty for one without a text form, or with bytes missing */
    [[nodiscard]] static std::string textOf (std::span<const std::uint8_t> message);

    /** Whether textOf() could give exactly this text: anything else never arrives. */
    [[nodiscard]] static bool isMessageText (std::string_view text);
};

} // namespace ZEP::MIDIIO
