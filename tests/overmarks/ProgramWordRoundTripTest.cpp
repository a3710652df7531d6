// SPDX-License-Identifier: GPL-3.0-only
// Word cue sheets with the real docxHandler, as it was built: written, read again, and the same.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <thread>

using nlohmann::ordered_json;
using testing::HasSubstr;

namespace
{

using Names = std::vector<std::string>;

constexpr auto project = R"json({"overmarks": 1,
  "characters": [{"id": "a", "name": "ANNA", "actor": "B. Miller"}, {"id": "s", "name": "Smith, J/R \"x\" $(y)"}],
  "events": [
    {"type": 8, "cueNumber": "A1", "characterID": "a", "inPointFrameIndex": 50, "endFrameIndex": 100, "reason": 4,
     "text": {"text": "Hello, you\nand you?", "runs": [{"start": 0, "end": 5, "bold": true, "height": 16.0},
       {"start": 7, "end": 10, "italic": true, "underlined": true, "colour": "ffff0000", "height": 16.0}]},
     "notes": "softly\nor not", "engineeringNotes": "boom", "numRecordedTakes": 3, "selectedTake": 1, "altTake": 2},
    {"type": 8, "cueNumber": "S1", "characterID": "s", "inPointFrameIndex": 137, "endFrameIndex": 175,
     "text": "<&> \"quoted\" Jäger 日本 🎬", "isForcedNarrative": true, "forcedNarrativeRegion": 1},
    {"type": 8, "cueNumber": "A2", "characterID": "a", "inPointFrameIndex": 200, "endFrameIndex": 225,
     "text": ""}]})json";

/** The rows that an importer sees, with the looks of the text. */
class WordRoundTrip : public ProgramTest
{
protected:
    WordRoundTrip() { write ("x.json", project); }

    ordered_json rowsOf (const std::string& name) const
    {
        const auto result = run ({ "rows", name, "--json", "--rich" });
        EXPECT_EQ (result.status, 0) << result.errors;
        return result.json()["rows"];
    }

    static Names textsOf (const ordered_json& row)
    {
        Names texts;
        for (const auto& cell : row)
            texts.push_back (cell["text"]);
        return texts;
    }
};

} // namespace

TEST_F (WordRoundTrip, cuesComeBackAsTheyWere)
{
    ASSERT_EQ (run ({ "convert", "x.json", "y.docx" }).status, 0);
    const auto rows = rowsOf ("y.docx");
    ASSERT_EQ (rows.size(), 3u);
    const auto reason = run ({ "rows", "y.docx", "--json" }).json()["rows"][0][7].get<std::string>();
    EXPECT_EQ (textsOf (rows[0]), (Names { "00:00:02:00", "00:00:04:00", "ANNA", "Hello, you\nand you?", "A1",
                                           "softly\nor not", "boom", reason, "No", "" }));
    EXPECT_NE (reason, "");
    EXPECT_EQ (textsOf (rows[1]), (Names { "00:00:05:12", "00:00:07:00", "Smith, J/R \"x\" $(y)",
                                           "<&> \"quoted\" Jäger 日本 🎬", "S1", "", "", "", "Yes", "Top" }));
    EXPECT_EQ (textsOf (rows[2]),
               (Names { "00:00:08:00", "00:00:09:00", "ANNA", "", "A2", "", "", "", "No", "" }));
}

TEST_F (WordRoundTrip, looksComeBack)
{
    ASSERT_EQ (run ({ "convert", "x.json", "y.docx" }).status, 0);
    const auto runs = rowsOf ("y.docx")[0][3]["runs"];
    ASSERT_EQ (runs.size(), 2u) << runs.dump();
    EXPECT_EQ (runs[0]["start"], 0);
    EXPECT_EQ (runs[0]["end"], 5);
    EXPECT_EQ (runs[0]["bold"], true);
    EXPECT_EQ (runs[1]["start"], 7);
    EXPECT_EQ (runs[1]["end"], 10);
    EXPECT_EQ (runs[1]["italic"], true);
    EXPECT_EQ (runs[1]["underlined"], true);
    EXPECT_EQ (runs[1]["colour"], "ffff0000");
}

TEST_F (WordRoundTrip, takesAndLayoutsAreNoCues)
{
    for (const auto* layout : { "director", "actor", "engineer" })
    {
        ASSERT_EQ (
            run ({ "convert", "x.json", "y.docx", "--force", "--take-numbers", "--layout", layout }).status,
            0);
        const auto rows = rowsOf ("y.docx");
        ASSERT_EQ (rows.size(), 3u) << layout;
        EXPECT_EQ (rows[0][3]["text"], "Hello, you\nand you?") << layout;
        EXPECT_EQ (rows[2][3]["text"], "") << layout;
    }
}

TEST_F (WordRoundTrip, eachCharacterHasItsOwnCues)
{
    file ("out").createDirectory();
    ASSERT_EQ (run ({ "export", "x.json", "-o", "out", "--format", "docx", "--by-character" }).status, 0);
    EXPECT_EQ (rowsOf ("out/x_ANNA.docx").size(), 2u);
    EXPECT_EQ (rowsOf ("out/x_Smith  J_R \"x\" $(y).docx").size(), 1u);
}

TEST_F (WordRoundTrip, aCombinedDocumentHoldsThemAll)
{
    file ("out").createDirectory();
    ASSERT_EQ (
        run ({ "export", "x.json", "-o", "out", "--format", "docx", "--by-character", "--combine" }).status,
        0);
    const auto rows = rowsOf ("out/x.docx");
    ASSERT_EQ (rows.size(), 3u);
    EXPECT_EQ (rows[1][4]["text"], "A2") << "in the order of the characters";
}

TEST_F (WordRoundTrip, anEmptyListIsADocumentWithoutCues)
{
    write ("none.json", R"({"overmarks": 1})");
    ASSERT_EQ (run ({ "convert", "none.json", "y.docx" }).status, 0);
    const auto result = run ({ "list", "y.docx", "--json" });
    EXPECT_EQ (result.status, 1) << "it holds no cues";
}

TEST_F (WordRoundTrip, whatIsNoWordDocumentIsToldInTheWordsOfTheTool)
{
    for (const auto& bytes : { std::string(), std::string ("PK\x03\x04 nonsense"), std::string (5000, 'x') })
    {
        write ("y.docx", bytes);
        const auto result = run ({ "rows", "y.docx", "--json" });
        EXPECT_EQ (result.status, 1);
        const auto document = ordered_json::parse (result.output, nullptr, false);
        ASSERT_TRUE (document.is_object()) << result.output;
        EXPECT_THAT (document.value ("error", ""), HasSubstr ("y.docx"));
    }
}

TEST_F (WordRoundTrip, twoRunsAtATimeDoNotDisturbEachOther)
{
    ASSERT_EQ (run ({ "convert", "x.json", "y.docx" }).status, 0);
    std::vector<std::thread> runs;

    for (int i = 0; i < 4; ++i)
        runs.emplace_back (
            [this, i]
            {
                const auto out = "z" + std::to_string (i) + ".docx";
                EXPECT_EQ (run ({ "convert", "y.docx", out }).status, 0);
                EXPECT_EQ (rowsOf (out).size(), 3u);
            });

    for (auto& each : runs)
        each.join();
}
