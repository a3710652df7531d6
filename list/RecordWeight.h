// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string_view>

namespace ZEP::Overmarks
{

/** What the stored record of a project weighs in memory, told from its bytes alone: a file of twenty million bytes can say that it
    holds ten million events with nothing in them, and to read them in takes ten gigabytes. Any thread. */
class RecordWeight final
{
public:
    RecordWeight() = delete;

    enum class Finding
    {
        fits,
        tooHeavy,      ///< more events, runs of text and the like than any project of this size has
        unintelligible ///< no record at all
    };

    /** @param record  the bytes of a tessera1::ProtoProject */
    [[nodiscard]] static Finding of (std::string_view record);
};

} // namespace ZEP::Overmarks
