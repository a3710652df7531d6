// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/frame/EventFileImporter.h"
#include "import/frame/ReadingFailure.h"

#include <juce_core/juce_core.h>

#include <iosfwd>
#include <string_view>

namespace ZEP::Overmarks
{

/** Subtitles in ".stl" files, an extension that two formats share: binary files as broadcasters exchange them (EBU Tech 3264),
    and lists in plain text as disc authors write them. The fourth to sixth byte tell: "STL" makes a file binary.

        column  0         1       2
        title   Start TC  End TC  Text

    Every block of a binary file is a row, also those that continue a subtitle; times are timecodes, copied frame by frame
    whatever the file's own frame rate is.

    There are no messages: a bad file gives an empty or a short table, and the log tells what was left out. */
class OVERMARKS_API STLEventFileImporter final : public EventFileImporter, public ReadingFailure
{
public:
    /** Reads the file. A binary one is read as ASCII, the encoding of a text is detected. */
    STLEventFileImporter (const juce::String& path, juce::String& errorMessage);
    ~STLEventFileImporter() override;

    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;

    /** Adds the rows of a binary file. TextEncodingUnknown means ASCII. Text can't be read as Mac OS Roman: its cells come
        out empty. */
    void parseEBUN19STLFile (Core::TextEncoding textEncoding);

    /** Adds the rows of a list in text. */
    void parseASCIISTLFile (Core::TextEncoding textEncoding);

private:
    void readBlocks (std::istream& stream, int promised);
    void readLines (std::string_view bytes, Core::TextEncoding& lineEncoding);
    void addRow (juce::String start, juce::String end, juce::String text);
    void fail (const juce::String& reason);
    void note (const juce::String& whatWasLeftOut) const;
};

} // namespace ZEP::Overmarks
