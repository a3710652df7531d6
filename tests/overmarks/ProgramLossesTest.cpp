// SPDX-License-Identifier: GPL-3.0-only
// What is said of what a document loses: each kind of content, and once for each format.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <ostream>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace
{

constexpr auto plainEvent =
    R"({"type": 8, "cueNumber": "A1", "characterID": "a", "inPointFrameIndex": 50, "endFrameIndex": 75, "text": "Hello?"})";

int timesIn (const std::string& text, const std::string& part)
{
    int times = 0;

    for (auto place = text.find (part); place != std::string::npos; place = text.find (part, place + 1))
        ++times;

    return times;
}

class LossTest : public ProgramTest
{
protected:
    /** A project of one cue, at 25 frames and with one character.
        @param changes  to the event  @param ofProject  to the project */
    static ordered_json project (const std::string& changes = "{}", const std::string& ofProject = "{}")
    {
        auto event = ordered_json::parse (plainEvent);
        event.merge_patch (ordered_json::parse (changes));
        ordered_json list { { "overmarks", 1 },
                            { "characters", { { { "id", "a" }, { "name", "ANNA" } } } },
                            { "events", { event } } };
        list.merge_patch (ordered_json::parse (ofProject));
        return list;
    }

    static ordered_json projectOf (const std::vector<std::string>& events)
    {
        auto list = project();
        list["events"] = ordered_json::array();

        for (const auto& event : events)
            list["events"].push_back (ordered_json::parse (event));

        return list;
    }

    /** All that is said of a document of this project, but that it was written. */
    std::string saidOf (const std::string& format, const ordered_json& list,
                        const std::vector<std::string>& options = {})
    {
        write ("x.json", list.dump());
        file ("out").createDirectory();
        std::vector<std::string> arguments { "export", "x.json", "-o", "out", "--format", format, "--force" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        const auto result = run (arguments);
        EXPECT_EQ (result.status, 0) << result.errors;
        const auto end = result.errors.find ("Wrote ");
        return end == std::string::npos ? result.errors : result.errors.substr (0, end);
    }

    static std::string leavesOut (const std::string& format, const std::string& what)
    {
        return format + " has no place for everything in this list; it leaves out: " + what + "\n";
    }
};

// ---- each kind of content ------------------------------------------------------------------------------------------------

struct Loss
{
    const char* name;
    const char* format;
    const char* changes; ///< to the event
    const char* lost;
    const char* ofProject = "{}";
};

void PrintTo (const Loss& loss, std::ostream* stream) { *stream << loss.name; }

class EachLoss : public LossTest, public testing::WithParamInterface<Loss>
{
};

TEST_P (EachLoss, isSaidWithItsNumber)
{
    const auto& loss = GetParam();
    EXPECT_EQ (saidOf (loss.format, project (loss.changes, loss.ofProject)),
               leavesOut (loss.format, loss.lost));
}

INSTANTIATE_TEST_SUITE_P (
    , EachLoss,
    testing::Values (
        Loss { "times", "asc", "{}", "times (1 event)" },
        Loss { "types", "ttal", R"({"type": 2})", "event types (1 event)" },
        Loss { "prefixes", "ttal", "{}", "character prefixes (1 event)",
               R"({"characters": [{"id": "a", "name": "ANNA", "prefix": "AN"}]})" },
        Loss { "actors", "ttal", "{}", "actors (1 event)",
               R"({"characters": [{"id": "a", "name": "ANNA", "actor": "B. Miller"}]})" },
        Loss { "text", "ds-taker",
               R"({"text": {"text": "a\nb", "runs": [{"start": 0, "end": 1, "bold": true}]}})",
               "text (1 event)" },
        Loss { "lineBreaks", "csv", R"({"text": "a\nb"})", "line breaks (1 event)" },
        Loss { "boldAndItalic", "csv",
               R"({"text": {"text": "a", "runs": [{"start": 0, "end": 1, "italic": true}]}})",
               "bold and italic (1 event)" },
        Loss { "otherLooks", "ttal",
               R"({"text": {"text": "a", "runs": [{"start": 0, "end": 1, "underlined": true}]}})",
               "other looks of text (1 event)" },
        Loss { "colour", "ttal",
               R"({"text": {"text": "a", "runs": [{"start": 0, "end": 1, "colour": "ffff0000"}]}})",
               "other looks of text (1 event)" },
        Loss { "notes", "arendis", R"({"notes": "softly"})", "times (1 event), notes (1 event)" },
        Loss { "engineeringNotes", "ttal", R"({"engineeringNotes": "boom"})", "engineering notes (1 event)" },
        Loss { "done", "ttal", R"({"done": true})", "done (1 event)" },
        Loss { "disabled", "ttal", R"({"enabled": false})", "disabled (1 event)" },
        Loss { "takes", "ttal", R"({"numRecordedTakes": 3})", "numbers of takes (1 event)" },
        Loss { "selectedTake", "csv", R"({"numRecordedTakes": 3, "selectedTake": 0})",
               "chosen takes (1 event)" },
        Loss { "altTake", "csv", R"({"numRecordedTakes": 3, "altTake": 1})", "chosen takes (1 event)" },
        Loss { "recordTracks", "csv", R"({"recTrackIndex": 0})", "record tracks (1 event)" },
        Loss { "storedFlags", "csv", R"({"storedFlag": true})", "stored flags (1 event)" },
        Loss { "reasons", "ttal", R"({"reason": 4})", "reasons (1 event)" },
        Loss { "durations", "ttal", R"({"streamerDuration": 5})", "streamer durations (1 event)" },
        Loss { "tempo", "ttal", R"({"beatsPerMinute": 80})", "tempo (1 event)" },
        Loss { "forcedNarratives", "asc", R"({"isForcedNarrative": true, "forcedNarrativeRegion": 1})",
               "times (1 event), forced narratives (1 event)" },
        Loss {
            "castWithoutEvents", "csv", "{}", "characters without events (2 characters)",
            R"({"characters": [{"id": "a", "name": "A"}, {"id": "b", "name": "B"}, {"id": "c", "name": "C"}]})" },
        Loss { "equalNames", "ttal", "{}", "the difference between characters of one name (1 character)",
               R"({"characters": [{"id": "a", "name": "ANNA"}, {"id": "b", "name": "ANNA"}]})" },
        Loss { "namesBeyond22", "asc", "{}",
               "times (1 event), ends of names of more than 22 letters (1 character)",
               R"({"characters": [{"id": "a", "name": "12345678901234567890123"}]})" },
        Loss { "namesBeyond15", "arendis", "{}",
               "times (1 event), middles of names of more than 15 letters (1 character)",
               R"({"characters": [{"id": "a", "name": "1234567890123456"}]})" },
        Loss { "cueNumbersBeyond16", "arendis", R"({"cueNumber": "12345678901234567"})",
               "times (1 event), ends of cue numbers of more than 16 letters (1 event)" },
        Loss {
            "looksOfForcedNarratives", "ttal",
            R"({"isForcedNarrative": true, "text": {"text": "a", "runs": [{"start": 0, "end": 1, "bold": true, "italic": true}]}})",
            "bold and italic of forced narratives (1 event)" },
        Loss { "italicOfBold", "ttal",
               R"({"text": {"text": "a", "runs": [{"start": 0, "end": 1, "bold": true, "italic": true}]}})",
               "italic of text that is bold too (1 event)" },
        Loss { "doubleStars", "csv", R"({"text": "a ** b"})", "\"**\" in text (1 event)" },
        Loss { "doubleBlanks", "asc", R"({"text": "a  b"})",
               "times (1 event), double blanks and tabs (1 event)" },
        Loss { "tabs", "asc", R"({"text": "a\tb"})", "times (1 event), double blanks and tabs (1 event)" },
        Loss { "typographyOfText", "csv", R"({"text": "\u201ca\u201d"})",
               "typographic signs of text (1 event)" },
        Loss { "foreignText", "asc", R"({"text": "\u0141 \u00e9"})",
               "times (1 event), letters outside ISO 8859-1, which become \"?\" (1 event)" },
        Loss { "foreignCueNumber", "arendis", R"({"cueNumber": "\u2116 1"})",
               "times (1 event), letters outside ISO 8859-1, which become \"?\" (1 event)" },
        Loss { "foreignNames", "ds-taker", "{}",
               "text (1 event), letters outside ISO 8859-1, which become \"?\" (1 event)",
               R"({"characters": [{"id": "a", "name": "\u0141ucja"}]})" },
        Loss { "foreignNotes", "ds-taker", R"({"notes": "\u0141"})",
               "text (1 event), letters outside ISO 8859-1, which become \"?\" (1 event)" },
        Loss { "looksOfNotes", "ttal",
               R"({"notes": {"text": "a", "runs": [{"start": 0, "end": 1, "bold": true}]}})",
               "looks of notes (1 event)" },
        Loss { "breaksOfNotes", "csv", R"({"notes": "a\nb"})", "line breaks of notes (1 event)" },
        Loss { "typographyOfNotes", "ds-taker", R"({"notes": "\u2026"})",
               "text (1 event), typographic signs of notes (1 event)" },
        Loss { "quotesOfNotes", "ds-taker", R"({"notes": "\"no\""})",
               "text (1 event), quotation marks of notes (1 event)" },
        Loss { "looksOfEngineeringNotes", "csv",
               R"({"engineeringNotes": {"text": "a", "runs": [{"start": 0, "end": 1, "bold": true}]}})",
               "looks of engineering notes (1 event)" },
        Loss { "breaksOfEngineeringNotes", "csv", R"({"engineeringNotes": "a\nb"})",
               "line breaks of engineering notes (1 event)" },
        Loss { "typographyOfEngineeringNotes", "csv", R"({"engineeringNotes": "\u2026"})",
               "typographic signs of engineering notes (1 event)" },
        Loss { "namelessReasons", "csv", R"({"reason": 33})", "reasons without a name (1 event)" },
        Loss { "fractionsOfTempo", "csv", R"({"type": 1, "beatsPerMinute": 66.5})",
               "fractions of tempo (1 event)" },
        Loss { "regionsOfOthers", "ttal", R"({"forcedNarrativeRegion": 3})",
               "regions of what is no forced narrative (1 event)" }),
    [] (const auto& test) { return std::string (test.param.name); });

