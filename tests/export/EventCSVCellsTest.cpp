// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/UserDefaults.h"
#include "event/EventKeyValueEditor.h"
#include "export/EventCSVExporter.h"
#include "export/ExportSupport.h"
#include "preferences/PreferenceKeys.h"

#include <limits>

using namespace ExportSupport;
using KV = EventKeyValueEditor;

namespace
{

class CSVCellTest : public ExportTest
{
protected:
    CSVCellTest() { exporter.delimiter = 1; }

    std::string cell (const std::shared_ptr<Event>& from, const juce::String& key, int track = -1)
    {
        return exporter.csvCellValue (from, key, track).toStdString();
    }

    EventCSVExporter exporter { settings };
};

} // namespace

TEST_F (CSVCellTest, theTimesAreTheInPointAndTheEnd)
{
    const auto cue = event ({ "1", oneHour, oneHour + 50 });
    EXPECT_EQ (cell (cue, KV::KV_StartTCString), "\"01:00:00:00\",");
    EXPECT_EQ (cell (cue, KV::KV_EndTCString), "\"01:00:02:00\",");
}

TEST_F (CSVCellTest, aTimeThatIsNotSetIsDashes)
{
    const auto cue = event ({ "1", -1, -1 });
    EXPECT_EQ (cell (cue, KV::KV_StartTCString), "\"--:--:--:--\",");
    EXPECT_EQ (cell (cue, KV::KV_EndTCString), "\"--:--:--:--\",");
}

TEST_F (CSVCellTest, aTextIsOneLineWithDoubledQuotesAndNoStars)
{
    EXPECT_EQ (cell (event ({ "1", 0, 25, "", "say \"hi\"**now\nor" }), KV::KV_Text),
               "\"say \"\"hi\"\"now or\",");
}

TEST_F (CSVCellTest, bothCharactersOfALineBreakBecomeBlanks)
{
    EXPECT_EQ (cell (event ({ "1", 0, 25, "", "a\r\nb" }), KV::KV_Text), "\"a  b\",");
}

TEST_F (CSVCellTest, starsStayEverywhereButInTheText)
{
    auto cue = event ({ "1**", 0, 25, "", "", "a**b" });
    cue->setEngineeringNotes (juce::String ("c**d"));
    EXPECT_EQ (cell (cue, KV::KV_Notes), "\"a**b\",");
    EXPECT_EQ (cell (cue, KV::KV_EngineeringNotes), "\"c**d\",");
    EXPECT_EQ (cell (cue, KV::KV_CueNumber), "\"1**\",");
}

TEST_F (CSVCellTest, notesAreOneLineWithDoubledQuotes)
{
    auto cue = event ({ "1", 0, 25, "", "", "a \"b\"\r\nc" });
    cue->setEngineeringNotes (juce::String ("d\n\"e\""));
    EXPECT_EQ (cell (cue, KV::KV_Notes), "\"a \"\"b\"\"  c\",");
    EXPECT_EQ (cell (cue, KV::KV_EngineeringNotes), "\"d \"\"e\"\"\",");
}

TEST_F (CSVCellTest, notesLoseTheirQuotesForDSTaker)
{
    settings->options[EventExportCSVTemplateKey] = 1;
    auto cue = event ({ "1", 0, 25, "", "", "a \"b\"\r\nc" });
    cue->setEngineeringNotes (juce::String ("\"e\""));
    EXPECT_EQ (cell (cue, KV::KV_Notes), "\"a b  c\",");
    EXPECT_EQ (cell (cue, KV::KV_EngineeringNotes), "\"\"\"e\"\"\",");
}

TEST_F (CSVCellTest, whatWordProcessorsPutInIsMadePlain)
{
    tessera1::ProtoOvermark proto;
    proto.set_text ("\xe2\x80\x9cHi\xe2\x80\x9d");
    proto.set_notes ("it\xe2\x80\x99s");
    proto.set_engineeringnotes ("a\xc2\xa0"
                                "b");
    const auto cue = stored (proto);
    EXPECT_EQ (cell (cue, KV::KV_Text), "\"\"\"Hi\"\"\",");
    EXPECT_EQ (cell (cue, KV::KV_Notes), "\"it's\",");
    EXPECT_EQ (cell (cue, KV::KV_EngineeringNotes), "\"a b\",");
}

TEST_F (CSVCellTest, aFormattedTextIsWrittenWithoutItsFormat)
{
    auto cue = event ({ "1" });
    ZEP::Core::RichTextString words (juce::String ("loud words"));
    words.setFont ({ 0, 4 }, juce::Font (20.0f, juce::Font::bold));
    cue->setText (words);
    EXPECT_EQ (cell (cue, KV::KV_Text), "\"loud words\",");
}

