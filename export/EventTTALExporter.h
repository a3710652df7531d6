// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/text/RichTextString.h"
#include "core/timecode/TimeInfo.h"
#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** Writes TTAL files (list/TTALFormat.h): the events with their times, lines and notes, and the whole cast of the project.

    Frames are counted from the first frame of action. What the format has no place for stays behind: reason, engineering
    notes, event type, takes and the rest, the italic of a text that is bold too, all looks of a forced narrative.

    The rule that is easily missed: while a file is written the events themselves count from the first frame of action, so
    nobody else may read them meanwhile (TTALActionTime). It can't be cancelled. The thread of the caller. */
class OVERMARKS_API EventTTALExporter final : public EventExporter
{
public:
    using Events = EventExportSettingsSet::Events; ///< in the order in which they are written

    explicit EventTTALExporter (std::shared_ptr<EventExportSettingsSet> settingsSet); ///< Not null; shared.
    ~EventTTALExporter() override;

    /** A file for each character, up to the first that fails, or one for all; the latter goes through the characters in the
        order of their identifiers. */
    juce::String exportEventsByCharacter() override;
    juce::String exportEventsByTimecode() override;
    EventExportType type() const override; ///< EventExportTypeTTAL.

    /** Replaces the file. Without events nothing happens at all.
        @returns "Error writing file to " and the full path if that fails; an older file stays */
    juce::String writeEventsToTTALFile (const Events& events, const juce::File& file);

    // The members of the root. The events are written as they count their frames now. Events and characters are a
    // Core::WideObject: getProperties() knows the first WideObject::plainMembers of them only, so they are walked with
    // WideObject::forEachMember(); a member's own name finds it always.
    /** Rate, language and form of times. */
    juce::var buildMetaBlock (std::shared_ptr<Core::TimeInfo> timeInfo, const juce::String& language);
    juce::var buildEventsBlock (const Events& events); ///< An event a member, under its identifier.
    juce::var buildCharactersBlock();                  ///< The whole process-wide cast.

    /** Adds the bold and italic runs of a text to the object of its event; an empty list if there are none. */
    void addTextStylesObject (const Core::RichTextString& text,
                              juce::ReferenceCountedObjectPtr<juce::DynamicObject> eventObject);

    /** The region of a forced narrative in the words of the format. */
    juce::String TTALStringForForcedNarrativeRegion (std::shared_ptr<Event> event);

private:
    juce::var buildEvent (const std::shared_ptr<Event>& event);
};

} // namespace ZEP::Overmarks
