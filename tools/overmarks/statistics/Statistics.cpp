// SPDX-License-Identifier: GPL-3.0-only
#include "statistics/Statistics.h"

#include "Session.h"
#include "statistics/WordCount.h"

#include "export/frame/OutputFileNames.h"
#include "list/LineCount.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Core::ADRCharacter;

namespace
{

/** Collects the lines of one character, in the list or in one reel. */
class Collected final
{
public:
    void add (const Event& line, int words, juce::int64 frames)
    {
        count.add (line);
        others.disabled += line.isEnabled() ? 0 : 1;
        others.words += words;
        others.frames += frames;
    }

    Amount amount() const
    {
        auto result = others;
        result.lines = count.lines();
        result.cues = count.cues();
        result.done = count.done();
        return result;
    }

private:
    LineCount count;
    Amount others; ///< what the count doesn't know
};

struct Speaker
{
    Collected all;
    std::map<std::size_t, Collected> byReel;
    std::vector<Stretch> stretches;
    std::size_t firstShown = std::numeric_limits<std::size_t>::max();
};

/** Reels in the order in which their first lines come. */
class Reels final
{
public:
    explicit Reels (ReelRule ruleOfReels) : rule (ruleOfReels) {}

    std::size_t placeOf (const Event& line)
    {
        const auto name = reelOf (line, rule);
        const auto [found, isNew] = places.try_emplace (name, reels.size());

        if (isNew)
            reels.push_back ({ name, name.isEmpty() ? nameOfUnknownReel (rule) : name, {}, {}, 0, {} });

        extend (found->second, line);
        return found->second;
    }

    std::vector<ReelWork> reels;

private:
    void extend (std::size_t place, const Event& line)
    {
        lastEnds.resize (reels.size(), std::numeric_limits<int>::min());

        if (! hasTime (line))
            return;

        if (reels[place].firstStart.isEmpty())
            reels[place].firstStart = line.getStartTCString();

        const auto end = std::max (line.getInPointFrameIndex(), line.getEndFrameIndex());

        if (end > lastEnds[place])
        {
            lastEnds[place] = end;
            reels[place].lastEnd =
                end == line.getEndFrameIndex() ? line.getEndTCString() : line.getStartTCString();
        }
    }

    ReelRule rule;
    std::map<juce::String, std::size_t> places;
    std::vector<int> lastEnds;
};

juce::int64 lengthOf (const Event& line)
{
    // Without any time it is 0 as well.
    return std::max (juce::int64 { 0 },
                     juce::int64 { line.getEndFrameIndex() } - juce::int64 { line.getInPointFrameIndex() });
}

bool isCounted (const Event& event) { return LineCount::isLine (event) && ! event.isHiddenByFilter(); }

} // namespace

/** Fills the numbers in. */
class StatisticsBuilder final
{
public:
    StatisticsBuilder (Statistics& statisticsToFill, const Project& projectToCount,
                       const StatisticsQuestion& questionOfUser)
        : statistics (statisticsToFill),
          project (projectToCount),
          question (questionOfUser),
          reels (questionOfUser.reelRule)
    {
    }

    void fill()
    {
        for (const auto& event : project.list->events)
            statistics.linesOfList += LineCount::isLine (*event) ? 1 : 0;

        for (const auto& event : project.list->filteredEvents)
            if (isCounted (*event))
                take (*event);

        noteOrderOfLines();
        statistics.reels = std::move (reels.reels);
        fillCharacters();
        moveNamelessReelToEnd();
        fillActors();
    }

private:
    void take (const Event& line)
    {
        auto& speaker = speakers[line.character().get()];
        const auto words = numberOfWords (line.getText().getText());
        const auto frames = lengthOf (line);
        speaker.all.add (line, words, frames);

        if (question.reelRule != ReelRule::none)
            speaker.byReel[reels.placeOf (line)].add (line, words, frames);

        if (hasTime (line))
        {
            const juce::int64 from = line.getInPointFrameIndex();
            speaker.stretches.push_back (
                { from, from + std::max (juce::int64 { 1 }, frames), line.isDone() });
        }
        else
        {
            ++statistics.linesWithoutTime;
        }
    }

    void noteOrderOfLines()
    {
        if (! question.inOrderOfLines)
            return;

        std::size_t place = 0;

        for (const auto& event : project.list->sortedFilteredEvents)
            if (isCounted (*event))
            {
                auto& firstShown = speakers[event->character().get()].firstShown;
                firstShown = std::min (firstShown, place++);
            }
    }

    void fillCharacters()
    {
        std::vector<std::pair<std::size_t, CharacterWork>> found;
        const auto& cast = project.characters->characters();

        for (std::size_t i = 0; i < cast.size(); ++i)
        {
            auto& speaker = speakers[cast[i].get()];

            if (speaker.all.amount().lines > 0 || question.withIdleCharacters)
                found.emplace_back (speaker.firstShown,
                                    workOf (speaker, project.characters->characterIDs()[i], *cast[i]));
        }

        if (const auto nobody = speakers.find (nullptr); nobody != speakers.end())
            found.emplace_back (nobody->second.firstShown, workOf (nobody->second, {}, ADRCharacter ({})));

        std::stable_sort (found.begin(), found.end(),
                          [] (const auto& a, const auto& b) { return a.first < b.first; });

        for (auto& character : found)
            statistics.characters.push_back (std::move (character.second));
    }

