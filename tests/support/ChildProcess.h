// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <functional>
#include <grp.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace ZEP::Overmarks::Testing
{

/** What `work` returns when it runs in a process of its own, so that it may drop rights or be killed by a signal. */
inline std::string inChildProcess (const std::function<std::string()>& work)
{
    int ends[2];

    if (::pipe (ends) != 0)
        return "no pipe";

    const auto child = ::fork();

    if (child == 0)
    {
        const auto said = work();
        const auto written = ::write (ends[1], said.data(), said.size());
        ::_exit (written == static_cast<ssize_t> (said.size()) ? 0 : 1);
    }

    ::close (ends[1]);
    std::string said;
    char buffer[4096];

    for (ssize_t length; (length = ::read (ends[0], buffer, sizeof (buffer))) > 0;)
        said.append (buffer, static_cast<std::size_t> (length));

    ::close (ends[0]);
    int status = 0;
    ::waitpid (child, &status, 0);

    if (WIFSIGNALED (status))
        said += "killed by signal " + std::to_string (WTERMSIG (status));

    return said;
}

/** Gives up the rights of an administrator for good; for inChildProcess(). Ordinary users have none. */
inline bool becomeOrdinaryUser()
{
    constexpr unsigned int nobody = 65534;
    return ::geteuid() != 0
           || (::setgroups (0, nullptr) == 0 && ::setgid (nobody) == 0 && ::setuid (nobody) == 0);
}

} // namespace ZEP::Overmarks::Testing
