// SPDX-License-Identifier: GPL-3.0-only
// overmarks midi monitor: MIDI messages and pan lines as they come, until it is interrupted.
#include "OptionValues.h"
#include "commands/Commands.h"
#include "commands/MIDITriggers.h"

#include "core/text/StringUtil.h"
#include "midiio/MIDIMessageFinder.h"
#include "midiio/MIDINotifications.h"
#include "midiio/MIDISystem.h"
#include "midiio/SpannerMessage.h"

#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>

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
#include <map>
#include <memory>
#include <sstream>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::MIDIIO::MIDISystem;
using ZEP::MIDIIO::SpannerEventReceivedNotification;
using ZEP::MIDIIO::SpannerMessage;

namespace
{

std::string words (const SpannerMessage& message)
{
    using Command = SpannerMessage::Command;

    if (message.command == Command::removeAll)
        return "Pan lines removed";

    const bool isNew = message.command == Command::create;
    auto line = "Pan " + juce::String (message.lineID) + (isNew ? " created" : " moved") + ", group "
                + juce::String (message.group) + ", position " + juce::String (message.position, 3);

    if (isNew)
        line << ", colour "
             << juce::Colour::fromFloatRGBA (message.red, message.green, message.blue, 1.0f)
                    .toDisplayString (false)
                    .toLowerCase();

    return line.toStdString();
}

json asJSON (const SpannerMessage& message)
{
    using Command = SpannerMessage::Command;
    const auto* command = message.command == Command::create   ? "create"
                          : message.command == Command::update ? "update"
                                                               : "remove";
    return { { "pan", command },
             { "lineID", message.lineID },
             { "group", message.group },
             { "position", message.position } };
}

/** What comes in, a line each on standard output, or an array of one JSON document that grows as it comes. */
class MonitorOutput final
{
public:
    MonitorOutput (bool writesJSON, const MIDITriggerEventFile::Triggers& triggers) : isJSON (writesJSON)
    {
        if (isJSON)
            write ("{\"messages\": [");

        for (const auto& trigger : triggers)
            bound[trigger->triggerMessage] = trigger;
    }

    void show (const std::string& message, double timeStamp)
    {
        const auto trigger = bound.find (message);
        const bool isBound = trigger != bound.end();

        if (isJSON)
            element ({ { "time", timeStamp }, { "message", message }, { "uuid", uuidOf (trigger) } });
        else
            write (message + (isBound ? "  fires " + wordsOf (*trigger->second) : "") + "\n");
    }

    void show (const SpannerMessage& message, double timeStamp)
    {
        if (! isJSON)
            return write (words (message) + "\n");

        json shown { { "time", timeStamp } };
        shown.update (asJSON (message));
        element (shown);
    }

    void finish (const Session& session)
    {
        if (isJSON)
            write ((isEmpty ? "], " : "\n], ") + ("\"problems\": " + dump (session.problemsAsJSON()))
                   + "}\n");
    }

private:
    using Bound = std::map<std::string, std::shared_ptr<MIDITriggerEvent>>;

    std::string uuidOf (Bound::const_iterator trigger) const
    {
        return trigger != bound.end() ? trigger->second->event->getUuid().toStdString() : std::string();
    }

    static std::string wordsOf (const MIDITriggerEvent& trigger)
    {
        auto shown = trigger.event->typeString() + " " + trigger.event->getCueNumber();

        if (! trigger.label.empty())
            shown << " (" << juce::String::fromUTF8 (trigger.label.c_str()) << ")";

        return printable (shown).trimEnd().toStdString();
    }

    void element (const json& shown)
    {
        write ((isEmpty ? "\n " : ",\n ") + dump (shown));
        isEmpty = false;
    }

    static std::string dump (const json& document)
    {
        return printableJSON (document.dump (-1, ' ', false, json::error_handler_t::replace));
    }

    static void write (const std::string& text)
    {
        std::fwrite (text.data(), 1, text.size(), stdout);
        std::fflush (stdout);
    }

    bool isJSON;
    bool isEmpty = true;
    Bound bound;
};

/** Hands the pan lines to the output as long as it lives. */
class PanObserver final
{
public:
    explicit PanObserver (MonitorOutput& outputOfMonitor) : output (outputOfMonitor)
    {
        Poco::NotificationCenter::defaultCenter().addObserver (observer);
    }

    ~PanObserver() { Poco::NotificationCenter::defaultCenter().removeObserver (observer); }

