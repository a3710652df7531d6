// SPDX-License-Identifier: GPL-3.0-only
// The channel to a browser, with a shell at its other end. What printing makes of it: StandInBrowserTest.cpp.
#include "export/print/BrowserProcess.h"

#include "export/print/PrintError.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace ZEP::Overmarks;
using namespace std::chrono_literals;
using testing::EndsWith;
using ZEP::Overmarks::Testing::TemporaryFolder;

namespace
{

class BrowserProcessTest : public testing::Test
{
protected:
    std::unique_ptr<BrowserProcess> running (const std::string& script) const
    {
        return std::make_unique<BrowserProcess> ("/bin/bash", std::vector<std::string> { "-c", script },
                                                 folder.path);
    }

    static BrowserProcess::Clock::time_point soon() { return BrowserProcess::Clock::now() + 10s; }

    /** Why there is no further message. */
    static std::string failureOf (BrowserProcess& process)
    {
        try
        {
            return "received " + process.receive (soon());
        }
        catch (const PrintError& error)
        {
            return error.what();
        }
    }

    TemporaryFolder folder;
};

TEST_F (BrowserProcessTest, messagesComeWholeHoweverTheyWereWritten)
{
    const auto process =
        running ("printf 'one\\0two\\0thr' >&4; sleep 0.1; printf 'ee\\0\\0four' >&4; "
                 "sleep 0.1; printf ' and more' >&4; sleep 0.1; printf '\\0x\\0' >&4; sleep 1000");

    for (const std::string expected : { "one", "two", "three", "", "four and more", "x" })
        EXPECT_EQ (process->receive (soon()), expected);
}

TEST_F (BrowserProcessTest, aMessageMayBeLongerThanWhatIsReadAtOnce)
{
    const auto process =
        running ("head -c 300000 /dev/zero | tr '\\0' x >&4; printf '\\0y\\0' >&4; sleep 1000");
    EXPECT_EQ (process->receive (soon()), std::string (300000, 'x'));
    EXPECT_EQ (process->receive (soon()), "y");
}

TEST_F (BrowserProcessTest, whatIsSentEndsWithAZeroByte)
{
    const auto process = running ("IFS= read -r -d '' a <&3; IFS= read -r -d '' b <&3; "
                                  "printf '%s+%s\\0' \"$a\" \"$b\" >&4; sleep 1000");
    process->send ("one", soon());
    process->send ("", soon());
    EXPECT_EQ (process->receive (soon()), "one+");
}

TEST_F (BrowserProcessTest, aLongMessageIsSentToABrowserThatReadsLate)
{
    const auto process = running ("sleep 0.2; head -c 3000001 <&3 | wc -c >&4; printf '\\0' >&4; sleep 1000");
    process->send (std::string (3000000, 'x'), soon());
    EXPECT_EQ (process->receive (soon()), "3000001\n");
}

TEST_F (BrowserProcessTest, itReadsNothingFromTheTerminalAndWritesNothingThere)
{
    const auto process =
        running ("printf '%s,%s,%s\\0' \"$(readlink /proc/$$/fd/0)\" \"$(readlink /proc/$$/fd/1)\" "
                 "\"$(cat | wc -c)\" >&4; sleep 1000");
    EXPECT_EQ (process->receive (soon()), "/dev/null,/dev/null,0");
}

TEST_F (BrowserProcessTest, itHasAGroupOfItsOwnAndTakesSignalsThatThisThreadHoldsBack)
{
    sigset_t held;
    sigset_t before;
    ::sigemptyset (&held);
    ::sigaddset (&held, SIGTERM);
    ::pthread_sigmask (SIG_BLOCK, &held, &before);
    const auto process = running ("printf '%s,%s,%s\\0' \"$$\" \"$(cut -d' ' -f5 /proc/$$/stat)\" "
                                  "\"$(grep SigBlk /proc/$$/status | cut -f2)\" >&4; sleep 1000");
    ::pthread_sigmask (SIG_SETMASK, &before, nullptr);
    const auto told = process->receive (soon());
    const auto first = told.find (','), second = told.find (',', first + 1);
    EXPECT_EQ (told.substr (0, first), told.substr (first + 1, second - first - 1));
    EXPECT_NE (told.substr (0, first), std::to_string (::getpgrp()));
    EXPECT_EQ (std::stoull (told.substr (second + 1), nullptr, 16) & (1ull << (SIGTERM - 1)), 0u) << told;
}

TEST_F (BrowserProcessTest, itHasTheEnvironmentOfTheApplicationButItsTemporaryFilesInItsOwnFolder)
{
    ::setenv ("OVERMARKS_TEST_WORD", "harbour", 1);
    const auto process =
        running ("printf '%s,%s,%s\\0' \"$TMPDIR\" \"$OVERMARKS_TEST_WORD\" "
                 "\"$(tr '\\0' '\\n' </proc/$$/environ | grep -c ^TMPDIR=)\" >&4; sleep 1000");
    EXPECT_EQ (process->receive (soon()), folder.path.string() + ",harbour,1");
    ::unsetenv ("OVERMARKS_TEST_WORD");
}

TEST_F (BrowserProcessTest, itsLastWordsAreTheEndOfWhatItComplainedAbout)
{
    const auto process =
        running ("for i in $(seq 3000); do echo \"complaint $i\" >&2; done; printf 'no way' >&2; exit 1");
    EXPECT_EQ (failureOf (*process), "the browser has ended before the page was printed");
    EXPECT_EQ (process->lastWords().size(), 4096u);
    EXPECT_THAT (process->lastWords(), EndsWith ("complaint 2999\ncomplaint 3000\nno way"));
}

TEST_F (BrowserProcessTest, aFewLastWordsAreKeptWhole)
{
    const auto process = running ("printf 'No usable ' >&2; sleep 0.1; printf 'sandbox!' >&2; exit 1");
    EXPECT_EQ (failureOf (*process), "the browser has ended before the page was printed");
    EXPECT_EQ (process->lastWords(), "No usable sandbox!");
}

TEST_F (BrowserProcessTest, oneThatHasEndedTakesNoMessage)
{
    const auto process = running ("exit 0");
    EXPECT_EQ (failureOf (*process), "the browser has ended before the page was printed");

    try
    {
        process->send ("one", soon());
        FAIL();
    }
    catch (const PrintError& error)
    {
        EXPECT_STREQ (error.what(), "the browser has ended before the page was printed");
    }
}

TEST_F (BrowserProcessTest, oneThatHasClosedItsComplaintsIsHeardAllTheSame)
{
    const auto process = running ("exec 2>&-; sleep 0.2; printf 'one\\0' >&4; sleep 1000");
    EXPECT_EQ (process->receive (soon()), "one");
}

TEST_F (BrowserProcessTest, oneThatSaysNothingIsWaitedForAsLongAsWasAsked)
{
    const auto process = running ("echo nothing to say >&2; sleep 1000");
    const auto start = BrowserProcess::Clock::now();
    EXPECT_THROW (std::ignore = process->receive (start + 300ms), BrowserHangs);
    EXPECT_GE (BrowserProcess::Clock::now() - start, 300ms);
    EXPECT_EQ (process->lastWords(), "nothing to say\n");
}

TEST_F (BrowserProcessTest, itsEndIsNotHeldUpByAProgramThatHasLeftItsGroup)
{
    auto process = running ("setsid bash -c 'printf \"%s\\0\" $$ >&4; exec sleep 30' & wait");
    const auto leaver = std::stoi (process->receive (soon()));
    process.reset();
    EXPECT_EQ (::kill (leaver, SIGKILL), 0) << "it has outlived the browser";
    ::waitpid (leaver, nullptr, 0); // nobody's child but perhaps this process's
}

TEST_F (BrowserProcessTest, waitingNeedsNoTimeOfTheProcessor)
{
    const auto process = running ("sleep 0.5; printf 'one\\0' >&4; sleep 1000");
    const auto before = std::clock();
    EXPECT_EQ (process->receive (soon()), "one");
    EXPECT_LT (static_cast<double> (std::clock() - before) / CLOCKS_PER_SEC, 0.25);
}

TEST_F (BrowserProcessTest, aProgramThatIsMissingIsNamedWithTheReason)
{
    try
    {
        const BrowserProcess process ("/nowhere/browser", {}, folder.path);
        FAIL();
    }
    catch (const PrintError& error)
    {
        EXPECT_STREQ (error.what(),
                      "the browser /nowhere/browser can't be started: No such file or directory");
    }
}

TEST_F (BrowserProcessTest, itsNumbersOfFilesStandInNobodysWay)
{
    FileDescriptor one (::dup (0));
    const int number = one.get();
    FileDescriptor other (std::move (one));
    EXPECT_EQ (other.get(), number);
    EXPECT_LT (one.get(), 0); // NOLINT: that it is empty
    FileDescriptor third;
    third = std::move (other);
    EXPECT_EQ (third.get(), number);
    third.close();
    EXPECT_LT (third.get(), 0);
    third.close();
}

TEST_F (BrowserProcessTest, aFileThatHasTheNumberOfTheStandardInputIsClosedToo)
{
    const int kept = ::dup (STDIN_FILENO);
    ::close (STDIN_FILENO);
    {
        const FileDescriptor first (::open ("/dev/null", O_RDONLY | O_CLOEXEC));
        EXPECT_EQ (first.get(), STDIN_FILENO);
    }
    EXPECT_LT (::fcntl (STDIN_FILENO, F_GETFD), 0);
    ::dup2 (kept, STDIN_FILENO);
    ::close (kept);
}

} // namespace
