// SPDX-License-Identifier: GPL-3.0-only
#include "comparison/RecordingTransfer.h"

#include "Session.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "list/ProjectJSON.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

// An event holds its reason's code less one.
constexpr int firstUserReason = ADRCueReasonsManager::firstUserReasonCode - 1;
constexpr int lastUserReason = ADRCueReasonsManager::lastCode - 1;

bool hasTakes (const Event& event)
{
    return event.getNumRecordedTakes() > 0 || event.getSelectedTake() >= 0 || event.getAltTake() >= 0;
}

bool hasRecordings (const Event& event) { return hasTakes (event) || event.isDone(); }

bool hasRemarks (const Event& event)
{
    return event.getNotes().length() > 0 || event.getEngineeringNotes().length() > 0 || event.getReason() > 0;
}

juce::String takesInWords (const Event& event)
{
    juce::StringArray words { counted (static_cast<std::size_t> (std::max (0, event.getNumRecordedTakes())),
                                       "take") };

    if (event.getSelectedTake() >= 0)
        words.add ("take " + juce::String (event.getSelectedTake() + 1) + " selected");
    if (event.getAltTake() >= 0)
        words.add ("take " + juce::String (event.getAltTake() + 1) + " as the alternative");

    return words.joinIntoString (", ");
}

juce::String workInWords (const Event& event)
{
    juce::StringArray words;

    if (event.isDone())
        words.add ("done");
    if (hasTakes (event))
        words.add (takesInWords (event));

    return words.joinIntoString (", ");
}

/** Writes past the undo history: the list is about to be saved, not edited. */
class SilentEdit final
{
public:
    explicit SilentEdit (Event& eventToEdit) : event (eventToEdit)
    {
        event.setUndoBypass (true);
        event.setNotificationsSuppressed (true);
    }

    SilentEdit (const SilentEdit&) = delete;
    SilentEdit& operator= (const SilentEdit&) = delete;

    ~SilentEdit()
    {
        event.setUndoBypass (false);
        event.setNotificationsSuppressed (false);
    }

private:
    Event& event;
};

/** Finds the old project's own reasons in the new one by their names, and adds those that it hasn't got. */
class UserReasons final
{
public:
    UserReasons (const std::vector<juce::String>& oldNames, std::vector<juce::String>& newNames)
        : olds (oldNames),
          news (newNames)
    {
    }

    /** The new project's number for an old one's reason; nothing if it has no room for one more. */
    std::optional<int> inNewProject (int reason)
    {
        const auto place = static_cast<std::size_t> (reason - firstUserReason);

        if (reason < firstUserReason || reason > lastUserReason || place >= olds.size()
            || olds[place].isEmpty())
            return reason;

        auto found = std::find (news.begin(), news.end(), olds[place]);

        if (found == news.end())
            found = freePlace (place);
        if (found == news.end())
            return std::nullopt;

        *found = olds[place];
        return firstUserReason + static_cast<int> (found - news.begin());
    }

private:
    std::vector<juce::String>::iterator freePlace (std::size_t wanted)
    {
        news.resize (std::max<std::size_t> (news.size(), ADRCueReasonsManager::numberOfUserReasons));
        const auto same = news.begin() + static_cast<std::ptrdiff_t> (wanted);
        return same->isEmpty() ? same : std::find (news.begin(), news.end(), juce::String());
    }

    const std::vector<juce::String>& olds;
    std::vector<juce::String>& news;
};

class Transfer final
{
public:
    Transfer (const ComparedList& oldList, ComparedList& newList)
        : old (oldList),
          now (newList),
          reasons (old.project.userReasons, now.project.userReasons)
    {
    }

    void carry (const ComparedEvent& from, const ComparedEvent& to)
    {
        const SilentEdit edit (*to.event);
        bool hasChanged = carryFlags (*from.event, *to.event);
        hasChanged = carryTakes (from, to) || hasChanged;
        hasChanged = carryTrack (from, to) || hasChanged;
        hasChanged = carryReason (from, to) || hasChanged;
        hasChanged = carryNote (from, to, "notes", &Event::getNotes, &Event::setNotes) || hasChanged;
        hasChanged = carryNote (from, to, "engineering notes", &Event::getEngineeringNotes,
                                &Event::setEngineeringNotes)
                     || hasChanged;
        result.carried += hasChanged ? 1 : 0;
    }

    void miss (const ComparedEvent& event)
    {
        if (hasRecordings (*event.event))
            result.lost.push_back (nameInMessage (event)
                                   + " is not in the new list: " + workInWords (*event.event));
        else
            missedRemarks += hasRemarks (*event.event) ? 1 : 0;
    }

    TransferResult take()
    {
        if (missedRemarks > 0)
            result.remarks.push_back (counted (missedRemarks, "old event")
                                      + " with notes or a reason, but without recordings, "
                                      + (missedRemarks == 1 ? "is" : "are") + " not in the new list");

        return std::move (result);
    }

private:
    static bool carryFlags (const Event& from, Event& to)
    {
        const bool isDone = from.isDone() && ! to.isDone(),
                   isFlagged = from.getStoredFlag() && ! to.getStoredFlag();

        if (isDone)
            to.setDone (true);
        if (isFlagged)
            to.setStoredFlag (true);

        return isDone || isFlagged;
    }

