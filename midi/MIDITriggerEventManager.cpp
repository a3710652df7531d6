// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEventManager.h"

#include "midi/MIDITriggerEventFile.h"
#include "midiio/MIDISystem.h"

#include <Poco/AutoPtr.h>
#include <Poco/NotificationCenter.h>
#include <Poco/Observer.h>

#include <string>

namespace ZEP::Overmarks
{

using ZEP::MIDIIO::MIDISystem;
using ZEP::MIDIIO::UserEventTriggerReceivedNotification;
using TriggerObserver = Poco::Observer<MIDITriggerEventManager, UserEventTriggerReceivedNotification>;

MIDITriggerEventManager::MIDITriggerEventManager()
{
    Poco::NotificationCenter::defaultCenter().addObserver (
        TriggerObserver (*this, &MIDITriggerEventManager::onUserDefinedTriggerMsgReceived));

    try
    {
        readTriggerEventsFromFile();
        registerTriggers();
    }
    catch (...)
    {
        stopObserving();
        throw;
    }
}

MIDITriggerEventManager::~MIDITriggerEventManager() { stopObserving(); }

void MIDITriggerEventManager::registerTriggers() const
{
    auto* const system = MIDISystem::sharedMIDISystem();
    system->clearMIDITriggerEvents();

    for (const auto& trigger : events)
        system->addMIDIEventTrigger (trigger->triggerMessage);
}

void MIDITriggerEventManager::stopObserving()
{
    Poco::NotificationCenter::defaultCenter().removeObserver (
        TriggerObserver (*this, &MIDITriggerEventManager::onUserDefinedTriggerMsgReceived));
}

void MIDITriggerEventManager::readTriggerEventsFromFile()
{
    const auto stored = MIDITriggerEventFile::read();
    events.insert (events.end(), stored.begin(), stored.end());
}

void MIDITriggerEventManager::writeTriggerEventsToFile()
{
    juce::ignoreUnused (MIDITriggerEventFile::write (events));
}

void MIDITriggerEventManager::onUserDefinedTriggerMsgReceived (
    UserEventTriggerReceivedNotification* notification)
{
    const Poco::AutoPtr<UserEventTriggerReceivedNotification> held (notification);
    const auto& userInfo = held->userInfo;
    const auto& message =
        Poco::RefAnyCast<std::string> (userInfo.at (ZEP::MIDIIO::UserTriggerEventNotificationEventDictKey));
    const double timestamp =
        Poco::RefAnyCast<double> (userInfo.at (ZEP::MIDIIO::UserTriggerEventTimestampDictKey));
    std::shared_ptr<MIDITriggerEvent> match;

    for (const auto& trigger : events)
        if (trigger != nullptr && trigger->triggerMessage == message)
            match = trigger;

    if (match == nullptr)
        return; // registered, but no longer in the list

    match->lastTriggerTimestamp = timestamp;
    onMIDITriggerEventFired (match);
}

} // namespace ZEP::Overmarks
