// SPDX-License-Identifier: GPL-3.0-only
// Texts that are no project, or nearly one: what is said, and that the open project stays as it is.
#include "list/ProjectJSON.h"

#include "support/CompareProjects.h"
#include "support/CueLists.h"
#include "support/OvermarksTest.h"
#include "support/RandomProjects.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <string>

namespace ZEP::Overmarks::Testing
{
namespace
{

/** What a text says wrong, and what the user reads of it. */
struct Mistake
{
    const char* name;
    std::string text;
    std::string message;
};

void PrintTo (const Mistake& mistake, std::ostream* out) { *out << mistake.name; }

std::string project (const std::string& members) { return R"({"overmarks": 1, )" + members + "}"; }
std::string secondEvent (const std::string& members)
{
    return project (R"("events": [{}, {)" + members + "}]");
}
std::string run (const std::string& members)
{
    return project (R"("events": [{"text": {"text": "Go", "runs": [{"bold": true}, {)" + members + "}]}}]");
}

std::string noJSONAt (int byte)
{
    return "The text is no JSON: it breaks off or has a mistake at byte " + std::to_string (byte);
}

const std::string wholeNumber = "a whole number from -2147483648 to 2147483647 is expected";
const std::string reasonExpected = "a whole number from -1 to 40 is expected";
const std::string noProject = R"(The text: an Overmarks project in JSON begins with the member "overmarks")";
const std::string timecodeExpected = "a timecode such as 01:00:00:00 is expected";

const std::vector<Mistake> mistakes {
    // not JSON
    { "empty", "", noJSONAt (1) },
    { "blank", " \n ", noJSONAt (4) },
    { "truncated", R"({"overmarks": 1, "events": [{"cueNumber": "A)", noJSONAt (45) },
    { "garbageBehind", R"({"overmarks": 1} x)", noJSONAt (18) },
    { "secondDocument", R"({"overmarks": 1}{"overmarks": 1})", noJSONAt (17) },
    { "trailingComma", R"({"overmarks": 1,})", noJSONAt (17) },
    { "comment", "{\"overmarks\": 1 // old\n}", noJSONAt (17) },
    { "singleQuotes", "{'overmarks': 1}", noJSONAt (2) },
    { "notUTF8", "{\"overmarks\": 1, \"name\": \"Zo\xeb\"}", noJSONAt (30) },
    { "overlongUTF8", "{\"overmarks\": 1, \"name\": \"\xc0\x80\"}", noJSONAt (27) },
    { "utf16", std::string ("\xff\xfe{\0\"\0", 6), noJSONAt (1) },
    { "loneSurrogate", R"({"overmarks": 1, "name": "\ud800"})", noJSONAt (33) },
    { "rawControlCode", "{\"overmarks\": 1, \"name\": \"two\nlines\"}", noJSONAt (30) },
    { "rawNUL", std::string ("{\"overmarks\": 1\0}", 17), noJSONAt (16) },
    { "plainText", "01:00:00:00 Hello", noJSONAt (2) },
    { "notANumber", R"({"overmarks": NaN})", noJSONAt (15) },

    // JSON, but no project
    { "aList", "[]", noProject },
    { "aNumber", "1", noProject },
    { "nothing", "null", noProject },
    { "anotherObject", R"({"tracks": []})", noProject },
    { "noVersion", R"({"events": []})", noProject },
    { "laterVersion", R"({"overmarks": 2})",
      "overmarks: this is version 2 of the form, and only version 1 can be read" },
    { "versionAsText", R"({"overmarks": "1"})", "overmarks: " + wholeNumber },

    // unknown members, named with their place
    { "unknownMember", project (R"("evnts": [])"), R"(There is no member "evnts")" },
    { "unknownInTimeInfo", project (R"("timeInfo": {"fps": 25})"), R"(There is no member "timeInfo.fps")" },
    { "unknownInCharacter", project (R"("characters": [{}, {"nmae": ""}])"),
      R"(There is no member "characters[1].nmae")" },
    { "unknownInEvent", secondEvent (R"("cuenumber": "A1")"), R"(There is no member "events[1].cuenumber")" },
    { "shownEventsAreNoProject", secondEvent (R"("startTC": "01:00:00:00")"),
      R"(There is no member "events[1].startTC")" },
    { "unknownInText", secondEvent (R"("text": {"txt": ""})"), R"(There is no member "events[1].text.txt")" },
    { "unknownInRun", run (R"("strong": true)"), R"(There is no member "events[0].text.runs[1].strong")" },
    { "unknownEmpty", project (R"("": 1)"), R"(There is no member "")" },
    { "unknownWithControlCodes", project (R"("\u001b[2J\n\"": 1)"), R"(There is no member "\u001b[2J\n\"")" },
    { "unknownWithNUL", project (R"("a\u0000b": 1)"), R"(There is no member "a\u0000b")" },
    { "unknownInAnotherLanguage",
      project ("\"gr\xc3\xb6\xc3\x9f"
               "e\": 1"),
      "There is no member \"gr\xc3\xb6\xc3\x9f"
      "e\"" },
    { "unknownOfAHundredLetters", project ("\"" + std::string (100, 'x') + "\": 1"),
      "There is no member \"" + std::string (100, 'x') + "\"" },
    { "unknownOfOneLetterMore", project ("\"" + std::string (101, 'x') + "\": 1"),
      "There is no member \"" + std::string (100, 'x') + "...\"" },
    { "unknownEndless", project ("\"" + std::string (100000, 'x') + "\": 1"),
      "There is no member \"" + std::string (100, 'x') + "...\"" },

    // twice the same
    { "memberTwice", secondEvent (R"("cueNumber": "A1", "cueNumber": "A2")"),
      R"(The member "cueNumber" stands twice in one object)" },
    { "eventsTwice", project (R"("events": [], "events": [])"),
      R"(The member "events" stands twice in one object)" },
    { "characterTwice", project (R"("characters": [{"id": "c1"}, {"id": "c2"}, {"id": "c1"}])"),
      R"(characters[2]: a second character with the id "c1")" },

    // wrong types
    { "nameNoText", project (R"("name": 5)"), "name: a text is expected" },
    { "nameNull", project (R"("name": null)"), "name: a text is expected" },
    { "timeInfoNoObject", project (R"("timeInfo": "25")"), "timeInfo: an object in braces is expected" },
    { "timeInfoNull", project (R"("timeInfo": null)"), "timeInfo: an object in braces is expected" },
    { "sortKeyNoText", project (R"("sortKey": 1)"), "sortKey: a text is expected" },
    { "sortDescendingNoFlag", project (R"("sortDescending": 0)"),
      "sortDescending: true or false is expected" },
    { "userReasonsNoList", project (R"("userReasons": "none")"),
      "userReasons: a list in square brackets is expected" },
    { "userReasonNoText", project (R"("userReasons": ["a", 1])"), "userReasons[1]: a text is expected" },
    { "charactersNoList", project (R"("characters": {})"),
      "characters: a list in square brackets is expected" },
    { "characterNoObject", project (R"("characters": ["ANNA"])"),
      "characters[0]: an object in braces is expected" },
    { "characterNameNoText", project (R"("characters": [{"name": 1}])"),
      "characters[0].name: a text is expected" },
    { "eventsNoList", project (R"("events": null)"), "events: a list in square brackets is expected" },
    { "eventNoObject", project (R"("events": [{}, []])"), "events[1]: an object in braces is expected" },
    { "typeNoNumber", secondEvent (R"("type": "ADR Cue")"), "events[1].type: " + wholeNumber },
    { "indexFractional", secondEvent (R"("endFrameIndex": 1.5)"), "events[1].endFrameIndex: " + wholeNumber },
    { "indexAsText", secondEvent (R"("startFrameIndex": "25")"),
      "events[1].startFrameIndex: " + wholeNumber },
    { "indexNull", secondEvent (R"("inPointFrameIndex": null)"),
      "events[1].inPointFrameIndex: " + wholeNumber },
    { "flagAsNumber", secondEvent (R"("enabled": 1)"), "events[1].enabled: true or false is expected" },
    { "flagAsText", secondEvent (R"("done": "true")"), "events[1].done: true or false is expected" },
    { "tempoAsText", secondEvent (R"("beatsPerMinute": "64")"),
      "events[1].beatsPerMinute: a number is expected" },
    { "cueNumberAsNumber", secondEvent (R"("cueNumber": 12)"), "events[1].cueNumber: a text is expected" },
    { "textAsList", secondEvent (R"("text": ["Hello"])"), "events[1].text: an object in braces is expected" },
    { "textOfTextNoText", secondEvent (R"("notes": {"text": {}})"),
      "events[1].notes.text: a text is expected" },
    { "runsNoList", secondEvent (R"("text": {"text": "Go", "runs": {}})"),
      "events[1].text.runs: a list in square brackets is expected" },
    { "runNoObject", secondEvent (R"("text": {"text": "Go", "runs": [1]})"),
      "events[1].text.runs[0]: an object in braces is expected" },
    { "boldNoFlag", run (R"("bold": "yes")"), "events[0].text.runs[1].bold: true or false is expected" },
    { "heightNoNumber", run (R"("height": "14pt")"), "events[0].text.runs[1].height: a number is expected" },
    { "typefaceNoText", run (R"("typeface": 1)"), "events[0].text.runs[1].typeface: a text is expected" },

    // out of range
    { "indexAboveRange", secondEvent (R"("endFrameIndex": 2147483648)"),
      "events[1].endFrameIndex: " + wholeNumber },
    { "indexBelowRange", secondEvent (R"("endFrameIndex": -2147483649)"),
      "events[1].endFrameIndex: " + wholeNumber },
    { "indexHuge", secondEvent (R"("endFrameIndex": 18446744073709551615)"),
      "events[1].endFrameIndex: " + wholeNumber },
    { "indexHuger", secondEvent (R"("endFrameIndex": 99999999999999999999999)"),
      "events[1].endFrameIndex: " + wholeNumber },
    { "regionAboveRange", secondEvent (R"("forcedNarrativeRegion": 4294967296)"),
      "events[1].forcedNarrativeRegion: " + wholeNumber },
    { "reasonBehindTheTable", project (R"("events": [{"reason": 41}])"),
      "events[0].reason: " + reasonExpected },
    { "reasonBeforeTheTable", secondEvent (R"("reason": -2)"), "events[1].reason: " + reasonExpected },
    { "reasonHuge", secondEvent (R"("reason": 2147483647)"), "events[1].reason: " + reasonExpected },
    { "reasonNoNumber", secondEvent (R"("reason": "AR4")"), "events[1].reason: " + reasonExpected },
    { "tempoTooLarge", secondEvent (R"("beatsPerMinute": 1e39)"),
      "events[1].beatsPerMinute: the number is too large" },
    { "numberBeyondAll", secondEvent (R"("beatsPerMinute": 1e400)"),
      "The text holds a number that is too large" },
    { "numberOfManyDigits", secondEvent (R"("reason": 1)" + std::string (5000, '0')),
      "The text holds a number that is too large" },
    { "heightZero", run (R"("height": 0)"), "events[0].text.runs[1].height: a number above 0 is expected" },
    { "widthNegative", run (R"("horizontalScale": -1)"),
      "events[0].text.runs[1].horizontalScale: a number above 0 is expected" },
    { "noFrames", project (R"("timeInfo": {"framesPerSecond": 0})"),
      "timeInfo.framesPerSecond: a whole number from 1 to 255 is expected" },
    { "tooManyFrames", project (R"("timeInfo": {"framesPerSecond": 256})"),
      "timeInfo.framesPerSecond: a whole number from 1 to 255 is expected" },
    { "numeratorZero", project (R"("timeInfo": {"frameRateNumerator": 0})"),
      "timeInfo.frameRateNumerator: a whole number from 1 to 4294967295 is expected" },
    { "denominatorNegative", project (R"("timeInfo": {"frameRateDenominator": -1})"),
      "timeInfo.frameRateDenominator: a whole number from 1 to 4294967295 is expected" },
    { "noTimecode", project (R"("timeInfo": {"timeOrigin": "1 hour"})"),
      "timeInfo.timeOrigin: " + timecodeExpected },
    { "impossibleTimecode", project (R"("timeInfo": {"firstFrameOfAction": "01:60:00:00"})"),
      "timeInfo.firstFrameOfAction: " + timecodeExpected },
    { "wholeFramesOfAnotherRate",
      project (R"("timeInfo": {"frameRateNumerator": 24, "framesPerSecond": 25})"),
      "timeInfo: there is no frame rate of 24/1 with 25 frames per timecode second" },
    { "framesOfThreeDigits", project (R"("timeInfo": {"framesPerSecond": 120})"),
      "timeInfo: there is no frame rate of 120/1 with 120 frames per timecode second" },
    { "rateBeyondAllSense", project (R"("timeInfo": {"frameRateNumerator": 4294967295})"),
      "timeInfo: there is no frame rate of 4294967295/1 with 4294967295 frames per timecode second" },
    { "originBehindTheSecond", project (R"("timeInfo": {"timeOrigin": "01:00:00:25"})"),
      "timeInfo: the timeOrigin 01:00:00:25 doesn't exist at this frame rate" },
    { "originThatIsDropped",
      project (R"("timeInfo": {"timeOrigin": "01:01:00:00", "frameRateNumerator": 30000,
                               "frameRateDenominator": 1001, "dropFrame": true})"),
      "timeInfo: the timeOrigin 01:01:00;00 doesn't exist at this frame rate" },
    { "actionBehindTheSecond", project (R"("timeInfo": {"firstFrameOfAction": "01:00:00:29"})"),
      "timeInfo: the firstFrameOfAction 01:00:00:29 doesn't exist at this frame rate" },
    { "nineReasons", project (R"("userReasons": ["1", "2", "3", "4", "5", "6", "7", "8", "9"])"),
      "userReasons: there are at most eight user reasons" },
    { "runBehindTheText", run (R"("start": 1, "end": 3)"),
      "events[0].text.runs[1].end: a whole number from 0 to 2 is expected" },
    { "runBeforeTheText", run (R"("start": -1)"),
      "events[0].text.runs[1].start: a whole number from 0 to 2 is expected" },
    { "runBackwards", run (R"("start": 2, "end": 1)"),
      "events[0].text.runs[1]: its end lies before its start" },
    { "colourByName", run (R"("colour": "red")"),
      "events[0].text.runs[1].colour: eight hexadecimal digits are expected, alpha first" },
    { "colourOfSixDigits", run (R"("colour": "ff0000")"),
      "events[0].text.runs[1].colour: eight hexadecimal digits are expected, alpha first" },

    // what no text may hold
    { "nulInText", secondEvent (R"("text": "a\u0000b")"), "events[1].text: the text holds a NUL character" },
    { "nulInName", project (R"("name": "\u0000")"), "name: the text holds a NUL character" },
    { "nulInID", project (R"("characters": [{"id": "c\u0000"}])"),
      "characters[0].id: the text holds a NUL character" },

    // made to hurt
    { "deepLists", std::string (100000, '['),
      "The text is nested too deeply for a project: it has more than 16 objects and lists within each other" },
    { "deepListsInside", project ("\"events\": " + std::string (100000, '[') + std::string (100000, ']')),
      "The text is nested too deeply for a project: it has more than 16 objects and lists within each other" },
};

class ProjectJSONMistakesTest : public OvermarksTest, public ::testing::WithParamInterface<Mistake>
{
};

TEST_P (ProjectJSONMistakesTest, isToldAndTheProjectStays)
{
    auto open = RandomProjects (3).make();
    const auto before = open;
    const auto textBefore = ProjectJSON::toText (open);

    EXPECT_EQ (ProjectJSON::fromText (GetParam().text, open).toStdString(), GetParam().message);
    EXPECT_EQ (open.list, before.list);
    EXPECT_EQ (open.characters, before.characters);
    EXPECT_EQ (open.timeInfo, before.timeInfo);
    EXPECT_EQ (ProjectJSON::toText (open), textBefore);
}

INSTANTIATE_TEST_SUITE_P (Mistakes, ProjectJSONMistakesTest, ::testing::ValuesIn (mistakes),
                          [] (const auto& row) { return std::string (row.param.name); });

class ProjectJSONHostileTest : public OvermarksTest
{
protected:
    static std::string smallProject()
    {
        std::ifstream stream (std::string (OVERMARKS_TEST_DATA) + "/list/small_project.json",
                              std::ios::binary);
        return { std::istreambuf_iterator<char> (stream), {} };
    }

    static std::string errorOf (const std::string& text)
    {
        auto open = Project::createEmpty (timeInfoAt ("25"));
        return ProjectJSON::fromText (text, open).toStdString();
    }
};

TEST_F (ProjectJSONHostileTest, everyTruncationOfAProjectIsToldAndHarmless)
{
    const auto text = smallProject();
    const auto closingBrace = text.find_last_of ('}');
    for (std::size_t length = 0; length <= closingBrace; ++length)
        ASSERT_EQ (errorOf (text.substr (0, length)).substr (0, 20), "The text is no JSON:") << length;
    EXPECT_EQ (errorOf (text.substr (0, closingBrace + 1)), "");
}

TEST_F (ProjectJSONHostileTest, everyByteOfAProjectMayBeDamaged)
{
    const auto text = smallProject();
    auto open = Project::createEmpty (timeInfoAt ("25"));
    const std::string damages { '\0', '"', '}', '9', '\xff', '[', '-' };
    for (std::size_t place = 0; place < text.size(); ++place)
    {
        auto damaged = text;
        damaged[place] = damages[place % damages.size()];
        const auto error = ProjectJSON::fromText (damaged, open);
        ASSERT_TRUE (error.isNotEmpty() || open.list->events.size() >= 2u) << place;
    }
}

TEST_F (ProjectJSONHostileTest, manyMembersOfOneObjectAreRefusedAtOnce)
{
    std::string members = "\"name\": \"\"";
    for (int i = 0; i < 200000; ++i)
        members += ",\"m" + std::to_string (i) + "\":0";
    EXPECT_EQ (errorOf (R"({"overmarks": 1, )" + members + "}"),
               "An object in the text has more members than any of a project: more than 64");
}

TEST_F (ProjectJSONHostileTest, sixtyFourMembersOfOneObjectAreStillLookedAt)
{
    const auto project = [] (int members)
    {
        std::string text = R"({"overmarks": 1)";
        for (int i = 1; i < members; ++i)
            text += ",\"m" + std::to_string (i) + "\":0";
        return text + "}";
    };

    EXPECT_EQ (errorOf (project (64)), R"(There is no member "m1")");
    EXPECT_EQ (errorOf (project (65)),
               "An object in the text has more members than any of a project: more than 64");
}

TEST_F (ProjectJSONHostileTest, aRunPerCharacterOfALongTextIsRead)
{
    std::string runs;
    for (int i = 0; i < 20000; ++i)
        runs +=
            (i == 0 ? "" : ",") + std::string (R"({"start": )") + std::to_string (i) + R"(, "bold": true})";
    EXPECT_EQ (errorOf (R"({"overmarks": 1, "events": [{"text": {"text": ")" + std::string (20000, 'x')
                        + R"(", "runs": [)" + runs + "]}}]}"),
               "");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
