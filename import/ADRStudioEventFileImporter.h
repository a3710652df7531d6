// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <vector>

namespace ZEP::Overmarks
{

/** ADR Studio, ".xml": a cue list as a property list. Every row is a cue of seven cells, the first row too; the columns are a
    proposal that the user may correct.

    A cue that is open ended ends where it starts, unless the preference EventImportIgnoreOpenEnded says otherwise. Line breaks
    of the dialogue become "**".

    The rule that is easily missed: a value is decoded by the encoding of the file and keeps as many bytes as it has
    characters, so a text in UTF-8 with letters beyond ASCII loses its end. The message is added to; on failure the rows that
    were made so far stay, and `columnMap` is empty. */
class OVERMARKS_API ADRStudioEventFileImporter final : public EventFileImporter
{
public:
    /** Reads the file, with the encoding detected. */
    ADRStudioEventFileImporter (const juce::String& path, juce::String& errorMessage);
    ~ADRStudioEventFileImporter() override;

    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;

private:
    [[nodiscard]] bool readCues (const juce::XmlElement& cues, std::size_t fileBytes,
                                 bool charactersAreBytes);
    [[nodiscard]] std::vector<Core::RichTextString> rowOf (const juce::XmlElement& cue, bool ignoreOpenEnded,
                                                           bool charactersAreBytes);
    [[nodiscard]] juce::String decodedValue (const juce::XmlElement& value, bool charactersAreBytes);
};

} // namespace ZEP::Overmarks
