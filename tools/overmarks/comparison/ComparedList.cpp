// SPDX-License-Identifier: GPL-3.0-only
#include "comparison/ComparedList.h"

#include "comparison/WordDifference.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/timecode/TCToolbox.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

constexpr int secondsOfAMinute = 60, secondsOfAnHour = 3600;

bool hasTime (const Event& event)
{
    return event.getStartFrameIndex() != -1 || event.getInPointFrameIndex() != -1
           || event.getEndFrameIndex() != -1;
}

juce::String reasonOf (const Event& event)
{
    const auto& manager = *ADRCueReasonsManager::sharedManager();
    const int code = event.getReason() + 1;
    const auto name = manager.getReasonFromInteger (code);

    // A reason of the user's that has no name is still another one than none.
    return name == "None" && code >= ADRCueReasonsManager::firstUserReasonCode ? manager.codeText (code)
                                                                               : name;
}

/** A list has few characters and many events. */
class Cast final
{
public:
    explicit Cast (const ADRCharacterMap& charactersOfList) : characters (charactersOfList) {}

    void describe (ComparedEvent& compared)
    {
        const auto& id = compared.event->getCharacterID();
        const auto known = roles.find (id);
        const auto character = characters.characterForID (id);

        if (character == nullptr)
            return;

        compared.character = character->name;
        compared.actor = character->actor;
        compared.role = known != roles.end() ? known->second
                                             : roles[id] = withSingleBlanks (character->name.toLowerCase());
    }

private:
    const ADRCharacterMap& characters;
    std::map<juce::String, std::string> roles;
};

/** Turns frame indices of a list into what it shows. */
class ShownTimes final
{
public:
    ShownTimes (const TimeInfo& timeInfo, const _TCDef& wanted)
        : info (timeInfo),
          counting (wanted),
          isAlike (countAlike (timeInfo.tcDef, wanted)),
          origin (TCToolbox::convertToAbsoluteFrames (timeInfo.timeOrigin, timeInfo.tcDef))
    {
    }

    ShownTime at (int index) const
    {
        const auto label = TCToolbox::tcTimeForFrameIndex (index, info);
        const double whole = static_cast<double> (label.hours) * secondsOfAnHour
                             + label.minutes * secondsOfAMinute + label.seconds;
        const double part = static_cast<double> (label.frames) / framesPerSecond (info.tcDef);

        if (isAlike)
            return { std::int64_t { origin } + index, whole + part };

        auto closest = label;
        closest.frames = static_cast<int> (std::lround (part * framesPerSecond (counting)));
        return { TCToolbox::convertToAbsoluteFrames (closest, counting), whole + part };
    }

private:
    const TimeInfo& info;
    _TCDef counting;
    bool isAlike;
    int origin;
};

} // namespace

bool ComparedEvent::isFade() const
{
    return event->getType() == EventTypeFadeIn || event->getType() == EventTypeFadeOut;
}

ComparedList::ComparedList (const Project& projectToCompare, ListScope scopeOfList)
    : project (projectToCompare),
      scope (std::move (scopeOfList)),
      hasLooks (scope.isProject)
{
    Cast cast (*project.characters);
    events.reserve (project.list->events.size());

    for (const auto& event : project.list->events)
    {
        ComparedEvent compared;
        compared.event = event;

        if (compared.isFade() && ! hasTime (*event))
            continue;

        cast.describe (compared);
        compared.reason = reasonOf (*event);
        compared.number = event->getCueNumber().trim().toStdString();
        compared.words = withSingleBlanks (event->getText().getText());

        if (compared.number == "--")
            compared.number.clear();

        hasLooks = hasLooks || ! event->getText().isPlain();
        events.push_back (std::move (compared));
    }
}

void ComparedList::countAs (const _TCDef& counting)
{
    const ShownTimes times (*project.timeInfo, counting);

    for (auto& compared : events)
        if (hasTime (*compared.event))
        {
            compared.start = times.at (compared.event->getInPointFrameIndex());
            compared.end = times.at (compared.event->getEndFrameIndex());
        }

    std::stable_sort (events.begin(), events.end(),
                      [] (const ComparedEvent& one, const ComparedEvent& other)
                      {
                          if (! one.start.has_value() || ! other.start.has_value())
                              return one.start.has_value() && ! other.start.has_value();

                          return one.start->frames < other.start->frames;
                      });
}

bool showSameTime (const ShownTime& old, const ShownTime& now, const ComparedList& oldList,
                   const ComparedList& newList)
{
    const auto& oldDef = oldList.project.timeInfo->tcDef;
    const auto& newDef = newList.project.timeInfo->tcDef;

    if (countAlike (oldDef, newDef))
        return old.frames == now.frames;

    constexpr double roundingError = 1e-6;
    const int slower = std::min (framesPerSecond (oldDef), framesPerSecond (newDef));
    return std::abs (old.seconds - now.seconds) <= 0.5 / slower + roundingError;
}

bool countAlike (const _TCDef& one, const _TCDef& other)
{
    return framesPerSecond (one) == framesPerSecond (other) && one.dropFrame == other.dropFrame;
}

int framesPerSecond (const _TCDef& def)
{
    constexpr int usual = 25;
    return def.framesPerSecond == 0 ? usual : def.framesPerSecond;
}

juce::String nameInMessage (const ComparedEvent& event)
{
    juce::StringArray details { event.character, event.event->getStartTCString() };
    details.removeEmptyStrings();
    const auto name = event.number.empty() ? event.event->typeString() + " without a number"
                                           : event.event->getCueNumber().trim();
    return name + " (" + details.joinIntoString (", ") + ")";
}

} // namespace overmarks
