// SPDX-License-Identifier: GPL-3.0-only
#include "import/DSTakerTake.h"

#include "core/system/Logger.h"

#include <iterator>

namespace ZEP::Overmarks
{
namespace
{

constexpr int notFound = -1;

/** What stands in the dialogue where a marker's piece begins, in the order of the markers. */
constexpr const char* separators[] = { " (-)  ", " (+)  ", " (|)  ", " (*)  " };

bool hasSeparator (int index) { return index >= 0 && index < static_cast<int> (std::size (separators)); }

juce::String separatorAt (int index) { return hasSeparator (index) ? separators[index] : ""; }

/** Position of a separator in the dialogue; a separator that doesn't exist isn't found. */
int findSeparator (const juce::String& dialog, int index)
{
    return hasSeparator (index) ? dialog.indexOf (separators[index]) : notFound;
}

/** Position of what ends a piece. Behind the last separator there is nothing to look for, which is found at the very start: so
    the piece of a fourth marker comes out empty. */
int findNextSeparator (const juce::String& dialog, int index)
{
    return hasSeparator (index) ? dialog.indexOf (separators[index]) : 0;
}

} // namespace

DSTakerTake::DSTakerTake (const std::vector<TakerRow>& takeLines, const juce::StringArray& takeMarkers,
                          const Columns& tableColumns)
    : lines (takeLines),
      markers (takeMarkers),
      columns (tableColumns)
{
}

std::vector<DSTakerTake::Token> DSTakerTake::cutDialogue() const
{
    Walk walk;

    if (lines.size() == 1)
        cutOnlyLine (walk);
    else
        for (std::size_t lineIndex = 0; lineIndex < lines.size(); ++lineIndex)
            cutLine (lineIndex, walk);

    return walk.tokens;
}

TakerRow DSTakerTake::rowFor (const DSTakerCSVToken& token) const
{
    auto row = lines[static_cast<std::size_t> (token.lineIndex)];
    row.resize (lines.front().size());

    const auto put = [&] (std::int32_t column, const juce::String& text)
    {
        if (column >= 0 && static_cast<std::size_t> (column) < row.size())
            row[static_cast<std::size_t> (column)] = text;
    };

    put (columns.dialog, token.text);
    put (columns.speaker, token.speaker);
    put (columns.take, token.take);
    put (columns.out, token.endTC);
    put (columns.in, token.startTC);
    return row;
}

/** A token with all that comes from its line; text and start are still open. */
DSTakerTake::Token DSTakerTake::makeToken (std::size_t lineIndex, int separatorIndex) const
{
    const auto& line = lines[lineIndex];
    auto token = std::make_shared<DSTakerCSVToken>();
    token->marker = separatorIndex < 0 ? juce::String ("none") : separatorAt (separatorIndex);
    token->speaker = takerCellText (line, columns.speaker);
    token->endTC = takerCellText (line, columns.out);
    token->take = takerCellText (line, columns.take);
    token->lineIndex = static_cast<std::int32_t> (lineIndex);
    return token;
}

/** A marker is a label and a timecode: the second word counts. */
juce::String DSTakerTake::markerTimecode (int markerIndex) const
{
    auto words = juce::StringArray::fromTokens (markers[markerIndex], " ", "");
    words.removeEmptyStrings (false);
    return words[1];
}

//==============================================================================
void DSTakerTake::cutOnlyLine (Walk& walk) const
{
    const auto& dialog = takerCellText (lines.front(), columns.dialog);

    for (int markerIndex = -1; markerIndex < markers.size(); ++markerIndex)
    {
        const auto token = makeToken (0, markerIndex);
        const bool atStart = markerIndex < 0;
        token->text = atStart ? textAtStart (dialog) : textBehindMarker (dialog, markerIndex);
        token->startTC = atStart ? takerCellText (lines.front(), columns.in) : markerTimecode (markerIndex);
        walk.tokens.push_back (token);
    }
}

juce::String DSTakerTake::textAtStart (const juce::String& dialog) const
{
    const auto end = findNextSeparator (dialog, 0);
    if (end != notFound)
        return dialog.substring (0, end);

    Core::Logger::debug ("(1) Warning: Marker TC but no marker separator in text");
    return dialog;
}

juce::String DSTakerTake::textBehindMarker (const juce::String& dialog, int markerIndex) const
{
    const auto separator = findSeparator (dialog, markerIndex);
    if (separator == notFound)
    {
        Core::Logger::debug ("(2) Warning: Marker TC but no marker separator in text");
        return {};
    }

    const auto begin = separator + separatorAt (markerIndex).length();
    const auto end = findNextSeparator (dialog, markerIndex + 1);
    return end == notFound ? dialog.substring (begin) : dialog.substring (begin, end);
}

//==============================================================================
void DSTakerTake::cutLine (std::size_t lineIndex, Walk& walk) const
{
    if (walk.markersConsumed > markers.size())
        return;

    const auto& dialog = takerCellText (lines[lineIndex], columns.dialog);
    auto count = walk.markersConsumed;
    bool goOn = cutFirstPiece (lineIndex, dialog, walk);

    while (goOn && ++count <= markers.size())
        goOn = cutFurtherPiece (lineIndex, dialog, count, walk);
}

/** What stands ahead of the separator that is due. False when that separator isn't there: the line is one piece. */
bool DSTakerTake::cutFirstPiece (std::size_t lineIndex, const juce::String& dialog, Walk& walk) const
{
    const auto separator = findSeparator (dialog, walk.markersConsumed);
    const auto token = makeToken (lineIndex, walk.markersConsumed - 1);

    if (separator == notFound)
    {
        token->text = dialog;
        token->marker = "none";
        token->startTC = takerCellText (lines[lineIndex], columns.in);
        walk.tokens.push_back (token);
        return false;
    }

    ++walk.markersConsumed;

    if (separator > 1) // else the line opens with the separator, and nothing stands ahead of it
    {
        token->text = dialog.substring (0, separator);
        token->startTC = takerCellText (lines.front(), columns.in);
        walk.tokens.push_back (token);
    }

    return true;
}

/** What stands behind the separator of marker `count`, counted from 1. False when it reaches to the end of the line. */
bool DSTakerTake::cutFurtherPiece (std::size_t lineIndex, const juce::String& dialog, int count,
                                   Walk& walk) const
{
    const auto separator = findSeparator (dialog, count - 1);
    const auto next = findSeparator (dialog, count);

    if (separator == notFound)
    {
        Core::Logger::debug ("(3) We shouldn't get here");
        return true;
    }

    const auto token = makeToken (lineIndex, count - 1);
    const auto begin = separator + separatorAt (count - 1).length();
    token->startTC = markerTimecode (count - 1);
    token->text = next == notFound ? dialog.substring (begin) : dialog.substring (begin, next);
    walk.tokens.push_back (token);

    if (next == notFound)
        return false;

    ++walk.markersConsumed;
    return true;
}

} // namespace ZEP::Overmarks
