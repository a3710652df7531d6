// SPDX-License-Identifier: GPL-3.0-only
// What a line of dialogue may have wrong by itself: its text, its character, its cue number, its takes.
#include "DisplayWidth.h"
#include "quality/ListCheck.h"

#include "core/cast/ADRCharacterMap.h"

#include <limits>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

bool isLineEnd (juce::juce_wchar character) { return character == '\n' || character == '\r'; }

bool isBlank (juce::juce_wchar character)
{
    constexpr juce::juce_wchar noBreakSpace = 0xa0;
    return juce::CharacterFunctions::isWhitespace (character) || character == noBreakSpace;
}

/** What there is to say in a text. */
struct TextMeasure
{
    int characters = 0; ///< a blank between two words is one, accents of their own are none
    int lines = 0;      ///< up to the last one that says something
};

TextMeasure measure (const juce::String& text)
{
    TextMeasure result;
    int line = 1;
    bool hasGap = false;

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
    {
        const auto character = p.getAndAdvance();

        if (isLineEnd (character) && ! (character == '\r' && *p == '\n'))
            ++line;

        if (isBlank (character))
        {
            hasGap = true;
            continue;
        }

        if (displayWidth (character) == 0)
            continue;

        result.characters += hasGap && result.characters > 0 ? 2 : 1;
        result.lines = line;
        hasGap = false;
    }

    return result;
}

// ---- text ----------------------------------------------------------------------------------------------------------------

void checkSpeed (CheckedList& list, const std::shared_ptr<Event>& event, int characters)
{
    if (! list.hasStretch (*event))
        return;

    const auto most = list.order.limits.maxCharactersPerSecond;
    const auto seconds = secondsOf (lengthOf (*event), list.project.timeInfo->tcDef);
    const auto speed = characters / seconds;

    if (speed > most)
        list.add (CheckRule::tooFast, event,
                  counted (static_cast<std::size_t> (characters), "character") + " in " + inSeconds (seconds)
                      + ": " + shortNumber (speed) + " a second, more than " + shortNumber (most));
}

void checkText (CheckedList& list, const std::shared_ptr<Event>& event)
{
    const auto measured = measure (event->getText().getText());
    const auto mostLines = list.order.limits.maxLines;

    if (measured.characters == 0)
    {
        list.add (CheckRule::emptyText, event, "It has no text");
        return;
    }

    if (measured.lines > mostLines)
        list.add (CheckRule::lineCount, event,
                  "The text has " + juce::String (measured.lines) + " lines, more than "
                      + juce::String (mostLines));

    checkSpeed (list, event, measured.characters);
}

// ---- character -----------------------------------------------------------------------------------------------------------

void checkCharacter (CheckedList& list, const std::shared_ptr<Event>& event)
{
    const auto& id = event->getCharacterID();
    const auto character = list.project.characters->characterForID (id);

    if (id.isNotEmpty() && character == nullptr)
        list.add (CheckRule::unknownCharacter, event,
                  "Its character has the identifier \"" + id + "\", which nobody in the cast has");

    if (event->getType() != EventTypeADRCue)
        return;

    if (id.isEmpty())
        list.add (CheckRule::noCharacter, event, "It has no character");
    else if (character != nullptr && character->name.trim().isEmpty())
        list.add (CheckRule::noCharacter, event, "Its character has no name");
}

// ---- takes ---------------------------------------------------------------------------------------------------------------

/** Empty if there is such a take. @param take  counted from 0; -1 for none */
juce::String whatIsWrongWithTake (const juce::String& which, int take, int recorded)
{
    constexpr int none = -1;

    if (take == none || (take >= 0 && take < recorded))
        return {};
    if (take < none || take == std::numeric_limits<int>::max())
        return "The " + which + " take has the number " + juce::String (take) + ", which no take can have";

    return "The " + which + " take is take " + juce::String (take + 1) + ", but "
           + (recorded == 0
                  ? juce::String ("none was recorded")
                  : "only " + juce::String (recorded) + (recorded == 1 ? " was" : " were") + " recorded");
}

void checkTakes (CheckedList& list, const std::shared_ptr<Event>& event)
{
    const int recorded = event->getNumRecordedTakes();
    juce::StringArray faults;

    if (recorded < 0)
    {
        faults.add ("The number of takes is " + juce::String (recorded));
    }
    else
    {
        faults.add (whatIsWrongWithTake ("chosen", event->getSelectedTake(), recorded));
        faults.add (whatIsWrongWithTake ("alternative", event->getAltTake(), recorded));
    }

    if (event->getSelectedTake() >= 0 && event->getSelectedTake() == event->getAltTake())
        faults.add ("The chosen take and the alternative are the same");

    faults.removeEmptyStrings();

    if (! faults.isEmpty())
        list.add (CheckRule::takesInconsistent, event, faults.joinIntoString (". "));
}

} // namespace

void checkLines (CheckedList& list)
{
    for (const auto& event : list.shown())
    {
        if (! list.isChecked (*event))
            continue;

        checkCharacter (list, event);
        checkTakes (list, event);

        if (event->getType() != EventTypeADRCue)
            continue;

        checkText (list, event);

        if (event->getCueNumber().trim().isEmpty())
            list.add (CheckRule::cueNumberMissing, event, "It has no cue number");
    }
}

} // namespace overmarks
