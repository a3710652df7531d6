// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include <string>

namespace overmarks
{

/** A bar on the terminal that shows how far a longer piece of work has come: nothing in a pipe, nothing with --quiet. It is
    gone again at the end of the scope, so that notes and errors stand on lines of their own. */
class Progress final
{
public:
    /** @param steps  of the whole work */
    Progress (const Session& session, std::string nameOfWork, int steps);

    Progress (const Progress&) = delete;
    Progress& operator= (const Progress&) = delete;
    ~Progress();

    /** So many steps of all are done. */
    void reached (int step);

    /** Takes the bar away, for something that has to be said or asked meanwhile. */
    void hide();

private:
    void draw();

    std::string name;
    int total;
    int current = 0;
    int shownCells = -1;
    bool isShown;
    int terminal; ///< its own way there: what other programs write to standard error may be kept back meanwhile
};

} // namespace overmarks
