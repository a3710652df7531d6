// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoLines.h"

#include "core/timecode/TCToolbox.h"

namespace ZEP::Overmarks
{
namespace
{

constexpr std::string_view kTrackName = "TRACK NAME:";
constexpr std::string_view kClipHeading = "CHANNEL";

/** Cells of a line. */
enum Cell : std::size_t
{
    firstCell = 0, // tells what the line is
    trackNameCell = 1,
    clipNameCell = 2,
    startCell = 3,
    endCell = 4
};

constexpr int kEmptyLinesBehindTrack = 2;

/** Every row repeats its track's prefix in its cue number: a prefix counts as one more cell for each so many bytes. */
constexpr std::size_t kPrefixBytesOfCell = 256;

bool contains (std::string_view text, std::string_view part) { return text.find (part) != text.npos; }

} // namespace

PTSessionInfoLineReader::Cells PTSessionInfoLineReader::cellsOf (std::string_view line)
{
    Cells cells;
    for (auto& cell : cells)
    {
        const auto tab = line.find ('\t');
        cell = line.substr (0, tab);
        if (tab == line.npos)
            break;
        line.remove_prefix (tab + 1);
    }
    return cells;
}

PTSessionInfoLineReader::Outcome PTSessionInfoLineReader::take (std::string_view line)
{
    if (line.empty())
    {
        takeEmptyLine();
        return Outcome::goesOn;
    }

    emptyLines = 0;
    const auto cells = cellsOf (line);

    if (contains (*cells[firstCell], kTrackName))
        return openTrack (cells);

    if (contains (*cells[firstCell], kClipHeading))
    {
        clip = std::make_shared<PTSessionInfoRegion>();
        return Outcome::goesOn;
    }

    return clip != nullptr ? takeClip (cells) : Outcome::goesOn;
}

void PTSessionInfoLineReader::takeEmptyLine()
{
    if (++emptyLines != kEmptyLinesBehindTrack)
        return;

    if (track != nullptr)
        closedTracks.push_back (std::move (track));
    track.reset();
    clip.reset();
}

PTSessionInfoLineReader::Outcome PTSessionInfoLineReader::openTrack (const Cells& cells)
{
    if (! cells[trackNameCell].has_value())
        return Outcome::goesOn;

    if (! budget.takeRow (kColumns))
        return Outcome::tooMuch;

    loseOpenTrack();
    track = std::make_shared<PTSessionInfoTrack> (std::string (*cells[trackNameCell]));
    return Outcome::goesOn;
}

PTSessionInfoLineReader::Outcome PTSessionInfoLineReader::takeClip (const Cells& cells)
{
    if (cells[clipNameCell].has_value())
        clip->setRegionName (std::string (*cells[clipNameCell]));

    if (cells[startCell].has_value())
    {
        std::string start (*cells[startCell]);
        if (closedTracks.empty() && Core::TCToolbox::tcTimeFromString (textOfSessionTime (start)).invalid)
            return Outcome::startIsNoTimecode;
        clip->setStartTC (start);
    }

    if (! cells[endCell].has_value())
        return Outcome::goesOn;

    std::string end (*cells[endCell]);
    clip->setEndTC (end);
    return addClip();
}

PTSessionInfoLineReader::Outcome PTSessionInfoLineReader::addClip()
{
    // Clips above the first track have no character that could speak them.
    if (track != nullptr)
    {
        if (! budget.takeRow (kColumns + track->charPrefix.size() / kPrefixBytesOfCell))
            return Outcome::tooMuch;
        track->regions.push_back (std::move (clip));
    }

    clip = std::make_shared<PTSessionInfoRegion>();
    return Outcome::goesOn;
}

void PTSessionInfoLineReader::finish()
{
    loseOpenTrack();
    track.reset();
    clip.reset();
}

void PTSessionInfoLineReader::loseOpenTrack()
{
    if (track != nullptr && ++lostTracks == 1)
        nameOfFirstLost = track->name;
}

} // namespace ZEP::Overmarks
