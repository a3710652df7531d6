// SPDX-License-Identifier: GPL-3.0-only
#include "overmarks/RunProgram.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

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

/** The disk is full behind so many bytes of each file. */
void limitFiles (long bytes)
{
    const rlimit limit { static_cast<rlim_t> (bytes), static_cast<rlim_t> (bytes) };

    if (setrlimit (RLIMIT_FSIZE, &limit) != 0 || signal (SIGXFSZ, SIG_IGN) == SIG_ERR)
        _exit (125);
}

void sendSignals (pid_t child, const ProgramSurroundings& surroundings)
{
    constexpr useconds_t aMoment = 10000, aThirdOfASecond = 333333;
    constexpr int tenSeconds = 1000;

    for (int i = 0; i < tenSeconds && ! surroundings.signals.empty()
                    && access (surroundings.signalsWhen.c_str(), F_OK) != 0;
         ++i)
        usleep (aMoment);

    for (const auto signal : surroundings.signals)
    {
        kill (child, signal);
        usleep (aThirdOfASecond);
    }
}

/** Files that are forbidden to all are forbidden to the administrator too. */
void obeyPermissions()
{
    for (const unsigned long right : { CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH })
        if (geteuid() == 0 && prctl (PR_CAPBSET_DROP, right, 0UL, 0UL, 0UL) != 0)
            _exit (124);
}

/** A terminal whose writing end becomes one of the child's streams. */
class Terminal final
{
public:
    Terminal (bool isNeeded, int columns)
    {
        const winsize size { 24, static_cast<unsigned short> (columns), 0, 0 };

        if (isNeeded && openpty (&reader, &writer, nullptr, nullptr, &size) != 0)
            throw std::runtime_error ("No terminal can be had");
    }

    Terminal (const Terminal&) = delete;
    Terminal& operator= (const Terminal&) = delete;

    ~Terminal()
    {
        closeWriter();

        if (reader >= 0)
            close (reader);
    }

    void become (int descriptor) const
    {
        if (writer >= 0 && dup2 (writer, descriptor) < 0)
            _exit (126);
    }

    /** What somebody types, before it is asked for. */
    void type (const std::string& text) const
    {
        if (reader >= 0 && ! text.empty() && write (reader, text.data(), text.size()) < 0)
            throw std::runtime_error ("Nothing can be typed");
    }

    /** Everything that was written until the child ended. */
    std::string contents()
    {
        closeWriter();
        std::string text;
        char buffer[4096];

        for (ssize_t length; reader >= 0 && (length = read (reader, buffer, sizeof (buffer))) > 0;)
            text.append (buffer, static_cast<std::size_t> (length));

        return text;
    }

private:
    void closeWriter()
    {
        if (writer >= 0)
            close (writer);

        writer = -1;
    }

    int reader = -1;
    int writer = -1;
};

} // namespace

ProgramResult runProgram (const juce::File& folder, const std::vector<std::string>& arguments,
                          const std::string& standardInput, const ProgramSurroundings& surroundings)
{
    const juce::TemporaryFile in, out, err;
    in.getFile().replaceWithData (standardInput.data(), standardInput.size());

    std::string program = OVERMARKS_PROGRAM;
    std::vector<std::string> words = arguments;
    std::vector<char*> argv { program.data() };

    for (auto& word : words)
        argv.push_back (word.data());

    argv.push_back (nullptr);
    constexpr int usualWidth = 80;
    Terminal outputTerminal (surroundings.terminalWidth > 0, surroundings.terminalWidth);
    Terminal errorTerminal (surroundings.errorsOnTerminal, usualWidth);
    Terminal inputTerminal (! surroundings.answer.empty(), usualWidth);
    inputTerminal.type (surroundings.answer);
    const auto output =
        surroundings.outputTo.empty() ? out.getFile() : juce::File (juce::String (surroundings.outputTo));
    const auto child = fork();

    if (child == 0)
    {
        redirect (in.getFile(), O_RDONLY | O_CREAT, STDIN_FILENO);
        redirect (output, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        redirect (err.getFile(), O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        inputTerminal.become (STDIN_FILENO);
        outputTerminal.become (STDOUT_FILENO);
        errorTerminal.become (STDERR_FILENO);
        setenv ("TERM", surroundings.terminalType.c_str(), 1);
        unsetenv ("NO_COLOR");

        if (! surroundings.temporaryFolder.empty())
            setenv ("TMPDIR", surroundings.temporaryFolder.c_str(), 1);

        if (surroundings.largestFile > 0)
            limitFiles (surroundings.largestFile);

        if (surroundings.permissionsHold)
            obeyPermissions();

        if (chdir (folder.getFullPathName().toRawUTF8()) == 0)
            execv (program.c_str(), argv.data());

        _exit (127);
    }

    if (surroundings.killedAfter >= 0)
    {
        usleep (static_cast<useconds_t> (surroundings.killedAfter));
        kill (child, SIGKILL);
    }

    sendSignals (child, surroundings);
    const auto shownOutput = outputTerminal.contents();
    const auto shownErrors = errorTerminal.contents();
    int status = 0;
    waitpid (child, &status, 0);
    return { shownOutput + contents (out.getFile()), shownErrors + contents (err.getFile()),
             WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status) };
}
