// SPDX-License-Identifier: GPL-3.0-only
#include "SampleLists.h"

#include "core/timecode/TCToolbox.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <algorithm>
#include <array>
#include <random>

namespace bench
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

constexpr int numberOfCharacters = 40;
constexpr int framesBetweenCues = 31;

const char* const words[] = { "harbour",  "light",   "never", "again", "boat", "listen",
                              "tomorrow", "captain", "water", "home",  "fear", "slowly" };

std::shared_ptr<TimeInfo> timeInfo()
{
    return std::make_shared<TimeInfo> (*TCToolbox::tcDefForRateName ("25"),
                                       TCToolbox::tcTimeFromString ("01:00:00:00"));
}

std::string sentence (std::mt19937& random)
{
    std::string text;

    for (int i = 0; i < 7; ++i)
        text += (i > 0 ? " " : "") + std::string (words[random() % std::size (words)]);

    return text + ".";
}

/** The timecode of a frame. */
std::string timecode (int frame, const TimeInfo& info)
{
    return TCToolbox::stringFromTCTime (TCToolbox::tcTimeForFrameIndex (frame, info), false).toStdString();
}

/** Calls write (number, start, end, text) for each cue. */
template <typename Write>
void writeCues (int numberOfRows, Write write)
{
    constexpr int framesOfCue = 50;
    const auto info = timeInfo();
    std::mt19937 random (11);

    for (int i = 0; i < numberOfRows; ++i)
        write (i + 1, timecode (i * framesBetweenCues, *info),
               timecode (i * framesBetweenCues + framesOfCue, *info), sentence (random));
}

std::string filledUp (const std::string& text, std::size_t length, char filler)
{
    std::string filled (length, filler);
    std::copy_n (text.begin(), std::min (length, text.size()), filled.begin());
    return filled;
}

/** The four bytes of a timecode. */
std::string bytesOf (const std::string& timecode)
{
    const auto time = TCToolbox::tcTimeFromString (timecode);
    return { static_cast<char> (time.hours), static_cast<char> (time.minutes),
             static_cast<char> (time.seconds), static_cast<char> (time.frames) };
}

} // namespace

Project sampleProject (int numberOfEvents)
{
    UserDefaultsRegistrar::registerUserDefaults();
    auto project = Project::createEmpty (timeInfo());
    std::mt19937 random (7);

    for (int i = 0; i < numberOfCharacters; ++i)
    {
        auto character = std::make_shared<ADRCharacter> ("CHARACTER " + juce::String (i));
        character->actor = "Actor " + juce::String (i % 17);
        project.characters->addCharacter (character, true, "c" + juce::String (i));
    }

    project.makeCurrent();

    for (int i = 0; i < numberOfEvents; ++i)
    {
        const auto type = i % 10 == 3 ? EventTypeStreamer : i % 10 == 7 ? EventTypeMarker : EventTypeADRCue;
        auto event =
            Event::create (type, project.timeInfo, i % 97 == 0 ? -1 : i * framesBetweenCues, -1, -1.0f, -1);
        event->setUndoBypass (true);
        event->setCueNumber ("R" + juce::String (i % 8) + " " + juce::String (random() % 5000));
        event->setText (RichTextString (sentence (random)));
        event->setNotes (RichTextString (i % 3 == 0 ? sentence (random) : std::string()));
        event->setCharacterID (type == EventTypeADRCue
                                   ? "c" + juce::String (static_cast<int> (random() % numberOfCharacters))
                                   : juce::String());
        event->setReason (static_cast<int> (random() % 30));
        event->setDone (random() % 2 == 0);
        event->setUndoBypass (false);
        project.list->addEvent (event, false);
    }

    project.list->sortContentAndUpdateFilteredEvents();
    return project;
}

std::string sampleCSV (int numberOfRows)
{
    const auto info = timeInfo();
    std::mt19937 random (11);
    std::string csv =
        "Start TC,End TC,Text,Character,Char Prefix,Actor,Cue Number,Notes,Engineering Notes,Reason,Done\n";

    for (int i = 0; i < numberOfRows; ++i)
    {
        const auto time = [&] (int frame) { return timecode (frame, *info); };
        const auto who = std::to_string (random() % numberOfCharacters);
        csv += time (i * framesBetweenCues) + "," + time (i * framesBetweenCues + 50) + ",\""
               + sentence (random) + "\",CHARACTER " + who + ",C" + who + ",Actor " + who + ","
               + std::to_string (i + 1) + ",\"" + sentence (random) + "\",,Clarity (AR4),"
               + (random() % 2 == 0 ? "Yes" : "No") + "\n";
    }

    return csv;
}

std::string sampleSRT (int numberOfRows)
{
    std::string file;
    const auto subtitleTime = [] (const std::string& time) { return time.substr (0, 8) + ",480"; };
    writeCues (numberOfRows,
               [&] (int number, const std::string& start, const std::string& end, const std::string& text)
               {
                   file += std::to_string (number) + "\n" + subtitleTime (start) + " --> "
                           + subtitleTime (end) + "\n<i>" + text + "</i>\n\n";
               });
    return file;
}