// ---- what isn't lost isn't said ------------------------------------------------------------------------------------------

TEST_F (LossTest, aListThatAFormatCarriesWholeHasNoMessage)
{
    EXPECT_EQ (
        saidOf ("csv", project (R"({"type": 2, "notes": "a", "reason": 4, "beatsPerMinute": 80, "done": true,
        "forcedNarrativeRegion": 3})")),
        "");
    EXPECT_EQ (
        saidOf ("ttal", project (R"({"notes": "a\nb \"c\"", "text": {"text": "a  \u201c**\u201d \u0141",
        "runs": [{"start": 0, "end": 1, "bold": true}, {"start": 1, "end": 2, "italic": true}]}})",
                                 R"({"characters": [{"id": "a", "name": "A"}, {"id": "b", "name": "B"}]})")),
        "");
}

TEST_F (LossTest, theLongestNamesThatFitAreNotCut)
{
    const auto cast = [] (const std::string& name)
    { return R"({"characters": [{"id": "a", "name": ")" + name + "\"}]}"; };
    EXPECT_EQ (saidOf ("asc", project ("{}", cast ("1234567890123456789012"))),
               leavesOut ("asc", "times (1 event)"));
    EXPECT_EQ (saidOf ("arendis", project (R"({"cueNumber": "1234567890123456"})", cast ("123456789012345"))),
               leavesOut ("arendis", "times (1 event)"));
    EXPECT_EQ (saidOf ("asc", project (R"({"text": "\u00ff"})")), leavesOut ("asc", "times (1 event)"));
}

