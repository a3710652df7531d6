// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/cast/ADRCharacterMap.h"
#include "core/text/RichTextString.h"
#include "core/timecode/TimeInfo.h"
#include "event/Event.h"
#include "export/frame/EventExporter.h"
#include "preferences/UserDefaultsRegistrar.h"
#include "proto/overmarks.pb.h"
#include "support/TemporaryFolder.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

/** What tests of exporters share: a cast, a folder, a settings set, and events at 25 frames. */
namespace ExportSupport
{

using namespace ZEP::Overmarks;
using Events = EventExportSettingsSet::Events;

inline juce::String text (const std::string& utf8)
{
    return juce::String::fromUTF8 (utf8.data(), static_cast<int> (utf8.size()));
}

using ZEP::Overmarks::Testing::TemporaryFolder;

/** Notes what an exporter reports: (current, total). */
class Progress final : public EventExporter::Delegate
{
public:
    void progressChanged (EventExporter* exporter, int current, int total) override
    {
        senders.push_back (exporter);
        reports.emplace_back (current, total);
    }

    std::vector<std::pair<int, int>> reports;
    std::vector<EventExporter*> senders;
};

/** What a cue list's line is made of; times are frames at 25 a second. */
struct Line
{
    std::string cueNumber = {};
    int in = 0;
    int end = 25;
    std::string characterID = {};
    std::string words = {};
    std::string notes = {};
};

class ExportTest : public ::testing::Test
{
protected:
    ExportTest()
    {
        UserDefaultsRegistrar::registerUserDefaults();
        Event::setADRCharacterMap (cast);
        settings->outputDirectory = folder.directory();
        settings->fileName = "Reel 2";
        settings->exportType = EventExportTypeCSV;
        settings->options[EventExportCSVDelimiterKey] = 1;
        settings->options[EventExportCSVTemplateKey] = 0;
        settings->options[EventExportCombineIntoSingleFileKey] = false;
    }

    ~ExportTest() override { Event::setADRCharacterMap (nullptr); }

    void addCharacter (const std::string& id, const std::string& name, const std::string& prefix = {},
                       const std::string& actor = {})
    {
        auto character = std::make_shared<ZEP::Core::ADRCharacter> (text (name));
        character->prefix = text (prefix);
        character->actor = text (actor);
        cast->addCharacter (character, true, text (id));
    }

    std::shared_ptr<Event> event (const Line& line, EventType type = EventTypeADRCue) const
    {
        auto made = Event::create (type, timeInfo, line.in, line.end, -1.0f, 3);
        made->setUndoBypass (true);
        made->setCueNumber (text (line.cueNumber));
        made->setCharacterID (text (line.characterID));
        made->setText (text (line.words));
        made->setNotes (text (line.notes));
        return made;
    }

    Events events (const std::vector<Line>& lines) const
    {
        Events made;

        for (const auto& line : lines)
            made.push_back (event (line));

        return made;
    }

    /** An event as a project file may hold it, which no setter has cleaned. */
    std::shared_ptr<Event> stored (const tessera1::ProtoOvermark& proto) const
    {
        auto copy = proto;
        auto made = std::make_shared<Event>();
        made->initWithProtoObject (&copy);
        made->setTimeInfo (timeInfo);
        return made;
    }

    TemporaryFolder folder;
    std::shared_ptr<ZEP::Core::ADRCharacterMap> cast = std::make_shared<ZEP::Core::ADRCharacterMap>();
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo =
        std::make_shared<ZEP::Core::TimeInfo> (ZEP::Core::_TCDef { false, 25, 1, 25, false });
    std::shared_ptr<EventExportSettingsSet> settings = std::make_shared<EventExportSettingsSet>();
    Progress progress;
};

/** 01:00:00:00 at 25 frames. */
constexpr int oneHour = 90000;

} // namespace ExportSupport
