// SPDX-License-Identifier: GPL-3.0-only
#include "ToolRun.h"

#include "Session.h"

#include "core/text/TextDecoding.h"
#include "export/word/DocxHandlerProtocol.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace overmarks
{

namespace Protocol = ZEP::Overmarks::DocxHandlerProtocol;

namespace
{

constexpr auto nameOfVariable = "TMPDIR";

/** Where this system's temporary files go. The tool can't be told of a folder with a comma. */
std::string usualTemporaryFolder()
{
    const char* given = std::getenv (nameOfVariable);
    const bool isUsable = given != nullptr && *given == '/' && std::strchr (given, ',') == nullptr
                          && ZEP::Core::ByteSurvey (given).isUTF8;
    return isUsable ? given : "/tmp";
}

void requireTool()
{
    const auto path = Protocol::toolPath();

    if (! juce::File (path).exists())
        throw CommandFailure ("Word documents need the program docxHandler, and there is none in "
                              + juce::File (path).getParentDirectory().getFullPathName()
                              + "; --resources names its folder");

    if (! juce::File (path).existsAsFile() || access (path.toRawUTF8(), X_OK) != 0)
        throw CommandFailure (path + " is no program that can be run");
}

/** The parent of each process of the system. */
std::map<pid_t, pid_t> parentsOfProcesses()
{
    std::map<pid_t, pid_t> parents;
    std::error_code error;

    for (const auto& entry : std::filesystem::directory_iterator ("/proc", error))
    {
        const auto name = entry.path().filename().string();
        pid_t process = 0;

        if (std::from_chars (name.data(), name.data() + name.size(), process).ptr
            != name.data() + name.size())
            continue;

        // "123 (name of any signs) S 45 ..."
        std::ifstream stream (entry.path() / "stat");
        std::string text;
        std::getline (stream, text, '\0');
        const auto behindName = text.rfind (") ");
        constexpr std::size_t lengthToParent = 4;

        if (behindName != std::string::npos && behindName + lengthToParent < text.size())
            std::from_chars (text.data() + behindName + lengthToParent, text.data() + text.size(),
                             parents[process]);
    }

    return parents;
}

/** Ends the tool and whatever it has started. */
void killDescendants()
{
    const auto parents = parentsOfProcesses();

    for (const auto& [process, parent] : parents)
    {
        auto ancestor = parent;

        for (std::size_t steps = 0; ancestor > 1 && ancestor != getpid() && steps < parents.size(); ++steps)
        {
            const auto next = parents.find (ancestor);
            ancestor = next == parents.end() ? 0 : next->second;
        }

        if (ancestor == getpid())
            kill (process, SIGKILL);
    }
}

/** Standard output belongs to the data of this program; meanwhile what comes there goes to standard error. */
class OutputAside final
{
public:
    OutputAside()
    {
        std::fflush (stdout);
        kept = dup (STDOUT_FILENO);
        dup2 (STDERR_FILENO, STDOUT_FILENO);
    }

    OutputAside (const OutputAside&) = delete;
    OutputAside& operator= (const OutputAside&) = delete;

    ~OutputAside()
    {
        std::fflush (stdout);

        if (kept >= 0)
        {
            dup2 (kept, STDOUT_FILENO);
            close (kept);
        }
    }

private:
    int kept = -1;
};

} // namespace

/** A folder of this run's own that is the temporary folder as long as it exists. */
class ToolRun::TemporaryPlace final
{
public:
    TemporaryPlace()
    {
        const auto parent = usualTemporaryFolder();
        auto pattern = parent + "/overmarks.XXXXXX";

        if (mkdtemp (pattern.data()) == nullptr)
            throw CommandFailure ("Can't write into " + juce::String (parent) + ": "
                                  + juce::String::fromUTF8 (std::strerror (errno)));

        folder = juce::File (juce::String (pattern));

        if (const char* given = std::getenv (nameOfVariable))
            before = given;

        setenv (nameOfVariable, pattern.c_str(), 1);
    }

    TemporaryPlace (const TemporaryPlace&) = delete;
    TemporaryPlace& operator= (const TemporaryPlace&) = delete;

    ~TemporaryPlace()
    {
        folder.deleteRecursively();

        if (before.has_value())
            setenv (nameOfVariable, before->c_str(), 1);
        else
            unsetenv (nameOfVariable);
    }

    juce::File folder;

private:
    std::optional<std::string> before;
};

/** Takes the signals that stop the program, on a thread of its own. */
class ToolRun::Signals final
{
public:
    explicit Signals (const juce::File& folderToRemove) : folder (folderToRemove)
    {
        sigemptyset (&stops);

        for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
            sigaddset (&stops, signal);

        // Threads and the tool inherit this: they leave the signals to the thread here.
        pthread_sigmask (SIG_BLOCK, &stops, &before);
        arrivals = signalfd (-1, &stops, SFD_CLOEXEC);
        end = eventfd (0, EFD_CLOEXEC);
        thread = std::thread ([this] { watch(); });
    }

    Signals (const Signals&) = delete;
    Signals& operator= (const Signals&) = delete;

    ~Signals()
    {
        eventfd_write (end, 1);
        thread.join();
        close (arrivals);
        close (end);
        pthread_sigmask (SIG_SETMASK, &before, nullptr);
    }

    void setCancel (std::function<void()> newCancel)
    {
        const std::lock_guard lock (mutex);
        cancel = std::move (newCancel);
    }

    bool haveCome() const
    {
        const std::lock_guard lock (mutex);
        return number > 0;
    }

private:
    using Clock = std::chrono::steady_clock;

    void watch()
    {
        constexpr int tick = 100; // milliseconds
        std::array<pollfd, 2> sources { pollfd { end, POLLIN, 0 }, pollfd { arrivals, POLLIN, 0 } };

        for (;;)
        {
            const int changed = poll (sources.data(), sources.size(), haveCome() ? tick : -1);

            if (changed > 0 && (sources[0].revents & POLLIN) != 0)
                return;

            const std::lock_guard lock (mutex);

            if (changed > 0 && (sources[1].revents & POLLIN) != 0)
                take();

            if (number > 0)
                stopTool();
        }
    }

    void take()
    {
        signalfd_siginfo arrival {};

        if (read (arrivals, &arrival, sizeof (arrival)) != static_cast<ssize_t> (sizeof (arrival)))
            return;

        if (number++ == 0)
            first = Clock::now();
        else if (! cancel)
            endProgram (static_cast<int> (arrival.ssi_signo));
    }

    void stopTool() const
    {
        constexpr auto patience = std::chrono::seconds (3);

        if (! cancel)
            return;

        // The library clears the file when it begins; a word that came too early has to be said again.
        if (! juce::File (Protocol::cancelFilePath()).exists())
            cancel();

        if (number > 1 || Clock::now() - first > patience)
            killDescendants();
    }

    /** Somebody has waited long enough for what isn't the tool. */
    void endProgram (int signal) const
    {
        folder.deleteRecursively();
        std::signal (signal, SIG_DFL);
        pthread_sigmask (SIG_UNBLOCK, &stops, nullptr);
        kill (getpid(), signal);
    }

    juce::File folder;
    mutable std::mutex mutex;
    std::function<void()> cancel; ///< only while the tool works
    int number = 0;               ///< of signals so far
    Clock::time_point first;
    sigset_t stops {};
    sigset_t before {};
    int arrivals = -1;
    int end = -1;
    std::thread thread;
};

ToolRun::ToolRun()
{
    requireTool();
    place = std::make_unique<TemporaryPlace>();
    signals = std::make_unique<Signals> (place->folder);
}

ToolRun::~ToolRun() = default;

const juce::File& ToolRun::getFolder() const noexcept { return place->folder; }

void ToolRun::whileItWorks (const std::function<void()>& cancel, const std::function<void()>& work)
{
    const OutputAside aside;

    struct Scope
    {
        ~Scope() { signals.setCancel ({}); }
        Signals& signals;
    };

    signals->setCancel (cancel);
    const Scope scope { *signals };
    work();
}

void ToolRun::throwIfStopped (const juce::String& undone) const
{
    if (signals->haveCome())
        throw CommandFailure ("Stopped; " + undone);
}

} // namespace overmarks
