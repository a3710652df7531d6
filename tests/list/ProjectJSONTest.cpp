// SPDX-License-Identifier: GPL-3.0-only
#include "list/ProjectJSON.h"

#include "support/CompareProjects.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"
#include "support/RandomProjects.h"
#include "support/UndoHistory.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <nlohmann/json.hpp>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ZEP::Core::ADRCharacter;
using ZEP::Core::RichTextString;
using json = nlohmann::ordered_json;

class ProjectJSONTest : public OvermarksTest
{
protected:
    static Project emptyProject() { return Project::createEmpty (timeInfoAt ("25")); }

    static Project load (const std::string& text)
    {
        auto project = emptyProject();
        EXPECT_EQ (ProjectJSON::fromText (text, project), juce::String()) << text.substr (0, 400);
        return project;
    }

    static juce::String utf8 (const char* text) { return juce::String (juce::CharPointer_UTF8 (text)); }

    /** A project with these events as the text tells them. */
    static Project withEvents (const std::string& events)
    {
        return load (R"({"overmarks": 1, "events": [)" + events + "]}");
    }

    /** The project of small_project.json. */
    static Project smallProject()
    {
        auto project = Project::createEmpty (timeInfoAt ("25", "01:00:00:00"));
        project.name = "Reel 1";
        project.timeInfo->setFirstFrameOfAction (ZEP::Core::TCToolbox::tcTimeFromString ("01:00:08:00"));
        project.list->sortKey = "CueNumber";
        project.list->sortDescending = true;
        project.userReasons = { "Dentist", "" };
        auto anna = std::make_shared<ADRCharacter> ("ANNA");
        anna->prefix = "A";
        anna->actor = "B. Miller";
        project.characters->addCharacter (anna, true, "c1");
        project.characters->addCharacter (std::make_shared<ADRCharacter> (""), true, "c2");

        for (const auto& fade : project.list->events)
        {
            setField (*fade, "streamerDuration", -1);
            setField (*fade, "reason", 0);
        }
        setField (*project.list->fadeInEvent, "uuid", juce::String ("u-in"));
        setField (*project.list->fadeOutEvent, "uuid", juce::String ("u-out"));
        project.list->events.insert (project.list->events.begin() + 1, annasLine());
        return project;
    }

    static std::shared_ptr<Event> annasLine()
    {
        auto line = event (EventTypeADRCue, "A1", 25, 100, 175);
        setField (*line, "uuid", juce::String ("u-1"));
        setField (*line, "characterID", juce::String ("c1"));
        setField (*line, "streamerDuration", 3);
        setField (*line, "text", hello());
        setField (*line, "notes", RichTextString ("a \"note\"\nof two lines"));
        RichTextString courier ("Courier");
        courier.setFont (juce::Font ("Courier", "Light", 14.0f));
        setField (*line, "engineeringNotes", courier);
        for (const auto* flag : { "done", "storedFlag", "isForcedNarrative" })
            setField (*line, flag, true);
        setField (*line, "enabled", false);
        setField (*line, "forcedNarrativeRegion", ForcedNarrativeRegionLeft);
        setField (*line, "recTrackIndex", 4);
        setField (*line, "numRecordedTakes", 7);
        setField (*line, "selectedTake", 2);
        setField (*line, "altTake", 6);
        setField (*line, "reason", 9);
        return line;
    }

    static RichTextString hello()
    {
        RichTextString text (utf8 ("Hello Zoë"));
        text.setFont ({ 0, 2 }, RichTextString::defaultFont().boldened());
        auto marked = RichTextString::defaultFont().withHeight (18.5f).italicised();
        marked.setUnderline (true);
        text.setFont ({ 6, 9 }, RichTextString::withStrikethrough (marked, true));
        text.setColour ({ 6, 9 }, juce::Colour (0x80ff0000));
        return text;
    }

    static std::string fileText (const std::string& name)
    {
        std::ifstream stream (std::string (OVERMARKS_TEST_DATA) + "/list/" + name, std::ios::binary);
        return { std::istreambuf_iterator<char> (stream), {} };
    }
};

