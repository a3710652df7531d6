// SPDX-License-Identifier: GPL-3.0-only
#include "FormatContent.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/text/StringUtil.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Core::ADRCharacter;
using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::RichTextString;
using ZEP::Core::StringUtil;

namespace
{

constexpr int unset = -1;

// ---- texts ---------------------------------------------------------------------------------------------------------------

template <typename Test>
bool hasRun (const RichTextString& text, Test test)
{
    const auto runs = text.formattedRuns();
    return std::any_of (runs.begin(), runs.end(), test);
}

bool isBoldOrItalic (const RichTextString::Attribute& run)
{
    return run.font.isBold() || run.font.isItalic();
}

bool isBoldAndItalic (const RichTextString::Attribute& run)
{
    return run.font.isBold() && run.font.isItalic();
}

bool isOtherLook (const RichTextString::Attribute& run)
{
    return run.font.isUnderlined() || RichTextString::isStruckThrough (run.font)
           || run.colour != juce::Colour (0xff000000)
           || std::abs (run.font.getHeight() - RichTextString::defaultFont().getHeight()) > 0.01f;
}

bool hasLooks (const RichTextString& text) { return ! text.isPlain(); }
bool hasLineBreaks (const RichTextString& text) { return text.getText().containsChar ('\n'); }
bool hasTypography (const RichTextString& text)
{
    return StringUtil::hasIllegalASCIICharacters (text.getText());
}

/** Whether ISO 8859-1 lacks a letter of the text. */
bool isForeign (const juce::String& text)
{
    constexpr juce::juce_wchar last = 0xff;

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
        if (p.getAndAdvance() > last)
            return true;

    return false;
}

// ---- events --------------------------------------------------------------------------------------------------------------

/** A duration that a new event of this type wouldn't have anyway. */
bool hasOwnDuration (const Event& event)
{
    if (event.getStreamerDuration() == unset)
        return false;

    const auto usual = Event::create (event.getType(), event.getTimeInfo(), 0, unset, -1.0f, unset);
    return event.getStreamerDuration() != usual->getStreamerDuration();
}

template <juce::String ADRCharacter::*field>
bool hasOfCharacter (const Event& event)
{
    const auto character = event.character();
    return character != nullptr && ((*character).*field).isNotEmpty();
}

juce::String nameOfCharacter (const Event& event)
{
    const auto character = event.character();
    return character != nullptr ? character->name : juce::String();
}

bool hasForeignName (const Event& event)
{
    return isForeign (event.getCueNumber()) || isForeign (nameOfCharacter (event));
}

/** Notes go into a table with typographic signs already replaced. */
bool hasForeignNotes (const Event& event)
{
    return isForeign (StringUtil::replaceIllegalASCIICharacters (event.getNotes().getText()));
}

bool hasNamelessReason (const Event& event)
{
    const auto code = event.getReason() + 1;
    return event.getReason() > 0
           && ADRCueReasonsManager::sharedManager()->getReasonFromInteger (code)
                  == ADRCueReasonsManager::sharedManager()->getReasonFromInteger (1);
}

bool hasFractionOfTempo (const Event& event)
{
    const auto tempo = event.getBeatsPerMinute();
    return tempo > 0.0f && tempo != std::trunc (tempo);
}

// ---- lists ---------------------------------------------------------------------------------------------------------------

template <auto test>
int eventsWith (const WrittenList& list)
{
    return static_cast<int> (std::count_if (list.events.begin(), list.events.end(),
                                            [] (const auto& event) { return test (*event); }));
}

template <auto test>
int eventsWithText (const WrittenList& list)
{
    return eventsWith<[] (const Event& event) { return test (event.getText()); }> (list);
}

template <auto test>
int eventsWithNotes (const WrittenList& list)
{
    return eventsWith<[] (const Event& event) { return test (event.getNotes()); }> (list);
}

template <auto test>
int eventsWithEngineeringNotes (const WrittenList& list)
{
    return eventsWith<[] (const Event& event) { return test (event.getEngineeringNotes()); }> (list);
}

/** The characters of the written events whose name is longer; a line break is no part of it. */
template <int longest>
int longNames (const WrittenList& list)
{
    std::set<juce::String> names;

    for (const auto& event : list.events)
        if (const auto name = nameOfCharacter (*event).removeCharacters ("\n"); name.length() > longest)
            names.insert (event->getCharacterID());

    return static_cast<int> (names.size());
}

/** Whoever never speaks in the whole list, not only in what a filter lets through. */
int castWithoutEvents (const WrittenList& list)
{
    std::unordered_set<juce::String> speaking;

    for (const auto& event : list.project.list->events)
        speaking.insert (event->getCharacterID());

    const auto& ids = list.project.characters->characterIDs();
    return static_cast<int> (std::count_if (
        ids.begin(), ids.end(), [&speaking] (const auto& id) { return speaking.count (id) == 0; }));
}

int equalNames (const WrittenList& list)
{
    std::set<juce::String> names;
    int again = 0;

    for (const auto& character : list.project.characters->characters())
        again += names.insert (character->name).second ? 0 : 1;

    return again;
}

int quotesOfNames (const WrittenList& list)
{
    const auto& cast = list.project.characters->characters();
    return static_cast<int> (std::count_if (
        cast.begin(), cast.end(),
        [] (const auto& character)
        { return (character->name + character->prefix + character->actor).containsChar ('"'); }));
}

/** How many events each row of a list for DS Taker holds. */
class FoldedRows final
{
public:
    explicit FoldedRows (const WrittenList& listToFold) : list (listToFold)
    {
        for (const auto& event : list.events)
            ++sizes[rowOfEvent (*event)];
    }

