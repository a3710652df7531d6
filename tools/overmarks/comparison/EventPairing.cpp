// SPDX-License-Identifier: GPL-3.0-only
#include "comparison/EventPairing.h"

#include "comparison/WordDifference.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <span>
#include <string>

namespace overmarks
{

namespace
{

using Indices = std::span<const int>;
using Farthest = std::optional<std::int64_t>;

constexpr int secondsCloseBy = 10;

/** Events that look alike under some sign. */
struct Group
{
    std::vector<int> olds, news;
};

class Pairer final
{
public:
    Pairer (const ComparedList& oldList, const ComparedList& newList)
        : old (oldList.events),
          now (newList.events),
          second (framesPerSecond (newList.project.timeInfo->tcDef)),
          comparesTypes (bothHave (oldList, newList, "Event Type")),
          comparesRoles (bothHave (oldList, newList, "Character"))
    {
        pairing.ofOld.assign (old.size(), Pairing::none);
        pairing.ofNew.assign (now.size(), Pairing::none);
        before.assign (old.size(), 0);
        after.assign (old.size(), 0);
    }

    Pairing pair()
    {
        pairBy ([] (const ComparedEvent& e)
                { return e.isFade() ? e.event->typeString().toStdString() : ""; });
        pairBy ([] (const ComparedEvent& e) { return e.event->getUuid().toStdString(); });
        pairBy (sign (number | role | words));
        pairing.isRenumbered = isRenumbered();

        if (pairing.isRenumbered)
            pairBy (sign (role | words));

        pairBy (sign (number | role));
        pairBy (sign (role | words));

        const std::int64_t closeBy = std::int64_t { secondsCloseBy } * second;
        pairBy (sign (words), closeBy);
        pairBy (sign (number), closeBy);
        pairBy (sign (wordless), closeBy);
        pairRewritten();
        return std::move (pairing);
    }

private:
    enum Signs
    {
        number = 1,
        role = 2,
        words = 4,
        wordless = 8
    };

    using Sign = std::function<std::string (const ComparedEvent&)>; ///< empty for an event that takes no part

    static bool bothHave (const ComparedList& one, const ComparedList& other, const char* column)
    {
        return one.scope.has (column) && other.scope.has (column);
    }

    /** What an event has to share with its partner. No text holds a zero, so none can pass for two. */
    Sign sign (int what) const
    {
        return [this, what] (const ComparedEvent& e) -> std::string
        {
            const bool takesPart = ((what & number) == 0 || ! e.number.empty())
                                   && ((what & words) == 0 || ! e.words.empty())
                                   && ((what & wordless) == 0 || (e.words.empty() && e.number.empty()));

            if (! takesPart || e.isFade())
                return {};

            auto text = std::to_string (comparesTypes ? static_cast<int> (e.event->getType()) : 0) + '\0';

            if ((what & (role | wordless)) != 0 && comparesRoles)
                text += e.role;
            if ((what & number) != 0)
                text += '\0' + e.number;
            if ((what & words) != 0)
                text += '\0' + e.words;

            return text;
        };
    }

    std::map<std::string, Group> groupsBy (const Sign& signOf) const
    {
        std::map<std::string, Group> groups;

        for (std::size_t i = 0; i < old.size(); ++i)
            if (pairing.ofOld[i] == Pairing::none)
                if (auto key = signOf (old[i]); ! key.empty())
                    groups[std::move (key)].olds.push_back (static_cast<int> (i));

        for (std::size_t i = 0; i < now.size(); ++i)
            if (pairing.ofNew[i] == Pairing::none)
                if (const auto group = groups.find (signOf (now[i])); group != groups.end())
                    group->second.news.push_back (static_cast<int> (i));

        return groups;
    }

    void pairBy (const Sign& signOf, Farthest farthest = {})
    {
        const auto groups = groupsBy (signOf);
        learnShifts();

        for (const auto& [key, group] : groups)
            if (group.olds.size() == 1 && group.news.size() == 1
                && isNear (group.olds[0], group.news[0], farthest))
                join (group.olds[0], group.news[0]);

        learnShifts(); // what is there once tells best where the rest has gone

        for (const auto& [key, group] : groups)
            if (group.olds.size() > 1 || group.news.size() > 1)
                pairGroup (group, farthest);
    }

