// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"

#include <string>
#include <vector>

namespace DocxHandler
{

/** A cue as a document shows it. What it doesn't show is empty. */
struct ImportedCue
{
    std::string inPoint;
    std::string outPoint;
    std::string character;
    std::string number;
    std::string reason;
    std::string region;
    RichText text;
    RichText notes;
    RichText engineeringNotes;

    bool operator== (const ImportedCue&) const = default;
};

/** The cues as one JSON object on one line, {"cueList": [...]}; in ASCII, so that no reader can mistake its encoding. What is empty
    is left out, but for the texts. */
[[nodiscard]] std::string cueListJSON (const std::vector<ImportedCue>& cues);

} // namespace DocxHandler