TEST_F (LossTest, aConversionIntoAProjectLosesNothing)
{
    write ("x.json", project (R"({"storedFlag": true})").dump());
    EXPECT_THAT (run ({ "convert", "x.json", "y.overmarks" }).errors, Not (HasSubstr ("leaves out")));
    EXPECT_THAT (run ({ "convert", "x.json", "y.json" }).errors, Not (HasSubstr ("leaves out")));
}

// ---- events as a whole ---------------------------------------------------------------------------------------------------

TEST_F (LossTest, eventsThatAreLeftOutAsAWholeAreCountedByTheirType)
{
    const auto list = projectOf (
        { plainEvent, R"({"type": 2, "reason": 4})", R"({"type": 2})", R"({"type": 1})", R"({"type": 4})" });
    EXPECT_EQ (saidOf ("asc", list), leavesOut ("asc", "2 markers, 1 streamer, 1 flutter, times (1 event)"));
    EXPECT_EQ (saidOf ("euro-taker", list),
               leavesOut ("euro-taker", "1 ADR cue, 2 markers, 1 streamer, 1 flutter"));
}

TEST_F (LossTest, anEventWithoutATypeIsCountedToo)
{
    EXPECT_EQ (saidOf ("euro-taker", project (R"({"type": 99})")),
               leavesOut ("euro-taker", "1 event of no type"));
}

