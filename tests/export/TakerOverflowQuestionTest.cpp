// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventCSVExporter.h"
#include "export/ExportSupport.h"
#include "support/CollectedLog.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <thread>

using namespace ExportSupport;

namespace
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
        ::kill (server, SIGTERM);
        ::waitpid (server, nullptr, 0);
    }

    std::string name() const { return ":" + number; }
    bool isUp() const { return ! number.empty(); }

private:
    pid_t server = -1;
    std::string number;
};

/** Sets an environment variable for as long as it lasts. */
class Environment final
{
public:
    Environment (const char* variable, const char* value)
        : name (variable),
          before (std::getenv (variable) ? std::getenv (variable) : "")
    {
        ::setenv (name, value, 1);
    }

    Environment (const Environment&) = delete;
    Environment& operator= (const Environment&) = delete;
    ~Environment() { before.empty() ? ::unsetenv (name) : ::setenv (name, before.c_str(), 1); }

private:
    const char* name;
    std::string before;
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

/** Answers the box as soon as it is up, and notes what it says. */
class Answering final : private juce::Timer
{
public:
    explicit Answering (int buttonResult) : result (buttonResult) { startTimer (20); }

    juce::String title;
    juce::String text;
    juce::MessageBoxIconType icon = juce::MessageBoxIconType::NoIcon;

private:
    void timerCallback() override
    {
        if (auto* box = dynamic_cast<juce::AlertWindow*> (juce::Component::getCurrentlyModalComponent()))
        {
            stopTimer();
            title = box->getName();
            icon = box->getAlertType();

            // The box draws its text itself; what it has for a screen reader is the same.
            for (auto* child : box->getChildren())
                if (const auto* label = dynamic_cast<juce::Label*> (child))
                    text = label->getText();

            box->exitModalState (result);
        }
    }

    int result;
};

constexpr auto question =
    "There are some cues in your event list with more than four subcues: \n\n- 7\n\nDSTaker can only handle four "
    "Markers per cue number so these cues will not be represented correctly. \n\nDo you want to continue?";

class OverflowQuestion : public ExportTest
{
protected:
    OverflowQuestion()
    {
        settings->options[EventExportCSVTemplateKey] = 1;

        for (int i = 0; i < 6; ++i)
            settings->events.push_back (event ({ "7", i * 25, i * 25 + 25 }));
    }

    EventCSVExporter exporter { settings };
};

} // namespace

TEST_F (OverflowQuestion, isCancelledWhereNoMessageLoopExists)
{
    ASSERT_EQ (juce::MessageManager::getInstanceWithoutCreating(), nullptr);
    const ZEP::Overmarks::Testing::CollectedLog log;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (folder.names().empty());
    ASSERT_EQ (log.lines().size(), 1u);
    EXPECT_EQ (juce::String (log.lines()[0]),
               juce::String ("DS ADR CSV Export: no file was written, since nobody can be asked. ")
                   + question);
}

TEST_F (OverflowQuestion, isAskedByTheBoxAlsoWhenItsFunctionWasTakenAway)
{
    exporter.askToContinue = nullptr;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (OverflowQuestion, isCancelledWithoutADisplay)
{
    const Environment noDisplay ("DISPLAY", ":4000");
    const juce::ScopedJuceInitialiser_GUI messages;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (OverflowQuestion, isCancelledOnAThreadWhoseLoopNobodyServes)
{
    const Environment noDisplay ("DISPLAY", ":4000");
    const juce::ScopedJuceInitialiser_GUI messages;
    std::thread ([this] { EXPECT_EQ (exporter.exportEventsByTimecode(), ""); }).join();
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (OverflowQuestion, isABoxWithOKAndCancel)
{
    const VirtualDisplay display;
    ASSERT_TRUE (display.isUp()) << "these tests need Xvfb";
    const Environment onDisplay ("DISPLAY", display.name().c_str());
    const WindowedProgram program;
    const juce::ScopedJuceInitialiser_GUI messages;

    {
        const Answering cancel (0);
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        EXPECT_EQ (cancel.title, "DS ADR CSV Export");
        EXPECT_EQ (cancel.text, juce::String ("DS ADR CSV Export. ") + question);
        EXPECT_EQ (cancel.icon, juce::MessageBoxIconType::InfoIcon);
        EXPECT_TRUE (folder.names().empty());
    }

    const Answering ok (1);
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (ok.title, "DS ADR CSV Export");
    EXPECT_EQ (folder.names(), std::vector<std::string> { "Reel 2.csv" });
}
