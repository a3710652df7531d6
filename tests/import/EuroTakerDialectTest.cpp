// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVEventFileImporter.h"

#include "import/ImportSupport.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using namespace ImportSupport;

namespace
{

const std::vector<std::string> titles { "TakeNr", "In", "Out", "Marker1", "Marker2", "Text", "Rolle" };

class EuroTaker : public testing::Test
{
protected:
    /** What a table with these titles comes to, without the titles. */
    TextTable unfolded (const std::vector<std::string>& titleRow, const TextTable& data)
    {
        importer.rows.clear();
        append (titleRow);
        for (const auto& row : data)
            append (row);

        importer.parseEuroTakerCSV();
        auto table = textsOf (importer.rows);
        EXPECT_EQ (table.front(), titleRow);
        table.erase (table.begin());
        return table;
    }

    TextTable unfolded (const TextTable& data) { return unfolded (titles, data); }

    void append (const std::vector<std::string>& row)
    {
        auto& cells = importer.rows.emplace_back();
        for (const auto& text : row)
            cells.emplace_back (juce::String::fromUTF8 (text.c_str()));
    }

    juce::String message;
    CSVEventFileImporter importer { "", message };
};

} // namespace

TEST_F (EuroTaker, eachMarkerColumnOpensAPiece)
{
    EXPECT_EQ (unfolded ({ { "1", "01:00:00:00", "z", "01:00:01:00", "01:00:02:00", "A(X)B(X)C", "ANNA" } }),
               (TextTable { { "1", "01:00:00:00", "z", "01:00:01:00", "01:00:02:00", "A", "ANNA" },
                            { "1", "01:00:01:00", "z", "01:00:01:00", "", "B", "ANNA", "ADR Cue" },
                            { "1", "01:00:02:00", "z", "", "01:00:02:00", "C", "ANNA", "ADR Cue" } }));
}

TEST_F (EuroTaker, aMarkerWithoutASeparatorInTheTextHasNoText)
{
    EXPECT_EQ (unfolded ({ { "1", "a", "z", "b", "", "Hello", "ANNA" } }),
               (TextTable { { "1", "a", "z", "b", "", "Hello", "ANNA" },
                            { "1", "b", "z", "b", "", "", "ANNA", "ADR Cue" } }));
}

TEST_F (EuroTaker, aMarkerColumnThatIsNotSetSkipsItsPiece)
{
    const auto table = unfolded ({ { "1", "a", "z", "", "c", "A(X)B(X)C", "ANNA" } });
    ASSERT_EQ (table.size(), 2u);
    EXPECT_EQ (table[0][5], "A");
    EXPECT_EQ (table[1][1], "c");
    EXPECT_EQ (table[1][5], "C");
}

TEST_F (EuroTaker, piecesWithoutAMarkerAreLost)
{
    const auto table = unfolded ({ { "1", "a", "z", "b", "", "A(X)B(X)C(X)D", "ANNA" } });
    ASSERT_EQ (table.size(), 2u);
    EXPECT_EQ (table[0][5], "A");
    EXPECT_EQ (table[1][5], "B");
}

TEST_F (EuroTaker, aTextThatOpensOrEndsWithASeparatorHasEmptyPieces)
{
    const auto table = unfolded ({ { "1", "a", "z", "b", "c", "(X)B(X)", "ANNA" } });
    ASSERT_EQ (table.size(), 3u);
    EXPECT_EQ (table[0][5], "");
    EXPECT_EQ (table[1][5], "B");
    EXPECT_EQ (table[2][5], "");
}

TEST_F (EuroTaker, aRowWithoutMarkersStaysButForTheTextBehindItsFirstPiece)
{
    EXPECT_EQ (unfolded ({ { "1", "a", "z", "", "", "Alone (x)", "ANNA" },
                           { "2", "b", "z", "", "", "Ä(X)B", "ANNA" } }),
               (TextTable { { "1", "a", "z", "", "", "Alone (x)", "ANNA" },
                            { "2", "b", "z", "", "", "Ä", "ANNA" } }));
}

