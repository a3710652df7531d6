// SPDX-License-Identifier: GPL-3.0-only
// TTAL, ASC, Arendis and ADR Studio through the program, and what is said of what a format leaves out.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using nlohmann::ordered_json;
using testing::HasSubstr;

namespace
{

using Names = std::vector<std::string>;

constexpr auto ttalList =
    R"({"meta": {"fps": "FPS_2500", "lang": "en", "timeFormat": "FRAMES"}, "events": {)"
    R"("e1": {"start": 50, "end": 101, "cue": "A1", "txt": "Hello?", "characterId": "c1", )"
    R"("styles": [{"from": 0, "to": 5, "type": "bold"}], "dubAnnotations": {"types": [], "text": "softly"}}, )"
    R"("e2": {"start": 150, "end": 200, "txt": "HARBOUR", "type": "fn", "rgn": "top", )"
    R"("characterId": "00000000-0000-0000-0000-000000000000"}}, "characters": {"c1": {"name": "ANNA"}}})";

constexpr auto adrStudioList =
    "<plist><dict><array><dict><key>In Time</key><string>01:00:02:00</string><key>Out Time</key>"
    "<string>01:00:04:00</string><key>Character</key><string>ANNA</string><key>Dialog</key><string>Hello?</string>"
    "<key>Clip Name</key><string>A1</string></dict></array></dict></plist>";

TEST_F (ProgramTest, rowsShowsATTALFile)
{
    write ("x.ttal", ttalList);
    const auto shown = run ({ "rows", "x.ttal", "--json", "--origin", "01:00:00:00" }).json();
    EXPECT_EQ (shown["type"], 7);
    EXPECT_EQ (shown["userMappingEnabled"], false);
    EXPECT_EQ (shown["error"], "");
    EXPECT_EQ (shown["languageCode"], "en");
    EXPECT_EQ (shown["rows"][0],
               (Names { "01:00:02:00", "01:00:04:00", "Hello?", "ANNA", "A1", "softly", "no", "" }));
    EXPECT_EQ (shown["characters"][0]["id"], "c1");
}

TEST_F (ProgramTest, aTTALFileBecomesAProjectAndComesBackAsItWas)
{
    write ("x.ttal", ttalList);
    ASSERT_EQ (run ({ "convert", "x.ttal", "x.json" }).status, 0);
    ASSERT_EQ (run ({ "convert", "x.json", "y.ttal", "--language", "en" }).status, 0);
    const auto before = run ({ "rows", "x.ttal", "--json", "--rich" }).json();
    auto after = run ({ "rows", "y.ttal", "--json", "--rich" }).json();
    EXPECT_EQ (after["rows"], before["rows"]);
    EXPECT_EQ (after["characters"], before["characters"]);
    EXPECT_EQ (after["languageCode"], "en");
}

TEST_F (ProgramTest, anEncodingMakesNoDifferenceToTTAL)
{
    write ("x.ttal", ttalList);
    const auto result = run ({ "list", "x.ttal", "--json", "--encoding", "mac-roman" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.json()["events"].size(), 2u);
    EXPECT_THAT (result.errors, HasSubstr ("x.ttal: --encoding makes no difference to this list"));
}

TEST_F (ProgramTest, aBrokenTTALFileIsRefusedWithItsWords)
{
    write ("x.ttal", "{\"meta\": ");
    EXPECT_EQ (errorOf ({ "import", "x.ttal", "-o", "x.json" }, 1),
               "x.ttal: The file content could not be parsed properly.");
    EXPECT_EQ (filesInFolder(), Names { "x.ttal" });
}

TEST_F (ProgramTest, anADRStudioFileIsImported)
{
    write ("x.xml", adrStudioList);
    ASSERT_EQ (run ({ "import", "x.xml", "-o", "x.json", "--origin", "01:00:00:00" }).status, 0);
    const auto events = run ({ "list", "x.json", "--json" }).json()["events"];
    ASSERT_EQ (events.size(), 1u);
    EXPECT_EQ (events[0]["cueNumber"], "A1");
    EXPECT_EQ (events[0]["startTC"], "01:00:02:00");
    EXPECT_EQ (events[0]["character"], "ANNA");
}

TEST_F (ProgramTest, anADRStudioColumnCanBeUsedForSomethingElse)
{
    write ("x.xml", adrStudioList);
    const auto result = run ({ "list", "x.xml", "--json", "--map", "#6=Notes" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["events"][0]["notes"]["text"], "A1");
}

TEST_F (ProgramTest, textsOfFixedColumnsAreExported)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());
    const auto result = run (
        { "export", "x.csv", "-o", "out", "--format", "asc,arendis,ttal", "--title", "Harbour", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"],
               (Names { path ("out/x.asc"), path ("out/x.txt"), path ("out/x.ttal") }));
    EXPECT_TRUE (
        read ("out/x.asc")
            .starts_with ("ANNA                    Hello?                               A1\r\n\r\n"));
    EXPECT_TRUE (read ("out/x.txt").starts_with ("Harbour\r\n\r\n\r\n\r\n\r\n\r\n"));
    EXPECT_EQ (ordered_json::parse (read ("out/x.ttal"))["events"].size(), 3u);
}

TEST_F (ProgramTest, aTextOfFixedColumnsIsOneFileAlsoByCharacter)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "convert", "x.csv", "x.asc", "--by-character" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.errors, HasSubstr ("--by-character makes no difference to asc"));
    EXPECT_EQ (filesInFolder(), (Names { "x.asc", "x.csv" }));
    EXPECT_EQ (run ({ "convert", "x.csv", "x.asc", "--by-character" }).status, 1);
}

