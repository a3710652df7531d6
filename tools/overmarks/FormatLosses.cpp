// SPDX-License-Identifier: GPL-3.0-only
#include "FormatLosses.h"

#include "FormatContent.h"
#include "Suggestion.h"

#include "core/timecode/TCToolbox.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Core::TCToolbox;
using ZEP::Core::TimeInfo;

namespace
{

// ---- events that aren't written at all -----------------------------------------------------------------------------------

struct TypeWords
{
    int types; ///< EventType bits
    const char* one;
    const char* many;
};

constexpr int anyFade = EventTypeFadeIn | EventTypeFadeOut;

constexpr std::array typeWords {
    TypeWords { EventTypeADRCue, "ADR cue", "ADR cues" },
    TypeWords { EventTypeMarker, "marker", "markers" },
    TypeWords { EventTypeStreamer, "streamer", "streamers" },
    TypeWords { EventTypeFlutter, "flutter", "flutters" },
    TypeWords { anyFade, "timed fade", "timed fades" },
};

std::string counted (int number, const char* one, const char* many)
{
    return std::to_string (number) + " " + (number == 1 ? one : many);
}

/** The fades of the project, which no document has a place for, if the picture has any. */
void addTimedFades (EventArray::Events& events, const EventArray& list)
{
    for (const auto& event : list.events)
        if ((event->getType() == EventTypeFadeIn || event->getType() == EventTypeFadeOut)
            && event->getInPointFrameIndex() != -1)
            events.push_back (event);
}

std::vector<std::string> countedByType (const EventArray::Events& events)
{
    std::vector<std::string> words;
    auto others = static_cast<int> (events.size());

    for (const auto& [types, one, many] : typeWords)
    {
        const auto number = static_cast<int> (std::count_if (
            events.begin(), events.end(),
            [mask = types] (const auto& event)
            { return event->getType() > 0 && (event->getType() & mask) == event->getType(); }));
        others -= number;

        if (number > 0)
            words.push_back (counted (number, one, many));
    }

    if (others > 0)
        words.push_back (counted (others, "event of no type", "events of no type"));

    return words;
}

// ---- what is lost of those that are written ------------------------------------------------------------------------------

template <typename Key>
bool isIn (const std::vector<Key>& keys, Key key)
{
    return std::find (keys.begin(), keys.end(), key) != keys.end();
}

void addLost (std::vector<std::string>& words, const DocumentFormat& format, const WrittenList& list)
{
    std::vector<Content> gone;

    // A part of what is gone anyway isn't worth a word.
    const auto isLost = [&] (const ContentRow& row)
    {
        const int number = isIn (gone, row.whole) ? 0 : row.count (list);

        if (number > 0)
            words.push_back (std::string (row.name) + " (" + counted (number, row.one, row.many) + ")");

        return number > 0;
    };

    for (const auto content : allContent())
        if (! isIn (format.carries, content) && isLost (rowOf (content)))
            gone.push_back (content);

    for (const auto detail : format.loses)
        isLost (rowOf (detail));
}

// ---- what else is to be known --------------------------------------------------------------------------------------------

juce::String timecodeOf (const ZEP::Core::_TCTime& time, const TimeInfo& info)
{
    return TCToolbox::stringFromTCTime (time, info.tcDef.dropFrame);
}

juce::String wordsOfRate (const WrittenList& list)
{
    const auto& def = list.project.timeInfo->tcDef;
    const auto fps =
        static_cast<float> (def.frameRateNumerator) / static_cast<float> (def.frameRateDenominator);
    const auto code = TCToolbox::timecodeFramerateFromFPS (fps, false);

    if (code != ZEP::Core::FrameRate48 && code != ZEP::Core::FrameRateUnsupported)
        return {};

    return "the format has no name for " + TCToolbox::rateNameForTCDef (def)
           + " frames a second, so the document can't be read again";
}

juce::String wordsOfDropFrame (const WrittenList& list)
{
    const auto& def = list.project.timeInfo->tcDef;
    return def.dropFrame ? "the format doesn't tell drop-frame; the document is to be read with --fps "
                               + TCToolbox::rateNameForTCDef (def)
                         : juce::String();
}

juce::String wordsOfAction (const WrittenList& list)
{
    const auto& info = *list.project.timeInfo;
    return TCToolbox::frameIndexForTCTime (info.getFirstFrameOfAction(), list.project.timeInfo) != 0
               ? "times count from the first frame of action; the document is to be read with --origin "
                     + timecodeOf (info.getFirstFrameOfAction(), info)
               : juce::String();
}

juce::String wordsOfUntimed (const WrittenList& list)
{
    const auto number = static_cast<int> (list.events.size()) - rowOf (Content::times).count (list);
    return number == 0
               ? juce::String()
               : juce::String (counted (number, "event without a time gets", "events without a time get"))
                     + " one, a frame before the time origin";
}

struct RemarkRow
{
    Remark remark;
    const char* name;
    juce::String (*words) (const WrittenList&); ///< empty where it doesn't matter to the list
};

constexpr std::array remarkTable {
    RemarkRow { Remark::rate, "frame rates without a name", wordsOfRate },
    RemarkRow { Remark::dropFrame, "drop-frame", wordsOfDropFrame },
    RemarkRow { Remark::action, "time of the first frame of action", wordsOfAction },
    RemarkRow { Remark::untimed, "that an event has no time", wordsOfUntimed },
};

WrittenList writtenList (const DocumentFormat& format, const Project& project, bool hasFileForEachCharacter)
{
    WrittenList list { project, {}, hasFileForEachCharacter };
    const auto& shown = project.list->sortedFilteredEvents;
    std::copy_if (shown.begin(), shown.end(), std::back_inserter (list.events),
                  [&format] (const auto& event) { return format.writes (*event); });
    return list;
}

} // namespace

