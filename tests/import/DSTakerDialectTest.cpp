// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVEventFileImporter.h"
#include "import/DSTakerTake.h"

#include "import/ImportSupport.h"

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>
#include <Poco/Logger.h>
#include <Poco/Message.h>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace ImportSupport;

namespace
{

const std::vector<std::string> titles { "Take", "In", "Out", "Marker", "Dialog", "Sprecher", "Notes" };

/** Holds the lines of the log. */
class LogOfLines final : public Poco::Channel
{
public:
    void log (const Poco::Message& message) override { lines.push_back (message.getText()); }
    std::vector<std::string> lines;
};

class DSTaker : public testing::Test
{
protected:
    void SetUp() override
    {
        message.clear();
        importer = std::make_unique<CSVEventFileImporter> ("", message);
    }

    /** The table that an unfolded table of data rows comes to, without its titles. */
    TextTable unfolded (const TextTable& data)
    {
        setRows (data);
        importer->parseDSTakerCSV();
        auto table = textsOf (importer->rows);
        EXPECT_EQ (table.front(), titles);
        table.erase (table.begin());
        return table;
    }

    void setRows (const TextTable& data)
    {
        importer->rows.clear();
        append (titles);
        for (const auto& row : data)
            append (row);
    }

    void append (const std::vector<std::string>& row)
    {
        auto& cells = importer->rows.emplace_back();
        for (const auto& text : row)
            cells.emplace_back (juce::String::fromUTF8 (text.c_str()));
    }

    juce::String message;
    std::unique_ptr<CSVEventFileImporter> importer;
};

} // namespace

TEST_F (DSTaker, aMarkerOpensAPieceWithItsOwnTimecode)
{
    EXPECT_EQ (unfolded ({ { "1", "01:00:00:00", "01:00:05:00", "M1 01:00:02:00", "Hello (-)  world", "ANNA",
                             "n" } }),
               (TextTable { { "1", "01:00:00:00", "01:00:05:00", "M1 01:00:02:00", "Hello", "ANNA", "n" },
                            { "1", "01:00:02:00", "01:00:05:00", "M1 01:00:02:00", "world", "ANNA", "n" } }));
}

TEST_F (DSTaker, theFourSeparatorsStandForTheMarkersInTheirOrder)
{
    const auto table =
        unfolded ({ { "1", "a", "z", "M1 b/M2 c/M3 d", "one (-)  two (+)  three (|)  four", "", "" } });
    ASSERT_EQ (table.size(), 4u);
    const TextTable expected { { "a", "one" }, { "b", "two" }, { "c", "three" }, { "d", "four" } };
    for (std::size_t row = 0; row < 4; ++row)
        EXPECT_EQ ((std::vector<std::string> { table[row][1], table[row][4] }), expected[row]);
}

TEST_F (DSTaker, theFourthPieceOfALineComesOutEmpty)
{
    const auto table = unfolded (
        { { "1", "a", "z", "M1 b/M2 c/M3 d/M4 e", "one (-)  two (+)  three (|)  four (*)  five", "", "" } });
    ASSERT_EQ (table.size(), 5u);
    EXPECT_EQ (table[3][4], "four");
    EXPECT_EQ (table[4][1], "e");
    EXPECT_EQ (table[4][4], "");
}

TEST_F (DSTaker, markersBeyondTheFourthHaveATimeAndNoText)
{
    const auto table = unfolded ({ { "1", "a", "z", "M1 b/M2 c/M3 d/M4 e/M5 f", "one (-)  two", "", "" } });
    ASSERT_EQ (table.size(), 6u);
    EXPECT_EQ (table[5][1], "f");
    EXPECT_EQ (table[5][4], "");
}

TEST_F (DSTaker, withoutASeparatorTheFirstRowTakesTheWholeText)
{
    EXPECT_EQ (unfolded ({ { "1", "a", "z", "M1 b", "Hello", "ANNA", "n" } }),
               (TextTable { { "1", "a", "z", "M1 b", "Hello", "ANNA", "n" },
                            { "1", "b", "z", "M1 b", "", "ANNA", "n" } }));
}

TEST_F (DSTaker, onlyTheSecondWordOfAMarkerCounts)
{
    EXPECT_EQ (unfolded ({ { "1", "a", "z", "M1  b/ M2 c extra/lonely", "x", "", "" } }).at (1)[1], "a");
    const auto table = textsOf (importer->rows);
    EXPECT_EQ (table.at (1)[1], ""); // the marker without a second word has no time
    EXPECT_EQ (table.at (3)[1], "b");
    EXPECT_EQ (table.at (4)[1], "c");
}

