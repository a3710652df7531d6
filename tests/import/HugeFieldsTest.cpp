// SPDX-License-Identifier: GPL-3.0-only
// A whole scene pasted into one cell: the formats of text without a limit of their own keep it, and the cue after it too.
#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace ImportSupport;
using ZEP::Overmarks::EventFileImporterFactory;

namespace
{

class HugeFields : public ZEP::Overmarks::Testing::OvermarksTest,
                   public testing::WithParamInterface<const char*>
{
};

} // namespace

TEST_P (HugeFields, areKeptWhole)
{
    juce::String message;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
        juce::String (dataFile (GetParam())), message, {}, {});
    ASSERT_NE (importer, nullptr);
    EXPECT_EQ (message, "");

    const auto table = textsOf (importer->rows);
    const auto rowsWith = [&table] (const std::string& text)
    {
        return std::count_if (table.begin(), table.end(),
                              [&text] (const auto& row)
                              { return std::find (row.begin(), row.end(), text) != row.end(); });
    };
    EXPECT_EQ (rowsWith (std::string (60000, 'x')), 1);
    EXPECT_EQ (rowsWith ("Out."), 1);
}

INSTANTIATE_TEST_SUITE_P (
    Formats, HugeFields,
    testing::Values ("csv/huge_field.csv", "srt/huge_field.srt", "textstl/huge_field.stl",
                     "taker/huge_field.csv"),
    [] (const auto& format)
    { return std::string (format.param).substr (0, std::string (format.param).find ('/')); });