TEST_F (ProjectJSONTest, aSmallProjectComesOutMemberByMember)
{
    EXPECT_EQ (ProjectJSON::toText (smallProject()), fileText ("small_project.json"));
}

TEST_F (ProjectJSONTest, aSmallProjectIsReadBack)
{
    EXPECT_EQ (differenceOf (load (fileText ("small_project.json")), smallProject()), "");
}

TEST_F (ProjectJSONTest, anEmptyProjectComesOutWithItsFades)
{
    const auto document = json::parse (ProjectJSON::toText (emptyProject()));
    EXPECT_EQ (document["events"].size(), 2u);
    EXPECT_EQ (document["events"][0]["type"], 16);
    EXPECT_EQ (document["events"][1]["type"], 32);
    EXPECT_EQ (document["characters"], json::array());
    EXPECT_EQ (document["userReasons"], json::array());
}

TEST_F (ProjectJSONTest, aListWithoutAnyEventIsAProperText)
{
    auto project = emptyProject();
    project.list->events.clear();
    EXPECT_EQ (json::parse (ProjectJSON::toText (project))["events"], json::array());
}

TEST_F (ProjectJSONTest, writingAndReadingLosesNothing)
{
    for (unsigned int seed = 1; seed <= 150; ++seed)
    {
        const auto project = RandomProjects (seed).make();
        const auto text = ProjectJSON::toText (project);
        auto back = emptyProject();
        ASSERT_EQ (ProjectJSON::fromText (text, back), juce::String()) << seed;
        ASSERT_EQ (differenceOf (back, project), "") << seed;
        ASSERT_EQ (ProjectJSON::toText (back), text) << seed;
    }
}

TEST_F (ProjectJSONTest, aSeasonsListIsWrittenAndRead)
{
    auto project = emptyProject();
    for (int i = 0; i < 20000; ++i)
        project.list->addEvent (cue (juce::String (i), i), false);
    EXPECT_EQ (differenceOf (load (ProjectJSON::toText (project)), project), "");
}