TEST_F (DSTaker, linesOfATakeGoOnCountingItsMarkers)
{
    EXPECT_EQ (unfolded ({ { "1", "a", "z", "M1 b/M2 c", "one (-)  two", "ANNA", "first" },
                           { "1", "a2", "z2", "", "three (+)  four", "PAUL", "second" } }),
               (TextTable { { "1", "a", "z", "M1 b/M2 c", "one", "ANNA", "first" },
                            { "1", "a", "z2", "", "three", "PAUL", "second" },
                            { "1", "b", "z", "M1 b/M2 c", "two", "ANNA", "first" },
                            { "1", "c", "z2", "", "four", "PAUL", "second" } }));
}

TEST_F (DSTaker, aLineThatOpensWithItsSeparatorHasNoPieceAheadOfIt)
{
    for (const auto* dialog : { " (-)  two", "x (-)  two" })
    {
        const auto table =
            unfolded ({ { "1", "a", "z", "M1 b", dialog, "", "" }, { "1", "a2", "z", "", "end", "", "" } });
        ASSERT_EQ (table.size(), 2u) << dialog;
        EXPECT_EQ (table[0][1], "a2");
        EXPECT_EQ (table[0][4], "end");
        EXPECT_EQ (table[1][1], "b");
        EXPECT_EQ (table[1][4], "two");
    }
}

TEST_F (DSTaker, aLineWithoutTheSeparatorThatIsDueIsOnePieceAtItsOwnTime)
{
    const auto table =
        unfolded ({ { "1", "a", "z", "M1 b", "one", "", "" }, { "1", "a2", "z", "", "two (+)  x", "", "" } });
    ASSERT_EQ (table.size(), 2u);
    EXPECT_EQ (table[0][4], "one");
    EXPECT_EQ (table[1][1], "a2");
    EXPECT_EQ (table[1][4], "two (+)  x");
}

TEST_F (DSTaker, linesBehindTheLastMarkerAreLost)
{
    const auto table = unfolded (
        { { "1", "a", "z", "M1 b", " (-)  one (+)  two", "", "" }, { "1", "a2", "z", "", "gone", "", "" } });
    ASSERT_EQ (table.size(), 1u);
    EXPECT_EQ (table[0][4], "one");
}

TEST_F (DSTaker, oneTakeIsUnfoldedWhenTheNextBegins)
{
    EXPECT_EQ (unfolded ({ { "2", "d", "z", "M1 e", "four (-)  five", "", "" },
                           { "1", "a", "z", "M1 b", "one (-)  two", "", "" },
                           { "1", "c", "z", "", "three", "", "" } }),
               (TextTable { { "1", "a", "z", "M1 b", "one", "", "" },
                            { "1", "b", "z", "M1 b", "two", "", "" },
                            { "1", "c", "z", "", "three", "", "" },
                            { "2", "d", "z", "M1 e", "four", "", "" },
                            { "2", "e", "z", "M1 e", "five", "", "" } }));
}

TEST_F (DSTaker, aTakeWithoutMarkersStaysAsItIs)
{
    const TextTable data { { "1", "a", "z", "", "one (-)  two", "ANNA", "n" } };
    EXPECT_EQ (unfolded (data), data);
}

TEST_F (DSTaker, aMarkerOnALaterLineBeginsItsTakeThere)
{
    EXPECT_EQ (unfolded ({ { "1", "a", "z", "", "plain", "", "" },
                           { "1", "b", "z", "M1 c", "one (-)  two", "", "" } }),
               (TextTable { { "1", "a", "z", "", "plain", "", "" },
                            { "1", "b", "z", "M1 c", "one", "", "" },
                            { "1", "c", "z", "M1 c", "two", "", "" } }));
}

TEST_F (DSTaker, doublesOfALineDisappearWithIt)
{
    const std::vector<std::string> line { "1", "a", "z", "M1 b", "one (-)  two", "", "" };
    const auto table = unfolded ({ line, { "2", "c", "z", "", "other", "", "" }, line });
    ASSERT_EQ (table.size(), 5u);
    EXPECT_EQ (table[0][4], "one");
    EXPECT_EQ (table[1][4], "one");
    EXPECT_EQ (table[2][4], "two");
    EXPECT_EQ (table[3][4], "two");
    EXPECT_EQ (table[4][4], "other");
}

TEST_F (DSTaker, rowsAreInTheOrderOfTheirTimecodesBelowTheTitles)
{
    EXPECT_EQ (unfolded ({ { "2", "02:00:00:00", "", "", "b", "", "" },
                           { "1", "01:00:00:00", "", "", "a", "", "" } }),
               (TextTable { { "1", "01:00:00:00", "", "", "a", "", "" },
                            { "2", "02:00:00:00", "", "", "b", "", "" } }));
}