std::string sampleTextSTL (int numberOfRows)
{
    std::string file = "$FontName = Sans\n";
    writeCues (numberOfRows,
               [&] (int, const std::string& start, const std::string& end, const std::string& text)
               { file += start + " , " + end + " , " + text + "\n"; });
    return file;
}

std::string sampleEBUSTL (int numberOfRows)
{
    const auto digits = std::to_string (100000 + numberOfRows).substr (1);
    auto file = filledUp (filledUp ("850STL25.01", 238, ' ') + digits, 1024, ' ');
    writeCues (numberOfRows,
               [&] (int, const std::string& start, const std::string& end, const std::string& text)
               {
                   file += std::string (5, '\0') + bytesOf (start) + bytesOf (end) + std::string (3, '\0')
                           + filledUp (text, 112, '\x8f');
               });
    return file;
}

std::string sampleSession (int numberOfClips)
{
    constexpr std::size_t numberOfTracks = 8;
    std::array<std::string, numberOfTracks> tracks;
    for (std::size_t i = 0; i < numberOfTracks; ++i)
    {
        const auto number = std::to_string (i);
        tracks[i] = "TRACK NAME:\tCHARACTER " + number + " [C" + number + "] {Actor " + number
                    + "}\nCOMMENTS:\t\nUSER DELAY:\t0 Samples\nSTATE: \nCHANNEL \tEVENT   \tCLIP NAME\tSTART "
                      "TIME\tEND TIME\tDURATION\tSTATE\n";
    }

    writeCues (numberOfClips,
               [&] (int number, const std::string& start, const std::string& end, const std::string& text)
               {
                   tracks[static_cast<std::size_t> (number) % numberOfTracks] +=
                       "1       \t" + std::to_string (number) + "\t" + text
                       + (number % 3 == 0 ? " {slowly} [AR4]" : "") + "\t   " + start + "\t   " + end
                       + "\t   00:00:02:00\tUnmuted\n";
               });

    std::string file = "SESSION NAME:\tHarbour\n\n\nT R A C K  L I S T I N G\n";
    for (const auto& track : tracks)
        file += track + "\n\n";
    return file;
}

std::string sampleDBF (int numberOfRows)
{
    const std::pair<const char*, std::size_t> fields[] = { { "TAKE", 6 },    { "TC_IN", 11 },
                                                           { "TC_OUT", 11 }, { "SUBTITLE", 80 },
                                                           { "ROLE", 12 },   { "MARKER", 11 } };
    std::string file (32, '\0');
    for (const auto& [name, length] : fields)
        file += filledUp (filledUp (name, 16, '\0') + static_cast<char> (length), 32, '\0');
    file[8] = static_cast<char> (file.size() + 1);
    file += '\r';

    writeCues (numberOfRows,
               [&] (int number, const std::string& start, const std::string& end, const std::string& text)
               {
                   file += " " + filledUp (std::to_string (number), 6, ' ') + start + end
                           + filledUp (text, 80, ' ') + filledUp ("ANNA", 12, ' ') + std::string (11, ' ');
               });
    return file + '\x1a';
}

std::string sampleTTAL (int numberOfEvents)
{
    std::mt19937 random (11);
    std::string text =
        R"({"meta": {"tool": "x", "fps": "FPS_2500", "lang": "en", "timeFormat": "FRAMES"}, "events": {)";

    for (int i = 0; i < numberOfEvents; ++i)
    {
        const auto start = i * framesBetweenCues;
        text += (i > 0 ? ",\n\"" : "\n\"") + juce::Uuid().toDashedString().toStdString() + R"(": {"start": )"
                + std::to_string (start) + R"(, "end": )" + std::to_string (start + 51) + R"(, "cue": ")"
                + std::to_string (i + 1) + R"(", "txt": ")" + sentence (random)
                + R"(", "styles": [{"from": 0, "to": 5, "type": "bold"}], "characterId": "c)"
                + std::to_string (random() % numberOfCharacters)
                + R"(", "dubAnnotations": {"types": [], "text": ")" + sentence (random) + "\"}}";
    }

    text += "}, \"characters\": {";

    for (int i = 0; i < numberOfCharacters; ++i)
        text += (i > 0 ? ", \"c" : "\"c") + std::to_string (i) + R"(": {"name": "CHARACTER )"
                + std::to_string (i) + "\"}";

    return text + "}}";
}

std::string sampleADRStudio (int numberOfCues)
{
    const auto info = timeInfo();
    std::mt19937 random (11);
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n<array>\n";

    const auto add = [&text] (const char* key, const std::string& value)
    { text += std::string ("<key>") + key + "</key><string>" + value + "</string>\n"; };

    for (int i = 0; i < numberOfCues; ++i)
    {
        const auto time = [&] (int frame) {
            return TCToolbox::stringFromTCTime (TCToolbox::tcTimeForFrameIndex (frame, *info), false)
                .toStdString();
        };
        text += "<dict>\n";
        add ("In Time", time (i * framesBetweenCues));
        add ("Out Time", time (i * framesBetweenCues + 50));
        add ("Character", "CHARACTER " + std::to_string (random() % numberOfCharacters));
        add ("Dialog", sentence (random));
        add ("Clip Name", std::to_string (i + 1));
        add ("Notes", sentence (random));
        text += "</dict>\n";
    }

    return text + "</array>\n</dict>\n</plist>\n";
}

} // namespace bench