TEST_F (ProgramTest, arendisNeedsItsNameToConvert)
{
    write ("x.csv", threeCues);
    const auto unclear = run ({ "convert", "x.csv", "x.txt" });
    EXPECT_EQ (unclear.status, 2);
    EXPECT_THAT (unclear.errors, HasSubstr ("--format tells which (--format arendis)"));
    EXPECT_EQ (run ({ "convert", "x.csv", "x.txt", "--format", "arendis" }).status, 0);
    EXPECT_THAT (read ("x.txt"), HasSubstr ("(1. Band)"));
}

TEST_F (ProgramTest, ttalIsWrittenForEachCharacter)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());
    EXPECT_EQ (run ({ "export", "x.csv", "-o", "out", "--format", "ttal", "--by-character" }).status, 0);
    EXPECT_EQ (filesInFolder(), (Names { "out", "out/x_ANNA.ttal", "out/x_TOM.ttal", "x.csv" }));
}

TEST_F (ProgramTest, formatsShowsWhatEachCarries)
{
    const auto formats = run ({ "formats", "--json" }).json()["formats"];
    std::map<std::string, std::string> carried;
    for (const auto& format : formats)
        if (format.contains ("format"))
            carried[format["format"].get<std::string>()] = format["carries"].get<std::string>();

    EXPECT_EQ (carried["asc"], "characters, cue numbers, text");
    EXPECT_EQ (carried["arendis"], "characters, cue numbers, text");
    EXPECT_EQ (
        carried["ttal"],
        "times, characters, cue numbers, text, line breaks, bold and italic, notes, forced narratives");
    EXPECT_EQ (carried["json"], "everything");
    EXPECT_EQ (carried["overmarks"], "everything");
    EXPECT_EQ (carried["euro-taker"], "");
    const auto text = run ({ "formats" }).output;
    EXPECT_THAT (text, HasSubstr ("\nasc\n  Carries: characters, cue numbers, text\n  Loses: timed fades, "));
    EXPECT_THAT (text, HasSubstr ("\neuro-taker\n  Carries: nothing\n  Loses: everything\n"));
    for (const auto& line : juce::StringArray::fromLines (text))
        EXPECT_LE (line.length(), 110) << line;
}

TEST_F (ProgramTest, formatsShowsWhatEachLoses)
{
    const auto formats = run ({ "formats", "--json" }).json()["formats"];
    std::map<std::string, std::string> lost;
    for (const auto& format : formats)
        if (format.contains ("format"))
            lost[format["format"].get<std::string>()] = format["loses"].get<std::string>();

    EXPECT_EQ (
        lost["csv"],
        "timed fades, line breaks, bold and italic, other looks of text, chosen takes, record tracks, stored flags, "
        "characters without events, \"**\" in text, typographic signs of text, looks of notes, line breaks of notes, "
        "typographic signs of notes, looks of engineering notes, line breaks of engineering notes, "
        "typographic signs of engineering notes, reasons without a name, fractions of tempo");
    EXPECT_EQ (
        lost["ttal"],
        "timed fades, event types, character prefixes, actors, other looks of text, engineering notes, done, disabled, "
        "numbers of takes, chosen takes, record tracks, stored flags, reasons, streamer durations, tempo, "
        "the difference between characters of one name, bold and italic of forced narratives, "
        "italic of text that is bold too, looks of notes, regions of what is no forced narrative, "
        "frame rates without a name, drop-frame, time of the first frame of action, that an event has no time");
    EXPECT_EQ (
        lost["asc"],
        "timed fades, what is no ADR cue, times, event types, character prefixes, actors, line breaks, bold and italic, "
        "other looks of text, notes, engineering notes, done, disabled, numbers of takes, chosen takes, record tracks, "
        "stored flags, reasons, streamer durations, tempo, forced narratives, characters without events, "
        "ends of names of more than 22 letters, double blanks and tabs, letters outside ISO 8859-1, which become \"?\"");
    EXPECT_EQ (lost["euro-taker"], "everything");
    EXPECT_EQ (lost["json"], "nothing");
    EXPECT_EQ (lost["overmarks"], "nothing");
}

} // namespace
