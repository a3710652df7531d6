// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/PTSessionInfoFileImporter.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/** Session texts as Pro Tools writes them, and users who know which tracks they want. */
namespace SessionSupport
{

using ZEP::Overmarks::PTSessionInfoFileImporter;
using Tracks = PTSessionInfoFileImporter::Tracks;

inline const std::string heading = "T R A C K  L I S T I N G\n";
inline const std::string clipHeading = "CHANNEL \tEVENT   \tCLIP NAME                     \tSTART TIME    \t"
                                       "END TIME      \tDURATION      \tSTATE\n";

inline std::string clip (const std::string& name, const std::string& start, const std::string& end)
{
    return "1       \t1       \t" + name + "\t   " + start + "\t   " + end + "\t   00:00:01:00\tUnmuted\n";
}

/** A track with its clips and the two empty lines that close it. */
inline std::string track (const std::string& name, const std::string& clips = {},
                          const std::string& end = "\n\n")
{
    return "TRACK NAME:\t" + name + "\nCOMMENTS:\t\nUSER DELAY:\t0 Samples\nSTATE: \n" + clipHeading + clips
           + end;
}

inline std::vector<std::string> namesOf (const Tracks& tracks)
{
    std::vector<std::string> names;
    for (const auto& track : tracks)
        names.push_back (track->name);
    return names;
}

/** Answers the question for the tracks as long as it lives. */
class Chooser final
{
public:
    explicit Chooser (PTSessionInfoFileImporter::TrackChoice answerOfUser) : answer (std::move (answerOfUser))
    {
        PTSessionInfoFileImporter::chooseTracks = [this] (const Tracks& tracks)
        {
            ++questions;
            offered = tracks;
            return answer (tracks);
        };
    }

    Chooser (const Chooser&) = delete;
    Chooser& operator= (const Chooser&) = delete;
    ~Chooser() { PTSessionInfoFileImporter::chooseTracks = PTSessionInfoFileImporter::askWithDialog; }

    PTSessionInfoFileImporter::TrackChoice answer;
    int questions = 0;
    Tracks offered; ///< the tracks of the last question
};

inline std::optional<Tracks> allOf (const Tracks& tracks) { return tracks; }

/** The tracks that come ticked. */
inline std::optional<Tracks> cueTracksOf (const Tracks& tracks)
{
    Tracks chosen;
    std::copy_if (tracks.begin(), tracks.end(), std::back_inserter (chosen),
                  [] (const auto& track) { return track->selected; });
    return chosen;
}

/** A user who closes the window. */
inline std::optional<Tracks> noneOf (const Tracks&) { return Tracks(); }

} // namespace SessionSupport
