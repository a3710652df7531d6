// SPDX-License-Identifier: GPL-3.0-only
// A list that goes out as the library's own table and comes back: what the table carries must not change.
#include "export/frame/EventExporter.h"
#include "export/frame/EventExporterFactory.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>

#include <random>

namespace ZEP::Overmarks::Testing
{

namespace
{

using ZEP::Core::ADRCharacterMap;
using ZEP::Core::RichTextString;
using ZEP::Core::TimeInfo;

using Events = std::vector<std::shared_ptr<Event>>;

class CSVRoundTripTest : public OvermarksTest
{
protected:
    CSVRoundTripTest() { folder.createDirectory(); }
    ~CSVRoundTripTest() override { folder.deleteRecursively(); }

    void writeTable (const Events& events) const
    {
        auto settings = std::make_shared<EventExportSettingsSet>();
        settings->exportType = EventExportTypeCSV;
        settings->events = events;
        settings->outputDirectory = folder.getFullPathName();
        settings->fileName = "list";
        settings->options[EventExportCSVDelimiterKey] = 1;
        settings->options[EventExportCSVTemplateKey] = 0;
        ASSERT_EQ (EventExporterFactory::eventExporter (settings)->exportEventsByTimecode(), juce::String());
    }

    /** Reads the table into a cast of its own, which is the current one afterwards. */
    EventRowResult readTable (const std::shared_ptr<TimeInfo>& info) const
    {
        juce::String error;
        const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
            folder.getChildFile ("list.csv").getFullPathName(), error, {}, info);
        EXPECT_EQ (error, juce::String());
        EXPECT_TRUE (EventRowReader::adoptOwnTableColumns (importer->rows, importer->columnMap));
        const auto cast = std::make_shared<ADRCharacterMap>();
        auto result = EventRowReader (info, cast).read (*importer);
        Event::setADRCharacterMap (cast);
        return result;
    }

    const juce::File folder = juce::File::createTempFile ("roundtrip");
};

/** What the table carries of an event, as one line. Line breaks become blanks, and takes, tracks and looks stay behind. */
juce::String carried (const Event& event, const std::shared_ptr<ZEP::Core::ADRCharacter>& who)
{
    juce::StringArray items { event.typeString(),
                              juce::String (event.getStartFrameIndex()),
                              juce::String (event.getInPointFrameIndex()),
                              juce::String (event.getEndFrameIndex()),
                              juce::String (event.getStreamerDuration()),
                              juce::String (event.getBeatsPerMinute(), 3),
                              event.getText().getText(),
                              event.getNotes().getText(),
                              event.getEngineeringNotes().getText(),
                              event.getCueNumber(),
                              event.isDone() ? "done" : "open",
                              event.isEnabled() ? "on" : "off",
                              juce::String (event.getNumRecordedTakes()),
                              juce::String (event.getReason()),
                              event.isForcedNarrative() ? "FN" : "",
                              juce::String (event.getForcedNarrativeRegion()) };

    if (who != nullptr)
        items.addArray ({ who->name, who->prefix, who->actor });

    return items.joinIntoString (" | ");
}

juce::String randomText (std::mt19937& random)
{
    static const juce::StringArray words { "hello",
                                           "\"quoted\"",
                                           "comma,",
                                           "semi;colon",
                                           "tab",
                                           "caf\xc3\xa9",
                                           "na\xc3\xafve",
                                           "\xe6\x9d\xb1\xe4\xba\xac",
                                           "\xf0\x9f\x8e\xac",
                                           "O'Hara",
                                           "(breath)",
                                           "50%",
                                           "=1+1",
                                           "[AR4]",
                                           "-" };
    juce::StringArray text;

    for (auto i = random() % 6; i > 0; --i)
        text.add (juce::String::fromUTF8 (
            words[static_cast<int> (random() % static_cast<unsigned> (words.size()))].toRawUTF8()));

    return text.joinIntoString (" ");
}

Events randomList (std::mt19937& random, const std::shared_ptr<TimeInfo>& info)
{
    const EventType types[] = { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeADRCue,
                                EventTypeADRCue };
    const int seconds[] = { 1, 2, 3, 4, 5, 267, 333 };
    const int frames[] = { 1, 4, 8, 12 };
    std::vector<juce::String> cast;

    for (int i = 0; i < 5; ++i)
        cast.push_back (addCharacter ("ROLE \"" + juce::String (i) + "\"", "Actor, " + juce::String (i),
                                      "P" + juce::String (i)));

    Events events;

    for (int i = 0; i < 40; ++i)
    {
        const auto type = types[random() % std::size (types)];
        const bool isTimed = random() % 8 != 0;
        const int in = isTimed ? static_cast<int> (random() % 90000) + 200 : -1;
        const int code = type == EventTypeFlutter  ? frames[random() % std::size (frames)]
                         : type == EventTypeMarker ? -1
                                                   : seconds[random() % std::size (seconds)];
        const int end = ! isTimed || type == EventTypeStreamer ? -1
                        : type == EventTypeFlutter             ? in + code
                                                               : in + 1 + static_cast<int> (random() % 200);
        auto event = makeEvent (type, in, end, code, -1.0f, info);
        withoutUndo (*event,
                     [&] (Event& e)
                     {
                         e.setText (RichTextString (randomText (random)));
                         e.setNotes (RichTextString (randomText (random)));
                         e.setEngineeringNotes (RichTextString (randomText (random)));
                         e.setCueNumber (randomText (random).trim());
                         e.setDone (random() % 2 == 0);
                         e.setEnabled (random() % 4 != 0);
                         e.setNumRecordedTakes (static_cast<int> (random() % 20));
                         e.setReason (static_cast<int> (random() % 33));
                         e.setIsForcedNarrative (random() % 3 == 0);
                         e.setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (random() % 4));
                         e.setCharacterID (random() % 5 == 0 ? juce::String() : cast[random() % cast.size()]);
                     });
        events.push_back (event);
    }