TEST_F (CSVCellTest, theCharacterHasThreeColumns)
{
    addCharacter ("a", "Ann \"The\" Boss", "A\"", "Mary, \"M\"");
    const auto cue = event ({ "1", 0, 25, "a" });
    EXPECT_EQ (cell (cue, KV::KV_CharacterID), "\"Ann \"\"The\"\" Boss\",");
    EXPECT_EQ (cell (cue, KV::KV_CharPrefix), "\"A\"\"\",");
    EXPECT_EQ (cell (cue, KV::KV_Actor), "\"Mary, \"\"M\"\"\",");
}

TEST_F (CSVCellTest, aCharacterIsToldAlsoForWhatIsNoCue)
{
    addCharacter ("a", "Ann", "AN", "Mary");
    auto marker = event ({ "1", 0, 25, "a" }, EventTypeMarker);
    EXPECT_EQ (cell (marker, KV::KV_CharacterID), "\"Ann\",");
    EXPECT_EQ (cell (marker, KV::KV_CharPrefix), "\"AN\",");
    EXPECT_EQ (cell (marker, KV::KV_Actor), "\"Mary\",");
}

TEST_F (CSVCellTest, withoutACharacterTheThreeColumnsAreEmpty)
{
    for (const auto* id : { "", "gone" })
        for (const auto& key : { KV::KV_CharacterID, KV::KV_CharPrefix, KV::KV_Actor })
            EXPECT_EQ (cell (event ({ "1", 0, 25, id }), key), "\"\",");

    Event::setADRCharacterMap (nullptr);
    EXPECT_EQ (cell (event ({ "1", 0, 25, "a" }), KV::KV_Actor), "\"\",");
}

TEST_F (CSVCellTest, aCueNumberHasItsQuotesDoubled)
{
    EXPECT_EQ (cell (event ({ "12 \"A\"" }), KV::KV_CueNumber), "\"12 \"\"A\"\"\",");
}

TEST_F (CSVCellTest, doneIsQuotedAndEnabledIsNot)
{
    auto cue = event ({ "1" });
    EXPECT_EQ (cell (cue, KV::KV_Done), "\"No\",");
    EXPECT_EQ (cell (cue, KV::KV_Enabled), "Yes,");
    cue->setDone (true);
    cue->setEnabled (false);
    EXPECT_EQ (cell (cue, KV::KV_Done), "\"Yes\",");
    EXPECT_EQ (cell (cue, KV::KV_Enabled), "No,");
}

TEST_F (CSVCellTest, theTypeIsAName)
{
    const std::pair<EventType, const char*> names[] = {
        { EventTypeStreamer, "Streamer," }, { EventTypeMarker, "Marker," },  { EventTypeFlutter, "Flutter," },
        { EventTypeADRCue, "ADR Cue," },    { EventTypeFadeIn, "Fade In," }, { EventTypeFadeOut, "Fade Out," }
    };

    for (const auto& [type, name] : names)
        EXPECT_EQ (cell (event ({ "1" }, type), KV::KV_Type), name);
}

TEST_F (CSVCellTest, theDurationIsTheStoredCode)
{
    const auto cue = Event::create (EventTypeADRCue, timeInfo, 0, 25, -1.0f, 267);
    EXPECT_EQ (cell (cue, KV::KV_StreamerDuration), "267,");
    EXPECT_EQ (cell (std::make_shared<Event>(), KV::KV_StreamerDuration), "-1,");
}

TEST_F (CSVCellTest, takesAreCounted)
{
    auto cue = event ({ "1" });
    cue->setNumRecordedTakes (12);
    EXPECT_EQ (cell (cue, KV::KV_NumRecordedTakes), "12,");
}

TEST_F (CSVCellTest, theTempoIsCutToAWholeNumber)
{
    ASSERT_TRUE (ZEP::Core::UserDefaults::setValueForKey (StreamerReferenceUnitPrefKey, 0).wasOk());
    const auto streamer = Event::create (EventTypeStreamer, timeInfo, 0, 25, 119.9f, 2);
    std::ignore = ZEP::Core::UserDefaults::removeValueForKey (StreamerReferenceUnitPrefKey);
    EXPECT_EQ (cell (streamer, KV::KV_BeatsPerMinute), "119,");
}

TEST_F (CSVCellTest, withoutATempoThereIsMinusOne)
{
    EXPECT_EQ (cell (event ({ "1" }), KV::KV_BeatsPerMinute), "-1,");
}

TEST_F (CSVCellTest, aTempoThatNoNumberHoldsIsCutToOne)
{
    const std::pair<float, const char*> tempos[] = { { -0.5f, "0," },
                                                     { 1e30f, "2147483647," },
                                                     { -1e30f, "-2147483648," },
                                                     { std::numeric_limits<float>::quiet_NaN(), "0," } };

    for (const auto& [tempo, expected] : tempos)
    {
        tessera1::ProtoOvermark proto;
        proto.set_beatsperminute (tempo);
        EXPECT_EQ (cell (stored (proto), KV::KV_BeatsPerMinute), expected) << tempo;
    }
}

TEST_F (CSVCellTest, theSpanFromInPointToEndIsATimecode)
{
    EXPECT_EQ (cell (event ({ "1", 100, 163 }), KV::KV_DurationTCString), "\"00:00:02:13\",");
}

