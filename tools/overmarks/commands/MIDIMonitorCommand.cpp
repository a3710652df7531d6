// SPDX-License-Identifier: GPL-3.0-only
// overmarks midi monitor: MIDI messages and pan lines as they come, until it is interrupted.
#include "commands/Commands.h"

#include "core/text/StringUtil.h"
#include "midi/MIDITriggerEventFile.h"
#include "midiio/MIDINotifications.h"
#include "midiio/MIDISystem.h"
#include "midiio/SpannerMessage.h"

#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>

#include <poll.h>
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
    explicit MonitorOutput (bool writesJSON) : isJSON (writesJSON)
    {
        if (isJSON)
            write ("{\"messages\": [");

        if (juce::File (MIDITriggerEventFile::path()).existsAsFile())
            for (const auto& trigger : MIDITriggerEventFile::read())
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

    void finish()
    {
        if (isJSON)
            write (isEmpty ? "]}\n" : "\n]}\n");
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
        write ((isEmpty ? "\n " : ",\n ") + shown.dump (-1, ' ', false, json::error_handler_t::replace));
        isEmpty = false;
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

/** The request to stop, as something that can be waited for together with input. */
class StopRequest final
{
public:
    StopRequest()
    {
        sigset_t stops;
        sigemptyset (&stops);
        sigaddset (&stops, SIGINT);
        sigaddset (&stops, SIGTERM);
        // Threads that are begun from now on leave the signals to this one.
        pthread_sigmask (SIG_BLOCK, &stops, nullptr);
        descriptor = signalfd (-1, &stops, SFD_CLOEXEC);

        if (descriptor < 0)
            throw CommandFailure ("The program can't wait for an interruption");
    }

    ~StopRequest() { close (descriptor); }

    StopRequest (const StopRequest&) = delete;
    StopRequest& operator= (const StopRequest&) = delete;

    /** Waits until there is something to read from the other descriptor as well, -1 for none. @returns whether to stop */
    [[nodiscard]] bool waitOrRead (int other) const
    {
        std::array<pollfd, 2> sources { { { descriptor, POLLIN, 0 }, { other, POLLIN, 0 } } };

        while (poll (sources.data(), sources.size(), -1) < 0 && errno == EINTR)
        {
        }

        return sources[0].revents != 0;
    }

private:
    int descriptor = -1;
};

/** Bytes in hexadecimal, a piece a line, as tools that dump MIDI print them. */
class HexInput final
{
public:
    explicit HexInput (Session& sessionOfRun) : session (sessionOfRun) {}

    /** Takes what is there. @returns false at the end */
    bool read()
    {
        std::array<char, 4096> buffer;
        const auto length = ::read (STDIN_FILENO, buffer.data(), buffer.size());

        if (length <= 0)
        {
            takeLine (rest);
            return false;
        }

        rest.append (buffer.data(), static_cast<std::size_t> (length));

        for (auto end = rest.find ('\n'); end != std::string::npos; end = rest.find ('\n'))
        {
            takeLine (rest.substr (0, end));
            rest.erase (0, end + 1);
        }

        if (rest.size() > longestLine)
            takeLine (std::exchange (rest, {}));

        return true;
    }

private:
    void takeLine (const std::string& line)
    {
        ++row;
        std::istringstream tokens (line);
        std::vector<std::uint8_t> bytes;

        for (std::string token; tokens >> token;)
        {
            std::uint8_t byte = 0;
            const auto* const end = token.data() + token.size();
            const auto [place, error] = std::from_chars (token.data(), end, byte, 16);

            if (error != std::errc() || place != end)
                return session.report (
                    { "-",
                      row,
                      {},
                      "\"" + ZEP::Core::StringUtil::fromUTF8 (token) + "\" is no byte in hexadecimal" });

            bytes.push_back (byte);
        }

        const auto now = juce::Time::getMillisecondCounter() * 0.001;
        MIDISystem::sharedMIDISystem()->receive (bytes, now);
    }

    static constexpr std::size_t longestLine = 65536;

    Session& session;
    std::string rest;
    int row = 0;
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
                                : "Listening to " + juce::String (inputs.size()) + " inputs");
    juce::ignoreUnused (stop.waitOrRead (-1));
    system.closeAllInputs();
}

void monitor (const std::string& source, Session& session)
{
    if (! source.empty() && source != "-")
        throw WrongUsage ("midi monitor reads the MIDI inputs, or - for standard input, not \""
                          + juce::String::fromUTF8 (source.c_str()) + "\"");

    const StopRequest stop;
    auto& system = *MIDISystem::sharedMIDISystem();
    const auto output = std::make_shared<MonitorOutput> (session.wantsJSON);
    const PanObserver pans (*output);
    system.setMonitor ([output] (const std::string& message, double time) { output->show (message, time); });

    if (source == "-")
        followStandardInput (stop, session);
    else
        followInputs (stop, system, session);

    constexpr auto patience = std::chrono::seconds (5);
    juce::ignoreUnused (system.waitUntilDelivered (patience));
    system.setMonitor ({});
    output->finish();
}

} // namespace

void addMIDIMonitorCommand (CLI::App& midi, Session& session)
{
    auto source = std::make_shared<std::string>();
    auto* command =
        midi.add_subcommand ("monitor", "Show MIDI messages and pan lines as they come, until interrupted");
    command->footer ("Examples:\n  overmarks midi monitor\n  amidi -p hw:1 -d | overmarks midi monitor -");
    command->add_option ("SOURCE", *source,
                         "- for bytes in hexadecimal on standard input; else all MIDI inputs");
    session.addOutputOptions (*command);
    command->callback ([source, &session] { monitor (*source, session); });
}

} // namespace overmarks
