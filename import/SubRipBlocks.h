// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** One subtitle as its lines say it, undecoded. */
struct SubRipBlock
{
    std::string_view cueNumber; ///< the first line
    std::string_view start;     ///< what stands before the arrow; empty if there is no second line
    std::string_view
        end;          ///< what stands behind it: the time, in some files with the line's place on the screen
    std::string text; ///< the further lines, joined by "\n"
};

/** Puts the lines of a SubRip file together to subtitles.

        line 1    number of the subtitle, any text
        line 2    start " --> " end
        further   text
        empty     ends the subtitle; more empty lines may follow

    The rule that is easily missed: only an empty line ends a subtitle, so one that the end of the file cuts off never
    comes out. Lines are handed in without their "\n" and must outlive the block. */
class SubRipBlockReader final
{
public:
    enum class Outcome
    {
        goesOn,
        blockIsComplete, ///< block() holds it until the next line is taken
        arrowIsMissing   ///< a second line without " --> ": this is no subtitle file from here on
    };

    [[nodiscard]] Outcome take (std::string_view line);

    /** The subtitle that was completed last, or as much as there is of the one under work. */
    [[nodiscard]] const SubRipBlock& block() const noexcept { return current; }

    /** Whether a subtitle was begun and not completed. */
    [[nodiscard]] bool isInsideBlock() const noexcept { return state != State::betweenBlocks; }

private:
    enum class State
    {
        betweenBlocks,
        numberSeen,
        timingSeen
    };

    [[nodiscard]] Outcome takeTiming (std::string_view line);

    State state = State::betweenBlocks;
    SubRipBlock current;
};

/** The text of a subtitle without the marks of italic and bold writing: "<i>", "</i>", "<b>" and "</b>", in small letters
    only. All other marks stay.
    @param starsForLineBreaks  write "**" where a line ends, as one of our applications wants its cue lists */
[[nodiscard]] std::string plainSubRipText (std::string text, bool starsForLineBreaks);

} // namespace ZEP::Overmarks