    return events;
}

TEST_F (CSVRoundTripTest, everythingThatTheTableCarriesComesBack)
{
    for (unsigned seed = 1; seed <= 25; ++seed)
    {
        const auto* rate = seed % 3 == 0 ? "29.97df" : seed % 3 == 1 ? "25" : "23.976";
        const auto info = timeInfoAt (rate, "01:00:00:00");
        Event::setADRCharacterMap (std::make_shared<ADRCharacterMap>());
        std::mt19937 random (seed);
        const auto events = randomList (random, info);
        std::vector<juce::String> expected;

        for (const auto& event : events)
            expected.push_back (carried (*event, event->character()));

        writeTable (events);
        const auto result = readTable (info);
        ASSERT_EQ (result.events.size(), events.size()) << "seed " << seed;

        for (const auto& problem : result.problems)
            ADD_FAILURE() << "seed " << seed << ", row " << problem.row << ", " << problem.column << ": "
                          << problem.message;

        for (std::size_t i = 0; i < events.size(); ++i)
            EXPECT_EQ (carried (*result.events[i], result.events[i]->character()), expected[i])
                << "seed " << seed << ", event " << i;
    }
}

TEST_F (CSVRoundTripTest, aStreamerInBarsKeepsItsTempo)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    const auto info = timeInfoAt ("24");
    const auto streamer = makeEvent (EventTypeStreamer, 2000, -1, 4, 96.0f, info);
    const auto expected = carried (*streamer, nullptr);
    writeTable ({ streamer });
    const auto result = readTable (info);
    ASSERT_EQ (result.events.size(), 1u);
    EXPECT_EQ (result.problems.size(), 0u);
    EXPECT_EQ (carried (*result.events[0], nullptr), expected);
}

TEST_F (CSVRoundTripTest, lineBreaksOfATextBecomeBlanks)
{
    const auto info = timeInfoAt ("25");
    const auto cue = makeEvent (EventTypeADRCue, 500, 600, 3, -1.0f, info);
    withoutUndo (*cue, [] (Event& e) { e.setText (RichTextString ("first\nsecond")); });
    writeTable ({ cue });
    EXPECT_EQ (readTable (info).events.at (0)->getText().getText(), juce::String ("first second"));
}

} // namespace

} // namespace ZEP::Overmarks::Testing
