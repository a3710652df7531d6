// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/TakerTable.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** One timed piece of the dialogue of a DS Taker take. */
struct DSTakerCSVToken
{
    juce::String marker;        ///< the separator that opens this piece; "none" for the piece at the start
    juce::String speaker;       ///< from the "Sprecher" cell
    juce::String text;          ///< the piece of dialogue
    juce::String startTC;       ///< its start timecode
    juce::String endTC;         ///< from the "Out" cell
    juce::String take;          ///< from the "Take" cell
    std::int32_t lineIndex = 0; ///< the line of the take that it came from
};

/** One take of a DS Taker file: the lines that carry its name, and the markers of its first line.

        Marker  M1 01:00:10:00/M2 01:00:12:00
        Dialog  Where to? (-)  Home. (+)  Where else?

    becomes "Where to?" at the take's start, "Home." at M1 and "Where else?" at M2: the separators stand for the markers in
    their order. Lines after the first go on counting where the line before stopped.

    A view: the lines and markers belong to the caller and have to outlive it. */
class DSTakerTake final
{
public:
    /** Where the titles stand; -1 for a column that the file doesn't have. */
    struct Columns
    {
        std::int32_t in;
        std::int32_t out;
        std::int32_t take;
        std::int32_t dialog;
        std::int32_t speaker;
    };

    using Token = std::shared_ptr<DSTakerCSVToken>;

    DSTakerTake (const std::vector<TakerRow>& takeLines, const juce::StringArray& takeMarkers,
                 const Columns& tableColumns);

    /** The pieces of the dialogue, in the order of lines and separators. */
    [[nodiscard]] std::vector<Token> cutDialogue() const;

    /** The row of one piece: its own times, take, speaker and text, everything else from the line that it came from. */
    [[nodiscard]] TakerRow rowFor (const DSTakerCSVToken& token) const;

private:
    /** Where the walk through the lines of a take stands. */
    struct Walk
    {
        std::vector<Token> tokens;
        int markersConsumed = 0;
    };

    [[nodiscard]] Token makeToken (std::size_t lineIndex, int separatorIndex) const;
    [[nodiscard]] juce::String markerTimecode (int markerIndex) const;

    void cutOnlyLine (Walk& walk) const;
    [[nodiscard]] juce::String textAtStart (const juce::String& dialog) const;
    [[nodiscard]] juce::String textBehindMarker (const juce::String& dialog, int markerIndex) const;

    void cutLine (std::size_t lineIndex, Walk& walk) const;
    [[nodiscard]] bool cutFirstPiece (std::size_t lineIndex, const juce::String& dialog, Walk& walk) const;
    [[nodiscard]] bool cutFurtherPiece (std::size_t lineIndex, const juce::String& dialog, int count,
                                        Walk& walk) const;

    const std::vector<TakerRow>& lines;
    const juce::StringArray& markers;
    Columns columns;
};

} // namespace ZEP::Overmarks
