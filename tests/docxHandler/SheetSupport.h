// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"
#include "SheetDocument.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace DocxHandler::Testing
{

using JSON = nlohmann::ordered_json;

inline JSON richJSON (const std::string& text, const JSON& runs = JSON::array())
{
    return { { "text", text }, { "runs", runs } };
}

inline JSON runJSON (int start, int end, const JSON& look)
{
    JSON run { { "start", start },  { "end", end },          { "bold", false },
               { "italic", false }, { "underlined", false }, { "struckThrough", false },
               { "height", 14.0 },  { "colour", "ff000000" } };
    run.update (look);
    return run;
}

/** One cue as the exporter writes it; `changes` replaces members. */
inline JSON cueJSON (const JSON& changes = JSON::object())
{
    const std::string icons = DOCX_ICONS;
    JSON cue { { "charIconFilePath", icons + "/pdf-export-character-icon.png" },
               { "startTCIconFilePath", icons + "/pdf-export-in-point-icon.png" },
               { "endTCIconFilePath", icons + "/pdf-export-out-point-icon.png" },
               { "charNameFontSize", 13 },
               { "charName", "ANNA" },
               { "cueTextFontSize", 14 },
               { "cueText", richJSON ("Where have you been?") },
               { "cueNotesFontSize", 8 },
               { "cueNotes", richJSON ("") },
               { "cueEngNotesFontSize", 8 },
               { "cueEngNotes", richJSON ("") },
               { "reasonStringFontSize", 8 },
               { "reasonString", "" },
               { "cueNumberFontSize", 12 },
               { "cueNumber", "R1-001" },
               { "forcedNarrativeRegionFontSize", 8 },
               { "forcedNarrativeRegion", "" },
               { "startTCFontSize", 8 },
               { "startTC", "01:00:07:01" },
               { "endTCFontSize", 8 },
               { "endTC", "01:00:11:07" } };
    cue.update (changes);
    return cue;
}

inline JSON takesJSON (int recorded, int selected, int alternative, int boxes = 25, int rows = 1)
{
    return { { "numRecordedTakes", recorded },
             { "selectedTake", selected },
             { "alternativeTake", alternative },
             { "numberTakesToDisplay", boxes },
             { "numberRowsToDisplay", rows } };
}

/** A cue with something in each field. */
inline JSON fullCueJSON()
{
    return cueJSON (
        { { "cueText",
            richJSON (
                "No.\nNot \xe2\x99\xaa again\t& <never>.",
                JSON::array (
                    { runJSON (0, 2, { { "bold", true } }),
                      runJSON (4, 9,
                               { { "italic", true }, { "underlined", true }, { "colour", "ffc00000" } }),
                      runJSON (10, 12, { { "struckThrough", true }, { "height", 28.0 } }) })) },
          { "cueNotes", richJSON ("Softer.", JSON::array ({ runJSON (0, 7, { { "bold", true } }) })) },
          { "cueEngNotes", richJSON ("Use the lavalier.") },
          { "reasonString", "Aeroplane" },
          { "forcedNarrativeRegion", "Top" },
          { "cueTakes", takesJSON (5, 2, 0) } });
}

inline JSON footerJSON (const std::string& layout = "Director Layout")
{
    return { { "fontSize", 8 },
             { "appIconFilePath", std::string (DOCX_ICONS) + "/dbln-app-icon.png" },
             { "currentDate", "21/11/2026" },
             { "appVersion", "1.0.0" },
             { "wordLayout", layout } };
}

inline JSON frontMatterJSON()
{
    return { { "fontSize", 5 },
             { "projectName", "The Long Way Home" },
             { "projectFilePath", "/projects/Reel 1.ovm" },
             { "soundSupervisor", "Ines Korhonen" },
             { "productionCompany", "Lantern Pictures" },
             { "studioName", "Stage B" },
             { "timelineName", "LWH R1 v12" },
             { "episodeReel", "1" },
             { "pictureVersion", "v12" },
             { "charAndActor", "ANNA (Mia Berg), PAUL" } };
}

inline JSON sheetJSON (const std::vector<JSON>& cues, const std::string& layout = "Director Layout")
{
    return { { "footer", footerJSON (layout) },
             { "frontMatter", frontMatterJSON() },
             { "cueContentList", cues } };
}

/** A combined document: a list of lists of cues. */
inline JSON combinedJSON (const std::vector<std::vector<JSON>>& blocks,
                          const std::string& layout = "Director Layout")
{
    auto list = JSON::array();

    for (const auto& cues : blocks)
        list.push_back (cues.empty() ? JSON::object() : JSON { { "cueContentList", cues } });

    return { { "footer", footerJSON (layout) },
             { "frontMatter", frontMatterJSON() },
             { "continuousPagesBlockList", list } };
}

inline std::vector<JSON> manyCues (std::size_t count) { return std::vector<JSON> (count, fullCueJSON()); }

} // namespace DocxHandler::Testing
