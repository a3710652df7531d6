// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/timecode/TCTime.h"
#include "event/Event.h"
#include "export/frame/EventExportTypes.h"

#include <juce_core/juce_core.h>

#include <map>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

// Keys of EventExportSettingsSet::options. A key that an exporter asks for has to be there: a missing one ends the export
// with std::out_of_range.

extern OVERMARKS_API const juce::String EventExportCSVDelimiterKey; ///< int: 1 comma, 2 semicolon, 3 tab
extern OVERMARKS_API const juce::String
    EventExportCSVTemplateKey; ///< int: 0 own table, 1 DS Taker, 2 EuroTaker
extern OVERMARKS_API const juce::String
    EventExportCombineIntoSingleFileKey;                          ///< bool, for every export by character
extern OVERMARKS_API const juce::String EventExportAppVersionKey; ///< string, in the footer of Word documents
extern OVERMARKS_API const juce::String EventExportAppIconKey;    ///< carried for applications
extern OVERMARKS_API const juce::String
    EventExportADRCueDefaultReasonsKey; ///< array of strings, for the overview sheet
extern OVERMARKS_API const juce::String
    EventExportADRCueUserReasonsKey; ///< array of strings, for the overview sheet

extern OVERMARKS_API const juce::String
    EventExportPaperKey; ///< string: "a4" or "letter"; may be missing, and then the paper is that of the place
extern OVERMARKS_API const juce::String
    EventExportBrowserKey; ///< string: name or path of the browser that prints; may be missing

/** The usual file name of an event list. */
extern OVERMARKS_API const juce::String kExportedEventsPDFFileName;
/** The usual file name of an overview sheet. */
extern OVERMARKS_API const juce::String kExportedADROverviewPDFFilename;

/** What the head of a document tells about the project. */
struct EventExportProjectSettings
{
    juce::String projectFilePath;   ///< full path
    juce::String projectName;       ///< for a person
    juce::String studioName;        ///< may be empty
    juce::String soundSupervisor;   ///< may be empty
    juce::String productionCompany; ///< may be empty
};

/** What the head of a document tells about the picture. */
struct EventExportTimelineSettings
{
    juce::String timelineName;     ///< for a person
    juce::String episodeReel;      ///< episode or reel, as printed
    juce::String pictureVersion;   ///< of the cut, as printed
    juce::String language;         ///< language code, for TTAL
    ZEP::Core::_TCTime timelineTC; ///< carried along for applications; no exporter reads it
};

/** One document order: which events to write, how, and where to.

    Fill `events` for an export by timecode, `eventsByCharacter` for one by character; the events are written in the order in
    which they stand here. Made by the application and shared with the exporter, which only reads it. */
struct EventExportSettingsSet
{
    using Events = std::vector<std::shared_ptr<Event>>; ///< none of them null

    std::map<juce::String, juce::var> options;    ///< by the keys above; exporters tell which they need
    EventExportTimelineSettings timelineSettings; ///< head of the document
    EventExportProjectSettings projectSettings;   ///< head of the document
    Events events;                                ///< by timecode, in the order to be written
    std::map<juce::String, Events>
        eventsByCharacter; ///< under identifiers of characters; any other key is a block too
    EventExportType exportType = EventExportTypeNone;     ///< which exporter the factory makes
    EventExportLayout layout = EventExportLayoutDirector; ///< PDF and Word
    bool showTakeNumbers = false; ///< PDF and Word: boxes for the numbers of the takes
    juce::String outputDirectory; ///< full path of the folder of the output files
    juce::String fileName;        ///< name of the output files without extension
};

} // namespace ZEP::Overmarks
