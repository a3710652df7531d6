// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/IProtobufSerializable.h"
#include "event/Event.h"

#include <juce_graphics/juce_graphics.h>

#include <memory>
#include <string>

namespace ZEP::Overmarks
{

/** A MIDI message and the event that it fires, such as a streamer that starts at once.

    The event of a stored trigger comes back without a time reference: give it one (Event::setTimeInfo()) before its timing
    is used.

    Held by a std::shared_ptr. It has no lock: one thread at a time. */
class OVERMARKS_API MIDITriggerEvent final : public ZEP::Core::IProtobufSerializable
{
public:
    MIDITriggerEvent();

    /** Takes over what is stored, with a new event; lastTriggerTimestamp stays.
        @param message  a tessera1::ProtoMIDITriggerEvent*. @returns true always */
    bool initWithProtoObject (void* message) override;

    /** Stores everything but lastTriggerTimestamp; in a text that is not UTF-8, U+FFFD stands for what can't be stored.
        @param message  a tessera1::ProtoMIDITriggerEvent* made by the caller */
    void fillProtoObject (void* message) override;

    ~MIDITriggerEvent() override;

    /** Text form of the message, as the MIDI system reports it ("NoteOn 1 60"). */
    std::string triggerMessage;

    /** A text of the application. */
    std::string label;

    /** When the message came last, in seconds of the MIDI system's clock; -1.0 for not yet. */
    double lastTriggerTimestamp = -1.0;

    std::shared_ptr<Event> event; ///< what is fired; null until one is set or loaded

    juce::Colour colour = juce::Colours::transparentBlack; ///< the application's; stored

    /** A number of the application; -1 for none. */
    int actionIndex = -1;
};

} // namespace ZEP::Overmarks