TEST_F (ProjectJSONTest, readingMakesNoStepAndTellsNobody)
{
    const auto text = ProjectJSON::toText (RandomProjects (7).make());
    const ListDiary diary;
    EventNews news;
    load (text);
    EXPECT_THAT (diary.entries, ElementsAre());
    EXPECT_EQ (news.count(), 0);
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (ProjectJSONTest, readingCountsNoReasonAndChangesNoCast)
{
    const auto anna = addCharacter ("ANNA");
    withEvents (R"({"reason": 9})");
    EXPECT_EQ (ZEP::Core::ADRCueReasonsManager::sharedManager()->reasonCount (10), 0);
    EXPECT_TRUE (Event::getADRCharacterMap()->contains (anna)) << "the project isn't made current";
}

TEST_F (ProjectJSONTest, aProjectMayBeNothingButItsVersion)
{
    const auto project = load (R"({"overmarks": 1})");
    EXPECT_EQ (frameOf (project), frameOf (Project::createEmpty (timeInfoAt ("25"))));
    ASSERT_EQ (project.list->events.size(), 2u);
    EXPECT_EQ (project.list->fadeInEvent, project.list->events[0]);
    EXPECT_EQ (project.list->fadeOutEvent, project.list->events[1]);
    EXPECT_EQ (project.list->sortKey, juce::String ("StartTCString"));
    EXPECT_EQ (project.list->filterParameters.size(), 4u);
    EXPECT_FALSE (project.timeInfo->tcDef.undefined);
}

TEST_F (ProjectJSONTest, missingFadesAreMadeWithoutATime)
{
    const auto project = withEvents (R"({"cueNumber": "A1", "type": 8})");
    ASSERT_EQ (project.list->events.size(), 3u);
    EXPECT_EQ (project.list->events[0]->getCueNumber(), juce::String ("A1"));
    EXPECT_EQ (project.list->fadeInEvent->getType(), EventTypeFadeIn);
    EXPECT_EQ (project.list->fadeOutEvent->getType(), EventTypeFadeOut);
    EXPECT_THAT (project.list->events, ::testing::Contains (project.list->fadeInEvent));
    EXPECT_THAT (project.list->events, ::testing::Contains (project.list->fadeOutEvent));
    EXPECT_EQ (timesOf (*project.list->fadeInEvent), "-1|-1..-1");
    EXPECT_EQ (project.list->fadeInEvent->getTimeInfo(), project.timeInfo);
}

TEST_F (ProjectJSONTest, anEventOfSeveralTypesIsAFadeAsItIsInAProjectFile)
{
    const auto project = withEvents (R"({"cueNumber": "A1", "type": 80})");
    EXPECT_EQ (project.list->events.size(), 2u);
    EXPECT_EQ (project.list->fadeInEvent->getCueNumber(), juce::String ("A1"));
}

TEST_F (ProjectJSONTest, oneMissingFadeIsMadeAndTheOtherKept)
{
    const auto project = withEvents (R"({"type": 32, "cueNumber": "mine"})");
    ASSERT_EQ (project.list->events.size(), 2u);
    EXPECT_EQ (project.list->fadeOutEvent->getCueNumber(), juce::String ("mine"));
    EXPECT_EQ (project.list->fadeInEvent, project.list->events[1]);
}

TEST_F (ProjectJSONTest, aListOfManyFadesHasTheFirstOfEachKind)
{
    const auto project =
        withEvents (R"({"type": 8}, {"type": 32, "cueNumber": "o1"}, {"type": 16, "cueNumber": "i1"},
                                        {"type": 32, "cueNumber": "o2"}, {"type": 16, "cueNumber": "i2"})");
    EXPECT_EQ (project.list->events.size(), 5u);
    EXPECT_EQ (project.list->fadeInEvent->getCueNumber(), juce::String ("i1"));
    EXPECT_EQ (project.list->fadeOutEvent->getCueNumber(), juce::String ("o1"));
}

TEST_F (ProjectJSONTest, whatAnEventLeavesOutIsThatOfANewOne)
{
    for (const auto type : { EventTypeADRCue, EventTypeStreamer, EventTypeMarker, EventTypeFlutter })
    {
        auto expected = makeEvent (type, 1000);
        const auto project =
            withEvents (R"({"type": )" + std::to_string (type) + R"(, "inPointFrameIndex": 1000})");
        auto& read = *project.list->events[0];
        EXPECT_FALSE (read.getUuid().isEmpty());
        EXPECT_NE (read.getUuid(), expected->getUuid());
        setField (read, "uuid", expected->getUuid());
        EXPECT_EQ (differenceOf (read, *expected), "") << type;
        EXPECT_EQ (read.getTimeReference(), expected->getTimeReference());
    }
}

TEST_F (ProjectJSONTest, anEventWithoutAnythingIsAnUntimedLineOfDialogue)
{
    const auto project = withEvents ("{}, {}");
    auto expected = makeUntimedEvent (EventTypeADRCue);
    auto& read = *project.list->events[0];
    EXPECT_NE (read.getUuid(), project.list->events[1]->getUuid());
    setField (read, "uuid", expected->getUuid());
    EXPECT_EQ (differenceOf (read, *expected), "");
}

TEST_F (ProjectJSONTest, anEmptyIdentityIsNone)
{
    const auto project = withEvents (R"({"uuid": "", "cueNumber": "A1"}, {"uuid": "", "cueNumber": "A2"})");
    const auto& events = project.list->events;
    EXPECT_FALSE (events[0]->getUuid().isEmpty());
    EXPECT_FALSE (events[1]->getUuid().isEmpty());
    EXPECT_NE (events[0]->getUuid(), events[1]->getUuid());
}

TEST_F (ProjectJSONTest, frameIndicesLoadAsTheyStand)
{
    const auto project = withEvents (
        R"({"startFrameIndex": 900, "inPointFrameIndex": -2147483648, "endFrameIndex": 2147483647},
                                        {"inPointFrameIndex": 2147483647, "endFrameIndex": -2147483648, "streamerDuration": 2147483647},
                                        {"type": 1, "startFrameIndex": -1, "inPointFrameIndex": 2147483647, "streamerDuration": -2147483648},
                                        {"type": 4, "startFrameIndex": -1, "inPointFrameIndex": 2147483647, "endFrameIndex": -1, "streamerDuration": 2147483647},
                                        {"type": 2, "startFrameIndex": 5, "inPointFrameIndex": -1, "endFrameIndex": -1})");
    EXPECT_EQ (timesOf (*project.list->events[0]), "900|-2147483648..2147483647");
    EXPECT_EQ (project.list->events[1]->getInPointFrameIndex(), 2147483647);
    EXPECT_EQ (project.list->events[1]->getEndFrameIndex(), -2147483648);
    EXPECT_EQ (timesOf (*project.list->events[2]).substr (0, 13), "-1|2147483647");
    EXPECT_EQ (timesOf (*project.list->events[3]), "-1|2147483647..-1");
    EXPECT_EQ (timesOf (*project.list->events[4]), "5|-1..-1");
}

TEST_F (ProjectJSONTest, aTextMayBeAPlainString)
{
    const auto project =
        withEvents (R"({"text": "Hello Zo\u00eb", "notes": "", "engineeringNotes": {"text": "only"}})");
    const auto& read = *project.list->events[0];
    EXPECT_EQ (read.getText(), RichTextString (utf8 ("Hello Zoë")));
    EXPECT_EQ (read.getNotes(), RichTextString());
    EXPECT_EQ (read.getEngineeringNotes(), RichTextString ("only"));
}

TEST_F (ProjectJSONTest, whatARunLeavesOutIsThatOfPlainText)
{
    const auto project = withEvents (R"({"text": {"runs": [{"bold": true}], "text": "Go"}},
                                        {"text": {"text": "Go", "runs": [{"start": 1, "colour": "FF00FF00"}]}},
                                        {"text": {"text": "Go", "runs": [{}, {"start": 1, "end": 1, "bold": true}]}})");
    RichTextString bold ("Go"), green ("Go");
    bold.setFont (RichTextString::defaultFont().boldened());
    green.setColour ({ 1, 2 }, juce::Colour (0xff00ff00));
    EXPECT_EQ (project.list->events[0]->getText(), bold) << "the members may stand in any order";
    EXPECT_EQ (project.list->events[1]->getText(), green);
    EXPECT_TRUE (project.list->events[2]->getText().isPlain());
}

TEST_F (ProjectJSONTest, aLaterRunLiesOverAnEarlierOne)
{
    const auto project = withEvents (
        R"({"text": {"text": "Hello", "runs": [{"start": 0, "end": 4, "bold": true}, {"start": 2, "end": 5, "italic": true}]}})");
    RichTextString expected ("Hello");
    expected.setFont ({ 0, 2 }, RichTextString::defaultFont().boldened());
    expected.setFont ({ 2, 5 }, RichTextString::defaultFont().italicised());
    EXPECT_EQ (project.list->events[0]->getText(), expected);
}

TEST_F (ProjectJSONTest, membersMayStandInAnyOrder)
{
    const auto project =
        load (R"({"events": [{"characterID": "c1"}], "characters": [{"name": "ANNA", "id": "c1"}],
                                   "timeInfo": {"dropFrame": true, "framesPerSecond": 30, "timeOrigin": "01:00:00;00",
                                                "frameRateDenominator": 1001, "frameRateNumerator": 30000},
                                   "overmarks": 1})");
    EXPECT_EQ (project.list->events[0]->getTimeInfo(), project.timeInfo);
    EXPECT_EQ (
        frameOf (project),
        "name \norigin 01:00:00;00\naction 01:00:00;00\nrate 30000/1001 30 drop\nsort StartTCString up\n"
        "character c1|ANNA||");
}

