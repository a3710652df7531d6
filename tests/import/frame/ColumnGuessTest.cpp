// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ColumnGuess.h"

#include "import/frame/EventFileImporter.h"

#include <gtest/gtest.h>
#include <set>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;

namespace
{

std::map<juce::String, int> guessed (const std::vector<juce::String>& titles)
{
    return guessColumns ({ titles.begin(), titles.end() }, columnSynonyms());
}

/** Which column title a header is taken for; empty for none. */
juce::String meaningOf (const juce::String& header)
{
    juce::String meaning;
    for (const auto& [title, column] : guessed ({ "Something else", header }))
    {
        EXPECT_TRUE (column == -1 || column == 1) << header;
        if (column == 1)
            meaning += title;
    }
    return meaning;
}

struct SynonymCase
{
    const char* columnTitle;
    std::vector<const char*> headers;
};

const SynonymCase synonyms[] = {
    { "Start TC",
      { "Start TC", "TC Start", "In TC", "TC In", "Start Timecode", "In Timecode", "Start", "In" } },
    { "End TC", { "End TC", "TC End", "Out TC", "TC Out", "End Timecode", "Out Timecode", "End", "Out" } },
    { "Text", { "Text", "Text Overlay", "Dialog" } },
    { "Character", { "Role", "Character", "Rolle", "Sprecher" } },
    { "Char Prefix", { "Char Prefix" } },
    { "Actor", { "Actor" } },
    { "Cue Number", { "Cue Number", "Cue No", "Clip Number", "Clip No", "TakeNr", "Take" } },
    { "Notes", { "Notes", "Typ", "Sub" } },
    { "Engineering Notes", { "Engineering Notes", "Anmerkung" } },
    { "Event Type", { "Event Type" } },
    { "Streamer Duration", { "Streamer Duration" } },
    { "Enabled", { "Enabled" } },
    { "Number of Takes", { "Number of Takes" } },
    { "BPM", { "BPM" } },
    { "Done", { "Done" } },
    { "Reason", { "Reason" } },
    { "Forced Narrative", { "Forced Narrative" } },
    { "FN Region", { "FN Region" } },
};

class ColumnSynonym : public testing::TestWithParam<SynonymCase>
{
};

} // namespace

TEST_P (ColumnSynonym, isKnownInAnyCaseAndWithQuotesAndBrackets)
{
    for (const juce::String header : GetParam().headers)
        for (const auto& spelling : { header, header.toUpperCase(), header.toLowerCase(), "[" + header + "]",
                                      "\"" + header + "\"", "[\"" + header.toLowerCase() + "\"]" })
            EXPECT_EQ (meaningOf (spelling), GetParam().columnTitle) << spelling;
}

TEST_P (ColumnSynonym, isNotKnownWithBlanksAroundIt)
{
    for (const juce::String header : GetParam().headers)
        for (const auto& spelling : { " " + header, header + " ", header + "s" })
            EXPECT_EQ (meaningOf (spelling), "") << spelling;
}

INSTANTIATE_TEST_SUITE_P (
    Titles, ColumnSynonym, testing::ValuesIn (synonyms),
    [] (const auto& rowOfTable)
    { return juce::String (rowOfTable.param.columnTitle).removeCharacters (" ").toStdString(); });

TEST (ColumnGuess, hasALineForEveryColumnTitleAndNoHeaderTwice)
{
    std::set<juce::String> titles;
    std::set<juce::String> headers;
    for (const auto& line : columnSynonyms())
    {
        titles.insert (line.columnTitle);
        for (const auto& header : line.headers)
            EXPECT_TRUE (headers.insert (header.toLowerCase()).second) << header;
    }

    const auto& offered = EventFileImporter::columnTitles();
    EXPECT_EQ (titles, std::set<juce::String> (offered.begin() + 1, offered.end()));
}

TEST (ColumnGuess, acceptsTheSameHeadersAsTheTableAbove)
{
    ASSERT_EQ (columnSynonyms().size(), std::size (synonyms));
    for (const auto& expected : synonyms)
        for (const auto& line : columnSynonyms())
            if (line.columnTitle == expected.columnTitle)
            {
                const auto count = static_cast<int> (expected.headers.size());
                EXPECT_EQ (line.headers, juce::StringArray (expected.headers.data(), count));
            }
}

TEST (ColumnGuess, takesTheColumnFurtherRightOfTwo)
{
    EXPECT_EQ (guessed ({ "Start", "Text", "In TC" }).at ("Start TC"), 2);
    EXPECT_EQ (guessed ({ "In TC", "Text", "Start" }).at ("Start TC"), 2);
}

TEST (ColumnGuess, leavesWhatItDoesNotKnowUnassigned)
{
    const auto map = guessed ({ "Timing", "", "- unused -", "Startzeit" });
    EXPECT_EQ (map.size(), 18u);
    for (const auto& [title, column] : map)
        EXPECT_EQ (column, -1) << title;
}

TEST (ColumnGuess, looksAtTheTextOfATitleNotAtItsLook)
{
    RichTextString title ("TC In");
    title.setColour (juce::Colours::red);
    EXPECT_EQ (guessColumns ({ title }, columnSynonyms()).at ("Start TC"), 0);
}

TEST (ColumnGuess, aTemplateMayAddHeadersOfItsOwn)
{
    const auto table =
        withMoreSynonyms (columnSynonyms(), { { "Text", { "LINE" } }, { "No such title", { "Text" } } });
    EXPECT_EQ (table.size(), columnSynonyms().size());
    EXPECT_EQ (guessColumns ({ RichTextString ("line") }, table).at ("Text"), 0);
    EXPECT_EQ (guessColumns ({ RichTextString ("Dialog") }, table).at ("Text"), 0);
    EXPECT_EQ (meaningOf ("line"), "");
}
