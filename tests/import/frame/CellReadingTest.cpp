// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/CellReading.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{
namespace
{

template <typename Value>
using Cases = std::vector<std::pair<std::string, std::optional<Value>>>;

template <typename Value, typename Reading>
void expectReads (const Cases<Value>& cases, Reading reading)
{
    for (const auto& [cell, value] : cases)
        EXPECT_EQ (reading (cell), value) << "cell: " << cell;
}

juce::String utf8 (const std::string& text) { return juce::String (juce::CharPointer_UTF8 (text.c_str())); }

TEST (CellReading, whiteSpaceOfSpreadsheetsAroundACellIsNoPartOfIt)
{
    EXPECT_EQ (trimmedCell (utf8 ("  a b \t\r\n")), "a b");
    EXPECT_EQ (trimmedCell (utf8 ("\xC2\xA0\xEF\xBB\xBF x \xC2\xA0")), "x");
    EXPECT_EQ (trimmedCell (utf8 ("\xC3\xA9t\xC3\xA9")), "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ (trimmedCell (utf8 (" \xC2\xA0 ")), "");
    EXPECT_EQ (trimmedCell ({}), "");
}

TEST (CellReading, wordsAreTheSameWhateverTheirCaseAndBlanks)
{
    EXPECT_TRUE (isSameWord ("ADR Cue", "adr  CUE "));
    EXPECT_TRUE (isSameWord ("", "  "));
    EXPECT_FALSE (isSameWord ("ADR Cue", "ADR Cues"));
    EXPECT_FALSE (isSameWord ("ADR Cues", "ADR Cue"));
    EXPECT_FALSE (isSameWord ("", "a"));
}

TEST (CellReading, aMessageShowsAtMostFortyCharacters)
{
    const std::string forty (40, 'a');
    EXPECT_EQ (quotedCell (utf8 (forty)), juce::String ("\"" + forty + "\""));
    EXPECT_EQ (quotedCell (utf8 (forty + "b")), juce::String ("\"" + forty.substr (0, 37) + "...\""));
}

TEST (CellReading, aLongCellIsCutBetweenCharactersNotBytes)
{
    std::string cell, shown;
    for (int i = 0; i < 100; ++i)
        cell += "\xC3\xA4";
    for (int i = 0; i < 37; ++i)
        shown += "\xC3\xA4";

    EXPECT_EQ (quotedCell (utf8 (cell)), utf8 ("\"" + shown + "...\""));
}

TEST (CellReading, aMessageCarriesNoControlCharacters)
{
    EXPECT_EQ (quotedCell (utf8 ("a\nb\tc\x1B[2Jd\x7F")), juce::String ("\"a b c?[2Jd?\""));
    EXPECT_EQ (quotedCell (utf8 ("a\xC2\x9B"
                                 "b\xE2\x80\xAE"
                                 "c\xE2\x80\xA8"
                                 "d\xE2\x81\xA6"
                                 "e")),
               juce::String ("\"a?b?c?d?e\""));
}

TEST (CellReading, nothingInAMessageTurnsItsDirectionOrBreaksItsLine)
{
    const auto shown = [] (juce::juce_wchar character)
    { return quotedCell ("a" + juce::String::charToString (character) + "b"); };

    for (const juce::juce_wchar hidden :
         { 0x01, 0x1F, 0x7F, 0x9F, 0x200E, 0x200F, 0x2028, 0x202A, 0x202E, 0x2066, 0x2069 })
        EXPECT_EQ (shown (hidden), juce::String ("\"a?b\"")) << std::hex << static_cast<int> (hidden);

    for (const juce::juce_wchar letter : { 0x20, 0x7E, 0xA0, 0x200D, 0x2010, 0x2027, 0x202F, 0x2065, 0x206A })
        EXPECT_EQ (shown (letter), "\"a" + juce::String::charToString (letter) + "b\"")
            << std::hex << static_cast<int> (letter);
}

TEST (CellReading, wholeNumbersMayCarryZerosBehindTheDecimalSign)
{
    expectReads<int> ({ { "8", 8 },
                        { "-1", -1 },
                        { "8.0", 8 },
                        { "8,00", 8 },
                        { "8.", 8 },
                        { "8.5", std::nullopt },
                        { "", std::nullopt },
                        { "8a", std::nullopt },
                        { "8.0.0", std::nullopt },
                        { "0x8", std::nullopt },
                        { "2147483647", 2147483647 },
                        { "2147483648", std::nullopt },
                        { "99999999999999999999", std::nullopt } },
                      wholeNumberInCell);
}

TEST (CellReading, yesAndNoInTheWordsOfCueLists)
{
    expectReads<bool> ({ { "yes", true },
                         { "YES", true },
                         { "true", true },
                         { "1", true },
                         { "x", true },
                         { "X", true },
                         { "ja", true },
                         { "fn", true },
                         { "FN", true },
                         { "no", false },
                         { "No", false },
                         { "false", false },
                         { "0", false },
                         { "nein", false },
                         { "maybe", std::nullopt },
                         { "2", std::nullopt },
                         { "yes no", std::nullopt } },
                       flagInCell);
}

TEST (CellReading, eventTypesByNameAndNumber)
{
    expectReads<EventType> ({ { "Streamer", EventTypeStreamer },
                              { "marker", EventTypeMarker },
                              { "FLUTTER", EventTypeFlutter },
                              { "adr cue", EventTypeADRCue },
                              { "ADRCue", EventTypeADRCue },
                              { "ADR  Cue", EventTypeADRCue },
                              { "Fade In", EventTypeFadeIn },
                              { "fadeout", EventTypeFadeOut },
                              { "1", EventTypeStreamer },
                              { "2", EventTypeMarker },
                              { "4", EventTypeFlutter },
                              { "8", EventTypeADRCue },
                              { "16", EventTypeFadeIn },
                              { "32.0", EventTypeFadeOut },
                              { "3", std::nullopt },
                              { "64", std::nullopt },
                              { "0", std::nullopt },
                              { "-1", std::nullopt },
                              { "Fade", std::nullopt },
                              { "Cue", std::nullopt } },
                            eventTypeInCell);
}

TEST (CellReading, regionsByNameAndNumber)
{
    expectReads<ForcedNarrativeRegion> ({ { "Bottom", ForcedNarrativeRegionBottom },
                                          { "top", ForcedNarrativeRegionTop },
                                          { "LEFT", ForcedNarrativeRegionLeft },
                                          { "right", ForcedNarrativeRegionRight },
                                          { "0", ForcedNarrativeRegionBottom },
                                          { "1", ForcedNarrativeRegionTop },
                                          { "2", ForcedNarrativeRegionLeft },
                                          { "3", ForcedNarrativeRegionRight },
                                          { "4", std::nullopt },
                                          { "-1", std::nullopt },
                                          { "Middle", std::nullopt } },
                                        regionInCell);
}

TEST (CellReading, whatMayBeAThousandIsNoNumber)
{
    expectReads<int> ({ { "1,000", std::nullopt },
                        { "1.000", std::nullopt },
                        { "1.0", 1 },
                        { "1,00", 1 },
                        { "1.0000", 1 } },
                      wholeNumberInCell);
    EXPECT_EQ (durationInCell ("1.000", DurationUnit::seconds), std::nullopt);
    EXPECT_EQ (durationInCell ("1,000", DurationUnit::frames), std::nullopt);
}

TEST (CellReading, temposFromTwentyOneToTwoHundredNinetyNine)
{
    expectReads<int> ({ { "21", 21 },
                        { "299", 299 },
                        { "119.9", 119 },
                        { "119,9", 119 },
                        { "299.9", 299 },
                        { "120 BPM", 120 },
                        { "120bpm", 120 },
                        { "--", -1 },
                        { "-1", -1 },
                        { "-1.0", -1 },
                        { "", -1 },
                        { "20", std::nullopt },
                        { "300", std::nullopt },
                        { "0", std::nullopt },
                        { "-2", std::nullopt },
                        { "fast", std::nullopt },
                        { "120/4", std::nullopt } },
                      tempoInCell);
}

TEST (CellReading, whatADurationCountsDependsOnTheType)
{
    EXPECT_EQ (durationUnitOf (EventTypeADRCue, true), DurationUnit::seconds);
    EXPECT_EQ (durationUnitOf (EventTypeStreamer, false), DurationUnit::seconds);
    EXPECT_EQ (durationUnitOf (EventTypeStreamer, true), DurationUnit::bars);
    EXPECT_EQ (durationUnitOf (EventTypeFlutter, true), DurationUnit::frames);
    EXPECT_EQ (durationUnitOf (EventTypeMarker, false), DurationUnit::none);
    EXPECT_EQ (durationUnitOf (EventTypeFadeIn, false), DurationUnit::none);
    EXPECT_EQ (durationUnitOf (EventTypeFadeOut, false), DurationUnit::none);
}

void expectDurations (DurationUnit unit, const Cases<int>& cases)
{
    expectReads<int> (cases, [unit] (const std::string& cell) { return durationInCell (cell, unit); });
}

TEST (CellReading, streamersInSecondsByCodeAndByWords)
{
    expectDurations (DurationUnit::seconds, { { "1", 1 },
                                              { "2", 2 },
                                              { "3", 3 },
                                              { "4", 4 },
                                              { "5", 5 },
                                              { "267", 267 },
                                              { "333", 333 },
                                              { "2.67", 267 },
                                              { "3,33", 333 },
                                              { "1 second", 1 },
                                              { "2 seconds", 2 },
                                              { "5 Seconds", 5 },
                                              { "2.67 seconds", 267 },
                                              { "3.33 seconds", 333 },
                                              { "3.0", 3 },
                                              { "-1", -1 },
                                              { "", -1 },
                                              { "No streamer duration", -1 },
                                              { "0", std::nullopt },
                                              { "6", std::nullopt },
                                              { "2.5", std::nullopt },
                                              { "3.67", std::nullopt },
                                              { "2 bars", std::nullopt },
                                              { "long", std::nullopt },
                                              { "267 seconds", std::nullopt } });
}

TEST (CellReading, fourSecondsInWordsAreRefusedBecauseTheirCodeMeansTwo)
{
    EXPECT_EQ (durationInCell ("4 seconds", DurationUnit::seconds), std::nullopt);
}

TEST (CellReading, streamersInBars)
{
    expectDurations (DurationUnit::bars, { { "1", 1 },
                                           { "2 bars", 2 },
                                           { "1 bar", 1 },
                                           { "4", 4 },
                                           { "-1", -1 },
                                           { "3", std::nullopt },
                                           { "267", std::nullopt },
                                           { "2.67", std::nullopt },
                                           { "2 seconds", std::nullopt } });
}

TEST (CellReading, fluttersInFrames)
{
    expectDurations (DurationUnit::frames, { { "1", 1 },
                                             { "4", 4 },
                                             { "8 frames", 8 },
                                             { "12", 12 },
                                             { "1 frame", 1 },
                                             { "", -1 },
                                             { "3", std::nullopt },
                                             { "2", std::nullopt },
                                             { "4.5", std::nullopt } });
}

TEST (CellReading, aTypeWithoutStreamerCarriesAnyKnownCode)
{
    expectDurations (DurationUnit::none, { { "-1", -1 },
                                           { "2", 2 },
                                           { "12", 12 },
                                           { "333", 333 },
                                           { "", -1 },
                                           { "6", std::nullopt },
                                           { "2 seconds", std::nullopt },
                                           { "soon", std::nullopt } });
}

} // namespace
} // namespace ZEP::Overmarks
