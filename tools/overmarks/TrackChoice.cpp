// SPDX-License-Identifier: GPL-3.0-only
#include "TrackChoice.h"

#include "Suggestion.h"

#include "core/text/StringUtil.h"

#include <algorithm>
#include <set>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

constexpr int mostNames = 8;
constexpr int longestName = 60;

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
        quoted.add ("\"" + names[i].substring (0, longestName)
                    + (names[i].length() > longestName ? "..." : "") + "\"");

    if (names.size() > mostNames)
        quoted.add (juce::String (names.size() - mostNames) + " more");

    return quoted.joinIntoString (", ");
}

/** Wrong usage, with a suggestion and the names that there are. */
[[noreturn]] void refuseName (const std::string& option, const juce::String& name,
                              const std::vector<TrackReport>& sessions)
{
    juce::StringArray tracks;
    std::set<juce::String> seen;
    std::vector<std::string> words;

    for (const auto& session : sessions)
    {
        for (const auto& track : session.all)
            if (seen.insert (track).second)
                tracks.add (track);

        for (const auto& character : session.characters)
            words.push_back (character.toStdString());
    }

    for (const auto& track : tracks)
        words.push_back (track.toStdString());

    throw WrongUsage (juce::String (option) + ": there is no track \"" + name + "\"."
                      + didYouMean (name.toStdString(), words)
                      + (tracks.isEmpty() ? juce::String() : " There are " + someOf (tracks)));
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

void refuseMissingTracks (const std::string& option, const std::vector<TrackReport>& sessions)
{
    if (sessions.empty())
        return;

    for (const auto& name : sessions.front().missing)
        if (std::all_of (sessions.begin(), sessions.end(),
                         [&name] (const auto& session) { return session.missing.contains (name); }))
            refuseName (option, name, sessions);
}

} // namespace overmarks
