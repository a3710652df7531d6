// SPDX-License-Identifier: GPL-3.0-only
#pragma once

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

    /** @param record       the bytes
        @param kind         what they are a record of
        @param spareMemory  bytes of memory that it may take besides what its own length allows */
    [[nodiscard]] static Finding of (std::string_view record, const google::protobuf::Descriptor& kind,
                                     std::uint64_t spareMemory);
};

} // namespace ZEP::Overmarks
