// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** What a project remembers for its documents: the head of each page and the choices of the last export. Empty and 0 mean that
    nobody has chosen yet, and the exporting program decides. */
struct DocumentSettings
{
    juce::String title;                 ///< of the sheet
    juce::String studioName;            ///< in the head
    juce::String soundSupervisor;       ///< in the head
    juce::String productionCompany;     ///< in the head
    juce::String timelineName;          ///< of the picture, in the head
    juce::String episodeReel;           ///< in the head
    juce::String pictureVersion;        ///< of the cut, in the head
    juce::String language;              ///< language code
    juce::String paper;                 ///< "a4" or "letter"
    int layout = 0;                     ///< as EventExportLayout: 1 director, 2 actor, 3 engineer
    int delimiter = 0;                  ///< of text tables: 1 comma, 2 semicolon, 3 tab
    bool showTakeNumbers = false;       ///< boxes for takes on the sheet
    bool byCharacter = false;           ///< else by timecode
    bool combineIntoSingleFile = false; ///< of an export by character

    bool operator== (const DocumentSettings&) const = default; ///< Compares all fields.

    /** The table of the fields, which every stored form walks: calls visitor (name, field) for each, with the name that it
        has in the stored records. */
    template <typename SettingsOrConst, typename Visitor>
    static void visit (SettingsOrConst& settings, Visitor&& visitor)
    {
        visitor ("title", settings.title);
        visitor ("studioName", settings.studioName);
        visitor ("soundSupervisor", settings.soundSupervisor);
        visitor ("productionCompany", settings.productionCompany);
        visitor ("timelineName", settings.timelineName);
        visitor ("episodeReel", settings.episodeReel);
        visitor ("pictureVersion", settings.pictureVersion);
        visitor ("language", settings.language);
        visitor ("paper", settings.paper);
        visitor ("layout", settings.layout);
        visitor ("delimiter", settings.delimiter);
        visitor ("showTakeNumbers", settings.showTakeNumbers);
        visitor ("byCharacter", settings.byCharacter);
        visitor ("combineIntoSingleFile", settings.combineIntoSingleFile);
    }
};

} // namespace ZEP::Overmarks
