// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventCSVCells.h"

#include "core/cast/ADRCharacterMap.h"
#include "core/text/StringUtil.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"
#include "export/TakerTemplate.h"
#include "export/frame/CellTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;
using ZEP::Core::ADRCharacter;
using ZEP::Core::RichTextString;
using ZEP::Core::StringUtil;

namespace
{

using TimecodeText = std::array<char, ZEP::Core::TCToolbox::longestTimecode>;

constexpr CSVTextRule doubledQuotes { CSVQuotes::doubled, CSVBreaks::kept, false };
constexpr CSVTextRule oneLine { CSVQuotes::doubled, CSVBreaks::toBlanks, false };
constexpr CSVTextRule oneLineWithoutQuotes { CSVQuotes::removed, CSVBreaks::toBlanks, false };
constexpr CSVTextRule oneLineWithoutStars { CSVQuotes::doubled, CSVBreaks::toBlanks, true };

void writeCleaned (CSVCells& cells, const RichTextString& text, CSVTextRule rule)
{
    const auto& written = text.getText();

    // Nearly no text has any, and the others aren't even copied: to count who holds a text is to write to it.
    if (StringUtil::hasIllegalASCIICharacters (written))
        cells.quoted (utf8 (StringUtil::replaceIllegalASCIICharacters (written)), rule);
    else
        cells.quoted (utf8 (written), rule);
}

void writeText (CSVCells& cells, const CSVCellSource& source)
{
    writeCleaned (cells, source.event->getText(), oneLineWithoutStars);
}

void writeNotes (CSVCells& cells, const CSVCellSource& source)
{
    writeCleaned (cells, source.event->getNotes(), source.forDSTaker ? oneLineWithoutQuotes : oneLine);
}

void writeEngineeringNotes (CSVCells& cells, const CSVCellSource& source)
{
    writeCleaned (cells, source.event->getEngineeringNotes(), oneLine);
}

void writeStart (CSVCells& cells, const CSVCellSource& source)
{
    TimecodeText text;
    cells.quoted ({ text.data(), source.event->writeStartTC (text.data()) });
}

void writeEnd (CSVCells& cells, const CSVCellSource& source)
{
    TimecodeText text;
    cells.quoted ({ text.data(), source.event->writeEndTC (text.data()) });
}

/** Unlike an event's own cells, these tell of the character whatever the type of the event. */
template <auto Member>
void writeOfCharacter (CSVCells& cells, const CSVCellSource& source)
{
    if (source.character != nullptr)
        cells.quoted (utf8 ((*source.character).*Member), doubledQuotes);
    else
        cells.quoted ({});
}

/** DS Taker keeps the letters of a subcue in a column of its own. */
CueNumberParts takerNumber (const CSVCellSource& source)
{
    return splitCueNumber (source.event->getCueNumber().replace ("\"", "\"\""));
}

void writeCueNumber (CSVCells& cells, const CSVCellSource& source)
{
    if (source.forDSTaker)
        cells.quoted (utf8 (takerNumber (source).take));
    else
        cells.quoted (utf8 (source.event->getCueNumber()), doubledQuotes);
}

void writeSub (CSVCells& cells, const CSVCellSource& source)
{
    cells.quoted (utf8 (takerNumber (source).sub));
}

void writeTrack (CSVCells& cells, const CSVCellSource& source)
{
    cells.plain (dsTakerTrack (source.trackNumber));
}

void writeDone (CSVCells& cells, const CSVCellSource& source)
{
    cells.quoted (CellTexts::yesOrNo (source.event->isDone()));
}

void writeEnabled (CSVCells& cells, const CSVCellSource& source)
{
    cells.plain (CellTexts::yesOrNo (source.event->isEnabled()));
}

void writeType (CSVCells& cells, const CSVCellSource& source)
{
    cells.plain (utf8 (source.event->typeString()));
}

void writeStreamerDuration (CSVCells& cells, const CSVCellSource& source)
{
    cells.number (source.event->getStreamerDuration());
}

void writeTakes (CSVCells& cells, const CSVCellSource& source)
{
    cells.number (source.event->getNumRecordedTakes());
}

void writeTempo (CSVCells& cells, const CSVCellSource& source)
{
    using Limits = std::numeric_limits<int>;
    const auto tempo = static_cast<double> (source.event->getBeatsPerMinute());
    // A damaged project may hold any float.
    const auto whole = std::isnan (tempo) ? 0.0 : std::clamp<double> (tempo, Limits::min(), Limits::max());
    cells.number (static_cast<int> (whole));
}

void writeDuration (CSVCells& cells, const CSVCellSource& source)
{
    cells.quoted (utf8 (CellTexts::duration (source.event)));
}

void writeReason (CSVCells& cells, const CSVCellSource& source)
{
    cells.quoted (utf8 (CellTexts::reason (source.event)));
}

void writeForcedNarrative (CSVCells& cells, const CSVCellSource& source)
{
    cells.plain (source.event->isForcedNarrative() ? "FN" : "");
}

/** The last column of its table. */
void writeRegion (CSVCells& cells, const CSVCellSource& source)
{
    cells.last (CellTexts::region (source.event->getForcedNarrativeRegion()));
}

void writeNothing (CSVCells& cells, const CSVCellSource&) { cells.plain ({}); }

const std::unordered_map<juce::String, CSVCellWriter>& writers()
{
    static const std::unordered_map<juce::String, CSVCellWriter> table {
        { KV::KV_StartTCString, writeStart },
        { KV::KV_EndTCString, writeEnd },
        { KV::KV_Text, writeText },
        { KV::KV_CharacterID, writeOfCharacter<&ADRCharacter::name> },
        { KV::KV_CharPrefix, writeOfCharacter<&ADRCharacter::prefix> },
        { KV::KV_Actor, writeOfCharacter<&ADRCharacter::actor> },
        { KV::KV_CueNumber, writeCueNumber },
        { DSTakerSub, writeSub },
        { DSTakerTrack, writeTrack },
        { KV::KV_Done, writeDone },
        { KV::KV_Notes, writeNotes },
        { KV::KV_EngineeringNotes, writeEngineeringNotes },
        { KV::KV_Type, writeType },
        { KV::KV_StreamerDuration, writeStreamerDuration },
        { KV::KV_Enabled, writeEnabled },
        { KV::KV_NumRecordedTakes, writeTakes },
        { KV::KV_BeatsPerMinute, writeTempo },
        { KV::KV_DurationTCString, writeDuration },
        { KV::KV_Reason, writeReason },
        { KV::KV_IsForcedNarrative, writeForcedNarrative },
        { KV::KV_ForcedNarrativeRegion, writeRegion },
    };
    return table;
}

} // namespace

CSVCellSource::CSVCellSource (const std::shared_ptr<Event>& cellEvent, bool isForDSTaker, int rowNumber)
    : event (cellEvent),
      character (cellEvent->character()),
      forDSTaker (isForDSTaker),
      trackNumber (rowNumber)
{
}

CSVCellWriter csvCellWriterForKey (const juce::String& key)
{
    const auto found = writers().find (key);
    return found != writers().end() ? found->second : writeNothing;
}

std::vector<CSVCellWriter> csvCellWritersForKeys (const std::vector<juce::String>& keys)
{
    std::vector<CSVCellWriter> columns;

    for (const auto& key : keys)
        columns.push_back (csvCellWriterForKey (key));

    return columns;
}

const char* dsTakerTrack (int rowNumber) noexcept { return rowNumber % 2 != 0 ? "1" : "2"; }

} // namespace ZEP::Overmarks
