// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/SystemUtility.h"
#include "midi/MIDITriggerEventManager.h"
#include "midiio/MIDISystem.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"
#include "support/TemporaryFolder.h"

#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** A user whose settings lie in a folder of their own, at a MIDI system with nothing registered. */
class TriggerFolder : public OvermarksTest
{
protected:
    TriggerFolder()
    {
        settingsLieIn (folder.directory());
        ZEP::MIDIIO::MIDISystem::sharedMIDISystem()->clearMIDITriggerEvents();
    }

    ~TriggerFolder() override
    {
        ZEP::Core::SystemUtility::configure ({});
        ZEP::MIDIIO::MIDISystem::sharedMIDISystem()->clearMIDITriggerEvents();
    }

    static void settingsLieIn (const juce::String& path)
    {
        ZEP::Core::SystemUtility::Configuration configuration;
        configuration.supportPath = path;
        ZEP::Core::SystemUtility::configure (configuration);
    }

    static std::shared_ptr<MIDITriggerEvent> trigger (const std::string& message,
                                                      const std::string& label = {})
    {
        auto made = std::make_shared<MIDITriggerEvent>();
        made->triggerMessage = message;
        made->label = label;
        made->event = makeEvent (EventType::EventTypeStreamer);
        return made;
    }

    static constexpr auto fileName = "midiEventsV3.bin";
    TemporaryFolder folder;
};

/** An application's list, which keeps what has fired. */
class FiringManager final : public MIDITriggerEventManager
{
public:
    void onMIDITriggerEventFired (std::shared_ptr<MIDITriggerEvent> triggerEvent) override
    {
        fired.push_back (std::move (triggerEvent));
    }

    std::vector<std::shared_ptr<MIDITriggerEvent>> fired;
};

} // namespace ZEP::Overmarks::Testing