TEST_F (EuroTaker, anyTitleWithTheWordMarkerIsAMarkerColumn)
{
    const auto table = unfolded ({ "Out", "2. Marker", "Text", "marker", "In", "TakeNr" },
                                 { { "z", "b", "A(X)B", "no", "a", "1" } });
    EXPECT_EQ (table, (TextTable { { "z", "b", "A", "no", "a", "1" },
                                   { "z", "b", "B", "no", "b", "1", "ADR Cue" } }));
    EXPECT_EQ (importer.outColumn, 0);
    EXPECT_EQ (importer.dialogColumn, 2);
    EXPECT_EQ (importer.inColumn, 4);
    EXPECT_EQ (importer.takeColumn, 5);
}

TEST_F (EuroTaker, theTextColumnMayBeMissing)
{
    EXPECT_EQ (unfolded ({ "TakeNr", "In", "Out", "Marker" }, { { "1", "a", "z", "b" } }),
               (TextTable { { "1", "a", "z", "b" }, { "1", "b", "z", "b", "ADR Cue" } }));
    EXPECT_EQ (importer.dialogColumn, -1);
}

TEST_F (EuroTaker, rowsOfAnyLengthDoNoHarm)
{
    EXPECT_EQ (unfolded ({ {}, { "1" }, { "1", "a", "z", "b" }, { "1", "c", "z", "", "", "x", "y", "more" } })
                   .size(),
               5u);
}

TEST_F (EuroTaker, anEmptyTableStaysEmpty)
{
    importer.rows.clear();
    importer.parseEuroTakerCSV();
    EXPECT_TRUE (importer.rows.empty());
}

TEST_F (EuroTaker, aFileOfTheToolIsUnfoldedAndSortedAsItIsRead)
{
    const CSVEventFileImporter file (dataFile ("taker/euro_taker.csv"), message = {});
    EXPECT_EQ (message, "");
    EXPECT_TRUE (file.isEuroTaker);
    EXPECT_FALSE (file.isDSTaker);
    EXPECT_EQ (
        textsOf (file.rows),
        (TextTable { titles,
                     { "1", "01:00:00:00", "01:00:05:00", "01:00:01:00", "01:00:02:00", "A", "ANNA" },
                     { "1", "01:00:01:00", "01:00:05:00", "01:00:01:00", "", "B", "ANNA", "ADR Cue" },
                     { "1", "01:00:02:00", "01:00:05:00", "", "01:00:02:00", "C", "ANNA", "ADR Cue" },
                     { "2", "01:00:20:00", "01:00:25:00", "01:00:22:00", "", "Left", "PAUL" },
                     { "2", "01:00:22:00", "01:00:25:00", "01:00:22:00", "", "right", "PAUL", "ADR Cue" },
                     { "3", "01:00:30:00", "01:00:31:00", "", "", "Alone", "PAUL" } }));
    EXPECT_EQ (file.columnMap.at ("Cue Number"), 0);
    EXPECT_EQ (file.columnMap.at ("Start TC"), 1);
}

TEST_F (EuroTaker, aListInUTF16IsNeitherKnownNorUnfolded)
{
    std::string bytes = "\xff\xfe";
    for (const char letter : std::string ("TakeNr,In,Out,Marker\n1,01:00:00:00,01:00:05:00,01:00:01:00\n"))
        bytes += { letter, '\0' };

    TemporaryFolder folder;
    const CSVEventFileImporter file (folder.file ("list.csv", bytes), message = {});
    EXPECT_EQ (message, "");
    EXPECT_FALSE (file.isEuroTaker);
    EXPECT_EQ (textsOf (file.rows), (TextTable { { "TakeNr", "In", "Out", "Marker" },
                                                 { "1", "01:00:00:00", "01:00:05:00", "01:00:01:00" } }));
}
