// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/ExportSupport.h"
#include "export/word/EventWordExporter.h"
#include "support/StandInTool.h"

#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

/** What tests of Word exports share: a listener, a settings set, and a script in the place of docxHandler. */
namespace WordExportSupport
{

using namespace ExportSupport;
using nlohmann::ordered_json;
using ZEP::Overmarks::Testing::keepJSONAndWrite;
using ZEP::Overmarks::Testing::StandInTool;
using Names = std::vector<std::string>;
using Reports = std::vector<std::pair<int, int>>;

/** Is told from two threads. */
class Listener final : public EventExporter::Delegate
{
public:
    void progressChanged (EventExporter*, int current, int total) override
    {
        const std::lock_guard lock (mutex);
        reports.emplace_back (current, total);
    }

    Reports all() const
    {
        const std::lock_guard lock (mutex);
        return reports;
    }

private:
    mutable std::mutex mutex;
    Reports reports;
};

class WordExportTest : public ExportTest
{
protected:
    WordExportTest()
    {
        settings->exportType = EventExportTypeWord;
        settings->options[EventExportAppVersionKey] = "1.2.3";
        settings->projectSettings = { "/p/film", "Film", "Studio", "Supervisor", "Company" };
        settings->timelineSettings = { "Reel two", "R2", "v3", "de", {} };
        exporter.delegate = &listener;
    }

    void combine() { settings->options[EventExportCombineIntoSingleFileKey] = true; }

    ordered_json kept (const std::string& suffix) const
    {
        return ordered_json::parse (tool.note ("WordDocumentJSON_" + suffix + ".txt"));
    }

    /** The JSON of a cue, alone in a document by timecode. */
    ordered_json cueOf (const std::shared_ptr<Event>& event)
    {
        settings->events = { event };
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        return kept ("timecode")["cueContentList"].at (0);
    }

    static Names keysOf (const ordered_json& object)
    {
        Names keys;
        for (const auto& [key, value] : object.items())
            keys.push_back (key);
        return keys;
    }

    std::string output (const std::string& name) const
    {
        return folder.file (name).getFullPathName().toStdString();
    }

    std::string toolPath() const { return (tool.resources / "docxHandler").string(); }

    std::string com() const
    {
        return "com=" + tool.inTemporary ("P2CcomWordExporter.txt") + ","
               + tool.inTemporary ("C2PcomWordExporter.txt");
    }

    const StandInTool tool { keepJSONAndWrite };
    Listener listener;
    EventWordExporter exporter { settings };
};

} // namespace WordExportSupport