TEST_F (ProjectJSONTest, aCharacterWithoutAnIdentifierGetsOne)
{
    const auto project =
        load (R"({"overmarks": 1, "characters": [{"name": "ANNA"}, {"id": "", "name": "BEN"}, {}]})");
    const auto& ids = project.characters->characterIDs();
    ASSERT_EQ (ids.size(), 3u);
    for (const auto& id : ids)
        EXPECT_EQ (id.length(), 36) << id;
}

TEST_F (ProjectJSONTest, theReasonsAtTheEndsOfTheTableAreRead)
{
    EXPECT_EQ (withEvents (R"({"reason": 0})").list->events[0]->getReason(), 0);
    EXPECT_EQ (withEvents (R"({"reason": 40})").list->events[0]->getReason(), 40);
}

TEST_F (ProjectJSONTest, anEventThatIsInTheListTwiceComesBackTwice)
{
    auto project = emptyProject();
    const auto twice = cue ("A1", 100);
    project.list->addEvents ({ twice, twice }, false);
    const auto back = load (ProjectJSON::toText (project));
    EXPECT_EQ (differenceOf (back, project), "");
    EXPECT_NE (back.list->events[2], back.list->events[3]) << "as two events with the same identity";
}

TEST_F (ProjectJSONTest, theListIsNotSortedByReading)
{
    const auto project = withEvents (
        R"({"inPointFrameIndex": 500, "cueNumber": "late"}, {"inPointFrameIndex": 100, "cueNumber": "early"})");
    EXPECT_EQ (project.list->events[0]->getCueNumber(), juce::String ("late"));
    EXPECT_TRUE (project.list->filteredEvents.empty());
    project.list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (project.list->filteredEvents), ElementsAre ("early", "late"));
}

