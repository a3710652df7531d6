// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/SpannerPanLine.h"
#include "midiio/MIDINotifications.h"
#include "midiio/SpannerMessage.h"

#include <Poco/AutoPtr.h>
#include <juce_events/juce_events.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace ZEP::Overmarks
{

/** Keeps the lines over the picture that show where panned objects stand, as spanner messages tell it.

    A line is alive, with an alpha of 0.6, after it was made and after every update; it fades, to 0.0, when no update of its
    group has come for five seconds, and comes back with the next. Only a removal takes lines away, all of them at once:

        create    update              5 s silence            update    remove
          |---------|---------------------------|...............|---------|
                 alive                            faded           alive     gone

    Messages come on the MIDI system's thread, timers fire on the thread of JUCE's message loop, without which nothing fades.
    Make and destroy the manager on that thread, before JUCE is shut down, and only while no message can arrive: open the
    inputs after the one, and before the other call MIDISystem::closeAllInputs(), which waits for what is on its way.
    Whoever reads panLines holds the mutex meanwhile, a drawing routine too, and waits for nobody.

    A timer whose time is over while an update comes in may still fade the line that was just brought back; the next update
    shows it again. */
class OVERMARKS_API MIDISpannerEventManager final : public juce::MultiTimer
{
public:
    /** How long a line lives without an update, in milliseconds. */
    static constexpr int lifetime = 5000;

    /** Is told after every message and every fading of a line. */
    class Listener
    {
    public:
        /** Called on the thread of the message with a lock of the notification centre held, or with the mutex held on that
            of the timer. So it must not post a notification, which every setter of an Event does, nor wait for another
            thread, nor take the message manager's lock: any of them can stand still for ever. It hands over what takes time
            or draws, with juce::MessageManager::callAsync() or a juce::AsyncUpdater. */
        virtual void panLinesChanged() = 0;

    protected:
        ~Listener() = default;
    };

    MIDISpannerEventManager();
    ~MIDISpannerEventManager() override;

    MIDISpannerEventManager (const MIDISpannerEventManager&) = delete;
    MIDISpannerEventManager& operator= (const MIDISpannerEventManager&) = delete;

    /** The lines of this number have had no update for five seconds: they fade. The timer goes on. */
    void timerCallback (int timerID) override;

    /** Takes the news of a spanner message. One that is too short for its command changes nothing and isn't told.
        Throws Poco::BadCastException if the message or the time is missing or something else. */
    void onSpannerEventReceived (
        const Poco::AutoPtr<ZEP::MIDIIO::SpannerEventReceivedNotification>& notification);

    /** All lines, faded ones too, in the order in which they were made. Always the same vector. */
    std::shared_ptr<std::vector<std::shared_ptr<ZEP::Core::SpannerPanLine>>> panLines;

    /** Null for none; not owned. It may go only after the manager: setting null doesn't stop a call that is under way. */
    std::atomic<Listener*> listener { nullptr };

    /** Guards panLines. Recursive, so that a listener may read the lines. */
    std::recursive_mutex mutex;

private:
    void obey (const ZEP::MIDIIO::SpannerMessage& message);
    void createLine (const ZEP::MIDIIO::SpannerMessage& message);
    void updateLines (const ZEP::MIDIIO::SpannerMessage& message);
    void removeLines (const ZEP::MIDIIO::SpannerMessage& message);
    void restartTimer (int timerID);
    void tellListener();
};

} // namespace ZEP::Overmarks