    PanObserver (const PanObserver&) = delete;
    PanObserver& operator= (const PanObserver&) = delete;

private:
    void take (const Poco::AutoPtr<SpannerEventReceivedNotification>& news)
    {
        const auto& bytes = Poco::RefAnyCast<std::string> (
            news->userInfo.at (ZEP::MIDIIO::SpannerEventNotificationMIDIMsgDictKey));
        const double time = Poco::RefAnyCast<double> (
            news->userInfo.at (ZEP::MIDIIO::SpannerEventNotificationTimestampDictKey));

        if (const auto message = SpannerMessage::fromBytes (bytes))
            output.show (*message, time);
    }

    MonitorOutput& output;
    Poco::NObserver<PanObserver, SpannerEventReceivedNotification> observer { *this, &PanObserver::take };
};

/** The request to stop, as something that can be waited for together with input.

    Two seconds after it the program is stopped by the signal itself, as any other: somebody who reads its output slowly, or
    not at all, must not keep it. */
class StopRequest final
{
public:
    StopRequest()
    {
        sigemptyset (&stops);
        sigaddset (&stops, SIGINT);
        sigaddset (&stops, SIGTERM);
        // Threads that are begun from now on leave the signals to this one.
        pthread_sigmask (SIG_BLOCK, &stops, nullptr);
        descriptor = signalfd (-1, &stops, SFD_CLOEXEC);
        over = eventfd (0, EFD_CLOEXEC);

        if (descriptor < 0 || over < 0)
            throw CommandFailure ("The program can't wait for an interruption");

        guard = std::thread ([this] { stopByForce(); });
    }

    ~StopRequest()
    {
        eventfd_write (over, 1);
        guard.join();
        close (over);
        close (descriptor);
    }

    StopRequest (const StopRequest&) = delete;
    StopRequest& operator= (const StopRequest&) = delete;

    /** Waits until there is something to read from the other descriptor as well, -1 for none. @returns whether to stop */
    [[nodiscard]] bool waitOrRead (int other) const { return waitForEither (descriptor, other, -1); }

private:
    /** @returns whether there is something to read from the first one */
    static bool waitForEither (int first, int second, int milliseconds)
    {
        std::array<pollfd, 2> sources { { { first, POLLIN, 0 }, { second, POLLIN, 0 } } };

        while (poll (sources.data(), sources.size(), milliseconds) < 0 && errno == EINTR)
        {
        }

        return sources[0].revents != 0;
    }

    void stopByForce() const
    {
        constexpr int patience = 2000;

        if (! waitForEither (over, descriptor, -1) && ! waitForEither (over, -1, patience))
            pthread_sigmask (SIG_UNBLOCK, &stops,
                             nullptr); // nobody has taken the signal: now it ends the program
    }

    sigset_t stops {};
    int descriptor = -1;
    int over = -1; ///< can be read once the work is done
    std::thread guard;
};

/** Bytes in hexadecimal, as tools that dump MIDI print them: one stream, whatever lines it is cut into. */
class HexInput final
{
public:
    explicit HexInput (Session& sessionOfRun) : session (sessionOfRun) {}

    /** Takes what is there, and waits until it has been shown. @returns false at the end */
    bool read()
    {
        std::array<char, 4096> buffer;
        const auto length = ::read (STDIN_FILENO, buffer.data(), buffer.size());

        if (length < 0 && errno == EINTR)
            return true;

        if (length < 0)
            session.report (
                { "-",
                  0,
                  {},
                  "Can't read standard input: "
                      + juce::String::fromUTF8 (std::generic_category().message (errno).c_str()) });

        if (length > 0)
            take ({ buffer.data(), static_cast<std::size_t> (length) });
        else
            takeLine (rest);

        waitUntilShown();
        return length > 0;
    }

private:
    void take (std::string_view text)
    {
        rest.append (text);

        for (auto end = rest.find ('\n'); end != std::string::npos; end = rest.find ('\n'))
        {
            takeLine (rest.substr (0, end));
            rest.erase (0, end + 1);
            ++row;
            isSpoilt = false;
        }

        if (rest.size() > longestPiece)
            takeBeginningOfLine();
    }

    /** A line without an end must not fill the memory; its last byte may not be there as a whole yet. */
    void takeBeginningOfLine()
    {
        const auto gap = rest.find_last_of (" \t\r\v\f");
        const auto length = gap == std::string::npos ? rest.size() : gap;
        takeLine (rest.substr (0, length));
        rest.erase (0, length);
    }

