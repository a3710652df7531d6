// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/frame/EventFileImporter.h"
#include "import/frame/ReadingFailure.h"

#include <juce_core/juce_core.h>

#include <string>

namespace ZEP::Overmarks
{

/** A dBase table, ".dbf", as dubbing databases write their cue lists.

    Row 0 of the table holds the names of the fields, from which the columns are guessed (DBFFile tells how); the guess is a
    proposal that the user may correct. A last column says that every row is an ADR cue.

    The rule that surprises: all blanks are taken out of every cell, those between the words of a text among them.

    There are no messages: a bad file gives an empty or a short table, and the log tells what was left out. */
class OVERMARKS_API DBFEventFileImporter final : public EventFileImporter, public ReadingFailure
{
public:
    /** Reads the file. The first cell with a byte above 127 shows how the text is encoded. */
    DBFEventFileImporter (const juce::String& path, juce::String& errorMessage);
    ~DBFEventFileImporter() override;

    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;
};

} // namespace ZEP::Overmarks