TEST_F (LossTest, timedFadesAreLostInEveryDocument)
{
    const auto fadeIn =
        R"({"type": 16, "startFrameIndex": 10, "inPointFrameIndex": 10, "endFrameIndex": 10})";
    const auto fadeOut =
        R"({"type": 32, "startFrameIndex": 90, "inPointFrameIndex": 90, "endFrameIndex": 90})";

    for (const auto& [format, also] :
         std::map<std::string, std::string> { { "csv", "" },
                                              { "ttal", "" },
                                              { "ds-taker", ", text (1 event)" },
                                              { "asc", ", times (1 event)" },
                                              { "arendis", ", times (1 event)" } })
    {
        EXPECT_EQ (saidOf (format, projectOf ({ plainEvent, fadeIn, fadeOut })),
                   leavesOut (format, "2 timed fades" + also));
        EXPECT_THAT (saidOf (format, projectOf ({ plainEvent, R"({"type": 16})", R"({"type": 32})" })),
                     Not (HasSubstr ("fade")));
    }
}

// ---- cues that share a row -----------------------------------------------------------------------------------------------

constexpr auto ofTheirOwn =
    "text (3 events), own character, notes and end of cues that share a row with one of their number (1 event)";

TEST_F (LossTest, cuesOfOneNumberShareARowForDSTaker)
{
    auto list = project();
    list["characters"].push_back ({ { "id", "b" }, { "name", "TOM" } });
    list["events"].push_back (ordered_json::parse (plainEvent));
    list["events"].push_back (ordered_json::parse (plainEvent));
    list["events"][1]["characterID"] = "b";
    list["events"][1]["notes"] = "\"kept in a row of several\"";
    list["events"][2]["cueNumber"] = "A2";
    EXPECT_EQ (saidOf ("ds-taker", list), leavesOut ("ds-taker", ofTheirOwn));
    EXPECT_EQ (saidOf ("ds-taker", list, { "--by-character", "--combine" }),
               leavesOut ("ds-taker", ofTheirOwn));

    // In files of their own they stand in rows of their own.
    EXPECT_EQ (saidOf ("ds-taker", list, { "--by-character" }),
               leavesOut ("ds-taker", "text (3 events), quotation marks of notes (1 event)"));
}

// ---- TTAL ----------------------------------------------------------------------------------------------------------------

std::string timeInfo (int numerator, int denominator, int whole, bool dropFrame,
                      const std::string& firstFrame = {})
{
    ordered_json info { { "timeOrigin", dropFrame ? "01:00:00;00" : "01:00:00:00" },
                        { "frameRateNumerator", numerator },
                        { "frameRateDenominator", denominator },
                        { "framesPerSecond", whole },
                        { "dropFrame", dropFrame } };

    if (! firstFrame.empty())
        info["firstFrameOfAction"] = firstFrame;

    return ordered_json { { "timeInfo", info } }.dump();
}

TEST_F (LossTest, aRateWithoutANameInTTALIsSaid)
{
    EXPECT_EQ (saidOf ("ttal", project ("{}", timeInfo (48, 1, 48, false))),
               "ttal: the format has no name for 48 frames a second, so the document can't be read again\n");
    EXPECT_EQ (run ({ "list", "out/x.ttal" }).status, 1);
    EXPECT_EQ (saidOf ("ttal", project ("{}", timeInfo (60, 1, 60, false))), "");
    EXPECT_EQ (run ({ "list", "out/x.ttal" }).status, 0);
}

TEST_F (LossTest, dropFrameIsNotToldInTTAL)
{
    EXPECT_EQ (saidOf ("ttal", project ("{}", timeInfo (30000, 1001, 30, true))),
               "ttal: the format doesn't tell drop-frame; the document is to be read with --fps 29.97df\n");
    EXPECT_EQ (saidOf ("ttal", project ("{}", timeInfo (30, 1, 30, true))),
               "ttal: the format doesn't tell drop-frame; the document is to be read with --fps 30df\n");
    EXPECT_EQ (saidOf ("ttal", project ("{}", timeInfo (30000, 1001, 30, false))), "");
}

TEST_F (LossTest, timesBehindTheFirstFrameOfActionComeBackWithTheOriginThatIsSaid)
{
    EXPECT_EQ (
        saidOf ("ttal", project ("{}", timeInfo (25, 1, 25, false, "01:00:01:00"))),
        "ttal: times count from the first frame of action; the document is to be read with --origin 01:00:01:00\n");
    const auto before = run ({ "list", "x.json", "--json" }).json()["events"][0];
    const auto after =
        run ({ "list", "out/x.ttal", "--json", "--origin", "01:00:01:00" }).json()["events"][0];
    EXPECT_EQ (before["startTC"], "01:00:02:00");
    EXPECT_EQ (after["startTC"], before["startTC"]);
    EXPECT_EQ (after["endTC"], before["endTC"]);
}

