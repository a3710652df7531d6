// SPDX-License-Identifier: GPL-3.0-only
// A list that goes out as TTAL and comes back: what the format carries must not change.
#include "core/timecode/TCToolbox.h"
#include "export/frame/EventExporter.h"
#include "export/frame/EventExporterFactory.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
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

class TTALRoundTripTest : public OvermarksTest
{
protected:
    TTALRoundTripTest() { folder.createDirectory(); }
    ~TTALRoundTripTest() override { folder.deleteRecursively(); }

    void write (const Events& events) const
    {
        auto settings = std::make_shared<EventExportSettingsSet>();
        settings->exportType = EventExportTypeTTAL;
        settings->events = events;
        settings->outputDirectory = folder.getFullPathName();
        settings->fileName = "list";
        settings->timelineSettings.language = "en-GB";
        ASSERT_EQ (EventExporterFactory::eventExporter (settings)->exportEventsByTimecode(), juce::String());
    }

    std::shared_ptr<EventFileImporter> read (const std::shared_ptr<TimeInfo>& info) const
    {
        juce::String error;
        auto importer = EventFileImporterFactory::fileImporterWithFilepath (
            folder.getChildFile ("list.ttal").getFullPathName(), error, {}, info);
        EXPECT_EQ (error, juce::String());
        return importer;
    }

    /** The events of the file, with a cast of their own, which is the current one afterwards. */
    EventRowResult readEvents (const std::shared_ptr<TimeInfo>& info) const
    {
        const auto cast = std::make_shared<ADRCharacterMap>();
        auto result = EventRowReader (info, cast).read (*read (info));
        Event::setADRCharacterMap (cast);
        return result;
    }

    const juce::File folder = juce::File::createTempFile ("roundtrip");
};

juce::String lookOf (const RichTextString& text)
{
    juce::String looks;

    for (const auto& run : text.formattedRuns())
        looks << run.range.getStart() << "-" << run.range.getEnd() << (run.font.isBold() ? " bold " : "")
              << (run.font.isItalic() ? " italic " : "");

    return looks;
}

/** What the format carries of an event, as one line. */
juce::String carried (const Event& event)
{
    juce::StringArray items { juce::String (event.getInPointFrameIndex()),
                              juce::String (event.getEndFrameIndex()),
                              event.getCueNumber(),
                              event.getText().getText(),
                              event.getNotes().getText(),
                              event.isForcedNarrative() ? "FN" : lookOf (event.getText()) };

    if (event.isForcedNarrative())
        items.add (juce::String (event.getForcedNarrativeRegion()));

    if (const auto who = event.character())
        items.addArray ({ event.getCharacterID(), who->name });

    return items.joinIntoString (" | ");
}

RichTextString randomText (std::mt19937& random)
{
    static const std::vector<std::string> words { "hello",   "\"quoted\"", "back\\slash", "two\nlines",
                                                  "tab\t",   "café",       "東京",        "🎬",
                                                  "{brace}", "(breath)",   "\\u0041",     "" };
    std::string text;

    for (auto i = random() % 6; i > 0; --i)
        text += words[random() % words.size()] + " ";

    RichTextString rich (juce::String::fromUTF8 (text.c_str()));
    const auto at = [&] { return static_cast<int> (random() % static_cast<unsigned> (rich.length() + 1)); };

    for (auto i = random() % 3; i > 0; --i)
    {
        const auto range = juce::Range<int>::between (at(), at());
        if (! range.isEmpty())
            rich.setFont (range, random() % 2 == 0 ? juce::Font().boldened() : juce::Font().italicised());
    }

    return rich;
}

Events randomList (std::mt19937& random, const std::shared_ptr<TimeInfo>& info)
{
    std::vector<juce::String> cast { {} };

    for (int i = 0; i < 5; ++i)
        cast.push_back (addCharacter ("ROLE \"" + juce::String (i) + "\""));

    Events events;

    for (int i = 0; i < 300; ++i)
    {
        const auto in = static_cast<int> (random() % 100000);
        const auto event =
            makeEvent (EventTypeADRCue, in, in + static_cast<int> (random() % 500), 3, -1.0f, info);
        withoutUndo (*event,
                     [&] (Event& e)
                     {
                         e.setCueNumber ("R" + juce::String (i));
                         e.setText (randomText (random));
                         e.setNotes (RichTextString (randomText (random).getText()));
                         e.setCharacterID (cast[random() % cast.size()]);
                         e.setIsForcedNarrative (random() % 4 == 0);
                         e.setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (random() % 4));
                     });
        events.push_back (event);
    }

    return events;
}

TEST_F (TTALRoundTripTest, whatTheFormatCarriesComesBackAsItWas)
{
    for (const unsigned seed : { 1u, 2u, 3u, 4u })
    {
        const char* const rates[] = { "25", "29.97df", "23.976", "60" };
        const auto info = timeInfoAt (rates[seed % 4], "01:00:00:00");
        Event::setADRCharacterMap (std::make_shared<ADRCharacterMap>());
        std::mt19937 random (seed);
        const auto events = randomList (random, info);
        std::vector<juce::String> expected;

        for (const auto& event : events)
            expected.push_back (carried (*event));

        write (events);
        const auto result = readEvents (info);
        ASSERT_EQ (result.events.size(), events.size()) << "seed " << seed;

        for (const auto& problem : result.problems)
            ADD_FAILURE() << "seed " << seed << ", row " << problem.row << ", " << problem.column << ": "
                          << problem.message;

        for (std::size_t i = 0; i < events.size(); ++i)
            EXPECT_EQ (carried (*result.events[i]), expected[i]) << "seed " << seed << ", event " << i;
    }
}

TEST_F (TTALRoundTripTest, theLanguageComesBack)
{
    const auto info = timeInfoAt ("25");
    write ({ makeEvent (EventTypeADRCue, 500, 600, 3, -1.0f, info) });
    EXPECT_EQ (read (info)->languageCode(), "en-GB");
}

TEST_F (TTALRoundTripTest, aListComesBackEarlierByTheFramesBeforeTheAction)
{
    const auto info = timeInfoAt ("25");
    info->setFirstFrameOfAction (ZEP::Core::TCToolbox::tcTimeFromString ("01:00:00:00"));
    write ({ makeEvent (EventTypeADRCue, 90050, 90100, 3, -1.0f, info) });
    EXPECT_EQ (read (info)->rows.at (0).at (0).getText(), "00:00:02:00");
}

TEST_F (TTALRoundTripTest, aRateThatTheFormatLacksCannotBeReadBack)
{
    const auto info = timeInfoAt ("48");
    write ({ makeEvent (EventTypeADRCue, 500, 600, 3, -1.0f, info) });
    juce::String error;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
        folder.getChildFile ("list.ttal").getFullPathName(), error, {}, info);
    EXPECT_EQ (error, "FPS value in metadata block is either not present or set to an invalid value.");
}

} // namespace

} // namespace ZEP::Overmarks::Testing
