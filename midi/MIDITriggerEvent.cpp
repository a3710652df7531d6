// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEvent.h"

#include "core/text/StringUtil.h"
#include "core/text/TextDecoding.h"
#include "proto/midi.pb.h"

namespace ZEP::Overmarks
{

using tessera1::ProtoMIDITriggerEvent;

namespace
{

/** A record with any other text could be written, but the whole list never read again. */
std::string storableText (const std::string& text)
{
    return ZEP::Core::ByteSurvey (text).isUTF8 ? text : ZEP::Core::StringUtil::fromUTF8 (text).toStdString();
}

} // namespace

MIDITriggerEvent::MIDITriggerEvent() = default;
MIDITriggerEvent::~MIDITriggerEvent() = default;

bool MIDITriggerEvent::initWithProtoObject (void* message)
{
    const auto& record = *static_cast<const ProtoMIDITriggerEvent*> (message);
    auto stored = record.event();
    event = std::make_shared<Event>();
    event->initWithProtoObject (&stored);
    triggerMessage = record.triggermessage();
    label = record.label();
    colour = juce::Colour (record.colour());
    actionIndex = record.actionindex();
    return true;
}

void MIDITriggerEvent::fillProtoObject (void* message)
{
    auto& record = *static_cast<ProtoMIDITriggerEvent*> (message);
    auto* const stored = record.mutable_event();

    if (event != nullptr)
        event->fillProtoObject (stored);

    record.set_triggermessage (storableText (triggerMessage));
    record.set_label (storableText (label));
    record.set_colour (colour.getARGB());
    record.set_actionindex (actionIndex);
}

} // namespace ZEP::Overmarks
