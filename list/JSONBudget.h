// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/RecordWeight.h"
#include "list/ProjectJSON.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace ZEP::Overmarks
{

/** How much memory a text in JSON may still take. Three bytes of it can ask for an event, and for a thousand bytes with that. For one
    text. */
class JSONBudget final
{
public:
    /** @param bytesOfText  how many bytes the text has */
    explicit JSONBudget (std::uint64_t bytesOfText)
        : length (bytesOfText),
          most (RecordWeight::mostOf (bytesOfText, ProjectJSON::limits().spareMemory))
    {
    }

    /** Takes so many bytes. Throws std::invalid_argument, with a message for people, if there aren't as many left. */
    void take (std::uint64_t bytes)
    {
        if (bytes > most - taken)
            throw std::invalid_argument ("The text is damaged: it claims to hold more events than its "
                                         + std::to_string (length) + " bytes have room for");

        taken += bytes;
    }

    /** Gives bytes back that were taken. */
    void giveBack (std::uint64_t bytes) { taken -= bytes; }

private:
    std::uint64_t length;
    std::uint64_t most;
    std::uint64_t taken = 0;
};

} // namespace ZEP::Overmarks
