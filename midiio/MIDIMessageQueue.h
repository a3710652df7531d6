// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace ZEP::MIDIIO
{

/** Messages on their way from the inputs, which must not wait, to the one thread that delivers them.

    Its memory is used again and again: once it has grown to the greatest rush there was, a message costs no allocation.
    add() and waitUntilDelivered() from any thread, deliver() from one. */
class MIDIMessageQueue final
{
public:
    /** What may wait; a receiver that hangs must not fill the memory. */
    static constexpr std::size_t mostBytesWaiting = std::size_t { 4 } << 20;

    using Bytes = std::span<const std::uint8_t>;
    using Receiver = std::function<void (Bytes message, double timeStamp)>;

    /** @returns false if too much is waiting already; the message is lost then */
    bool add (Bytes message, double timeStamp);

    /** Waits for messages and hands over all there are, in the order in which they came. @returns false after close() */
    bool deliver (const Receiver& receiver);

    /** Waits until all that was added before this call has been handed over. @returns false if that takes longer or the queue
        is closed first, or at once for a receiver, which would wait for itself */
    bool waitUntilDelivered (std::chrono::milliseconds atMost);

    /** Nothing is handed over any more. Waits a moment for a receiver that is at work, but not for ever.
        @returns false if the receiver is still at work, with what it was given before */
    bool close();

    [[nodiscard]] bool isOver() const { return isClosed; }

private:
    struct Entry
    {
        double timeStamp;
        std::size_t length;
    };

    struct Batch
    {
        std::vector<std::uint8_t> bytes;
        std::vector<Entry> entries;

        void clear();
    };

    /** @returns how many messages the receiver has taken */
    std::size_t handOver (const Receiver& receiver) const;

    std::mutex mutex;
    std::condition_variable changed;
    Batch waiting;
    Batch underway; ///< belongs to the delivering thread
    std::uint64_t added = 0, delivered = 0;
    bool isHandingOver = false;
    std::thread::id deliveringThread;
    std::atomic<bool> isClosed { false };
};

} // namespace ZEP::MIDIIO