TEST_F (DSTaker, rowsThatRepeatTheTitlesDoNotUpsetTheOrder)
{
    setRows (TextTable (200, { "Take", "In", "Out", "", "Dialog", "Sprecher", "x" }));
    append ({ "1", "01:00:00:00", "", "", "a", "", "" });
    importer->parseDSTakerCSV();
    EXPECT_EQ (importer->rows.size(), 202u);
    EXPECT_EQ (importer->rows.back()[1].getText(), "01:00:00:00");
}

TEST_F (DSTaker, withoutAMarkerColumnNothingChanges)
{
    append ({ "Take", "In", "Out" });
    append ({ "2", "b", "c" });
    append ({ "1", "a", "b" });
    const auto before = textsOf (importer->rows);
    importer->parseDSTakerCSV();
    EXPECT_EQ (textsOf (importer->rows), before);
    EXPECT_EQ (importer->inColumn, 1);

    importer->rows.clear();
    importer->parseDSTakerCSV();
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (importer->inColumn, -1);
}

TEST_F (DSTaker, dialogAndSpeakerMayBeMissing)
{
    append ({ "Take", "In", "Out", "Marker" });
    append ({ "1", "a", "z", "M1 b" });
    importer->parseDSTakerCSV();
    EXPECT_EQ (textsOf (importer->rows), (TextTable { { "Take", "In", "Out", "Marker" },
                                                      { "1", "a", "z", "M1 b" },
                                                      { "1", "b", "z", "M1 b" } }));
}

TEST_F (DSTaker, rowsOfAnyLengthDoNoHarm)
{
    setRows ({ { "1" },
               {},
               { "1", "a", "z", "M1 b" },
               { "1", "a", "z", "", "x (-)  y", "s", "n", "more", "more" },
               { "2" } });
    importer->parseDSTakerCSV();
    for (const auto& row : textsOf (importer->rows))
        EXPECT_LE (row.size(), 7u);
}

TEST_F (DSTaker, theLogTellsWhatIsBeingUnfolded)
{
    const Poco::AutoPtr<LogOfLines> log (new LogOfLines);
    auto& logger = Poco::Logger::get ("ZEP");
    const Poco::AutoPtr<Poco::Channel> channelBefore (logger.getChannel(), true);
    const auto levelBefore = logger.getLevel();
    logger.setChannel (log);
    logger.setLevel (Poco::Message::PRIO_DEBUG);

    unfolded ({ { "1", "a", "z", "M1 b/M2 c", "Hello", "", "" } });

    logger.setChannel (channelBefore);
    logger.setLevel (levelBefore);
    EXPECT_EQ (log->lines,
               (std::vector<std::string> { "---------------------------------------------------",
                                           "Lines to process: ", "Markers: M1 b, M2 c",
                                           "(1) Warning: Marker TC but no marker separator in text",
                                           "(2) Warning: Marker TC but no marker separator in text",
                                           "(2) Warning: Marker TC but no marker separator in text" }));
}

TEST_F (DSTaker, aTakeThatWasCollectedByHandIsAddedToTheRows)
{
    setRows ({});
    importer->parseDSTakerCSV();
    importer->pendingLines = { { juce::String ("1"), juce::String ("b"), juce::String ("z"),
                                 juce::String (""), juce::String ("two"), juce::String (""),
                                 juce::String ("") } };
    importer->pendingMarkers = { "M1 c" };
    importer->processDSTakerMarkers();
    importer->pendingLines.clear();
    importer->processDSTakerMarkers();
    EXPECT_EQ (importer->rows.size(), 3u);
    EXPECT_EQ (importer->rows[1][1].getText(), "b");
    EXPECT_EQ (importer->rows[2][1].getText(), "c");
}

//==============================================================================
namespace
{

/** The take as it is described: the rule for finding lines and doubles followed to the letter, one walk of the table a line. */
void unfoldSlowly (CSVEventFileImporter& importer)
{
    const auto copy = importer.rows;
    juce::String currentTake;
    importer.pendingLines.clear();
    importer.pendingMarkers.clear();

    const auto collect = [&] (const TakerRow& row)
    {
        importer.pendingLines.push_back (row);
        std::erase (importer.rows, row);
    };

    for (std::size_t index = 1; index < copy.size(); ++index)
    {
        const auto& row = copy[index];
        const auto markers = row[3].getText().replace ("  ", " ");

        if (! importer.pendingMarkers.isEmpty() && row[0].getText() == currentTake)
        {
            collect (row);
            continue;
        }
        if (! importer.pendingMarkers.isEmpty())
        {
            importer.processDSTakerMarkers();
            importer.pendingLines.clear();
            importer.pendingMarkers.clear();
        }
        if (markers.isNotEmpty())
        {
            importer.pendingMarkers.addTokens (markers, "/", "");
            currentTake = row[0].getText();
            importer.pendingLines.clear();
            collect (row);
        }
    }

    if (! importer.pendingLines.empty())
        importer.processDSTakerMarkers();
    sortTakerRows (importer.rows, importer.inColumn);
}

} // namespace

