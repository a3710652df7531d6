// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/PTSessionInfoTrack.h"
#include "import/frame/TableBudget.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

/** Puts the lines of a session text's track listing together to tracks. Lines are cut into cells at tabs.

        first cell             further cells
        ...TRACK NAME:...      name of the track                                  opens a track
        ...CHANNEL...                                                             heading of its clips
        any, below a heading   event, clip name, start time, end time, ignored    a clip
        (two empty lines)                                                         close the track
        any other                                                                 ignored

    The rule that is easily missed: only two empty lines close a track, and one that isn't closed, be it by the next track or by
    the end of the file, is lost. A line of a carriage return alone isn't empty, so a file with Windows' line ends closes no track at all.

    The times of the first track tell whether the session was exported in timecode. */
class PTSessionInfoLineReader final
{
public:
    enum class Outcome
    {
        goesOn,
        startIsNoTimecode, ///< in the first track: feet and frames, minutes, samples
        tooMuch            ///< more tracks and clips than a text of this size can mean
    };

    using Tracks = std::vector<std::shared_ptr<PTSessionInfoTrack>>;

    /** @param fileBytes  size of the text, which bounds what may come of it */
    explicit PTSessionInfoLineReader (std::uint64_t fileBytes) noexcept : budget (fileBytes) {}

    /** Takes a line without its "\n". After any other outcome than goesOn nothing more is to be taken. */
    [[nodiscard]] Outcome take (std::string_view line);

    /** Tells that the file ends: a track that is open now is lost. */
    void finish();

    /** The tracks that were closed, in the order of the file. */
    [[nodiscard]] const Tracks& tracks() const noexcept { return closedTracks; }

    /** How many tracks were never closed, and the name of the first of them. */
    [[nodiscard]] std::size_t numberOfLostTracks() const noexcept { return lostTracks; }
    [[nodiscard]] const std::string& firstLostTrack() const noexcept { return nameOfFirstLost; }

    /** What the log is told when there was too much. */
    [[nodiscard]] juce::String wordsOfRefusal() const { return budget.wordsOfRefusal(); }

    static constexpr std::size_t kColumns = 9; ///< cells of the row that a clip becomes

private:
    static constexpr std::size_t kCellsOfLine = 5; ///< nobody reads those behind them

    using Cells = std::array<std::optional<std::string_view>, kCellsOfLine>;

    [[nodiscard]] static Cells cellsOf (std::string_view line);
    [[nodiscard]] Outcome openTrack (const Cells& cells);
    [[nodiscard]] Outcome takeClip (const Cells& cells);
    [[nodiscard]] Outcome addClip();
    void takeEmptyLine();
    void loseOpenTrack();

    TableBudget budget;
    Tracks closedTracks;
    std::shared_ptr<PTSessionInfoTrack> track; ///< the open one
    std::shared_ptr<PTSessionInfoRegion> clip; ///< the one being filled
    int emptyLines = 0;
    std::size_t lostTracks = 0;
    std::string nameOfFirstLost;
};

} // namespace ZEP::Overmarks
