// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include "import/PTSessionInfoFileImporter.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <vector>

namespace overmarks
{

/** What became of the tracks of a Pro Tools session. */
struct TrackReport
{
    juce::StringArray all;        ///< names of the tracks that the file has
    juce::StringArray characters; ///< and of those who speak on them
    juce::StringArray unread;     ///< the tracks that were not chosen
    juce::StringArray missing;    ///< names that were asked for and belong to no track
    juce::String list {};         ///< the file, as a person knows it

    /** "2 of 4 tracks are read, ..." with the names of the others. */
    juce::String inWords() const;
};

/** Chooses the tracks of a Pro Tools session as --tracks says, where an application with windows would ask. As long as this
    object lives, every importer of the process asks it. */
class TrackChoice final
{
public:
    /** @param names  as ListOptions::tracks() tells them. A name is that of a track or of its character; case doesn't matter */
    explicit TrackChoice (std::optional<std::vector<juce::String>> names);

    TrackChoice (const TrackChoice&) = delete;
    TrackChoice& operator= (const TrackChoice&) = delete;
    ~TrackChoice();

    /** The last choice; nothing if there was none, because the list is of another format or has failed. */
    const std::optional<TrackReport>& report() const noexcept { return lastReport; }

private:
    using Tracks = ZEP::Overmarks::PTSessionInfoFileImporter::Tracks;

    Tracks choose (const Tracks& tracks);
    bool isWanted (const ZEP::Overmarks::PTSessionInfoTrack& track) const;

    std::optional<std::vector<juce::String>> wanted;
    ZEP::Overmarks::PTSessionInfoFileImporter::TrackChoice choiceBefore;
    std::optional<TrackReport> lastReport;
};

/** A name that none of the sessions has is wrong usage, with a suggestion. @param option  that names tracks: "--tracks" */
void refuseMissingTracks (const std::string& option, const std::vector<TrackReport>& sessions);

} // namespace overmarks
