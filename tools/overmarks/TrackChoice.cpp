// SPDX-License-Identifier: GPL-3.0-only
#include "TrackChoice.h"

#include "Suggestion.h"

#include "core/text/StringUtil.h"

#include <algorithm>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

constexpr int mostNames = 8;

juce::String nameOf (const PTSessionInfoTrack& track)
{
    return ZEP::Core::StringUtil::fromUTF8 (track.name).trim();
}

juce::String characterOf (const PTSessionInfoTrack& track)
{
    return ZEP::Core::StringUtil::fromUTF8 (track.characterName);
}

bool isCalled (const PTSessionInfoTrack& track, const juce::String& name)
{
    return name.equalsIgnoreCase (nameOf (track)) || name.equalsIgnoreCase (characterOf (track));
}

/** The first of the names in quotes; a session may have hundreds. */
juce::String someOf (const juce::StringArray& names)
{
    juce::StringArray quoted;

    for (int i = 0; i < std::min (names.size(), mostNames); ++i)
        quoted.add ("\"" + names[i] + "\"");

    if (names.size() > mostNames)
        quoted.add (juce::String (names.size() - mostNames) + " more");

    return quoted.joinIntoString (", ");
}

} // namespace

juce::String TrackReport::inWords() const
{
    const auto numberRead = all.size() - unread.size();
    auto words = juce::String (numberRead) + " of " + juce::String (all.size()) + " tracks are read";

    if (! unread.isEmpty())
        words += ", without " + someOf (unread);

    if (numberRead == 0 && ! all.isEmpty())
        words += "; --tracks all reads them all";

    return words;
}

TrackChoice::TrackChoice (std::optional<std::vector<juce::String>> names)
    : wanted (std::move (names)),
      choiceBefore (std::exchange (
          PTSessionInfoFileImporter::chooseTracks,
          PTSessionInfoFileImporter::TrackChoice ([this] (const Tracks& tracks) { return choose (tracks); })))
{
}

TrackChoice::~TrackChoice() { PTSessionInfoFileImporter::chooseTracks = std::move (choiceBefore); }

TrackChoice::Tracks TrackChoice::choose (const Tracks& tracks)
{
    Tracks chosen;
    auto& report = lastReport.emplace();

    for (const auto& track : tracks)
    {
        report.all.add (nameOf (*track));
        report.characters.add (characterOf (*track));

        if (isWanted (*track))
            chosen.push_back (track);
        else
            report.unread.add (nameOf (*track));
    }

    if (wanted.has_value())
        for (const auto& name : *wanted)
            if (std::none_of (tracks.begin(), tracks.end(),
                              [&name] (const auto& track) { return isCalled (*track, name.trim()); }))
                report.missing.add (name.trim());

    return chosen;
}

bool TrackChoice::isWanted (const PTSessionInfoTrack& track) const
{
    if (! wanted.has_value())
        return track.selected; // a cue track

    return wanted->empty()
           || std::any_of (wanted->begin(), wanted->end(),
                           [&track] (const auto& name) { return isCalled (track, name.trim()); });
}

void refuseMissingTracks (const std::vector<TrackReport>& sessions)
{
    if (sessions.empty())
        return;

    juce::StringArray all, known;

    for (const auto& session : sessions)
    {
        all.addArray (session.all);
        known.addArray (session.characters);
    }

    all.removeDuplicates (false);
    known.addArray (all);
    std::vector<std::string> words;

    for (const auto& word : known)
        words.push_back (word.toStdString());

    for (const auto& name : sessions.front().missing)
        if (std::all_of (sessions.begin(), sessions.end(),
                         [&name] (const auto& session) { return session.missing.contains (name); }))
            throw WrongUsage ("--tracks: there is no track \"" + name + "\"."
                              + didYouMean (name.toStdString(), words)
                              + (all.isEmpty() ? juce::String() : " There are " + someOf (all)));
}

} // namespace overmarks
