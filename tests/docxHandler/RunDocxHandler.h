// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace DocxHandler::Testing
{

using ZEP::Overmarks::Testing::TemporaryFolder;

/** How the program has ended and what it has said. */
struct Outcome
{
    int status = -1; ///< 128 + the signal's number if a signal has ended it
    std::string output;
    std::string errors;
};

/** Starts a program in a folder. No shell is involved. @param prepare  is called in its process */
inline pid_t startProgram (const TemporaryFolder& folder, std::vector<std::string> words,
                           const std::function<void()>& prepare = {})
{
    std::vector<char*> arguments;

    for (auto& word : words)
        arguments.push_back (word.data());

    arguments.push_back (nullptr);
    const auto child = ::fork();

    if (child == 0)
    {
        const auto redirect = [&folder] (const char* name, int stream)
        { ::dup2 (::open ((folder.path / name).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), stream); };

        redirect ("stdout", STDOUT_FILENO);
        redirect ("stderr", STDERR_FILENO);

        if (prepare)
            prepare();

        if (::chdir (folder.path.c_str()) == 0)
            ::execvp (arguments.front(), arguments.data());

        ::_exit (127);
    }

    return child;
}

/** Waits for its end. What it has said lies in the folder no longer. */
inline Outcome waitForProgram (const TemporaryFolder& folder, pid_t child)
{
    int status = 0;
    ::waitpid (child, &status, 0);
    const Outcome outcome { WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status),
                            folder.bytes ("stdout"), folder.bytes ("stderr") };
    std::filesystem::remove (folder.path / "stdout");
    std::filesystem::remove (folder.path / "stderr");
    return outcome;
}

inline Outcome runProgram (const TemporaryFolder& folder, const std::vector<std::string>& words)
{
    return waitForProgram (folder, startProgram (folder, words));
}

/** The tool, as it was built. */
inline pid_t startDocxHandler (const TemporaryFolder& folder, std::vector<std::string> words,
                               const std::function<void()>& prepare = {})
{
    words.insert (words.begin(), DOCX_HANDLER);
    return startProgram (folder, words, prepare);
}

inline Outcome runDocxHandler (const TemporaryFolder& folder, const std::vector<std::string>& words,
                               const std::function<void()>& prepare = {})
{
    return waitForProgram (folder, startDocxHandler (folder, words, prepare));
}

} // namespace DocxHandler::Testing
