// SPDX-License-Identifier: GPL-3.0-only
// Bytes as they come over a cable, whole or in pieces: the same messages are found in them, and spanner messages draw lines
// within the picture. The first byte of an input tells into which pieces the others are cut.
#include "Application.h"

#include "midi/MIDISpannerEventManager.h"
#include "midiio/MIDIMessageFinder.h"
#include "midiio/MIDIMessageText.h"
#include "midiio/MIDINotifications.h"
#include "midiio/SpannerMessage.h"

#include <Poco/AutoPtr.h>
#include <juce_events/juce_events.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

using namespace ZEP::MIDIIO;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

using Bytes = std::span<const std::uint8_t>;
using Messages = std::vector<std::vector<std::uint8_t>>;

constexpr std::uint8_t firstStatus = 0x80, startOfExclusive = 0xF0, endOfExclusive = 0xF7;

std::string_view textOf (Bytes bytes) { return bytesOfInput (bytes.data(), bytes.size()); }

void collect (MIDIMessageFinder& finder, Messages& messages)
{
    for (auto message = finder.next(); ! message.empty(); message = finder.next())
        messages.emplace_back (message.begin(), message.end());
}

Messages messagesOf (Bytes bytes, std::size_t lengthOfPieces)
{
    Messages messages;
    MIDIMessageFinder finder (bytes.first (0));

    for (std::size_t start = 0; start < bytes.size(); start += lengthOfPieces)
    {
        finder.goOn (bytes.subspan (start, std::min (lengthOfPieces, bytes.size() - start)));
        collect (finder, messages);
    }

    return messages;
}

void checkMessage (Bytes message)
{
    law (message.front() >= firstStatus, "a message begins with its status");
    law (message.size() <= MIDIMessageFinder::longestExclusive, "no message is longer than the longest");
    const auto isExclusive = message.front() == startOfExclusive;
    const auto end = message.end() - (isExclusive ? 1 : 0);
    law (! isExclusive || message.back() == endOfExclusive, "an exclusive message has its end");
    law (std::all_of (message.begin() + 1, end, [] (auto byte) { return byte < firstStatus; }),
         "data have seven bits");

    if (const auto text = MIDIMessageText::textOf (message); ! text.empty())
        law (MIDIMessageText::isMessageText (text), "the text of a message is one that can arrive");
}

/** The lines over a picture after a message. */
void checkLines (const MIDISpannerEventManager& manager, std::size_t before, const SpannerMessage& message)
{
    const auto now = manager.panLines->size();

    switch (message.command)
    {
        case SpannerMessage::Command::create: law (now == before + 1, "a new line is one more"); break;
        case SpannerMessage::Command::update: law (now == before, "an update makes no line"); break;
        case SpannerMessage::Command::removeAll: law (now == 0, "a removal takes all lines"); break;
    }

    for (const auto& line : *manager.panLines)
        law (line->position >= 0.0f && line->position <= 1.0f, "a line stands within the picture");
}

void checkSpanner (MIDISpannerEventManager& manager, Bytes bytes)
{
    const auto before = manager.panLines->size();
    const auto message = SpannerMessage::fromBytes (textOf (bytes));
    const Poco::AutoPtr<SpannerEventReceivedNotification> news (new SpannerEventReceivedNotification (
        { { SpannerEventNotificationMIDIMsgDictKey, std::string (textOf (bytes)) },
          { SpannerEventNotificationTimestampDictKey, 1.0 } }));
    manager.onSpannerEventReceived (news);

    if (! message.has_value())
    {
        law (manager.panLines->size() == before, "a message that is too short changes nothing");
        return;
    }

    for (const auto part : { message->position, message->red, message->green, message->blue })
        law (part >= 0.0f && part <= 1.0f, "what a message tells lies between 0 and 1");

    checkLines (manager, before, *message);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    const juce::ScopedJuceInitialiser_GUI messageLoop;
    startApplication();

    if (size == 0)
        return 0;

    const Bytes bytes (data + 1, size - 1);
    const auto messages = messagesOf (bytes, std::max<std::size_t> (bytes.size(), 1));
    constexpr std::size_t longestPiece = 9;
    law (messagesOf (bytes, 1 + data[0] % longestPiece) == messages, "pieces hold the same messages");

    MIDISpannerEventManager manager;

    for (const auto& message : messages)
    {
        checkMessage (message);

        // Those that are a byte short the system keeps back: their end would pass for a value.
        if (SpannerMessage::hasHeader (textOf (message))
            && SpannerMessage::fromBytes (textOf (Bytes (message).first (message.size() - 1))).has_value())
            checkSpanner (manager, message);
    }

    // What another application hands over may be anything.
    const auto asItIs = SpannerMessage::fromBytes (textOf (bytes));
    law (! asItIs.has_value() || bytes.size() > 10, "a spanner message has a command");
    return 0;
}
