// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ZEP::Overmarks::Testing
{

/** A display that is not on the wall: an X server of its own, gone with this object. */
class VirtualDisplay final
{
public:
    VirtualDisplay()
    {
        int numberPipe[2];

        if (::pipe (numberPipe) != 0)
            return;

        server = ::fork();

        if (server == 0)
        {
            const auto descriptor = std::to_string (numberPipe[1]);
            ::close (numberPipe[0]);
            ::prctl (PR_SET_PDEATHSIG, SIGKILL); // a test that dies leaves no server behind
            const int nowhere = ::open ("/dev/null", O_WRONLY);
            ::dup2 (nowhere, STDOUT_FILENO);
            ::dup2 (nowhere, STDERR_FILENO);
            ::execlp ("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "1024x768x24",
                      "-nolisten", "tcp", nullptr);
            ::_exit (127);
        }

        ::close (numberPipe[1]);

        for (char digit; ::read (numberPipe[0], &digit, 1) == 1 && digit != '\n';)
            number += digit;

        ::close (numberPipe[0]);
    }

    VirtualDisplay (const VirtualDisplay&) = delete;
    VirtualDisplay& operator= (const VirtualDisplay&) = delete;

    ~VirtualDisplay()
    {
        if (server <= 0) // to a signal, that means every process there is
            return;

        ::kill (server, SIGTERM);
        ::waitpid (server, nullptr, 0);
    }

    std::string name() const { return ":" + number; }
    bool isUp() const { return ! number.empty(); }

private:
    pid_t server = -1;
    std::string number;
};

/** Makes the process a program with windows: only there does the framework survive what a display without a window manager
    has to say. */
class WindowedProgram final
{
public:
    WindowedProgram()
    {
        juce::JUCEApplicationBase::createInstance = []() -> juce::JUCEApplicationBase* { return nullptr; };
    }

    WindowedProgram (const WindowedProgram&) = delete;
    WindowedProgram& operator= (const WindowedProgram&) = delete;
    ~WindowedProgram() { juce::JUCEApplicationBase::createInstance = nullptr; }
};

} // namespace ZEP::Overmarks::Testing