    bool isAlone (const Event& event) const { return sizes.at (rowOfEvent (event)) == 1; }
    int folded() const { return static_cast<int> (list.events.size() - sizes.size()); }

private:
    using Row = std::pair<juce::String, juce::String>;

    Row rowOfEvent (const Event& event) const
    {
        return { list.hasFileForEach ? event.getCharacterID() : juce::String(), event.getCueNumber() };
    }

    const WrittenList& list;
    std::map<Row, int> sizes;
};

int foldedCues (const WrittenList& list) { return FoldedRows (list).folded(); }

/** Only a row of one event loses its quotation marks. */
int quotesOfNotes (const WrittenList& list)
{
    const FoldedRows rows (list);
    return static_cast<int> (std::count_if (list.events.begin(), list.events.end(),
                                            [&rows] (const auto& event) {
                                                return event->getNotes().getText().containsChar ('"')
                                                       && rows.isAlone (*event);
                                            }));
}

// ---- the tables ----------------------------------------------------------------------------------------------------------

template <typename Key>
struct KeyedRow
{
    Key key;
    ContentRow row;
};

using ContentTable = std::array<KeyedRow<Content>, static_cast<std::size_t> (Content::forcedNarratives) + 1>;
using DetailTable = std::array<KeyedRow<Detail>, static_cast<std::size_t> (Detail::regionsOfOthers) + 1>;

constexpr ContentTable contentTable { {
    { Content::times,
      { "times", Content::times,
        eventsWith<[] (const Event& e) { return e.getInPointFrameIndex() != unset; }> } },
    { Content::types,
      { "event types", Content::types,
        eventsWith<[] (const Event& e) { return e.getType() != EventTypeADRCue; }> } },
    { Content::characters,
      { "characters", Content::characters, eventsWith<hasOfCharacter<&ADRCharacter::name>> } },
    { Content::prefixes,
      { "character prefixes", Content::prefixes, eventsWith<hasOfCharacter<&ADRCharacter::prefix>> } },
    { Content::actors, { "actors", Content::actors, eventsWith<hasOfCharacter<&ADRCharacter::actor>> } },
    { Content::cueNumbers,
      { "cue numbers", Content::cueNumbers,
        eventsWith<[] (const Event& e) { return e.getCueNumber().isNotEmpty(); }> } },
    { Content::text,
      { "text", Content::text,
        eventsWithText<[] (const RichTextString& t) { return t.getText().isNotEmpty(); }> } },
    { Content::lineBreaks, { "line breaks", Content::text, eventsWithText<hasLineBreaks> } },
    { Content::boldAndItalic,
      { "bold and italic", Content::text,
        eventsWithText<[] (const RichTextString& t) { return hasRun (t, isBoldOrItalic); }> } },
    { Content::otherLooks,
      { "other looks of text", Content::text,
        eventsWithText<[] (const RichTextString& t) { return hasRun (t, isOtherLook); }> } },
    { Content::notes,
      { "notes", Content::notes,
        eventsWithNotes<[] (const RichTextString& t) { return t.getText().isNotEmpty(); }> } },
    { Content::engineeringNotes,
      { "engineering notes", Content::engineeringNotes,
        eventsWithEngineeringNotes<[] (const RichTextString& t) { return t.getText().isNotEmpty(); }> } },
    { Content::done, { "done", Content::done, eventsWith<[] (const Event& e) { return e.isDone(); }> } },
    { Content::disabled,
      { "disabled", Content::disabled, eventsWith<[] (const Event& e) { return ! e.isEnabled(); }> } },
    { Content::takes,
      { "numbers of takes", Content::takes,
        eventsWith<[] (const Event& e) { return 0 < e.getNumRecordedTakes(); }> } },
    { Content::chosenTakes,
      { "chosen takes", Content::chosenTakes,
        eventsWith<[] (const Event& e) { return e.getSelectedTake() >= 0 || e.getAltTake() >= 0; }> } },
    { Content::recordTracks,
      { "record tracks", Content::recordTracks,
        eventsWith<[] (const Event& e) { return e.getRecTrackIndex() != unset; }> } },
    { Content::storedFlags,
      { "stored flags", Content::storedFlags,
        eventsWith<[] (const Event& e) { return e.getStoredFlag(); }> } },
    { Content::reasons,
      { "reasons", Content::reasons, eventsWith<[] (const Event& e) { return 0 < e.getReason(); }> } },
    { Content::durations, { "streamer durations", Content::durations, eventsWith<hasOwnDuration> } },
    { Content::tempo,
      { "tempo", Content::tempo, eventsWith<[] (const Event& e) { return 0.0f < e.getBeatsPerMinute(); }> } },
    { Content::forcedNarratives,
      { "forced narratives", Content::forcedNarratives,
        eventsWith<[] (const Event& e) { return e.isForcedNarrative(); }> } },
} };

constexpr DetailTable detailTable { {
    { Detail::castWithoutEvents,
      { "characters without events", Content::characters, castWithoutEvents, "character", "characters" } },
    { Detail::equalNames,
      { "the difference between characters of one name", Content::characters, equalNames, "character",
        "characters" } },
    { Detail::quotesOfNames,
      { "quotation marks of names, which are doubled", Content::characters, quotesOfNames, "character",
        "characters" } },
    { Detail::namesBeyond22,
      { "ends of names of more than 22 letters", Content::characters, longNames<22>, "character",
        "characters" } },
    { Detail::namesBeyond15,
      { "middles of names of more than 15 letters", Content::characters, longNames<15>, "character",
        "characters" } },
    { Detail::cueNumbersBeyond16,
      { "ends of cue numbers of more than 16 letters", Content::cueNumbers,
        eventsWith<[] (const Event& e) { return 16 < e.getCueNumber().length(); }> } },
    { Detail::foldedCues,
      { "own character, notes and end of cues that share a row with one of their number", Content::cueNumbers,
        foldedCues } },
    { Detail::looksOfForcedNarratives,
      { "bold and italic of forced narratives", Content::boldAndItalic, eventsWith<[] (const Event& e) {
            return e.isForcedNarrative() && hasRun (e.getText(), isBoldOrItalic);
        }> } },
    { Detail::italicOfBold,
      { "italic of text that is bold too", Content::boldAndItalic, eventsWith<[] (const Event& e) {
            return ! e.isForcedNarrative() && hasRun (e.getText(), isBoldAndItalic);
        }> } },
    { Detail::doubleStars,
      { "\"**\" in text", Content::text,
        eventsWithText<[] (const RichTextString& t) { return t.getText().contains ("**"); }> } },
    { Detail::doubleBlanks,
      { "double blanks and tabs", Content::text, eventsWithText<[] (const RichTextString& t) {
            return t.getText().contains ("  ") || t.getText().containsChar ('\t');
        }> } },
    { Detail::typographyOfText,
      { "typographic signs of text", Content::text, eventsWithText<hasTypography> } },
    { Detail::foreignLetters,
      { "letters outside ISO 8859-1, which become \"?\"", Content::text, eventsWith<[] (const Event& e) {
            return hasForeignName (e) || isForeign (e.getText().getText());
        }> } },
    { Detail::foreignLettersOfTable,
      { "letters outside ISO 8859-1, which become \"?\"", Content::notes,
        eventsWith<[] (const Event& e) { return hasForeignName (e) || hasForeignNotes (e); }> } },
    { Detail::looksOfNotes, { "looks of notes", Content::notes, eventsWithNotes<hasLooks> } },
    { Detail::breaksOfNotes, { "line breaks of notes", Content::notes, eventsWithNotes<hasLineBreaks> } },
    { Detail::typographyOfNotes,
      { "typographic signs of notes", Content::notes, eventsWithNotes<hasTypography> } },
    { Detail::quotesOfNotes, { "quotation marks of notes", Content::notes, quotesOfNotes } },
    { Detail::looksOfEngineeringNotes,
      { "looks of engineering notes", Content::engineeringNotes, eventsWithEngineeringNotes<hasLooks> } },
    { Detail::breaksOfEngineeringNotes,
      { "line breaks of engineering notes", Content::engineeringNotes,
        eventsWithEngineeringNotes<hasLineBreaks> } },
    { Detail::typographyOfEngineeringNotes,
      { "typographic signs of engineering notes", Content::engineeringNotes,
        eventsWithEngineeringNotes<hasTypography> } },
    { Detail::namelessReasons,
      { "reasons without a name", Content::reasons, eventsWith<hasNamelessReason> } },
    { Detail::fractionsOfTempo, { "fractions of tempo", Content::tempo, eventsWith<hasFractionOfTempo> } },
    { Detail::regionsOfOthers,
      { "regions of what is no forced narrative", Content::forcedNarratives, eventsWith<[] (const Event& e) {
            return ! e.isForcedNarrative() && e.getForcedNarrativeRegion() != ForcedNarrativeRegionBottom;
        }> } },
} };

template <typename Table>
constexpr bool isInOrder (const Table& table)
{
    for (std::size_t i = 0; i < table.size(); ++i)
        if (static_cast<std::size_t> (table[i].key) != i)
            return false;

    return true;
}

static_assert (isInOrder (contentTable) && isInOrder (detailTable), "a row is found by its number");

} // namespace

const ContentRow& rowOf (Content content) { return contentTable[static_cast<std::size_t> (content)].row; }
const ContentRow& rowOf (Detail detail) { return detailTable[static_cast<std::size_t> (detail)].row; }

std::vector<Content> allContent()
{
    std::vector<Content> all;

    for (const auto& [content, row] : contentTable)
        all.push_back (content);

    return all;
}

std::vector<std::string> namesOf (const std::vector<Content>& contents)
{
    std::vector<std::string> names;

    for (const auto& [content, row] : contentTable)
        if (std::find (contents.begin(), contents.end(), content) != contents.end())
            names.emplace_back (row.name);

    return names;
}

} // namespace overmarks
