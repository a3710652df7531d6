// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/CSVParser.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <vector>

namespace ZEP::Overmarks
{

class TakerTable;

/** Delimited text, ".csv" and ".tab": the cue list that every program of the trade can write.

    Row 0 of the table holds the file's titles, from which the columns are guessed in English and German; the guess is a
    proposal that the user may correct. The files of two recording tools, DS Taker and EuroTaker, pack a whole take into one
    row; they are told by their titles and unfolded, so that every timed piece of dialogue has a row of its own.

    Text in UTF-16 is read, but never as a file of a recording tool, and its lines and cells are split between bytes.

    The message is added to. On failure `columnMap` stays as it was. */
class OVERMARKS_API CSVEventFileImporter final : public EventFileImporter
{
public:
    /** Reads the file, with the encoding detected. */
    CSVEventFileImporter (const juce::String& path, juce::String& errorMessage);
    ~CSVEventFileImporter() override;

    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;

    /** Fills `columnMap` from the titles in row 0: an entry for every column title, -1 where no column matched. Does nothing
        while there are no rows. */
    void guessMapping();

    /** Gives each piece of dialogue of a DS Taker file a row of its own, and puts the rows in timecode order. Works on `rows`
        alone; a take without markers stays as it is. */
    void parseDSTakerCSV();

    /** Turns the take collected in `pendingLines` and `pendingMarkers` into rows, and puts all rows in timecode order. */
    void processDSTakerMarkers();

    /** Gives each piece of dialogue of a EuroTaker file a row of its own, and puts the rows in timecode order. A new row is
        one cell longer than the row it came from. */
    void parseEuroTakerCSV();

    bool isDSTaker = false;          ///< the titles of a DS Taker file were seen; never cleared
    bool isEuroTaker = false;        ///< the titles of a EuroTaker file were seen; never cleared
    std::int32_t inColumn = -1;      ///< columns of a recording tool's file; -1 if there is none
    std::int32_t outColumn = -1;     ///< -1: none
    std::int32_t takeColumn = -1;    ///< -1: none
    std::int32_t dialogColumn = -1;  ///< -1: none
    std::int32_t speakerColumn = -1; ///< -1: none
    std::vector<std::vector<Core::RichTextString>> pendingLines; ///< lines of the take under work
    juce::StringArray pendingMarkers;                            ///< its markers, each a label and a timecode

private:
    void detectDialect (const CSVParser::Row& titles);
    void unfoldDialect (juce::String& errorMessage);
    [[nodiscard]] bool mayUnfold (std::size_t rowCount, std::size_t cellsPerRow);

    [[nodiscard]] std::int32_t findDSTakerColumns();
    void unfoldPendingTake (TakerTable& table);

    [[nodiscard]] std::vector<std::int32_t> findEuroTakerColumns();
    void unfoldEuroTakerRow (std::size_t index, const std::vector<std::int32_t>& markerColumns);

    std::uint64_t richBytesLeft =
        Core::cappedProduct (CSVParser::kRichTableFactor, CSVParser::limits().spareTableBytes);
    bool unfoldingLimitExceeded = false;
};

} // namespace ZEP::Overmarks
