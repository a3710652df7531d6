// SPDX-License-Identifier: GPL-3.0-only
#include "Progress.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace overmarks
{

namespace
{

constexpr int cells = 30;

} // namespace

Progress::Progress (const Session& session, std::string nameOfWork, int steps)
    : name (std::move (nameOfWork)),
      total (std::max (steps, 1)),
      isShown (! session.isQuiet && isatty (STDERR_FILENO) != 0),
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

void Progress::draw()
{
    const int filled = static_cast<int> (static_cast<long long> (current) * cells / total);

    // Most steps of a long list move nothing.
    if (! isShown || filled == shownCells)
        return;

    shownCells = filled;
    const auto bar = std::string (static_cast<std::size_t> (filled), '#')
                     + std::string (static_cast<std::size_t> (cells - filled), '.');
    dprintf (terminal, "\r%s [%s] %d%%", name.c_str(), bar.c_str(), filled * 100 / cells);
}

} // namespace overmarks
