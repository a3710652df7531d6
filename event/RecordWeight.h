// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/CappedNumbers.h"

#include <cstdint>
#include <string_view>

namespace google::protobuf
{
class Descriptor;
}

namespace ZEP::Overmarks
{

/** What a stored record, of a project or of MIDI triggers, weighs in memory, told from its bytes alone: a file of twenty million bytes can say that it
    holds ten million events with nothing in them, and to read them in takes ten gigabytes. Any thread. */
class RecordWeight final
{
public:
    RecordWeight() = delete;

    enum class Finding
    {
        fits,
        tooHeavy,      ///< more events, runs of text and the like than any of this size has
        unintelligible ///< no record at all
    };

    // What one entry takes in memory besides its own texts, in bytes: as a stored record and as what is made of it.
    static constexpr std::uint64_t weightOfEvent = 1100, weightOfTrigger = 1100, weightOfCharacter = 700,
                                   weightOfRun = 300;

    /** The memory that a record of so many bytes may take. The lightest event that a program stores has its identity and a few
        numbers, 64 bytes; the lightest run has 20, the lightest character with a random identity 40. What lies above twenty times
        the bytes, and what is allowed besides, is no list of cues. */
    [[nodiscard]] static constexpr std::uint64_t mostOf (std::uint64_t bytes, std::uint64_t spareMemory)
    {
        constexpr std::uint64_t heaviestByte = 20;
        return ZEP::Core::cappedSum (ZEP::Core::cappedProduct (bytes, heaviestByte), spareMemory);
    }

    /** @param record       the bytes
        @param kind         what they are a record of
        @param spareMemory  bytes of memory that it may take besides what its own length allows */
    [[nodiscard]] static Finding of (std::string_view record, const google::protobuf::Descriptor& kind,
                                     std::uint64_t spareMemory);
};

} // namespace ZEP::Overmarks