TEST_F (LossTest, eventsWithoutATimeGetOneInTTAL)
{
    auto list = projectOf ({ plainEvent, R"({"type": 8, "cueNumber": "A2"})" });
    EXPECT_EQ (saidOf ("ttal", list),
               "ttal: 1 event without a time gets one, a frame before the time origin\n");
    const std::vector<std::string> untimed { "list", "out/x.ttal", "--json", "--cue", "A2" };
    EXPECT_EQ (run (untimed).json()["events"][0]["startTC"], "23:59:59:24");

    list["events"].push_back (list["events"][1]);
    EXPECT_EQ (saidOf ("ttal", list),
               "ttal: 2 events without a time get one, a frame before the time origin\n");
}

TEST_F (LossTest, nothingIsSaidOfTheTimesOfOtherFormats)
{
    const auto list = project ("{}", timeInfo (48, 1, 48, true, "01:00:01:00"));
    EXPECT_EQ (saidOf ("csv", list), "");
    EXPECT_EQ (saidOf ("asc", list), leavesOut ("asc", "times (1 event)"));
}

// ---- how it is said ------------------------------------------------------------------------------------------------------

TEST_F (LossTest, eachFormatOfAnExportIsSaidOnceAlsoWithManyFiles)
{
    auto list = project (R"({"storedFlag": true})");
    list["characters"].push_back ({ { "id", "b" }, { "name", "TOM" } });
    list["events"].push_back (list["events"][0]);
    list["events"][1]["characterID"] = "b";
    const auto said = saidOf ("csv,ttal,asc", list, { "--by-character" });
    EXPECT_EQ (filesInFolder(),
               (std::vector<std::string> { "out", "out/x.asc", "out/x_ANNA.csv", "out/x_ANNA.ttal",
                                           "out/x_TOM.csv", "out/x_TOM.ttal", "x.json" }));
    EXPECT_EQ (said, leavesOut ("csv", "stored flags (2 events)")
                         + leavesOut ("ttal", "stored flags (2 events)")
                         + leavesOut ("asc", "times (2 events), stored flags (2 events)"));
}

TEST_F (LossTest, aConversionSaysItOnce)
{
    write ("x.json", project (R"({"storedFlag": true})").dump());
    const auto errors = run ({ "convert", "x.json", "x.csv" }).errors;
    EXPECT_EQ (timesIn (errors, "leaves out"), 1) << errors;
    EXPECT_EQ (errors, leavesOut ("csv", "stored flags (1 event)") + "Wrote " + path ("x.csv") + "\n");
}

TEST_F (LossTest, onlyWhatIsExportedCounts)
{
    auto list = project (R"({"storedFlag": true})");
    list["characters"].push_back ({ { "id", "b" }, { "name", "TOM" } });
    list["events"].push_back (list["events"][0]);
    list["events"][1]["characterID"] = "b";
    EXPECT_EQ (saidOf ("csv", list, { "--character", "TOM" }), leavesOut ("csv", "stored flags (1 event)"));
}

TEST_F (LossTest, theMessagesStandInTheJSONDocumentAlsoWhenNothingMayBeSaid)
{
    write ("x.json", project (R"({"storedFlag": true})", timeInfo (30, 1, 30, true)).dump());
    const auto result = run ({ "convert", "x.json", "x.ttal", "--studio", "North", "--json", "--quiet" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.errors, "");
    EXPECT_EQ (result.json()["messages"],
               (std::vector<std::string> {
                   "--studio makes no difference to ttal",
                   "ttal has no place for everything in this list; it leaves out: stored flags (1 event)",
                   "ttal: the format doesn't tell drop-frame; the document is to be read with --fps 30df" }));
    EXPECT_EQ (result.json()["files"], std::vector<std::string> { path ("x.ttal") });
}

TEST_F (LossTest, withoutARemarkTheMessagesAreEmpty)
{
    write ("x.json", project().dump());
    EXPECT_EQ (run ({ "convert", "x.json", "x.csv", "--json" }).json()["messages"], ordered_json::array());
    EXPECT_EQ (run ({ "convert", "x.json", "y.json", "--json" }).json()["messages"], ordered_json::array());
}

TEST_F (LossTest, aDryRunSaysItToo)
{
    write ("x.json", project (R"({"storedFlag": true})").dump());
    EXPECT_EQ (run ({ "convert", "x.json", "x.csv", "--dry-run" }).errors,
               leavesOut ("csv", "stored flags (1 event)") + "Would write " + path ("x.csv") + "\n");
}

} // namespace
