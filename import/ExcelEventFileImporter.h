// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** Workbooks, ".xlsx": the cue list as a studio keeps it in a spreadsheet. The sheet in front is read.

    Row 0 of the table holds the sheet's titles, from which the columns are guessed: by the headers of delimited text, and those
    of the trade's templates. The guess is a proposal that the user may correct. Cells have the attributes of their text.

    The message is replaced on failure, and not touched on success. A failure leaves `rows` and `columnMap` as they were. */
class OVERMARKS_API ExcelEventFileImporter final : public EventFileImporter
{
public:
    /** Reads the file. */
    ExcelEventFileImporter (const juce::String& path, juce::String& errorMessage);
    ~ExcelEventFileImporter() override;

    /** Reads the sheet in front.
        @param textEncoding  plays no part: a workbook says what it is */
    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;

    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;

    /** Reads another sheet in place of the one in front.
        @param sheet  its name; upper and lower case are one */
    void parseSheet (const juce::String& sheet, juce::String& errorMessage);

    /** Fills `columnMap` from the titles in row 0: an entry for every column title, -1 where no column matched. Does nothing
        while there are no rows. */
    void guessMapping();
};

} // namespace ZEP::Overmarks
