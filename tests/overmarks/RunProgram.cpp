// SPDX-License-Identifier: GPL-3.0-only
#include "overmarks/RunProgram.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace
{

void redirect (const juce::File& file, int flags, int descriptor)
{
    const int opened = open (file.getFullPathName().toRawUTF8(), flags, 0644);

    if (opened < 0 || dup2 (opened, descriptor) < 0)
        _exit (126);
}

std::string contents (const juce::File& file)
{
    juce::MemoryBlock block;
    file.loadFileAsData (block);
    return { block.begin(), block.end() };
}

} // namespace

ProgramResult runProgram (const juce::File& folder, const std::vector<std::string>& arguments,
                          const std::string& standardInput)
{
    const juce::TemporaryFile in, out, err;
    in.getFile().replaceWithData (standardInput.data(), standardInput.size());

    std::string program = OVERMARKS_PROGRAM;
    std::vector<std::string> words = arguments;
    std::vector<char*> argv { program.data() };

    for (auto& word : words)
        argv.push_back (word.data());

    argv.push_back (nullptr);
    const auto child = fork();

    if (child == 0)
    {
        redirect (in.getFile(), O_RDONLY | O_CREAT, STDIN_FILENO);
        redirect (out.getFile(), O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        redirect (err.getFile(), O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);

        if (chdir (folder.getFullPathName().toRawUTF8()) == 0)
            execv (program.c_str(), argv.data());

        _exit (127);
    }

    int status = 0;
    waitpid (child, &status, 0);
    return { contents (out.getFile()), contents (err.getFile()),
             WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status) };
}
