// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentFormats.h"

#include "Session.h"
#include "Suggestion.h"

#include <algorithm>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

constexpr int ownTemplate = 0, dsTakerTemplate = 1, euroTakerTemplate = 2, noTemplate = -1;

bool anyEvent (const Event&) { return true; }
bool noEvent (const Event&) { return false; }
bool adrCuesOnly (const Event& event) { return event.getType() == EventTypeADRCue; }

/** What every cue sheet takes; some take more. */
std::vector<std::string> sheetOptions (const std::vector<std::string>& more = {})
{
    std::vector<std::string> options { "--by-character", "--combine", "--layout",         "--take-numbers",
                                       "--title",        "--studio",  "--supervisor",     "--company",
                                       "--timeline",     "--reel",    "--picture-version" };
    options.insert (options.end(), more.begin(), more.end());
    return options;
}

DocumentFormat csvTable()
{
    return { "csv",
             EventExportTypeCSV,
             ownTemplate,
             ".csv",
             "Cue list as a table, all columns",
             { "--by-character", "--combine", "--delimiter" },
             { Content::times, Content::types, Content::characters, Content::prefixes, Content::actors,
               Content::cueNumbers, Content::text, Content::notes, Content::engineeringNotes, Content::done,
               Content::disabled, Content::takes, Content::reasons, Content::durations, Content::tempo,
               Content::forcedNarratives },
             { Detail::castWithoutEvents, Detail::doubleStars, Detail::typographyOfText, Detail::looksOfNotes,
               Detail::breaksOfNotes, Detail::typographyOfNotes, Detail::looksOfEngineeringNotes,
               Detail::breaksOfEngineeringNotes, Detail::typographyOfEngineeringNotes,
               Detail::namelessReasons, Detail::fractionsOfTempo },
             {},
             anyEvent,
             false };
}

DocumentFormat dsTakerTable()
{
    return { "ds-taker",
             EventExportTypeCSV,
             dsTakerTemplate,
             ".csv",
             "Table for DS Taker: one row a cue number",
             { "--by-character", "--combine", "--yes" },
             { Content::times, Content::characters, Content::cueNumbers, Content::notes },
             { Detail::castWithoutEvents, Detail::foldedCues, Detail::foreignLettersOfTable,
               Detail::looksOfNotes, Detail::breaksOfNotes, Detail::typographyOfNotes,
               Detail::quotesOfNotes },
             {},
             anyEvent,
             false };
}

DocumentFormat euroTakerTable()
{
    return { "euro-taker",
             EventExportTypeCSV,
             euroTakerTemplate,
             ".csv",
             "Table for EuroTaker: the heading alone",
             { "--by-character", "--combine" },
             {},
             {},
             {},
             noEvent,
             false };
}

DocumentFormat ttalList()
{
    return { "ttal",
             EventExportTypeTTAL,
             noTemplate,
             ".ttal",
             "TTAL cue list",
             { "--by-character", "--combine", "--language" },
             { Content::times, Content::characters, Content::cueNumbers, Content::text, Content::lineBreaks,
               Content::boldAndItalic, Content::notes, Content::forcedNarratives },
             { Detail::equalNames, Detail::looksOfForcedNarratives, Detail::italicOfBold,
               Detail::looksOfNotes, Detail::regionsOfOthers },
             { Remark::rate, Remark::dropFrame, Remark::action, Remark::untimed },
             anyEvent,
             true };
}

DocumentFormat workbook()
{
    return { "xlsx",
             EventExportTypeExcel,
             noTemplate,
             ".xlsx",
             "Cue list as a workbook, with the looks of its text",
             { "--by-character", "--combine" },
             { Content::times, Content::characters, Content::prefixes, Content::actors, Content::cueNumbers,
               Content::text, Content::lineBreaks, Content::boldAndItalic, Content::otherLooks,
               Content::notes, Content::engineeringNotes, Content::done, Content::takes, Content::reasons,
               Content::forcedNarratives },
             { Detail::castWithoutEvents, Detail::quotesOfNames, Detail::typographyOfText,
               Detail::namelessReasons },
             {},
             anyEvent,
             false };
}