std::vector<std::string> lostContent (const DocumentFormat& format, const Project& project,
                                      bool hasFileForEachCharacter)
{
    EventArray::Events unwritten;
    const auto& shown = project.list->sortedFilteredEvents;
    std::copy_if (shown.begin(), shown.end(), std::back_inserter (unwritten),
                  [&format] (const auto& event) { return ! format.writes (*event); });
    addTimedFades (unwritten, *project.list);

    auto words = countedByType (unwritten);
    addLost (words, format, writtenList (format, project, hasFileForEachCharacter));
    return words;
}

std::vector<std::string> possibleLosses (const DocumentFormat& format)
{
    if (format.carries.empty())
        return { "everything" };

    std::vector<std::string> names { "timed fades" };

    if (! format.writes (Event()))
        names.emplace_back ("what is no ADR cue");

    for (const auto content : allContent())
        if (! isIn (format.carries, content))
            names.emplace_back (rowOf (content).name);

    for (const auto detail : format.loses)
        names.emplace_back (rowOf (detail).name);

    for (const auto& row : remarkTable)
        if (isIn (format.remarks, row.remark))
            names.emplace_back (row.name);

    return names;
}

void sayWhatIsLost (const std::vector<const DocumentFormat*>& formats, const Project& project,
                    const DocumentOptions& options, const Session& session)
{
    for (const auto* format : formats)
    {
        const bool hasFileForEach = options.hasFileForEachCharacter (*format);

        if (const auto lost = lostContent (*format, project, hasFileForEach); ! lost.empty())
            session.say (juce::String (format->name)
                         + " has no place for everything in this list; it leaves out: " + joined (lost));

        const auto list = writtenList (*format, project, hasFileForEach);

        for (const auto& row : remarkTable)
            if (isIn (format->remarks, row.remark))
                if (const auto words = row.words (list); words.isNotEmpty() && ! list.events.empty())
                    session.say (juce::String (format->name) + ": " + words);
    }
}

} // namespace overmarks