    /** Numbers are trusted as long as most lines that are there once on both sides still have theirs. */
    bool isRenumbered() const
    {
        constexpr std::size_t fewest = 3;
        std::size_t same = 0, other = 0;

        for (std::size_t i = 0; i < old.size(); ++i)
            if (const int j = pairing.ofOld[i]; j != Pairing::none && ! old[i].number.empty())
                ++(old[i].number == partner (i).number ? same : other);

        for (const auto& [key, group] : groupsBy (sign (role | words)))
            if (group.olds.size() == 1 && group.news.size() == 1)
            {
                const auto& one = old[static_cast<std::size_t> (group.olds[0])].number;
                const auto& two = now[static_cast<std::size_t> (group.news[0])].number;
                other += ! one.empty() && ! two.empty() && one != two ? 1u : 0u;
            }

        return other >= fewest && other > same;
    }

    // ---- places ------------------------------------------------------------------------------------------------------

    const ComparedEvent& partner (std::size_t oldIndex) const
    {
        return now[static_cast<std::size_t> (pairing.ofOld[oldIndex])];
    }

    void join (int oldIndex, int newIndex)
    {
        pairing.ofOld[static_cast<std::size_t> (oldIndex)] = newIndex;
        pairing.ofNew[static_cast<std::size_t> (newIndex)] = oldIndex;
    }

    bool isTimed (int oldIndex) const { return old[static_cast<std::size_t> (oldIndex)].start.has_value(); }
    std::int64_t placeOfNew (int i) const { return now[static_cast<std::size_t> (i)].start->frames; }
    std::int64_t placeOfOld (int i) const { return old[static_cast<std::size_t> (i)].start->frames; }

    /** Where an old event would be now, if it has moved with the paired one before it. */
    std::int64_t expectedPlace (int i) const { return placeOfOld (i) + before[static_cast<std::size_t> (i)]; }
    std::int64_t otherPlace (int i) const { return placeOfOld (i) + after[static_cast<std::size_t> (i)]; }

    bool isNear (int oldIndex, int newIndex, Farthest farthest) const
    {
        const bool hasTime = now[static_cast<std::size_t> (newIndex)].start.has_value();

        if (! farthest.has_value())
            return true;
        if (! isTimed (oldIndex) || ! hasTime)
            return isTimed (oldIndex) == hasTime;

        const auto place = placeOfNew (newIndex);
        return std::min ({ std::abs (place - expectedPlace (oldIndex)),
                           std::abs (place - otherPlace (oldIndex)),
                           std::abs (place - placeOfOld (oldIndex)) })
               <= *farthest;
    }

    /** How far the pairs around each old event have moved; before the first pair and behind the last one, as far as that one. */
    void learnShifts()
    {
        std::optional<std::int64_t> shift;
        std::size_t known = 0; // behind the last pair

        for (std::size_t i = 0; i < old.size(); ++i)
        {
            if (isPairedInTime (i))
            {
                const bool isFirst = ! shift.has_value();
                shift = partner (i).start->frames - old[i].start->frames;
                known = i + 1;

                if (isFirst)
                    std::fill (before.begin(), before.begin() + static_cast<std::ptrdiff_t> (i), *shift);
            }

            before[i] = shift.value_or (0);
        }

        std::fill (after.begin() + static_cast<std::ptrdiff_t> (known), after.end(), shift.value_or (0));

        for (auto i = known; i-- > 0;)
            after[i] = isPairedInTime (i) ? partner (i).start->frames - old[i].start->frames : after[i + 1];
    }

    bool isPairedInTime (std::size_t i) const
    {
        return pairing.ofOld[i] != Pairing::none && old[i].start.has_value() && partner (i).start.has_value();
    }

    // ---- groups ------------------------------------------------------------------------------------------------------

