// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace ZEP::Overmarks::Testing
{

/** A process that does some work, to be stopped from here. The test program must have no threads of its own when it begins. */
class Child final
{
public:
    /** @param work  returns the exit status */
    explicit Child (const std::function<int()>& work) : process (::fork())
    {
        if (process != 0)
            return;

        // Whoever has started the tests may have told them to ignore some.
        for (const int signal : { SIGINT, SIGTERM, SIGHUP })
            ::signal (signal, SIG_DFL);

        ::_exit (work());
    }

    Child (const Child&) = delete;
    Child& operator= (const Child&) = delete;

    ~Child()
    {
        if (process > 0)
        {
            ::kill (process, SIGKILL);
            ::waitpid (process, nullptr, 0);
        }
    }

    void send (int signal) const
    {
        if (process > 0)
            ::kill (process, signal);
    }

    /** @returns its exit status, or 128 and the number of the signal that has ended it */
    int wait()
    {
        int status = -1;
        ::waitpid (process, &status, 0);
        process = -1;
        return WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status);
    }

private:
    pid_t process;
};

} // namespace ZEP::Overmarks::Testing