TEST_F (ProjectJSONTest, aByteOrderMarkAndBlanksAroundTheTextDoNotMatter)
{
    load ("\xef\xbb\xbf{\"overmarks\": 1}");
    load (" \n\t{\"overmarks\": 1}\r\n ");
}

TEST_F (ProjectJSONTest, aTempoThatIsNoNumberIsWrittenAsNone)
{
    auto project = emptyProject();
    for (const float tempo :
         { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity() })
    {
        setField (*project.list->fadeInEvent, "beatsPerMinute", tempo);
        EXPECT_EQ (load (ProjectJSON::toText (project)).list->fadeInEvent->getBeatsPerMinute(), -1.0f);
    }
}

TEST_F (ProjectJSONTest, aCharacterThatNoTextCanHoldIsReplacedNotFatal)
{
    auto project = emptyProject();
    project.name = "a" + juce::String::charToString (static_cast<juce::juce_wchar> (0xd800)) + "b";
    setField (*project.list->fadeInEvent, "cueNumber", project.name);
    const auto back = load (ProjectJSON::toText (project));
    EXPECT_TRUE (back.name.startsWith (utf8 ("a\xef\xbf\xbd"))) << back.name;
    EXPECT_TRUE (back.name.endsWith ("b"));
    EXPECT_EQ (back.list->fadeInEvent->getCueNumber(), back.name);
}

// ---- settings of documents ---------------------------------------------------------------------------------------------

TEST_F (ProjectJSONTest, theSettingsOfDocumentsComeBack)
{
    auto project = emptyProject();
    project.documents.studioName = "Harbour Sound";
    project.documents.layout = 2;
    project.documents.byCharacter = true;

    const auto text = ProjectJSON::toText (project);

    EXPECT_EQ (json::parse (text)["documents"],
               json::parse (R"({"studioName": "Harbour Sound", "layout": 2, "byCharacter": true})"));
    EXPECT_EQ (load (text).documents, project.documents);
}

TEST_F (ProjectJSONTest, settingsThatNobodyHasChosenAreNotWritten)
{
    EXPECT_FALSE (json::parse (ProjectJSON::toText (emptyProject())).contains ("documents"));
}

// ---- events before the time reference ------------------------------------------------------------------------------------

TEST_F (ProjectJSONTest, eventsMayStandBeforeTheTimeReferenceThatTheyCountBy)
{
    const std::string overmarks = R"("overmarks": 1)", time = R"("timeInfo": {"framesPerSecond": 50})",
                      events = R"("events": [{"type": 8, "inPointFrameIndex": 500}, {"cueNumber": "A2"}])";
    std::vector<std::string> members { events, overmarks, time };
    const auto expected = load ("{" + overmarks + "," + time + "," + events + "}");
    EXPECT_EQ (expected.list->events[0]->getStartTCString(), juce::String ("00:00:10:00"));

    std::sort (members.begin(), members.end());
    do
    {
        auto text = "{" + members[0] + "," + members[1] + "," + members[2] + "}";
        const auto back = load (text);
        ASSERT_EQ (back.list->events.size(), 4u) << text;
        EXPECT_EQ (back.list->events[0]->getStartTCString(), juce::String ("00:00:10:00")) << text;
        EXPECT_EQ (back.list->events[0]->getStartFrameIndex(),
                   expected.list->events[0]->getStartFrameIndex());
        EXPECT_EQ (back.list->events[1]->getCueNumber(), juce::String ("A2")) << text;
    } while (std::next_permutation (members.begin(), members.end()));
}

