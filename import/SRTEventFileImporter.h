// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <string_view>

namespace ZEP::Overmarks
{

struct SubRipBlock;

/** SubRip subtitles, ".srt": a row for each subtitle with its start, end, text and number.

        column  0         1       2     3
        title   Start TC  End TC  Text  Cue Number

    Times come as the file writes them, milliseconds included; EventRowReader makes frames of them. Where reading ends before
    the file does, the rows so far stay and no message is given, only the log tells: at a second line of a subtitle without
    " --> ", and at a last subtitle without a line break behind it, which is lost.

    Under application type 0 the line breaks of a text are written "**". The encoding concerns the text alone; the other
    cells are read as UTF-8. A file in UTF-16 gives no rows. */
class OVERMARKS_API SRTEventFileImporter final : public EventFileImporter
{
public:
    /** Reads the file, with the encoding detected. */
    SRTEventFileImporter (const juce::String& path, juce::String& errorMessage);
    ~SRTEventFileImporter() override;

    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;

private:
    [[nodiscard]] bool readBlocks (std::string_view bytes);
    void addRow (const SubRipBlock& block, bool starsForLineBreaks);
};

} // namespace ZEP::Overmarks