TEST_F (DSTaker, collectingTakesAgreesWithWalkingTheTableForEachLine)
{
    std::mt19937 random (20240301);
    const auto pick = [&random] (const std::vector<std::string>& choices)
    { return choices[random() % choices.size()]; };

    for (int table = 0; table < 2000; ++table)
    {
        TextTable data;
        for (auto rows = random() % 8; rows > 0; --rows)
            data.push_back ({ pick ({ "1", "2", "Take" }), pick ({ "a", "b", "c", "In" }), "z",
                              pick ({ "", "", "M1 b", "M1 b/M2  c", " " }),
                              pick ({ "x", "x (-)  y", " (-)  y", "y (+)  z", "x (-)  y (+)  z" }), "", "" });
        setRows (data);
        importer->parseDSTakerCSV();
        const auto fast = textsOf (importer->rows);
        setRows (data);
        unfoldSlowly (*importer);
        ASSERT_EQ (fast, textsOf (importer->rows)) << testing::PrintToString (data);
    }
}

TEST_F (DSTaker, aSeasonOfTakesIsUnfoldedInNoTime)
{
    TextTable data;
    for (int take = 0; take < 30000; ++take)
    {
        const auto name = std::to_string (take);
        data.push_back ({ name, std::to_string (1000000 + take), "z",
                          "M1 " + std::to_string (1000000 + take) + "x", "one (-)  two", "ANNA", "" });
    }
    EXPECT_EQ (unfolded (data).size(), 60000u);
}

//==============================================================================
TEST_F (DSTaker, aFileOfTheToolIsUnfoldedAsItIsRead)
{
    const CSVEventFileImporter file (dataFile ("taker/ds_taker.csv"), message = {});
    EXPECT_EQ (message, "");
    EXPECT_TRUE (file.isDSTaker);
    EXPECT_FALSE (file.isEuroTaker);
    EXPECT_EQ (textsOf (file.rows),
               (TextTable { { "Take", "In", "Out", "Marker", "Dialog", "Sprecher", "Anmerkung" },
                            { "A2", "01:00:10:00", "01:00:20:00", "M1 01:00:12:00/M2  01:00:15:00",
                              "Where to?", "ANNA", "on" },
                            { "A2", "01:00:12:00", "01:00:20:00", "M1 01:00:12:00/M2  01:00:15:00", "Home.",
                              "ANNA", "on" },
                            { "A2", "01:00:15:00", "01:00:20:00", "M1 01:00:12:00/M2  01:00:15:00",
                              "Where else?", "ANNA", "on" },
                            { "A3", "01:00:22:00", "01:00:30:00", "M1 01:00:24:00/M2 01:00:26:00",
                              "You first.", "PAUL", "two speakers" },
                            { "A3", "01:00:22:00", "01:00:30:00", "", "(laughs)", "ANNA", "" },
                            { "A3", "01:00:24:00", "01:00:30:00", "M1 01:00:24:00/M2 01:00:26:00",
                              "After you.", "PAUL", "two speakers" },
                            { "A3", "01:00:26:00", "01:00:30:00", "", "Fine.", "ANNA", "" },
                            { "A10", "01:00:40:00", "01:00:44:00", "", "Allein.", "ANNA", "ohne Marker" } }));
    EXPECT_EQ (file.columnMap.at ("Cue Number"), 0);
    EXPECT_EQ (file.columnMap.at ("Text"), 4);
    EXPECT_EQ (file.columnMap.at ("Character"), 5);
}

TEST_F (DSTaker, damagedFilesOfTheToolSayWhatIsWrongOrGiveWhatIsThere)
{
    for (const auto* name : { "taker/empty.csv", "taker/bom.csv" })
    {
        message.clear();
        EXPECT_TRUE (CSVEventFileImporter (dataFile (name), message).rows.empty());
        EXPECT_EQ (message, "The CSV file you tried to import doesn't contain any parsable content") << name;
    }

    message.clear();
    const CSVEventFileImporter wrongEncoding (dataFile ("taker/wrong_encoding.csv"), message);
    EXPECT_EQ (message, "");
    EXPECT_EQ (wrongEncoding.encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (wrongEncoding.rows.size(), 9u);

    // The last line is cut inside its markers, and so disagrees with the titles.
    EXPECT_TRUE (CSVEventFileImporter (dataFile ("taker/truncated.csv"), message).rows.empty());
    EXPECT_EQ (message, "The CSV file you tried to import doesn't contain any parsable content");
}
