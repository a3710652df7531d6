// SPDX-License-Identifier: GPL-3.0-only
#include "StopSignals.h"

#include "Session.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace overmarks
{

namespace
{

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

/** The signals that stop this program. */
sigset_t stopSignals()
{
    sigset_t signals;
    sigemptyset (&signals);

    for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
    {
        struct sigaction now
        {
        };

        if (sigaction (signal, nullptr, &now) != 0 || now.sa_handler != SIG_IGN)
            sigaddset (&signals, signal);
    }

    return signals;
}

} // namespace

/** The thread that takes the signals, and what it knows. */
class StopSignals::Watch final
{
public:
    Watch()
    {
        // Threads and the tool inherit this: they leave the signals to the thread here.
        pthread_sigmask (SIG_BLOCK, &stops, &before);
        arrivals = signalfd (-1, &stops, SFD_CLOEXEC);
        end = eventfd (0, EFD_CLOEXEC);
        thread = std::thread ([this] { watch(); });
    }

    Watch (const Watch&) = delete;
    Watch& operator= (const Watch&) = delete;

    ~Watch()
    {
        eventfd_write (end, 1);
        thread.join();
        close (arrivals);
        close (end);
        pthread_sigmask (SIG_SETMASK, &before, nullptr);

        if (number > 0 && ! isTold)
            raise (last);
    }

    static std::shared_ptr<Watch> common()
    {
        static std::weak_ptr<Watch> current;
        auto watch = current.lock();

        if (watch == nullptr)
            current = watch = std::make_shared<Watch>();

        return watch;
    }

    juce::File makeFolder (const juce::String& start)
    {
        const std::lock_guard lock (mutex);
        auto pattern = start.toStdString() + "XXXXXX";

        if (mkdtemp (pattern.data()) == nullptr)
        {
            const auto reason = juce::String::fromUTF8 (std::strerror (errno));
            throw CommandFailure ("Can't write into "
                                  + juce::File (start + "X").getParentDirectory().getFullPathName() + ": "
                                  + reason);
        }

        return folders.emplace_back (juce::String (pattern));
    }

    void removeFolder (const juce::File& folder)
    {
        const std::lock_guard lock (mutex);
        folder.deleteRecursively();
        folders.erase (std::remove (folders.begin(), folders.end(), folder), folders.end());
    }

    bool tell()
    {
        const std::lock_guard lock (mutex);
        isTold = isTold || number > 0;
        return number > 0;
    }

    void addPatience (int more)
    {
        const std::lock_guard lock (mutex);
        patience += more;
    }

    /** @returns false if there is an answer already, or no standard output */
    bool setAnswer (const std::string& text)
    {
        const std::lock_guard lock (mutex);

        if (placeOfAnswer >= 0)
            return false;

        answer = text;
        placeOfAnswer =
            fcntl (STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1); // a tool may borrow the other
        return placeOfAnswer >= 0;
    }

    void clearAnswer()
    {
        const std::lock_guard lock (mutex);
        close (placeOfAnswer);
        placeOfAnswer = -1;
    }

    void setCancel (std::function<void()> newCancel)
    {
        const std::lock_guard lock (mutex);
        cancel = std::move (newCancel);
    }

private:
    using Clock = std::chrono::steady_clock;

    void watch()
    {
        constexpr int tick = 100; // milliseconds
        std::array<pollfd, 2> sources { pollfd { end, POLLIN, 0 }, pollfd { arrivals, POLLIN, 0 } };

        // Nobody else changes the number.
        for (;;)
        {
            const int changed = poll (sources.data(), sources.size(), number > 0 ? tick : -1);

            if (changed > 0 && (sources[0].revents & POLLIN) != 0)
                return;

            const std::lock_guard lock (mutex);

            if (changed > 0 && (sources[1].revents & POLLIN) != 0)
                take();

            if (number > 0)
                act();
        }
    }

    void take()
    {
        signalfd_siginfo arrival {};

        if (read (arrivals, &arrival, sizeof (arrival)) != static_cast<ssize_t> (sizeof (arrival)))
            return;

        last = static_cast<int> (arrival.ssi_signo);

        if (number++ == 0)
            first = Clock::now();
        else
            isUrgent = true;
    }

    void act()
    {
        if (cancel)
            stopTool();
        else if (isUrgent || (patience == 0 && ! isTold))
            endProgram();

        isUrgent = false;
    }

    void stopTool() const
    {
        constexpr auto longest = std::chrono::seconds (3);

        // A word that came too early counts for nothing: the library clears it when it begins, the tool takes it for an old one.
        cancel();

        if (number > 1 || Clock::now() - first > longest)
            killDescendants();
    }

    void endProgram() const
    {
        killDescendants(); // none of them shall write into a folder that is about to go

        // The work goes on meanwhile, and may put something new into a folder.
        constexpr int mostTries = 100;

        for (const auto& folder : folders)
            for (int i = 0; i < mostTries && ! folder.deleteRecursively(); ++i)
                std::this_thread::yield();

        if (placeOfAnswer >= 0)
            endWithAnswer();

        std::signal (last, SIG_DFL);
        pthread_sigmask (SIG_UNBLOCK, &stops, nullptr);
        kill (getpid(), last);
    }

    [[noreturn]] void endWithAnswer() const
    {
        for (std::size_t written = 0; written < answer.size();)
        {
            const auto more = write (placeOfAnswer, answer.data() + written, answer.size() - written);

            if (more <= 0)
                break;

            written += static_cast<std::size_t> (more);
        }

        _exit (1);
    }

    mutable std::mutex mutex;
    std::vector<juce::File> folders;
    std::function<void()> cancel; ///< only while the tool works
    std::string answer;           ///< what is written when a signal ends the program
    int placeOfAnswer = -1;       ///< a descriptor; -1 if there is no answer
    int patience = 0;
    int number = 0;        ///< of signals so far
    int last = 0;          ///< of the signals
    bool isUrgent = false; ///< somebody asks again
    bool isTold = false;   ///< the user will hear of it
    Clock::time_point first;
    sigset_t stops = stopSignals();
    sigset_t before {};
    int arrivals = -1;
    int end = -1;
    std::thread thread;
};

StopSignals::StopSignals() : watch (Watch::common()) {}
StopSignals::~StopSignals() = default;

juce::File StopSignals::makeFolder (const juce::String& start) const { return watch->makeFolder (start); }

void StopSignals::removeFolder (const juce::File& folder) const { watch->removeFolder (folder); }

bool StopSignals::haveCome() const { return watch->tell(); }

void StopSignals::throwIfStopped (const juce::String& undone) const
{
    if (haveCome())
        throw WorkStopped ("Stopped; " + undone);
}

StopSignals::Patience::Patience (const StopSignals& stopSignals) : signals (stopSignals)
{
    signals.watch->addPatience (1);
}

StopSignals::Patience::~Patience() { signals.watch->addPatience (-1); }

StopSignals::Answer::Answer (const StopSignals& stopSignals, const std::string& text)
    : signals (stopSignals),
      isOutermost (signals.watch->setAnswer (text))
{
}

StopSignals::Answer::~Answer()
{
    if (isOutermost)
        signals.watch->clearAnswer();
}

void StopSignals::whileToolWorks (std::function<void()> cancel, const std::function<void()>& work) const
{
    struct Scope
    {
        ~Scope() { watch.setCancel ({}); }
        Watch& watch;
    };

    watch->setCancel (std::move (cancel));
    const Scope scope { *watch };
    work();
}

} // namespace overmarks
