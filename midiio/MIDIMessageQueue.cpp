// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIMessageQueue.h"

#include "midiio/LongestWait.h"

#include <utility>

namespace ZEP::MIDIIO
{

void MIDIMessageQueue::Batch::clear()
{
    bytes.clear();
    entries.clear();
}

bool MIDIMessageQueue::add (Bytes message, double timeStamp)
{
    {
        const std::lock_guard lock (mutex);

        if (isClosed || waiting.bytes.size() + message.size() > mostBytesWaiting)
            return false;

        waiting.bytes.insert (waiting.bytes.end(), message.begin(), message.end());
        waiting.entries.push_back ({ timeStamp, message.size() });
        ++added;
    }

    changed.notify_all();
    return true;
}

bool MIDIMessageQueue::deliver (const Receiver& receiver)
{
    {
        std::unique_lock lock (mutex);
        deliveringThread = std::this_thread::get_id();
        changed.wait (lock, [this] { return isClosed || ! waiting.entries.empty(); });

        if (isClosed)
            return false;

        std::swap (waiting, underway);
        isHandingOver = true;
    }

    const auto handedOver = handOver (receiver);

    {
        const std::lock_guard lock (mutex);
        delivered += handedOver;
        underway.clear();
        isHandingOver = false;
    }

    changed.notify_all();
    return ! isClosed;
}

std::size_t MIDIMessageQueue::handOver (const Receiver& receiver) const
{
    std::size_t place = 0, number = 0;

    for (const auto& entry : underway.entries)
    {
        if (isClosed)
            break;

        receiver (Bytes (underway.bytes).subspan (place, entry.length), entry.timeStamp);
        place += entry.length;
        ++number;
    }

    return number;
}

bool MIDIMessageQueue::waitUntilDelivered (std::chrono::milliseconds atMost)
{
    std::unique_lock lock (mutex);

    if (std::this_thread::get_id() == deliveringThread)
        return false;

    const auto goal = added;
    changed.wait_for (lock, withinAYear (atMost), [this, goal] { return isClosed || delivered >= goal; });
    return delivered >= goal;
}

bool MIDIMessageQueue::close()
{
    constexpr auto patience = std::chrono::seconds (1);
    std::unique_lock lock (mutex);
    isClosed = true;
    changed.notify_all();

    return std::this_thread::get_id() != deliveringThread
           && changed.wait_for (lock, patience, [this] { return ! isHandingOver; });
}

} // namespace ZEP::MIDIIO
