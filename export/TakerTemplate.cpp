// SPDX-License-Identifier: GPL-3.0-only
#include "export/TakerTemplate.h"

#include "core/text/StringUtil.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"
#include "export/EventCSVCells.h"
#include "export/EventCSVExporter.h"
#include "export/frame/CSVCells.h"
#include "export/frame/LongText.h"

#include <Poco/Any.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;
using ZEP::Core::_TCTime;
using ZEP::Core::StringUtil;
using ZEP::Core::TCToolbox;

namespace
{

/** DS Taker has this many markers for a cue number. */
constexpr int mostMarkers = 4;

/** A row in the making: all events of one cue number. */
struct DSTakerEvent
{
    juce::String take;
    juce::String sub;
    juce::String marker;
    juce::String notes;
    juce::String duration;
    juce::String character;
};

/** From the earliest start to the latest end of a cue's events, and where in it the later ones begin. */
struct CueSpan
{
    _TCTime start;
    _TCTime end;
    juce::StringArray markers {};
    bool overflows = false; ///< there were more events than markers
};

std::int64_t orderOf (const _TCTime& time)
{
    return std::int64_t { time.hours } * 1000000 + time.minutes * 10000 + time.seconds * 100 + time.frames;
}

/** An event without a time is neither earlier nor later than another one. */
bool isEarlier (const _TCTime& a, const _TCTime& b)
{
    return ! a.invalid && (b.invalid || orderOf (a) < orderOf (b));
}

bool isLater (const _TCTime& a, const _TCTime& b)
{
    return ! a.invalid && (b.invalid || orderOf (a) > orderOf (b));
}

CueSpan spanOf (const EventCSVExporter::Events& subcues)
{
    const auto& first = *subcues.front();
    CueSpan span { TCToolbox::tcTimeFromString (first.getStartTCString()),
                   TCToolbox::tcTimeFromString (first.getEndTCString()) };

    for (const auto& event : subcues)
    {
        const auto startText = event->getStartTCString();
        const auto start = TCToolbox::tcTimeFromString (startText);
        const auto end = TCToolbox::tcTimeFromString (event->getEndTCString());

        if (isEarlier (start, span.start))
            span.start = start;

        if (isLater (end, span.end))
            span.end = end;

        if (span.markers.size() == mostMarkers)
            span.overflows = true;
        else if (startText != TCToolbox::stringFromTCTime (span.start, false))
            span.markers.add ("M" + juce::String (span.markers.size() + 1) + " " + startText);
    }

    return span;
}

DSTakerEvent foldedRow (const EventCSVExporter::Events& subcues, const juce::String& cueNumber,
                        const CueSpan& span)
{
    const auto& first = subcues.front();
    const auto character = first->character();
    const auto duration = KV (first).getValueForKey (KV::KV_DurationTCString);
    auto [take, sub] = splitCueNumber (cueNumber);

    return { take,
             sub,
             span.markers.joinIntoString ("/"),
             StringUtil::replaceIllegalASCIICharacters (first->getNotes().getText()),
             Poco::AnyCast<juce::String> (duration),
             character != nullptr ? character->name : juce::String() };
}

/** Quotes stay as they are in everything but the character's name. */
void writeFolded (CSVCells& cells, const juce::String& key, const DSTakerEvent& row, const CueSpan& span,
                  int rowNumber)
{
    if (key == KV::KV_CueNumber)
        cells.quoted (utf8 (row.take));
    else if (key == DSTakerSub)
        cells.quoted (utf8 (row.sub));
    else if (key.isEmpty())
        cells.plain ({});
    else if (key == KV::KV_StartTCString)
        cells.quoted (utf8 (TCToolbox::stringFromTCTime (span.start, false)));
    else if (key == KV::KV_EndTCString)
        cells.quoted (utf8 (TCToolbox::stringFromTCTime (span.end, false)));
    else if (key == DSTakerMarker)
        cells.quoted (utf8 (row.marker));
    else if (key == DSTakerTrack)
        cells.plain (dsTakerTrack (rowNumber));
    else if (key == KV::KV_Notes)
        cells.quoted (utf8 (row.notes), { CSVQuotes::kept, CSVBreaks::lineFeedsToBlanks, false });
    else if (key == KV::KV_DurationTCString)
        cells.quoted (utf8 (row.duration));
    else if (key == KV::KV_CharacterID)
        cells.quoted (utf8 (row.character), { CSVQuotes::doubled, CSVBreaks::kept, false });
}

juce::String overflowQuestion (const std::set<juce::String>& cueNumbers)
{
    std::string text ("There are some cues in your event list with more than four subcues: \n\n");

    for (const auto& number : cueNumbers)
        text.append ("- ").append (utf8 (number)).append ("\n");

    text +=
        "\nDSTaker can only handle four Markers per cue number so these cues will not be represented correctly. "
        "\n\nDo you want to continue?";
    return juce::String (juce::CharPointer_UTF8 (text.c_str()));
}

} // namespace

