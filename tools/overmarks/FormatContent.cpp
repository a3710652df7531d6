// SPDX-License-Identifier: GPL-3.0-only
#include "FormatContent.h"

#include "DocumentFormats.h"
#include "Suggestion.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Core::RichTextString;

namespace
{

/** Something that an event may have, and whether it does. */
struct ContentRow
{
    Content content;
    const char* name;
    bool (*isInUse) (const Event&);
};

template <typename Test>
bool hasRun (const Event& event, Test test)
{
    const auto runs = event.getText().formattedRuns();
    return std::any_of (runs.begin(), runs.end(), test);
}

bool isOtherLook (const RichTextString::Attribute& run)
{
    return run.font.isUnderlined() || RichTextString::isStruckThrough (run.font)
           || run.colour != juce::Colour (0xff000000)
           || std::abs (run.font.getHeight() - RichTextString::defaultFont().getHeight()) > 0.01f;
}

/** A duration that a new event of this type wouldn't have anyway. */
bool hasOwnDuration (const Event& event)
{
    constexpr int unset = -1;
    const auto usual = Event::create (event.getType(), event.getTimeInfo(), 0, unset, -1.0f, unset);
    return event.getStreamerDuration() != unset
           && event.getStreamerDuration() != usual->getStreamerDuration();
}

template <juce::String ZEP::Core::ADRCharacter::*field>
bool hasOfCharacter (const Event& event)
{
    const auto character = event.character();
    return character != nullptr && ((*character).*field).isNotEmpty();
}

constexpr std::array table {
    ContentRow { Content::times, "times", [] (const Event& e) { return e.getInPointFrameIndex() != -1; } },
    ContentRow { Content::types, "event types",
                 [] (const Event& e) { return e.getType() != EventTypeADRCue; } },
    ContentRow { Content::characters, "characters", hasOfCharacter<&ZEP::Core::ADRCharacter::name> },
    ContentRow { Content::prefixes, "character prefixes", hasOfCharacter<&ZEP::Core::ADRCharacter::prefix> },
    ContentRow { Content::actors, "actors", hasOfCharacter<&ZEP::Core::ADRCharacter::actor> },
    ContentRow { Content::cueNumbers, "cue numbers",
                 [] (const Event& e) { return e.getCueNumber().isNotEmpty(); } },
    ContentRow { Content::text, "text", [] (const Event& e) { return e.getText().getText().isNotEmpty(); } },
    ContentRow { Content::lineBreaks, "line breaks",
                 [] (const Event& e) { return e.getText().getText().containsChar ('\n'); } },
    ContentRow { Content::boldAndItalic, "bold and italic",
                 [] (const Event& e) {
                     return hasRun (e, [] (const auto& run)
                                    { return run.font.isBold() || run.font.isItalic(); });
                 } },
    ContentRow { Content::otherLooks, "other looks of text",
                 [] (const Event& e) { return hasRun (e, isOtherLook); } },
    ContentRow { Content::notes, "notes",
                 [] (const Event& e) { return e.getNotes().getText().isNotEmpty(); } },
    ContentRow { Content::engineeringNotes, "engineering notes",
                 [] (const Event& e) { return e.getEngineeringNotes().getText().isNotEmpty(); } },
    ContentRow { Content::done, "done", [] (const Event& e) { return e.isDone(); } },
    ContentRow { Content::disabled, "disabled", [] (const Event& e) { return ! e.isEnabled(); } },
    ContentRow { Content::takes, "numbers of takes",
                 [] (const Event& e) { return e.getNumRecordedTakes() > 0; } },
    ContentRow { Content::chosenTakes, "chosen takes",
                 [] (const Event& e) { return e.getSelectedTake() >= 0 || e.getAltTake() >= 0; } },
    ContentRow { Content::reasons, "reasons", [] (const Event& e) { return e.getReason() > 0; } },
    ContentRow { Content::durations, "streamer durations", hasOwnDuration },
    ContentRow { Content::tempo, "tempo", [] (const Event& e) { return e.getBeatsPerMinute() > 0.0f; } },
    ContentRow { Content::forcedNarratives, "forced narratives",
                 [] (const Event& e) { return e.isForcedNarrative(); } },
};

bool carries (const DocumentFormat& format, Content content)
{
    return std::find (format.carries.begin(), format.carries.end(), content) != format.carries.end();
}

} // namespace

std::vector<std::string> namesOf (const std::vector<Content>& contents)
{
    std::vector<std::string> names;

    for (const auto& row : table)
        if (std::find (contents.begin(), contents.end(), row.content) != contents.end())
            names.emplace_back (row.name);

    return names;
}

std::vector<std::string> lostContent (const DocumentFormat& format, const EventArray::Events& events)
{
    std::vector<std::string> lost;

    for (const auto& row : table)
        if (! carries (format, row.content)
            && std::any_of (events.begin(), events.end(),
                            [&row] (const auto& event) { return row.isInUse (*event); }))
            lost.emplace_back (row.name);

    return lost;
}

void sayWhatIsLost (const std::vector<const DocumentFormat*>& formats, const EventArray::Events& events,
                    const Session& session)
{
    for (const auto* format : formats)
        if (const auto lost = lostContent (*format, events); ! lost.empty())
            session.say (juce::String (format->name)
                         + " has no place for everything in this list; it leaves out: " + joined (lost));
}

} // namespace overmarks