    void pairGroup (const Group& group, Farthest farthest)
    {
        const auto timed = [] (const std::vector<int>& all, const std::vector<ComparedEvent>& events)
        {
            const auto border = std::find_if (
                all.begin(), all.end(),
                [&] (int i) { return ! events[static_cast<std::size_t> (i)].start.has_value(); });
            return Indices (all).first (static_cast<std::size_t> (border - all.begin()));
        };
        const auto olds = timed (group.olds, old), news = timed (group.news, now);
        const auto untimedOlds = Indices (group.olds).subspan (olds.size());
        const auto untimedNews = Indices (group.news).subspan (news.size());
        pairTimed (olds, news, farthest);
        joinInTurn (untimedOlds, untimedNews);

        // A line that has got its time only now, or has lost it.
        if (! farthest.has_value())
        {
            joinInTurn (withoutPartner (olds, pairing.ofOld), withoutPartner (untimedNews, pairing.ofNew));
            joinInTurn (withoutPartner (untimedOlds, pairing.ofOld), withoutPartner (news, pairing.ofNew));
        }
    }

    static std::vector<int> withoutPartner (Indices all, const std::vector<int>& partners)
    {
        std::vector<int> left;

        for (const int i : all)
            if (partners[static_cast<std::size_t> (i)] == Pairing::none)
                left.push_back (i);

        return left;
    }

    void joinInTurn (Indices olds, Indices news)
    {
        for (std::size_t i = 0; i < std::min (olds.size(), news.size()); ++i)
            join (olds[i], news[i]);
    }

    /** Events that stand just where they are expected cut the group into stretches, within which the others pair. */
    void pairTimed (Indices olds, Indices news, Farthest farthest)
    {
        std::size_t oldDone = 0, newDone = 0;

        for (std::size_t i = 0; i < olds.size(); ++i)
        {
            const auto found = findInPlace (olds[i], news, newDone);

            if (found == news.size())
                continue;

            pairStretch (olds.subspan (oldDone, i - oldDone), news.subspan (newDone, found - newDone),
                         farthest);
            join (olds[i], news[found]);
            oldDone = i + 1;
            newDone = found + 1;
        }

        pairStretch (olds.subspan (oldDone), news.subspan (newDone), farthest);
    }

    std::size_t findInPlace (int oldIndex, Indices news, std::size_t from) const
    {
        for (const auto place : { expectedPlace (oldIndex), otherPlace (oldIndex), placeOfOld (oldIndex) })
        {
            const auto found =
                std::lower_bound (news.begin() + static_cast<std::ptrdiff_t> (from), news.end(), place,
                                  [this] (int i, std::int64_t wanted) { return placeOfNew (i) < wanted; });

            if (found != news.end() && placeOfNew (*found) == place)
                return static_cast<std::size_t> (found - news.begin());
        }

        return news.size();
    }

    void pairStretch (Indices olds, Indices news, Farthest farthest)
    {
        if (olds.size() == news.size() && ! farthest.has_value())
        {
            joinInTurn (olds, news);
            return;
        }

        if (! farthest.has_value())
            joinRuns (olds, news);

        if (! olds.empty() && ! news.empty())
            joinNearest (olds, news, farthest);
    }

    /** Two or more that have moved alike, from the front and from the back: between them something was put in or taken out. */
    void joinRuns (Indices& olds, Indices& news)
    {
        const auto length = [&] (auto oldAt, auto newAt)
        {
            std::size_t i = 0;

            while (i < std::min (olds.size(), news.size())
                   && placeOfNew (newAt (i)) - placeOfOld (oldAt (i))
                          == placeOfNew (newAt (0)) - placeOfOld (oldAt (0)))
                ++i;

            return i > 1 ? i : 0;
        };
        const auto front =
            length ([&] (std::size_t i) { return olds[i]; }, [&] (std::size_t i) { return news[i]; });
        joinInTurn (olds.first (front), news.first (front));
        olds = olds.subspan (front);
        news = news.subspan (front);

        const auto back = length ([&] (std::size_t i) { return olds[olds.size() - 1 - i]; },
                                  [&] (std::size_t i) { return news[news.size() - 1 - i]; });
        joinInTurn (olds.last (back), news.last (back));
        olds = olds.first (olds.size() - back);
        news = news.first (news.size() - back);
    }

