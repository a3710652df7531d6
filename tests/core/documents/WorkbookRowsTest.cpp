// SPDX-License-Identifier: GPL-3.0-only
// Workbooks of rows that are made one by one: which are asked for, and what becomes of those that change.
#include "core/documents/ExcelFileHandler.h"
#include "support/TemporaryFolder.h"
#include "support/XMLTree.h"
#include "support/ZipArchive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace ZEP::Core;
using namespace ZEP::Overmarks::Testing;

namespace
{

using Cells = std::vector<RichTextString>;
using Rows = std::vector<Cells>;
using Names = std::vector<std::string>;

RichTextString wholly (const juce::String& text, const juce::Font& font)
{
    RichTextString made (text);
    made.applyAttributes ({ { { 0, text.length() }, font, juce::Colour (0xff000000) } });
    return made;
}

RichTextString large (const juce::String& text) { return wholly (text, juce::Font().withHeight (22.0f)); }

auto openFiles() { return std::distance (std::filesystem::directory_iterator ("/proc/self/fd"), {}); }

/** While it lasts, the process may have so many more files open, and none that takes a place beyond them. */
class FewMoreFiles final
{
public:
    explicit FewMoreFiles (int more)
    {
        const int nextFree = ::dup (STDERR_FILENO);
        ::close (nextFree);
        ::getrlimit (RLIMIT_NOFILE, &usual);
        auto fewer = usual;
        fewer.rlim_cur = static_cast<rlim_t> (nextFree + more);
        ::setrlimit (RLIMIT_NOFILE, &fewer);
    }

    FewMoreFiles (const FewMoreFiles&) = delete;
    FewMoreFiles& operator= (const FewMoreFiles&) = delete;
    ~FewMoreFiles() { ::setrlimit (RLIMIT_NOFILE, &usual); }

private:
    rlimit usual {};
};

class RowsOneByOne : public testing::Test
{
protected:
    using Change = std::function<void (Cells& cells, std::size_t row, int times)>;

    /** @param change  what befalls a row that is asked for, the first time and later ones
        @returns the error */
    std::string write (
        const Rows& rows, const Change& change = [] (Cells&, std::size_t, int) {})
    {
        asked.clear();
        std::map<std::size_t, int> times;
        Cells current;
        juce::String error = "left over";
        ExcelFileHandler().writeRows (
            folder.directory() + "/list.xlsx", rows.size(),
            [&] (std::size_t row) -> const Cells&
            {
                asked.push_back (row);
                current = rows[row];
                change (current, row, ++times[row]);
                return current;
            },
            error);
        return error.toStdString();
    }

    std::unique_ptr<pugi::xml_document> writtenSheet()
    {
        return treeOf (partNamed (unzipped (folder.bytes ("list.xlsx")), "xl/worksheets/sheet1.xml"));
    }

    /** Two rows of large letters, and a row below that makes their column wide enough for a line each. */
    const Rows withLargeLetters { { juce::String ("Text") },
                                  { juce::String ("a") },
                                  { large ("large letters") },
                                  { large ("larger letters") },
                                  { juce::String::repeatedString ("wide ", 6) } };

