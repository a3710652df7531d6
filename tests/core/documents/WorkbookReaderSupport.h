// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/ExcelFileHandler.h"
#include "support/TemporaryFolder.h"
#include "support/WorkbookParts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/** What tests of the reading of workbooks share. */
class WorkbookReading : public testing::Test
{
protected:
    using Texts = std::vector<std::vector<std::string>>;
    using Book = ZEP::Overmarks::Testing::WorkbookParts;

    /** Reads a file with these bytes; the words of its failure, empty on success. */
    std::string failureOf (const std::string& bytes)
    {
        folder.write ("list.xlsx", bytes);
        const auto before = rows;
        juce::String error = "from before";
        ZEP::Core::ExcelFileHandler().readFileContent (path(), rows, error);

        if (error.isNotEmpty())
        {
            EXPECT_EQ (rows, before);
        }

        return error.toStdString();
    }

    /** The table of the sheet in front. */
    Texts read (const Book& book)
    {
        EXPECT_EQ (failureOf (book.zipped()), "");
        return texts();
    }

    /** The table of a sheet whose element "sheetData" has this content. */
    Texts readRows (const std::string& sheetData)
    {
        Book book;
        book.sheetData = sheetData;
        return read (book);
    }

    Texts texts() const
    {
        Texts all;

        for (const auto& row : rows)
        {
            auto& cells = all.emplace_back();

            for (const auto& cell : row)
                cells.push_back (cell.getText().toStdString());
        }

        return all;
    }

    /** The formatted runs of a cell, each as "start-end look". */
    std::vector<std::string> runsOf (std::size_t row, std::size_t column) const
    {
        std::vector<std::string> all;

        for (const auto& run : rows.at (row).at (column).formattedRuns())
        {
            auto text = juce::String (run.range.getStart()) + "-" + juce::String (run.range.getEnd());
            text << (run.font.isBold() ? " bold" : "") << (run.font.isItalic() ? " italic" : "")
                 << (run.font.isUnderlined() ? " underlined" : "")
                 << (ZEP::Core::RichTextString::isStruckThrough (run.font) ? " struck" : "");

            if (run.font.getHeight() != ZEP::Core::RichTextString::defaultFont().getHeight())
                text << " " << run.font.getHeight();
            if (run.colour != juce::Colours::black)
                text << " " << run.colour.toString();

            all.push_back (text.toStdString());
        }

        return all;
    }

    juce::String path() const { return folder.directory() + "/list.xlsx"; }

    ZEP::Overmarks::Testing::TemporaryFolder folder;
    std::vector<std::vector<ZEP::Core::RichTextString>> rows;
};