    /** A line in which something is wrong counts for nothing, and a message that was begun before it is not ended behind it. */
    void takeLine (const std::string& line)
    {
        std::istringstream tokens (line);
        std::vector<std::uint8_t> bytes;

        for (std::string token; ! isSpoilt && tokens >> token;)
        {
            std::uint8_t byte = 0;
            const auto* const end = token.data() + token.size();
            const auto [place, error] = std::from_chars (token.data(), end, byte, 16);

            if (error != std::errc() || place != end)
                return refuse (token);

            bytes.push_back (byte);
        }

        if (! isSpoilt)
            receive (bytes);
    }

    void refuse (const std::string& token)
    {
        constexpr int longestShown = 40;
        const auto shown = ZEP::Core::StringUtil::fromUTF8 (token.substr (0, 4 * longestShown));
        isSpoilt = true;
        finder = ZEP::MIDIIO::MIDIMessageFinder ({});
        session.report ({ "-",
                          row,
                          {},
                          "\"" + shown.substring (0, longestShown)
                              + (shown.length() > longestShown ? "...\"" : "\"")
                              + " is no byte in hexadecimal" });
    }

    void receive (const std::vector<std::uint8_t>& bytes)
    {
        const auto now = juce::Time::getMillisecondCounter() * 0.001;
        finder.goOn (bytes);

        for (auto message = finder.next(); ! message.empty(); message = finder.next())
            MIDISystem::sharedMIDISystem()->receive (message, now);
    }

    /** However long the reader of the output takes: nothing that stands in a file or a pipe may be lost. */
    static void waitUntilShown()
    {
        while (! MIDISystem::sharedMIDISystem()->waitUntilDelivered (std::chrono::hours (1)))
        {
        }
    }

    static constexpr std::size_t longestPiece = 65536;

    Session& session;
    ZEP::MIDIIO::MIDIMessageFinder finder { {} };
    std::string rest;
    int row = 1;
    bool isSpoilt = false; ///< the rest of the line as well
};

void followStandardInput (const StopRequest& stop, Session& session)
{
    HexInput input (session);

    while (! stop.waitOrRead (STDIN_FILENO) && input.read())
    {
    }
}

void followInputs (const StopRequest& stop, MIDISystem& system, const Session& session)
{
    system.openAllInputs();
    const auto inputs = system.inputs();
    session.say (inputs.empty() ? juce::String ("There is no MIDI input yet; one that comes is opened")
                                : "Listening to " + juce::String (inputs.size())
                                      + (inputs.size() == 1 ? " input" : " inputs"));
    juce::ignoreUnused (stop.waitOrRead (-1));

    while (! system.closeAllInputs())
    {
    }
}

void monitor (const std::string& source, Session& session)
{
    if (! source.empty() && source != "-")
        throw WrongUsage ("midi monitor reads the MIDI inputs, or - for standard input, not \""
                          + juce::String::fromUTF8 (source.c_str()) + "\"");

    const auto stored = storedMIDITriggers();

    if (stored.problem.isNotEmpty())
        session.report ({ {}, 0, {}, stored.problem + "; what messages fire is not shown" });

    const StopRequest stop;
    auto& system = *MIDISystem::sharedMIDISystem();
    const auto output = std::make_shared<MonitorOutput> (session.wantsJSON, stored.triggers);
    const PanObserver pans (*output);
    system.setMonitor ([output] (const std::string& message, double time) { output->show (message, time); });

    if (source == "-")
        followStandardInput (stop, session);
    else
        followInputs (stop, system, session);

    system.setMonitor ({});
    output->finish (session);
}

} // namespace

void addMIDIMonitorCommand (CLI::App& midi, Session& session)
{
    auto source = std::make_shared<std::string>();
    auto* command =
        midi.add_subcommand ("monitor", "Show MIDI messages and pan lines as they come, until interrupted");
    command->footer ("Examples:\n  overmarks midi monitor\n  overmarks midi monitor - < bytes.txt");
    takesOneOf (command->add_option ("SOURCE", *source,
                                     "- for bytes in hexadecimal on standard input; else all MIDI inputs"),
                { "-" });
    session.addOutputOptions (*command);
    command->callback ([source, &session] { monitor (*source, session); });
}

} // namespace overmarks