    std::vector<std::size_t> asked;
    TemporaryFolder folder;
};

TEST_F (RowsOneByOne, areAskedForOnceInTheirOrder)
{
    Rows rows { { juce::String ("Text") },
                { juce::String ("a") },
                { juce::String ("a long line"), wholly ("b", juce::Font().boldened()) } };
    EXPECT_EQ (write (rows), "");
    EXPECT_EQ (asked, (std::vector<std::size_t> { 0, 1, 2 }));
    const auto made = folder.bytes ("list.xlsx");
    juce::String error;
    ExcelFileHandler().writeFileContent (folder.directory() + "/list.xlsx", rows, error);
    EXPECT_EQ (error, "");
    EXPECT_EQ (folder.bytes ("list.xlsx"), made);
}

TEST_F (RowsOneByOne, belowLargeLettersAreMeasuredAheadAndOnlyOnce)
{
    EXPECT_EQ (write (withLargeLetters), "");
    EXPECT_EQ (asked, (std::vector<std::size_t> { 0, 1, 2, 3, 4, 2, 3, 4 }));
    const auto sheet = writtenSheet();
    EXPECT_EQ (valuesAt (*sheet, "//row/@ht"), (Names { "30", "30" })) << "a line each";
    EXPECT_EQ (std::stoi (valuesAt (*sheet, "//col/@width").front()), 31);
}

TEST_F (RowsOneByOne, areNotAskedForAheadWhereLargeLettersHaveAllTheirRoom)
{
    EXPECT_EQ (write ({ { juce::String ("Text"), juce::String::repeatedString ("long ", 20) },
                        { large ("four"), large ("as wide as a column ever gets, and then in two lines") },
                        { juce::String ("a") } }),
               "");
    EXPECT_EQ (asked, (std::vector<std::size_t> { 0, 1, 2 }));
    EXPECT_EQ (valuesAt (*writtenSheet(), "//row/@ht"), (Names { "30", "60" }));
}

TEST_F (RowsOneByOne, thatHaveChangedMeanwhileAreWrittenAsTheyCameInTheirTurn)
{
    const auto error = write (withLargeLetters,
                              [] (Cells& cells, std::size_t row, int times)
                              {
                                  if (row == 2 && times == 2)
                                      cells.assign (2, juce::String ("changed"));
                                  if (row == 4 && times == 2)
                                      cells.assign (3, juce::String ("more"));
                              });
    EXPECT_EQ (error, "");
    EXPECT_EQ (valuesAt (*writtenSheet(), "//c/is/t"),
               (Names { "Text", "a", "large letters", "larger letters", "more", "more", "more" }));
}

TEST_F (RowsOneByOne, areRefusedWhereverTheyDoNotFit)
{
    folder.write ("list.xlsx", "older");
    const auto tooLong = [] (std::size_t ofRow, int atTime)
    {
        return [ofRow, atTime] (Cells& cells, std::size_t row, int times)
        {
            if (row == ofRow && times == atTime)
                cells[0] = juce::String::repeatedString ("a", 32768);
        };
    };
    const auto told = [this] (int row)
    {
        const auto number = std::to_string (row);
        return "Can't write " + (folder.directory() + "/list.xlsx").toStdString() + ": the cell A" + number
               + " (row " + number + ", column 1) holds 32768 characters, and a cell has room for 32767";
    };

    const auto before = openFiles();

    EXPECT_EQ (write (withLargeLetters, tooLong (1, 1)), told (2));
    EXPECT_EQ (write (withLargeLetters, tooLong (4, 1)), told (5)) << "measured ahead";
    EXPECT_EQ (write (withLargeLetters, tooLong (2, 2)), told (3)) << "asked for once more";
    EXPECT_EQ (write (withLargeLetters, tooLong (4, 2)), told (5)) << "in its turn";
    EXPECT_EQ (folder.bytes ("list.xlsx"), "older");
    EXPECT_EQ (folder.names(), Names { "list.xlsx" });
    EXPECT_EQ (openFiles(), before) << "which would keep the rows on the disk";
}

TEST_F (RowsOneByOne, leaveNoFileOpenWhereTheyCannotBeFinished)
{
    folder.write ("list.xlsx", "older");
    const auto before = openFiles();
    std::unique_ptr<FewMoreFiles> limit;
    int more = 0;
    const auto writtenWithFew = [&]
    {
        const auto error = write (withLargeLetters,
                                  [&] (Cells&, std::size_t row, int times)
                                  {
                                      if (row == 4 && times == 2)
                                          limit = std::make_unique<FewMoreFiles> (more);
                                  });
        limit.reset();
        return error;
    };

    for (auto error = writtenWithFew(); ! error.empty(); error = writtenWithFew())
    {
        EXPECT_THAT (error, testing::AnyOf (testing::EndsWith (": Too many open files"),
                                            testing::HasSubstr (": no temporary file can be made in ")));
        EXPECT_EQ (folder.bytes ("list.xlsx"), "older") << more;
        EXPECT_EQ (folder.names(), Names { "list.xlsx" }) << more;
        EXPECT_EQ (openFiles(), before) << more;
        ASSERT_LT (++more, 20);
    }

    EXPECT_GT (more, 0);
    EXPECT_EQ (openFiles(), before);
}

} // namespace
