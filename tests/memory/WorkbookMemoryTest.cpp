// SPDX-License-Identifier: GPL-3.0-only
// What is said of a workbook when the memory is full.
#include "import/ExcelEventFileImporter.h"
#include "memory/MemoryBudget.h"
#include "support/OvermarksTest.h"
#include "support/TemporaryFolder.h"
#include "support/WorkbookParts.h"

#include <gtest/gtest.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

class WorkbookMemoryTest : public OvermarksTest
{
protected:
    /** A workbook that is small, but for the white space behind its only row. */
    std::string workbookOf (std::size_t bytes)
    {
        WorkbookParts book;
        book.sheetData = "<row><c><v>1</v></c></row>" + std::string (bytes, ' ');
        folder.write ("list.xlsx", zipped (book.parts(), ZIP_CM_STORE));
        return (folder.path / "list.xlsx").string();
    }

    TemporaryFolder folder;
};

TEST_F (WorkbookMemoryTest, whenTheMemoryIsTooSmallTheMessageSaysNoMore)
{
    const juce::String path (workbookOf (std::size_t { 48 } << 20));
    juce::String words = "from before";
    const MemoryBudget budget (std::size_t { 24 } << 20);

    const ExcelEventFileImporter failed (path, words);

    EXPECT_EQ (words, "Error parsing the Excel file.");
    EXPECT_TRUE (failed.rows.empty());
}

TEST_F (WorkbookMemoryTest, withEnoughMemoryTheSameWorkbookIsRead)
{
    const juce::String path (workbookOf (std::size_t { 48 } << 20));
    juce::String words;

    const ExcelEventFileImporter read (path, words);

    EXPECT_EQ (words, "");
    EXPECT_EQ (read.rows.size(), 1u);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