TEST_F (CSVCellTest, theSpanIsDashesWhileTheProjectHasNoRate)
{
    timeInfo->tcDef.undefined = true;
    EXPECT_EQ (cell (event ({ "1", 100, 163 }), KV::KV_DurationTCString), "\"--:--:--:--\",");
}

TEST_F (CSVCellTest, theReasonIsItsName)
{
    auto cue = event ({ "1" });
    EXPECT_EQ (cell (cue, KV::KV_Reason), "\"None\",");
    cue->setReason (4);
    const auto name = ZEP::Core::ADRCueReasonsManager::sharedManager()->getReasonFromInteger (5);
    EXPECT_EQ (cell (cue, KV::KV_Reason), "\"" + name.toStdString() + "\",");
    cue->setReason (1000);
    EXPECT_EQ (cell (cue, KV::KV_Reason), "\"None\",");
}

TEST_F (CSVCellTest, quotesInTheNameOfAReasonAreNotDoubled)
{
    auto* reasons = ZEP::Core::ADRCueReasonsManager::sharedManager();
    reasons->setUserReasonNames ({ "the \"new\" cut" });
    auto cue = event ({ "1" });
    cue->setReason (33);
    EXPECT_EQ (cell (cue, KV::KV_Reason), "\"the \"new\" cut\",");
    reasons->setUserReasonNames ({});
}

TEST_F (CSVCellTest, forcedNarrativeIsTwoLettersOrNothing)
{
    auto cue = event ({ "1" });
    EXPECT_EQ (cell (cue, KV::KV_IsForcedNarrative), ",");
    cue->setIsForcedNarrative (true);
    EXPECT_EQ (cell (cue, KV::KV_IsForcedNarrative), "FN,");
}

TEST_F (CSVCellTest, theRegionEndsTheRowAndIsToldInAnyCase)
{
    auto cue = event ({ "1" });
    const std::pair<int, const char*> regions[] = { { 0, "Bottom" }, { 1, "Top" },    { 2, "Left" },
                                                    { 3, "Right" },  { 17, "Right" }, { -1, "Right" } };

    for (const auto& [region, name] : regions)
    {
        cue->setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (region));
        EXPECT_EQ (cell (cue, KV::KV_ForcedNarrativeRegion), name);
    }
}

TEST_F (CSVCellTest, aColumnWithoutACellIsTheDelimiterAlone)
{
    for (const auto* key :
         { "", "Takes", "Timing", "CharacterActor", "RecTrackIndex", "SelectedTake", "DSTakerMarker",
           "EuroTakerSpur", "EuroTakerBand", "EuroTakerMarker1", "EuroTakerMarker2", "nonsense" })
        EXPECT_EQ (cell (event ({ "1" }), key), ",") << key;
}

TEST_F (CSVCellTest, theDelimiterIsACodeAndAnyOtherIsNone)
{
    const std::pair<int, const char*> delimiters[] = { { 1, "," }, { 2, ";" }, { 3, "\t" },
                                                       { 0, "" },  { 4, "" },  { -1, "" } };

    for (const auto& [code, delimiter] : delimiters)
    {
        exporter.delimiter = code;
        EXPECT_EQ (cell (event ({ "1" }), KV::KV_Enabled), std::string ("Yes") + delimiter);
    }
}

TEST_F (CSVCellTest, DSTakerHasTheTakeAndTheLettersApart)
{
    settings->options[EventExportCSVTemplateKey] = 1;
    EXPECT_EQ (cell (event ({ "12 A" }), KV::KV_CueNumber), "\"12\",");
    EXPECT_EQ (cell (event ({ "12 A" }), "DSTakerSub"), "\"A\",");
    EXPECT_EQ (cell (event ({ "12 34" }), KV::KV_CueNumber), "\"12 34\",");
    EXPECT_EQ (cell (event ({ "12 34" }), "DSTakerSub"), "\"\",");
    EXPECT_EQ (cell (event ({ "1 2 X" }), KV::KV_CueNumber), "\"12\",");
    EXPECT_EQ (cell (event ({ "1 \"A\"" }), KV::KV_CueNumber), "\"1\",");
    EXPECT_EQ (cell (event ({ "1 \"A\"" }), "DSTakerSub"), "\"\"\"A\"\"\",");
}

TEST_F (CSVCellTest, DSTakerTracksAlternate)
{
    for (const auto& [row, track] :
         { std::pair (1, "1,"), std::pair (2, "2,"), std::pair (3, "1,"), std::pair (100, "2,") })
        EXPECT_EQ (cell (event ({ "1" }), "DSTakerTrack", row), track);
}

TEST_F (CSVCellTest, theTemplateHasToBeThere)
{
    settings->options.erase (EventExportCSVTemplateKey);
    EXPECT_THROW (cell (event ({ "1" }), KV::KV_Notes), std::out_of_range);
}
