// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** What goes wrong with calls of the system, and when. */
struct FileFault
{
    enum class Call
    {
        open,
        read,
        write,
        sync,
        rename,
        close
    };

    static constexpr int always = 1 << 30;

    Call call = Call::read;
    int error = 0;  ///< what the call fails with; 0: it doesn't
    int first = 1;  ///< the first call of its kind that is struck, counted from 1
    int times = 1;  ///< how many calls in a row
    long most = -1; ///< so many bytes the call takes or gives at most; -1: as many as it likes
    std::function<void()> before {}; ///< done before the first call that is struck
};

/** Files whose path holds a text misbehave as long as this object lives: a disk that fails in the middle, that is full at the third
    write, that gives seven bytes at a time.

    It replaces functions of the system in its program, which is therefore one of its own; loaded into another program
    (LD_PRELOAD) it takes its orders from the environment, `OVERMARKS_FAULTS="PATH|CALL ERROR FIRST TIMES MOST|..."`, with the
    numbers of the system's errors and the calls counted from 0. It works with every preset. One at a time. */
class FailingFiles final
{
public:
    FailingFiles (std::string partOfPath, std::vector<FileFault> faults);
    FailingFiles (const FailingFiles&) = delete;
    FailingFiles& operator= (const FailingFiles&) = delete;
    ~FailingFiles();

    /** How many calls were struck so far: a test of a fault that nobody met has tested nothing. */
    [[nodiscard]] int struck() const;
};

} // namespace ZEP::Overmarks::Testing