DocumentFormat wordSheet()
{
    return { "docx",
             EventExportTypeWord,
             noTemplate,
             ".docx",
             "Word cue sheet to print and to write on",
             sheetOptions(),
             { Content::times, Content::characters, Content::cueNumbers, Content::text, Content::lineBreaks,
               Content::boldAndItalic, Content::otherLooks, Content::notes, Content::engineeringNotes,
               Content::reasons, Content::forcedNarratives },
             { Detail::castWithoutEvents, Detail::typographyOfText, Detail::typographyOfNotes,
               Detail::typographyOfEngineeringNotes, Detail::namelessReasons, Detail::regionsOfOthers },
             {},
             anyEvent,
             false };
}

DocumentFormat ascList()
{
    return { "asc",
             EventExportTypeASC,
             noTemplate,
             ".asc",
             "ASC cue list: ADR cues in fixed columns",
             {},
             { Content::characters, Content::cueNumbers, Content::text },
             { Detail::castWithoutEvents, Detail::namesBeyond22, Detail::doubleBlanks,
               Detail::foreignLetters },
             {},
             adrCuesOnly,
             false };
}

DocumentFormat arendisScript()
{
    return { "arendis",
             EventExportTypeArendis,
             noTemplate,
             ".txt",
             "Script for Arendis in fixed columns",
             { "--title" },
             { Content::characters, Content::cueNumbers, Content::text },
             { Detail::castWithoutEvents, Detail::namesBeyond15, Detail::cueNumbersBeyond16,
               Detail::foreignLetters },
             {},
             anyEvent,
             false };
}

DocumentFormat printedSheet()
{
    return { "pdf",
             EventExportTypePDF,
             noTemplate,
             ".pdf",
             "Cue sheet for the stage",
             sheetOptions ({ "--paper", "--engine", "--browser" }),
             { Content::times, Content::characters, Content::actors, Content::cueNumbers, Content::text,
               Content::lineBreaks, Content::boldAndItalic, Content::otherLooks, Content::notes,
               Content::engineeringNotes, Content::chosenTakes, Content::reasons, Content::forcedNarratives },
             { Detail::castWithoutEvents, Detail::typographyOfText, Detail::namelessReasons },
             {},
             anyEvent,
             false };
}

DocumentFormat pageOfPrintedSheet()
{
    auto format = printedSheet();
    format.name = "html";
    format.extension = ".html";
    format.description = "Cue sheet as the page that the PDF is printed from";
    format.options = sheetOptions();
    return format;
}

} // namespace

const std::vector<DocumentFormat>& documentFormats()
{
    static const std::vector<DocumentFormat> formats { csvTable(),          dsTakerTable(),  euroTakerTable(),
                                                       ttalList(),          workbook(),      wordSheet(),
                                                       ascList(),           arendisScript(), printedSheet(),
                                                       pageOfPrintedSheet() };
    return formats;
}

std::vector<std::string> documentFormatNames()
{
    std::vector<std::string> names;

    for (const auto& format : documentFormats())
        names.push_back (format.name);

    return names;
}

const DocumentFormat& drawnCueSheet()
{
    static const DocumentFormat format {
        "pdf",
        EventExportTypePDF,
        noTemplate,
        ".pdf",
        "Cue sheet for the stage (--engine drawn)",
        sheetOptions ({ "--paper", "--engine" }),
        { Content::times, Content::characters, Content::actors, Content::cueNumbers, Content::text,
          Content::lineBreaks, Content::notes, Content::engineeringNotes, Content::chosenTakes,
          Content::reasons },
        { Detail::castWithoutEvents, Detail::looksOfNotes, Detail::looksOfEngineeringNotes,
          Detail::breaksOfEngineeringNotes },
        {},
        anyEvent,
        false
    };
    return format;
}

bool DocumentFormat::canBeByCharacter() const
{
    return std::find (options.begin(), options.end(), "--by-character") != options.end();
}

const DocumentFormat& documentFormat (const std::string& name, const std::vector<std::string>& furtherNames)
{
    for (const auto& format : documentFormats())
        if (format.name == name)
            return format;

    auto known = documentFormatNames();
    known.insert (known.end(), furtherNames.begin(), furtherNames.end());
    throw WrongUsage ("\"" + juce::String (name) + "\" is no format that can be written; there are "
                      + joined (known) + "." + didYouMean (name, known));
}

} // namespace overmarks