juce::String dsTakerHeader() { return "Take,Sub,In,Out,Sprecher,Marker,Spur,Anmerkung,Duration\n"; }

std::vector<juce::String> dsTakerColumnKeys()
{
    return { KV::KV_CueNumber, DSTakerSub,   KV::KV_StartTCString, KV::KV_EndTCString,     KV::KV_CharacterID,
             DSTakerMarker,    DSTakerTrack, KV::KV_Notes,         KV::KV_DurationTCString };
}

juce::String euroTakerHeader()
{
    return "TakeNr;In;Out;Typ;Spur;Band;Marker1;Marker2;Rolle;Band (Rolle);Text\n";
}

std::vector<juce::String> euroTakerColumnKeys()
{
    return { KV::KV_CueNumber,   KV::KV_StartTCString, KV::KV_EndTCString, juce::String(),
             EuroTakerSpur,      EuroTakerBand,        EuroTakerMarker1,   EuroTakerMarker2,
             KV::KV_CharacterID, EuroTakerBand,        KV::KV_Text };
}

CueNumberParts splitCueNumber (const juce::String& cueNumber)
{
    juce::StringArray tokens;
    tokens.addTokens (cueNumber, " ", "\"");

    if (tokens.size() < 2 || ! tokens[tokens.size() - 1].containsAnyOf ("XAS"))
        return { cueNumber, {} };

    const auto sub = tokens[tokens.size() - 1];
    tokens.remove (tokens.size() - 1);
    return { tokens.joinIntoString ({}), sub };
}

void EventCSVExporter::createCueBySubcueMap (const Events& events)
{
    cueBySubcueMap.clear();
    maxSubcueCount = 0;

    for (const auto& event : events)
    {
        auto& subcues = cueBySubcueMap[event->getCueNumber()];
        subcues.push_back (event);
        maxSubcueCount = std::max (maxSubcueCount, static_cast<int> (subcues.size()) - 1);
    }
}

bool EventCSVExporter::createCSVLinesForTemplateDSTaker (const Events& events)
{
    createCueBySubcueMap (events);
    const auto separator = delimiterText();
    std::string rows;
    CSVCells cells (rows, utf8 (separator));
    const auto writers = csvCellWritersForKeys (columnKeys);
    const bool forDSTaker = templateNumber() == csvTemplateDSTaker;
    std::set<juce::String> overflowing;
    int rowNumber = 0;

    for (const auto& [cueNumber, subcues] : cueBySubcueMap)
    {
        ++rowNumber;

        if (subcues.size() == 1)
        {
            const CSVCellSource source (subcues.front(), forDSTaker, rowNumber);

            for (const auto writer : writers)
                writer (cells, source);

            // The list's last event ends its row without a break, wherever the row stands.
            if (subcues.front() != events.back())
                rows += '\n';

            continue;
        }

        const auto span = spanOf (subcues);
        const auto row = foldedRow (subcues, cueNumber, span);

        for (const auto& key : columnKeys)
            writeFolded (cells, key, row, span, rowNumber);

        rows += '\n';

        if (span.overflows)
            overflowing.insert (cueNumber);
    }

    LongText (csvString, rows.size()).add (rows);

    if (csvString.endsWithChar ('\n'))
        csvString = csvString.dropLastCharacters (1);

    if (overflowing.empty())
        return true;

    const auto& ask = askToContinue ? askToContinue : Question (askWithMessageBox);
    return ask ("DS ADR CSV Export", overflowQuestion (overflowing));
}

} // namespace ZEP::Overmarks
