// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/text/TextEncoding.h"
#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** Writes cue lists as delimited text, in one of three templates:

        0  own table   eighteen columns, which the importer reads back
        1  DS Taker    a row for each cue number; further events of a number are its subcues, kept as markers
        2  EuroTaker   the header alone

    What other programs have come to expect stays as it is: the header of a semicolon file is separated by commas, a UTF-8
    file ends with a zero byte, and the last row with no line break.

    The rule that is easily missed: a file of template 1 leaves `textEncoding` at ISO 8859-1, so one exporter writes one
    template. It can't be cancelled. The fields hold the state of the file being written. The thread of the caller. */
class OVERMARKS_API EventCSVExporter final : public EventExporter
{
public:
    using Events = EventExportSettingsSet::Events; ///< in the order in which they are written

    explicit EventCSVExporter (std::shared_ptr<EventExportSettingsSet> settingsSet); ///< Not null; shared.
    ~EventCSVExporter() override;

    /** A file for each character, up to the first that fails, or one for all. */
    juce::String exportEventsByCharacter() override;
    juce::String exportEventsByTimecode() override;
    EventExportType type() const override; ///< EventExportTypeCSV.

    /** Writes the events to a file. The empty string also comes back when the user has declined: then nothing is written. */
    juce::String writeCSVFileWithEvents (const Events& events, const juce::File& file);

    /** The header line of the template. Sets `columnKeys`. */
    juce::String csvHeaderString();

    // Each appends its rows to `csvString`; false means that the user has declined.
    bool createCSVLinesForTemplateDublane (const Events& events); ///< Template 0.
    bool createCSVLinesForTemplateDSTaker (const Events& events); ///< Template 1; may ask about lost markers.
    bool createCSVLinesForTemplateEuroTaker (const Events& events); ///< Template 2: no rows.

    /** A cell with the delimiter behind it, if it has one there.
        @param trackNumber  for the track column of DS Taker: odd is track 1, even is track 2; -1 elsewhere */
    juce::String csvCellValue (std::shared_ptr<Event> event, const juce::String& key, int trackNumber);

    /** Replaces the file by `csvString` in `textEncoding`: UTF-8 with a mark and a closing zero byte, Mac OS Roman,
        Windows-1252 or ISO 8859-1 without a mark and with "?" for what they lack.
        @returns "Error writing file to " and the full path if that fails, and for any other encoding; an older file stays */
    juce::String writeCSVStringToFile (const juce::File& file);

    /** Fills `cueBySubcueMap` and `maxSubcueCount`. */
    void createCueBySubcueMap (const Events& events);

    /** Asks the user whether to go on, with the title and the text of the question. */
    using Question = std::function<bool (const juce::String& title, const juce::String& text)>;

    /** The default of `askToContinue`: an OK and Cancel box that waits for the answer. Where nobody can answer (no message
        loop, no display, or a thread whose loop nobody serves) the answer is Cancel, and the log says so: a missing file is
        noticed at once, missing markers only in the studio. */
    static bool askWithMessageBox (const juce::String& title, const juce::String& text);

    ZEP::Core::TextEncoding textEncoding = ZEP::Core::TextEncodingUTF8; ///< ISO 8859-1 after template 1
    std::vector<juce::String> columnKeys; ///< of the template, in the order of the cells
    int maxSubcueCount = -1;              ///< most subcues of one cue number, its first event not counted
    juce::String csvString;               ///< the file under work, unencoded
    int delimiter = 0;                    ///< 1 comma, 2 semicolon, 3 tab; any other number is none
    std::map<juce::String, Events> cueBySubcueMap; ///< the events of each cue number, in list order
    Question askToContinue = askWithMessageBox;    ///< asked before DS Taker loses markers

private:
    juce::String delimiterText() const;
    int templateNumber() const;
};

} // namespace ZEP::Overmarks