    CharacterWork workOf (Speaker& speaker, const juce::String& id, const ADRCharacter& character)
    {
        CharacterWork work { id,
                             character.name,
                             character.actor,
                             character.prefix,
                             speaker.all.amount(),
                             {},
                             std::move (speaker.stretches) };
        statistics.total += work.amount;

        for (const auto& [place, collected] : speaker.byReel)
        {
            auto& reel = statistics.reels[place];
            work.reels.push_back ({ place, collected.amount() });
            reel.amount += work.reels.back().amount;
            reel.characters += work.isNobody() ? 0 : 1;
        }

        return work;
    }

    /** Lines without a time come first in a list, and are of the least interest. */
    void moveNamelessReelToEnd()
    {
        auto& list = statistics.reels;
        const auto nameless = std::find_if (list.begin(), list.end(),
                                            [] (const ReelWork& reel) { return reel.name.isEmpty(); });

        if (nameless == list.end())
            return;

        const auto place = static_cast<std::size_t> (nameless - list.begin());
        std::rotate (nameless, nameless + 1, list.end());

        for (auto& character : statistics.characters)
        {
            for (auto& inReel : character.reels)
                inReel.reel = inReel.reel == place  ? list.size() - 1
                              : inReel.reel > place ? inReel.reel - 1
                                                    : inReel.reel;

            std::sort (character.reels.begin(), character.reels.end(),
                       [] (const auto& a, const auto& b) { return a.reel < b.reel; });
        }
    }

    void fillActors()
    {
        std::map<juce::String, std::size_t> places;

        for (std::size_t i = 0; i < statistics.characters.size(); ++i)
        {
            const auto& character = statistics.characters[i];
            const auto [found, isNew] = places.try_emplace (character.actor, statistics.actors.size());

            if (isNew)
                statistics.actors.push_back ({ character.actor, {}, {} });

            auto& actor = statistics.actors[found->second];
            actor.characters.push_back (i);
            actor.amount += character.amount;
        }
    }

    Statistics& statistics;
    const Project& project;
    const StatisticsQuestion& question;
    Reels reels;
    std::map<const ADRCharacter*, Speaker> speakers;
};

Amount& Amount::operator+= (const Amount& other)
{
    lines += other.lines;
    cues += other.cues;
    done += other.done;
    disabled += other.disabled;
    words += other.words;
    frames += other.frames;
    return *this;
}

juce::String CharacterWork::shownName() const { return isNobody() ? OutputFileNames::noCharacter : name; }

juce::String ActorWork::shownName() const { return name.isEmpty() ? juce::String ("<no actor>") : name; }

Statistics::Statistics (const Project& project, const StatisticsQuestion& question)
    : reelRule (question.reelRule),
      timeInfo (project.timeInfo)
{
    StatisticsBuilder (*this, project, question).fill();
}

double Statistics::secondsOf (const Amount& amount) const noexcept
{
    const auto& rate = timeInfo->tcDef;
    const auto frames = static_cast<double> (amount.frames);

    if (rate.frameRateNumerator == 0 || rate.frameRateDenominator == 0)
        return frames / (rate.framesPerSecond > 0 ? rate.framesPerSecond : 25);

    return frames * rate.frameRateDenominator / rate.frameRateNumerator;
}

double Statistics::shareOf (const Amount& amount) const noexcept
{
    return linesOfList > 0 ? static_cast<double> (amount.lines) / linesOfList : 0.0;
}

juce::String Statistics::namesOfCharacters (const ActorWork& actor) const
{
    juce::StringArray names;

    for (const auto place : actor.characters)
        names.add (characters[place].shownName());

    return names.joinIntoString (", ");
}

std::vector<juce::String> notesOn (const Statistics& statistics)
{
    std::vector<juce::String> notes;
    const auto note = [&notes] (int lines, const char* one, const char* several)
    {
        if (lines > 0)
            notes.push_back (counted (static_cast<std::size_t> (lines), "line")
                             + (lines == 1 ? one : several));
    };
    note (statistics.total.disabled, " is disabled; it is counted", " are disabled; they are counted");
    note (statistics.linesWithoutTime, " has no time", " have no time");
    return notes;
}

juce::String hoursMinutesSeconds (double seconds)
{
    const auto whole = static_cast<juce::int64> (std::llround (seconds));
    const auto twoDigits = [] (juce::int64 number) { return juce::String (number).paddedLeft ('0', 2); };
    return juce::String (whole / 3600) + ":" + twoDigits (whole / 60 % 60) + ":" + twoDigits (whole % 60);
}

juce::String percentOf (double share)
{
    const auto nearest = juce::roundToInt (share * 100.0);
    const auto shown = share <= 0.0 ? 0 : share >= 1.0 ? 100 : juce::jlimit (1, 99, nearest);
    return juce::String (shown) + " %";
}

juce::String percentWithTenth (double share) { return juce::String (share * 100.0, 1) + " %"; }

double doneShare (const Amount& amount) noexcept
{
    return amount.lines > 0 ? static_cast<double> (amount.done) / amount.lines : 0.0;
}

} // namespace overmarks
