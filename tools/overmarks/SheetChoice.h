// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <vector>

namespace overmarks
{

/** The sheets of a workbook. */
struct SheetReport
{
    std::vector<juce::String> names; ///< in their order
    juce::String sheetRead;          ///< the one that the rows are of

    /** 'the sheet "Cues" is read; the workbook also has Cast', or the first half where it is the only one. */
    juce::String words() const;
};

/** Has an importer of workbooks read the wanted sheet. Wrong usage if the workbook has none of that name.
    @param option  that names it, for people: "--sheet"
    @param wanted  empty for the one in front
    @param error   of the importer, which may be about the sheet in front
    @returns nothing for other formats, and for a workbook that can't be read */
std::optional<SheetReport> readWantedSheet (ZEP::Overmarks::EventFileImporter& importer,
                                            const std::string& option, const std::string& wanted,
                                            juce::String& error);

} // namespace overmarks
