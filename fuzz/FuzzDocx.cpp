// SPDX-License-Identifier: GPL-3.0-only
// A Word document from a stranger, given to the tool's reader in memory. An input that is no archive is taken for the body of a
// document, so that the walk through its elements is reached without guessing a ZIP file first, and for a sheet that is to be written.
#include "CharacterText.h"
#include "DocumentParts.h"
#include "Failure.h"
#include "ImportedCue.h"
#include "Law.h"
#include "Sheet.h"
#include "SheetDocument.h"
#include "SheetJSON.h"
#include "WordContent.h"
#include "WordImport.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace DocxHandler;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

void check (const RichText& text)
{
    const auto length = countCharacters (text.text);
    std::size_t covered = 0;

    for (const auto& run : text.runs)
    {
        law (run.start >= covered && run.end > run.start, "runs don't overlap and aren't empty");
        law (run.end <= length, "no run goes beyond its text");
        covered = run.end;
    }
}

/** A text of a document's, that is. In a sheet anything may stand: what no document can hold is left out when it is written. */
void checkRead (const RichText& text)
{
    check (text);
    law (cleaned (text.text) == text.text, "a text that was read is clean");
}

void checkCues (const std::vector<ImportedCue>& cues)
{
    for (const auto& cue : cues)
    {
        checkRead (cue.text);
        checkRead (cue.notes);
        checkRead (cue.engineeringNotes);
    }

    const auto json = cueListJSON (cues);
    law (json.find ('\n') == json.size() - 1, "a list of cues is one line");
    law (nlohmann::json::accept (json), "a list of cues is JSON");
    law (nlohmann::json::parse (json).at ("cueList").size() == cues.size(), "a list of cues tells them all");
}

/** A document of a sheet, without the pictures that it names, shows no more cues than the sheet has. */
void checkDocument (Sheet sheet)
{
    std::size_t cues = 0;

    for (auto& block : sheet.blocks)
        for (auto& cue : block)
        {
            cue.characterIcon = cue.inPointIcon = cue.outPointIcon = {};
            check (cue.text.text);
            check (cue.notes.text);
            check (cue.engineeringNotes.text);
            ++cues;
        }

    if (sheet.footer.has_value())
        sheet.footer->icon = {};

    const auto document = wordDocument (sheet, { {}, "en-GB", 0 }, [] (double) {});

    try
    {
        const auto read = cuesOfWordDocument (document);
        checkCues (read);
        law (read.size() <= cues, "a document shows no more cues than its sheet has");
    }
    catch (const Failure& failure)
    {
        law (std::string_view (failure.what()).ends_with ("holds no cues"), "a document of ours can be read");
    }
}

template <typename Work>
void unlessRefused (Work&& work)
{
    try
    {
        work();
    }
    catch (const Failure&)
    {
        return; // in words, as it should be
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    const auto bytes = bytesOfInput (data, size);

    unlessRefused ([bytes] { checkCues (cuesOfWordDocument (bytes)); });
    unlessRefused ([bytes] { checkCues (cuesOfContent (readWordContent (std::string (bytes), {}))); });
    unlessRefused ([bytes] { checkDocument (sheetFromJSON (bytes)); });
    return 0;
}
