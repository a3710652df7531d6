// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "midi/MIDISpannerEventManager.h"
#include "midiio/MIDINotifications.h"
#include "support/SpannerBytes.h"

#include <Poco/AutoPtr.h>
#include <Poco/NotificationCenter.h>
#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

#include <atomic>
#include <string>

namespace ZEP::Overmarks::Testing
{

using SpannerNews = ZEP::MIDIIO::SpannerEventReceivedNotification;

/** Counts how often it was told. */
struct CountingListener final : public MIDISpannerEventManager::Listener
{
    void panLinesChanged() override { ++calls; }

    std::atomic<int> calls { 0 };
};

/** A manager on the thread of the message loop, and the messages that reach it. */
class PanLines : public testing::Test
{
protected:
    PanLines() { manager.listener = &listener; }

    static void sendBytes (const std::string& bytes)
    {
        Poco::NotificationCenter::defaultCenter().postNotification (
            new SpannerNews ({ { ZEP::MIDIIO::SpannerEventNotificationMIDIMsgDictKey, bytes },
                               { ZEP::MIDIIO::SpannerEventNotificationTimestampDictKey, 1.0 } }));
    }

    static void send (const SpannerBytes& bytes) { sendBytes (bytes.text()); }

    const ZEP::Core::SpannerPanLine& line (std::size_t index) const { return *manager.panLines->at (index); }
    float alpha (std::size_t index = 0) const { return line (index).colour.getFloatAlpha(); }

    static constexpr float alive = 0.6f, faded = 0.0f;
    juce::ScopedJuceInitialiser_GUI messageLoop;
    CountingListener listener;
    MIDISpannerEventManager manager;
};

} // namespace ZEP::Overmarks::Testing
