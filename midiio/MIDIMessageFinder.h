// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_MIDIIO/Export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ZEP::MIDIIO
{

/** Finds the whole messages in bytes as they come over a cable.

    Running status is followed, real-time bytes may stand anywhere, and what isn't whole is passed over: data without a
    status, a message that another one cuts short, the rest at the end of the last piece. Exclusive messages longer than longestExclusive
    bytes are passed over as well.

    The bytes have to be there until all messages in them are found. One thread; nothing is allocated. */
class ZEP_MIDIIO_API MIDIMessageFinder final
{
public:
    static constexpr std::size_t longestExclusive = 512; ///< bytes, both ends included

    explicit MIDIMessageFinder (std::span<const std::uint8_t> bytesToLookThrough) : bytes (bytesToLookThrough)
    {
    } ///< @param bytesToLookThrough not copied

    /** Looks through the next piece of the same stream: running status holds, and a message that was begun goes on. */
    void goOn (std::span<const std::uint8_t> nextBytes) { bytes = nextBytes; }

    /** The next message, its status first, also where the status wasn't repeated; empty when there is none any more.
        Good until the next call. */
    [[nodiscard]] std::span<const std::uint8_t> next();

private:
    bool takeStatus (std::uint8_t status);
    bool takeData (std::uint8_t data);
    void begin (std::uint8_t status);
    bool finishExclusive();
    bool isComplete() const;

    std::span<const std::uint8_t> bytes;
    std::array<std::uint8_t, longestExclusive> message {};
    std::size_t length = 0;         ///< of the message so far; 0 before its status
    std::uint8_t runningStatus = 0; ///< 0 for none
    bool isTooLong = false;
};

} // namespace ZEP::MIDIIO
