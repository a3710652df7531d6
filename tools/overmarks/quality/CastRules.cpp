// SPDX-License-Identifier: GPL-3.0-only
// What cues may have wrong against each other: the time of one character, the cue numbers of all.
#include "quality/ListCheck.h"

#include <algorithm>
#include <map>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

using Cue = std::shared_ptr<Event>;

juce::String nameOfCharacter (const Event& event)
{
    const auto character = event.character();
    return character != nullptr && character->name.isNotEmpty() ? character->name : juce::String ("nobody");
}

/** "A1 (01:00:02:00 to 01:00:04:00)". */
juce::String withTimes (const Event& event)
{
    const auto number = event.getCueNumber().trim();
    return (number.isEmpty() ? juce::String ("the cue") : number) + " (" + event.getStartTCString() + " to "
           + event.getEndTCString() + ")";
}

// ---- one character at a time ---------------------------------------------------------------------------------------------

void addOverlap (CheckedList& list, const Cue& earlier, const Cue& later)
{
    const auto frames =
        std::min (earlier->getEndFrameIndex(), later->getEndFrameIndex()) - later->getInPointFrameIndex();
    list.add (CheckRule::overlapSameCharacter, later,
              nameOfCharacter (*later) + " speaks " + withTimes (*earlier) + " and " + withTimes (*later)
                  + " at the same time, for " + inSeconds (secondsOf (frames, list.project.timeInfo->tcDef)),
              earlier);
}

/** Each cue against the one before it that lasts longest: a cue overlaps with any earlier one only if with that. */
void checkOverlaps (CheckedList& list, std::vector<Cue>& cues)
{
    std::stable_sort (cues.begin(), cues.end(),
                      [] (const Cue& a, const Cue& b)
                      { return a->getInPointFrameIndex() < b->getInPointFrameIndex(); });
    Cue last;

    for (const auto& cue : cues)
    {
        if (last != nullptr && cue->getInPointFrameIndex() < last->getEndFrameIndex())
            addOverlap (list, last, cue);

        if (last == nullptr || cue->getEndFrameIndex() > last->getEndFrameIndex())
            last = cue;
    }
}

void checkOverlaps (CheckedList& list, const CheckedList::Events& cues)
{
    std::map<juce::String, std::vector<Cue>> cuesOfCharacters;

    for (const auto& cue : cues)
        if (cue->getCharacterID().isNotEmpty() && list.hasStretch (*cue))
            cuesOfCharacters[cue->getCharacterID()].push_back (cue);

    for (auto& [character, cuesOfOne] : cuesOfCharacters)
        checkOverlaps (list, cuesOfOne);
}

// ---- cue numbers ---------------------------------------------------------------------------------------------------------

void addDuplicate (CheckedList& list, const Cue& earlier, const Cue& later)
{
    const auto number = "Cue number " + later->getCueNumber().trim() + " is used ";

    if (earlier->getCharacterID() != later->getCharacterID())
        list.add (CheckRule::cueNumberDuplicate, later,
                  number + "for " + nameOfCharacter (*earlier) + " at " + earlier->getStartTCString()
                      + " and for " + nameOfCharacter (*later) + " at " + later->getStartTCString(),
                  earlier);
    else
        list.add (CheckRule::cueNumberDuplicate, later,
                  number + "at " + earlier->getStartTCString() + " and again at " + later->getStartTCString()
                      + ", with other cues between them",
                  earlier);
}

/** Lines of one character that follow each other may be one cue. */
void checkCueNumbers (CheckedList& list, const CheckedList::Events& cues)
{
    std::map<juce::String, std::size_t> lastPlaces;

    for (std::size_t place = 0; place < cues.size(); ++place)
    {
        const auto number = cues[place]->getCueNumber().trim();

        if (number.isEmpty())
            continue;

        const auto [found, isNew] = lastPlaces.emplace (number, place);

        if (isNew)
            continue;

        const auto& earlier = cues[found->second];

        if (found->second + 1 != place || earlier->getCharacterID() != cues[place]->getCharacterID())
            addDuplicate (list, earlier, cues[place]);

        found->second = place;
    }
}

} // namespace

void checkCast (CheckedList& list)
{
    const auto cues = list.cues();

    if (list.looksFor (CheckRule::overlapSameCharacter))
        checkOverlaps (list, cues);
    if (list.looksFor (CheckRule::cueNumberDuplicate))
        checkCueNumbers (list, cues);
}

} // namespace overmarks