    bool carryTakes (const ComparedEvent& from, const ComparedEvent& to)
    {
        const auto& source = *from.event;
        auto& target = *to.event;
        const bool areSame = source.getNumRecordedTakes() == target.getNumRecordedTakes()
                             && source.getSelectedTake() == target.getSelectedTake()
                             && source.getAltTake() == target.getAltTake();

        if (! hasTakes (source) || areSame)
            return false;

        if (hasTakes (target))
        {
            lose (to, "takes", takesInWords (target), takesInWords (source));
            return false;
        }

        target.setNumRecordedTakes (source.getNumRecordedTakes());
        target.setSelectedTake (source.getSelectedTake());
        target.setAltTake (source.getAltTake());
        return true;
    }

    bool carryTrack (const ComparedEvent& from, const ComparedEvent& to)
    {
        const int wanted = from.event->getRecTrackIndex(), own = to.event->getRecTrackIndex();

        if (wanted < 0 || wanted == own)
            return false;

        if (own >= 0)
        {
            lose (to, "recording track", juce::String (own + 1), juce::String (wanted + 1));
            return false;
        }

        to.event->setRecTrackIndex (wanted);
        return true;
    }

    bool carryReason (const ComparedEvent& from, const ComparedEvent& to)
    {
        if (from.event->getReason() <= 0 || from.reason == to.reason)
            return false;

        const auto wanted =
            to.event->getReason() <= 0 ? reasons.inNewProject (from.event->getReason()) : std::nullopt;

        if (! wanted.has_value())
        {
            lose (to, "reason", to.reason, from.reason);
            return false;
        }

        to.event->setReason (*wanted);
        return true;
    }

    bool carryNote (const ComparedEvent& from, const ComparedEvent& to, const char* what,
                    const RichTextString& (Event::*get)() const noexcept,
                    void (Event::*set) (const RichTextString&))
    {
        const auto& wanted = ((*from.event).*get)();
        const auto& own = ((*to.event).*get)();

        if (wanted.getText().trim().isEmpty() || own.getText().contains (wanted.getText().trim()))
            return false;

        if (own.getText().trim().isEmpty())
        {
            ((*to.event).*set) (wanted);
            return true;
        }

        auto both = own;
        both.append (juce::String ("\n"));
        both.append (wanted);
        ((*to.event).*set) (both);
        result.remarks.push_back (nameInMessage (to) + ": both lists have " + what
                                  + "; the old ones stand below the new ones");
        return true;
    }

    void lose (const ComparedEvent& event, const char* what, const juce::String& own,
               const juce::String& wanted)
    {
        result.lost.push_back (nameInMessage (event) + ": " + what + ": the new list's stays, " + own
                               + "; the old list has " + wanted);
    }

    const ComparedList& old;
    ComparedList& now;
    UserReasons reasons;
    std::size_t missedRemarks = 0;
    TransferResult result;
};

/** What a cue list has no place for. */
void carryProject (const Project& old, Project& now)
{
    now.documents = old.documents;
    now.list->sortKey = old.list->sortKey;
    now.list->sortDescending = old.list->sortDescending;

    for (const auto& character : now.characters->characters())
    {
        const auto known = old.characters->characterForID (
            old.characters->characterIDForCharacterWithName (character->name));

        if (known != nullptr && character->actor.isEmpty())
            character->actor = known->actor;
        if (known != nullptr && character->prefix.isEmpty())
            character->prefix = known->prefix;
    }
}

} // namespace

TransferResult carryRecordings (const ComparedList& old, ComparedList& now, const Pairing& pairing)
{
    Transfer transfer (old, now);

    if (! now.scope.isProject && old.scope.isProject)
        carryProject (old.project, now.project);

    for (std::size_t i = 0; i < old.events.size(); ++i)
    {
        if (const int partner = pairing.ofOld[i]; partner != Pairing::none)
            transfer.carry (old.events[i], now.events[static_cast<std::size_t> (partner)]);
        else
            transfer.miss (old.events[i]);
    }

    return transfer.take();
}

Project withOldIdentities (const ComparedList& old, const ComparedList& now, const Pairing& pairing)
{
    std::map<std::string, std::string, std::less<>> identities;

    for (std::size_t i = 0; i < now.events.size(); ++i)
        if (const int partner = pairing.ofNew[i]; partner != Pairing::none)
            identities[now.events[i].event->getUuid().toStdString()] =
                old.events[static_cast<std::size_t> (partner)].event->getUuid().toStdString();

    // Inside a text each of these quotes would have a backslash before it.
    constexpr std::string_view mark = "\"uuid\":\"";
    const auto text = ProjectJSON::toText (now.project);
    std::string changed;
    changed.reserve (text.size());
    std::size_t done = 0;

    for (auto place = text.find (mark); place != text.npos; place = text.find (mark, place))
    {
        place += mark.size();
        const auto end = text.find ('"', place);

        if (const auto known = identities.find (std::string_view (text).substr (place, end - place));
            known != identities.end())
        {
            changed.append (text, done, place - done).append (known->second);
            done = end;
        }
    }

    changed.append (text, done);
    Project project;

    if (const auto error = ProjectJSON::fromText (changed, project); error.isNotEmpty())
        throw CommandFailure ("The old list's identities can't be taken over: " + error);

    project.makeCurrent();
    project.list->sortContentAndUpdateFilteredEvents();
    return project;
}

} // namespace overmarks