    void joinNearest (Indices olds, Indices news, Farthest farthest)
    {
        std::vector<std::int64_t> oldPlaces, newPlaces;

        for (const int i : olds)
            oldPlaces.push_back (oldPlaces.empty() ? expectedPlace (i)
                                                   : std::max (oldPlaces.back(), expectedPlace (i)));
        for (const int i : news)
            newPlaces.push_back (placeOfNew (i));

        if (olds.size() <= news.size())
            for (const auto& [i, j] : nearestInOrder (oldPlaces, newPlaces, farthest))
                join (olds[i], news[j]);
        else
            for (const auto& [j, i] : nearestInOrder (newPlaces, oldPlaces, farthest))
                join (olds[i], news[j]);
    }

    // ---- rewritten lines ---------------------------------------------------------------------------------------------

    void pairRewritten()
    {
        learnShifts();
        const auto place = [this] (const ComparedEvent& e) -> std::string
        { return e.isFade() || ! e.start.has_value() ? "" : sign (role) (e); };

        for (const auto& [key, group] : groupsBy (place))
        {
            for (const int i : group.olds)
                rewrite (i, group.news, 0);
            for (const int i : group.olds)
                if (pairing.ofOld[static_cast<std::size_t> (i)] == Pairing::none)
                    rewrite (i, group.news, second);
        }
    }

    /** Pairs an old line with the nearest new one that may be the same line in other words. */
    void rewrite (int oldIndex, Indices news, std::int64_t farthest)
    {
        constexpr int mostCandidates = 16; // however many lines share a place
        const auto expected = expectedPlace (oldIndex);
        const auto isBefore = [this] (int i, std::int64_t place) { return placeOfNew (i) < place; };
        auto candidate = std::lower_bound (news.begin(), news.end(), expected - farthest, isBefore);
        int best = Pairing::none;

        for (int seen = 0; candidate != news.end() && seen < mostCandidates; ++candidate, ++seen)
        {
            const auto distance = std::abs (placeOfNew (*candidate) - expected);

            if (placeOfNew (*candidate) > expected + farthest)
                break;

            if (mayBeRewritten (oldIndex, *candidate, farthest > 0)
                && (best == Pairing::none || distance < std::abs (placeOfNew (best) - expected)))
                best = *candidate;
        }

        if (best != Pairing::none)
            join (oldIndex, best);
    }

    bool mayBeRewritten (int oldIndex, int newIndex, bool needsLikeness) const
    {
        constexpr double half = 0.5;
        const auto& one = old[static_cast<std::size_t> (oldIndex)];
        const auto& other = now[static_cast<std::size_t> (newIndex)];

        if (pairing.ofNew[static_cast<std::size_t> (newIndex)] != Pairing::none)
            return false;
        if (! one.number.empty() && ! other.number.empty() && one.number != other.number)
            return false;

        return ! needsLikeness || likeness (one.words, other.words) >= half;
    }

    const std::vector<ComparedEvent>& old;
    const std::vector<ComparedEvent>& now;
    Pairing pairing;
    std::vector<std::int64_t> before, after; ///< for each old event
    int second;
    bool comparesTypes;
    bool comparesRoles;
};

} // namespace

Pairing pairEvents (const ComparedList& old, const ComparedList& now) { return Pairer (old, now).pair(); }

std::vector<std::pair<std::size_t, std::size_t>> nearestInOrder (const std::vector<std::int64_t>& few,
                                                                 const std::vector<std::int64_t>& many,
                                                                 Farthest farthest)
{
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    std::size_t next = 0;

    for (std::size_t i = 0; i < few.size(); ++i)
    {
        const auto last = many.size() - (few.size() - i); // those behind it want one as well
        const auto begin = many.begin() + static_cast<std::ptrdiff_t> (next);
        const auto end = many.begin() + static_cast<std::ptrdiff_t> (last);
        auto best = std::lower_bound (begin, end, few[i]);

        if (best != begin && few[i] - *(best - 1) <= std::abs (*best - few[i]))
            --best;

        if (farthest.has_value() && std::abs (*best - few[i]) > *farthest)
            continue;

        next = static_cast<std::size_t> (best - many.begin()) + 1;
        pairs.emplace_back (i, static_cast<std::size_t> (best - many.begin()));
    }

    return pairs;
}

} // namespace overmarks
