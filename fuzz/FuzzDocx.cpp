// SPDX-License-Identifier: GPL-3.0-only
// A Word document from a stranger, given to the tool's reader in memory. An input that is no archive is taken for the body of a
// document, so that the walk through its elements is reached without guessing a ZIP file first.
#include "CharacterText.h"
#include "Failure.h"
#include "ImportedCue.h"
#include "SheetJSON.h"
#include "WordContent.h"
#include "WordImport.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
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
        if (run.start < covered || run.end <= run.start || run.end > length)
            std::abort();

        covered = run.end;
    }

    if (cleaned (text.text) != text.text)
        std::abort();
}

void checkCues (const std::vector<ImportedCue>& cues)
{
    for (const auto& cue : cues)
    {
        check (cue.text);
        check (cue.notes);
        check (cue.engineeringNotes);
    }

    const auto json = cueListJSON (cues);

    if (json.find ('\n') != json.size() - 1)
        std::abort();
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
    const std::string_view bytes (static_cast<const char*> (static_cast<const void*> (data)), size);

    unlessRefused ([bytes] { checkCues (cuesOfWordDocument (bytes)); });
    unlessRefused ([bytes] { checkCues (cuesOfContent (readWordContent (std::string (bytes), {}))); });
    unlessRefused ([bytes] { static_cast<void> (sheetFromJSON (bytes)); });
    return 0;
}
