// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/frame/EventExportSettingsSet.h"

#include <juce_core/juce_core.h>

#include <memory>

namespace ZEP::Overmarks
{

/** Writes the documents that go to the studio: everything in one list by timecode, or a part for each character.

    One object serves one export: set the delegate, then call one of the two export operations. Both return the text of an
    error, the empty string for success, and throw std::out_of_range when an option is missing that they ask for.

    An export runs on the thread that calls it, and its delegate is called there. The settings are shared and must not change
    meanwhile. */
class OVERMARKS_API EventExporter
{
public:
    /** Is told how an export gets on. Not destroyed through this interface. */
    class OVERMARKS_API Delegate
    {
    public:
        /** @param current  files done so far  @param total  files in all */
        virtual void progressChanged (EventExporter* exporter, int current, int total) = 0;

    protected:
        ~Delegate() = default;
    };

    explicit EventExporter (std::shared_ptr<EventExportSettingsSet> settingsSet); ///< Not null; shared.
    EventExporter (const EventExporter&) = delete;
    EventExporter& operator= (const EventExporter&) = delete;
    virtual ~EventExporter();

    /** Writes `eventsByCharacter`, in the order of the characters' names: a file for each character, or one for all. */
    virtual juce::String exportEventsByCharacter() = 0;

    /** Writes `events` into one file. */
    virtual juce::String exportEventsByTimecode() = 0;

    virtual EventExportType type() const = 0; ///< Which kind of document this writes.

    /** Asks a running export to end early; called from another thread. Does nothing where an exporter can't be stopped. */
    virtual void cancel();

    std::shared_ptr<EventExportSettingsSet> settings; ///< never null
    Delegate* delegate = nullptr;                     ///< not owned; may stay null
};

} // namespace ZEP::Overmarks
