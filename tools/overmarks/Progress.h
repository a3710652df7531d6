// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include <chrono>
#include <string>

namespace overmarks
{

/** What the steps of a piece of work mean to a person. */
struct ProgressUnit
{
    std::string name = "documents";
    int steps = 1; ///< of one of them
};

/** A bar on the terminal that shows how far a longer piece of work has come: nothing in a pipe, nothing with --quiet. It is
    gone again at the end of the scope, so that notes and errors stand on lines of their own. */
class Progress final
{
public:
    /** @param steps  of the whole work
        @param unit   what the pace is told in, once there has been time enough to know it */
    Progress (const Session& session, std::string nameOfWork, int steps, ProgressUnit unit = {});

    Progress (const Progress&) = delete;
    Progress& operator= (const Progress&) = delete;
    ~Progress();

    /** So many steps of all are done. */
    void reached (int step);

    /** Takes the bar away, for something that has to be said or asked meanwhile. */
    void hide();

private:
    void draw();

    std::string pace() const;

    std::string name;
    int total;
    ProgressUnit unitOfPace;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    int current = 0;
    int shownCells = -1;
    std::string shownPace;
    bool isShown;
    int terminal; ///< its own way there: what other programs write to standard error may be kept back meanwhile
};

} // namespace overmarks
