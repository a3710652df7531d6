// SPDX-License-Identifier: GPL-3.0-only
#include "SampleLists.h"

#include "core/timecode/TCToolbox.h"
#include "preferences/UserDefaultsRegistrar.h"

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
        const auto time = [&] (int frame) {
            return TCToolbox::stringFromTCTime (TCToolbox::tcTimeForFrameIndex (frame, *info), false)
                .toStdString();
        };
        const auto who = std::to_string (random() % numberOfCharacters);
        csv += time (i * framesBetweenCues) + "," + time (i * framesBetweenCues + 50) + ",\""
               + sentence (random) + "\",CHARACTER " + who + ",C" + who + ",Actor " + who + ","
               + std::to_string (i + 1) + ",\"" + sentence (random) + "\",,Clarity (AR4),"
               + (random() % 2 == 0 ? "Yes" : "No") + "\n";
    }

    return csv;
}

} // namespace bench
