// SPDX-License-Identifier: GPL-3.0-only
#include "import/SubRipBlocks.h"

#include "import/frame/ImportedBytes.h"

namespace ZEP::Overmarks
{
namespace
{

constexpr std::string_view kArrow = " --> ";
constexpr std::string_view kStyleMarks[] = { "<i>", "</i>", "<b>", "</b>" };

} // namespace

SubRipBlockReader::Outcome SubRipBlockReader::take (std::string_view line)
{
    if (line.empty())
    {
        const bool completes = isInsideBlock();
        state = State::betweenBlocks;
        return completes ? Outcome::blockIsComplete : Outcome::goesOn;
    }

    switch (state)
    {
        case State::betweenBlocks:
            current.cueNumber = line;
            current.start = current.end = {};
            current.text.clear(); // and keeps its room
            state = State::numberSeen;
            break;

        case State::numberSeen: return takeTiming (line);

        case State::timingSeen:
            if (! current.text.empty())
                current.text += '\n';
            current.text += line;
            break;
    }

    return Outcome::goesOn;
}

SubRipBlockReader::Outcome SubRipBlockReader::takeTiming (std::string_view line)
{
    const auto arrow = line.find (kArrow);
    if (arrow == std::string_view::npos)
        return Outcome::arrowIsMissing;

    current.start = line.substr (0, arrow);
    current.end = line.substr (arrow + kArrow.size());
    state = State::timingSeen;
    return Outcome::goesOn;
}

std::string plainSubRipText (std::string text, bool starsForLineBreaks)
{
    if (starsForLineBreaks)
        replaceEach (text, "\n", "**");

    for (const auto mark : kStyleMarks)
        replaceEach (text, mark, {});

    return text;
}

} // namespace ZEP::Overmarks
