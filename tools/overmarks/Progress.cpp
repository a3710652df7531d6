// SPDX-License-Identifier: GPL-3.0-only
#include "Progress.h"

#include "Pace.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace overmarks
{

namespace
{

constexpr int cells = 30;

/** Whether standard error is a terminal that can take back what it shows. */
bool canBeRedrawn()
{
    const auto* const type = std::getenv ("TERM");
    return isatty (STDERR_FILENO) != 0 && std::string_view (type != nullptr ? type : "") != "dumb";
}

} // namespace

Progress::Progress (const Session& session, std::string nameOfWork, int steps, ProgressUnit unit)
    : name (std::move (nameOfWork)),
      total (std::max (steps, 1)),
      unitOfPace (std::move (unit)),
      isShown (! session.isQuiet && canBeRedrawn()),
      terminal (isShown ? fcntl (STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1) : -1)
{
    draw();
}

Progress::~Progress()
{
    hide();

    if (terminal >= 0)
        close (terminal);
}

void Progress::reached (int step)
{
    current = std::clamp (step, 0, total);
    draw();
}

void Progress::hide()
{
    if (isShown && shownCells >= 0)
        dprintf (terminal, "\r\033[K");

    shownCells = -1;
}

std::string Progress::pace() const
{
    const std::chrono::duration<double> sinceStart = std::chrono::steady_clock::now() - start;
    return paceInWords (static_cast<double> (current) / unitOfPace.steps,
                        static_cast<double> (total) / unitOfPace.steps, sinceStart.count(), unitOfPace.name);
}

void Progress::draw()
{
    const int filled = static_cast<int> (static_cast<long long> (current) * cells / total);

    if (! isShown)
        return;

    const auto words = pace();

    // Most steps of a long list move nothing.
    if (filled == shownCells && words == shownPace)
        return;

    const auto* const before = shownPace.empty() ? "" : "\r\033[K"; // a longer line
    shownCells = filled;
    shownPace = words;
    const auto bar = std::string (static_cast<std::size_t> (filled), '#')
                     + std::string (static_cast<std::size_t> (cells - filled), '.');
    dprintf (terminal, "%s\r%s [%s] %d%%%s%s", before, name.c_str(), bar.c_str(), filled * 100 / cells,
             words.empty() ? "" : "  ", words.c_str());
}

} // namespace overmarks
