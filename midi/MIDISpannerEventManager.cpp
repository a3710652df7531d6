// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDISpannerEventManager.h"

#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>

#include <string>

namespace ZEP::Overmarks
{

using ZEP::Core::SpannerPanLine;
using ZEP::MIDIIO::SpannerEventReceivedNotification;
using ZEP::MIDIIO::SpannerMessage;
using SpannerObserver = Poco::NObserver<MIDISpannerEventManager, SpannerEventReceivedNotification>;

namespace
{

constexpr float aliveAlpha = 0.6f, fadedAlpha = 0.0f;

juce::Colour withAlpha (juce::Colour colour, float alpha)
{
    return juce::Colour::fromFloatRGBA (colour.getFloatRed(), colour.getFloatGreen(), colour.getFloatBlue(),
                                        alpha);
}

/** Timers are counted with a sign, lines without one. */
int timerOf (std::uint32_t lineID) { return static_cast<int> (lineID); }

/** What stands under the key, or an empty value, which no cast takes. */
const Poco::Any& valueOf (const std::map<std::string, Poco::Any>& userInfo, const std::string& key)
{
    static const Poco::Any nothing;
    const auto found = userInfo.find (key);
    return found != userInfo.end() ? found->second : nothing;
}

} // namespace

MIDISpannerEventManager::MIDISpannerEventManager()
    : panLines (std::make_shared<std::vector<std::shared_ptr<SpannerPanLine>>>())
{
    // A timer that is started before there is a message queue never fires, not even later.
    juce::MessageManager::getInstance();
    Poco::NotificationCenter::defaultCenter().addObserver (
        SpannerObserver (*this, &MIDISpannerEventManager::onSpannerEventReceived));
}

MIDISpannerEventManager::~MIDISpannerEventManager()
{
    Poco::NotificationCenter::defaultCenter().removeObserver (
        SpannerObserver (*this, &MIDISpannerEventManager::onSpannerEventReceived));
}

void MIDISpannerEventManager::onSpannerEventReceived (
    const Poco::AutoPtr<SpannerEventReceivedNotification>& notification)
{
    const auto& userInfo = notification->userInfo;
    const auto& bytes = Poco::RefAnyCast<std::string> (
        valueOf (userInfo, ZEP::MIDIIO::SpannerEventNotificationMIDIMsgDictKey));
    juce::ignoreUnused (
        Poco::RefAnyCast<double> (valueOf (userInfo, ZEP::MIDIIO::SpannerEventNotificationTimestampDictKey)));
    const auto message = SpannerMessage::fromBytes (bytes);

    if (! message.has_value())
        return;

    {
        const std::lock_guard lock (mutex);
        obey (*message);
    }

    tellListener();
}

void MIDISpannerEventManager::obey (const SpannerMessage& message)
{
    switch (message.command)
    {
        case SpannerMessage::Command::create: return createLine (message);
        case SpannerMessage::Command::update: return updateLines (message);
        case SpannerMessage::Command::removeAll: return removeLines (message);
    }
}

void MIDISpannerEventManager::createLine (const SpannerMessage& message)
{
    auto line = std::make_shared<SpannerPanLine>();
    line->lineID = message.lineID;
    line->position = message.position;
    line->group = message.group;
    line->colour = juce::Colour::fromFloatRGBA (message.red, message.green, message.blue, aliveAlpha);
    restartTimer (timerOf (message.lineID));
    panLines->push_back (std::move (line));
}

void MIDISpannerEventManager::updateLines (const SpannerMessage& message)
{
    for (const auto& line : *panLines)
    {
        if (line->lineID != message.lineID)
            continue;

        line->colour = withAlpha (line->colour, aliveAlpha);

        if (line->group == message.group)
        {
            line->position = message.position;
            restartTimer (timerOf (message.lineID));
        }
    }
}

void MIDISpannerEventManager::removeLines (const SpannerMessage& message)
{
    // The timers of the other lines go on, and so does this one when there is no line at all.
    if (! panLines->empty() && isTimerRunning (timerOf (message.lineID)))
        stopTimer (timerOf (message.lineID));

    panLines->clear();
}

void MIDISpannerEventManager::restartTimer (int timerID)
{
    if (isTimerRunning (timerID))
        stopTimer (timerID);

    startTimer (timerID, lifetime);
}

void MIDISpannerEventManager::timerCallback (int timerID)
{
    const std::lock_guard lock (mutex);

    for (const auto& line : *panLines)
        if (timerOf (line->lineID) == timerID)
            line->colour = withAlpha (line->colour, fadedAlpha);

    tellListener();
}

void MIDISpannerEventManager::tellListener()
{
    if (auto* const told = listener.load())
        told->panLinesChanged();
}

} // namespace ZEP::Overmarks
