// SPDX-License-Identifier: GPL-3.0-only
// What documents would lose, and nobody would notice before the studio does.
#include "quality/ListCheck.h"
#include "quality/SpreadsheetFormula.h"
#include "quality/WrittenCells.h"

#include "core/text/StringUtil.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"

#include <map>
#include <utility>
#include <vector>

namespace overmarks
{

using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;
using ZEP::Core::StringUtil;
using ZEP::Core::TCToolbox;

namespace
{

// ---- letters -------------------------------------------------------------------------------------------------------------

constexpr int mostNamed = 8;

/** The letters that ISO 8859-1 lacks, each once, with blanks between them; many of them end in "...". */
juce::String foreignLetters (const juce::String& text)
{
    constexpr juce::juce_wchar last = 0xff;
    juce::Array<juce::juce_wchar> letters;

    for (auto p = text.getCharPointer(); ! p.isEmpty() && letters.size() <= mostNamed;)
        if (const auto letter = p.getAndAdvance(); letter > last)
            letters.addIfNotAlreadyThere (letter);

    juce::StringArray named;

    for (int i = 0; i < letters.size() && i < mostNamed; ++i)
        named.add (juce::String::charToString (letters[i]));

    if (letters.size() > mostNamed)
        named.add ("...");

    return named.joinIntoString (" ");
}

void checkLetters (CheckedList& list, const std::shared_ptr<Event>& event)
{
    const auto character = event->character();
    const auto& notes = event->getNotes().getText();
    // Only the notes go into a document with typographic signs already replaced.
    const std::pair<const char*, juce::String> texts[] = {
        { "the text", event->getText().getText() },
        { "the cue number", event->getCueNumber() },
        { "the character's name", character != nullptr ? character->name : juce::String() },
        { "the notes", StringUtil::replaceIllegalASCIICharacters (notes) }
    };
    juce::StringArray places;

    for (const auto& [place, text] : texts)
        if (const auto letters = foreignLetters (text); letters.isNotEmpty())
            places.add (juce::String (place) + " (" + letters + ")");

    if (! places.isEmpty())
        list.add (CheckRule::nonLatin1, event,
                  "Letters of " + places.joinIntoString (", ")
                      + " become \"?\" in lists for ASC, Arendis or DS Taker");
}

// ---- DS Taker ------------------------------------------------------------------------------------------------------------

/** The first event of a cue that finds no marker any more; null if there is one for each. An event that begins with the cue needs no
    marker, which is told from the texts: those of drop-frame timecode never are the same. */
std::shared_ptr<Event> firstWithoutMarker (const CheckedList::Events& events)
{
    constexpr int mostMarkers = 4;
    auto start = TCToolbox::tcTimeFromString (events.front()->getStartTCString());
    auto startFrame = events.front()->getInPointFrameIndex();
    int markers = 0;

    for (const auto& event : events)
    {
        const auto text = event->getStartTCString();
        const auto time = TCToolbox::tcTimeFromString (text);

        if (! time.invalid && (start.invalid || event->getInPointFrameIndex() < startFrame))
        {
            start = time;
            startFrame = event->getInPointFrameIndex();
        }

        if (markers == mostMarkers)
            return event;
        if (text != TCToolbox::stringFromTCTime (start, false))
            ++markers;
    }

    return nullptr;
}

/** The shown events by their cue numbers, which is how DS Taker has them. */
std::map<juce::String, CheckedList::Events> cuesOf (const CheckedList& list)
{
    std::map<juce::String, CheckedList::Events> cues;

    for (const auto& event : list.shown())
        cues[event->getCueNumber()].push_back (event);

    return cues;
}

void checkMarkers (CheckedList& list)
{
    for (const auto& [number, events] : cuesOf (list))
        if (const auto event = firstWithoutMarker (events); event != nullptr)
            list.add (CheckRule::dsTakerOverflow, event,
                      (number.trim().isEmpty() ? juce::String ("Without a cue number there are ")
                                               : "Cue number " + number + " has ")
                          + juce::String (events.size())
                          + " events, which DS Taker takes for one cue; it has four markers for them, and "
                            "this event finds none");
}

// ---- spreadsheets --------------------------------------------------------------------------------------------------------

/** Our own reports hold texts as they are, delimited text some of them with typographic signs replaced, and without signs that have no
    width. */
bool isFormulaInDelimitedText (const juce::String& text)
{
    return isSpreadsheetFormula (text)
           || isSpreadsheetFormula (StringUtil::replaceIllegalASCIICharacters (text));
}

juce::StringArray formulasAmong (const juce::StringArray& cells)
{
    juce::StringArray formulas;

    for (const auto& cell : cells)
        if (isSpreadsheetFormula (cell))
            formulas.add (cell);

    return formulas;
}

/** An attribute of an event that has a column in delimited text. */
struct Column
{
    const char* place;
    juce::String key;
    juce::String text; ///< as the list holds it
};

std::vector<Column> columnsOf (const Event& event)
{
    const auto character = event.character();
    const auto none = juce::String();
    return { { "the text", KV::KV_Text, event.getText().getText() },
             { "the cue number", KV::KV_CueNumber, event.getCueNumber() },
             { "the character's name", KV::KV_CharacterID, character != nullptr ? character->name : none },
             { "the character's prefix", KV::KV_CharPrefix, character != nullptr ? character->prefix : none },
             { "the actor's name", KV::KV_Actor, character != nullptr ? character->actor : none },
             { "the notes", KV::KV_Notes, event.getNotes().getText() },
             { "the engineering notes", KV::KV_EngineeringNotes, event.getEngineeringNotes().getText() },
             { "the reason", KV::KV_Reason, none } };
}

/** @param ofTaker  the formulas in DS Taker's row of the event; those of its own cells are told by their names */
void checkFormulas (CheckedList& list, const std::shared_ptr<Event>& event, WrittenCells& table,
                    juce::StringArray ofTaker)
{
    juce::StringArray places;

    for (const auto& [place, key, text] : columnsOf (*event))
    {
        const auto formulas = formulasAmong (table.of (event, key));

        for (const auto& formula : formulas)
            ofTaker.removeString (formula);

        if (! formulas.isEmpty() || isFormulaInDelimitedText (text))
            places.add (place);
    }

    if (! ofTaker.isEmpty())
        places.add ("a cell of DS Taker's table");

    if (! places.isEmpty())
        list.add (CheckRule::spreadsheetFormula, event,
                  "A spreadsheet that opens delimited text takes " + places.joinIntoString (", ")
                      + " for a formula and runs it");
}

void checkFormulas (CheckedList& list)
{
    constexpr int ownTable = 0, takerTable = 1;
    WrittenCells own (ownTable), taker (takerTable);
    std::map<const Event*, juce::StringArray> ofTaker; // under the event whose words stand in the row

    for (const auto& [number, events] : cuesOf (list))
        ofTaker[events.front().get()] = formulasAmong (taker.ofCue (events));

    for (const auto& event : list.shown())
        checkFormulas (list, event, own, ofTaker[event.get()]);
}

} // namespace

void checkDocuments (CheckedList& list)
{
    if (list.looksFor (CheckRule::dsTakerOverflow))
        checkMarkers (list);
    if (list.looksFor (CheckRule::spreadsheetFormula))
        checkFormulas (list);

    for (const auto& event : list.shown())
        if (list.looksFor (CheckRule::nonLatin1))
            checkLetters (list, event);
}

} // namespace overmarks