TEST_F (ProjectJSONTest, aListOfListsIsNoListOfEvents)
{
    Project project;
    EXPECT_EQ (ProjectJSON::fromText (R"([[{"overmarks": 1}], [{}]])", project),
               juce::String (R"(The text: an Overmarks project in JSON begins with the member "overmarks")"));
    EXPECT_EQ (ProjectJSON::fromText (R"({"overmarks": 1, "timeInfo": {}, "events": [{}, 5]})", project),
               juce::String ("events[1]: an object in braces is expected"));
    EXPECT_EQ (ProjectJSON::fromText (R"({"overmarks": 1, "documents": {"studio": ""}})", project),
               juce::String (R"(There is no member "documents.studio")"));
}

// ---- what a table shows ------------------------------------------------------------------------------------------------

TEST_F (ProjectJSONTest, shownEventsCarryTheirTimecodesAndNames)
{
    auto project = smallProject();
    project.makeCurrent();
    project.list->setTimeInfoForAllEvents (project.timeInfo);
    auto& line = project.list->events[1];
    line->setHiddenByFilter (true);

    const auto shown = json::parse (ProjectJSON::shownEvents ({ line, project.list->fadeInEvent }));
    auto expected = json::parse (fileText ("small_project.json"))["events"][1];
    expected["startTC"] = "01:00:04:00";
    expected["endTC"] = "01:00:07:00";
    expected["character"] = "ANNA";
    expected["actor"] = "B. Miller";
    expected["isHiddenByFilter"] = true;
    ASSERT_EQ (shown.size(), 1u);
    ASSERT_EQ (shown["events"].size(), 2u);
    EXPECT_EQ (shown["events"][0].dump(), expected.dump()) << "the same members in the same order";
    EXPECT_EQ (shown["events"][1]["startTC"], "--:--:--:--");
    EXPECT_EQ (shown["events"][1]["character"], "");
    EXPECT_EQ (shown["events"][1]["isHiddenByFilter"], false);
}

TEST_F (ProjectJSONTest, nothingShownIsAnEmptyList)
{
    EXPECT_EQ (json::parse (ProjectJSON::shownEvents ({})), json::parse (R"({"events": []})"));
}

// ---- in parts ----------------------------------------------------------------------------------------------------------

TEST_F (ProjectJSONTest, partsAreShortAndMakeTheWholeWithEveryCharacterInOneOfThem)
{
    auto project = emptyProject();

    for (int i = 0; i < 1000; ++i)
    {
        const auto event = makeEvent (EventTypeADRCue, i, i + 1);
        event->setText (RichTextString (juce::String::repeatedString (utf8 ("ü€😀"), 1 + i % 40)));
        project.list->addEvent (event, false);
    }

    project.makeCurrent();
    const auto expectWhole = [&project] (const std::vector<std::string>& parts, const std::string& whole)
    {
        std::string joined;

        for (const auto& part : parts)
        {
            EXPECT_LT (part.size(), 70000u);
            EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (part.data(), static_cast<int> (part.size())));
            joined += part;
        }

        EXPECT_GT (parts.size(), 5u);
        EXPECT_EQ (joined, whole);
        const auto events = json::parse (joined).at ("events");
        ASSERT_EQ (events.size(), project.list->events.size());

        for (std::size_t i = 0; i < events.size(); ++i)
            EXPECT_EQ (events[i].at ("uuid"), project.list->events[i]->getUuid().toStdString());
    };
    std::vector<std::string> parts;
    const auto take = [&parts] (const std::string& part) { parts.push_back (part); };

    ProjectJSON::write (project, take);
    expectWhole (parts, ProjectJSON::toText (project));
    parts.clear();
    ProjectJSON::writeShownEvents (project.list->events, take);
    expectWhole (parts, ProjectJSON::shownEvents (project.list->events));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
