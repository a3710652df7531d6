// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** TTAL, ".ttal": a timed list of dialogue with its cast, as JSON (list/TTALFormat.h).

    Every row has eight cells, and the columns are given. Times are frames in the file; the rows have them as timecodes of the
    project, counted from its time origin. `characterMap` is the file's cast with the file's identifiers. It is the one format
    that tells its language.

    The rules that callers get wrong: the message is added to, and rows that were made before a failure stay; parse() adds its
    rows to those that are there already, with a new `characterMap`. The text encoding that it is given plays no part: a mark
    shows UTF-8 or UTF-16, and without one the text is UTF-8, or Windows-1252 where it can't be. */
class OVERMARKS_API TTALEventFileImporter final : public EventFileImporter
{
public:
    /** Reads the file.
        @param projectTime  what the frames are counted from; without one it is 00:00:00:00 at 25 frames */
    TTALEventFileImporter (const juce::String& path, juce::String& errorMessage,
                           std::shared_ptr<Core::TimeInfo> projectTime);
    ~TTALEventFileImporter() override;

    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;
    [[nodiscard]] juce::String languageCode() override;

    // Each reads one block of the file. False, and the reason is in the message, when it can't be used.
    bool parseMetaObject (juce::var& meta, juce::String& errorMessage); ///< Rate, language and form of times.
    bool parseEventsArray (juce::var& events, juce::String& errorMessage); ///< Adds a row for each event.
    /** In a new `characterMap`. */
    bool parseCharactersArray (juce::var& characters, juce::String& errorMessage);

    /** The fonts of a list of styles, in its order. A style without its range or its type is left out; one that ends before
        it starts has an empty range. */
    [[nodiscard]] std::vector<juce::AttributedString::Attribute> richTextAttributesFromStylesObject (
        juce::var styles);

    juce::var jsonRoot; ///< the file
    std::int32_t fps =
        -1; ///< FrameRateCode of the file, -1 until it was read; the rows' times don't follow it
    juce::String language; ///< empty until it was read

private:
    void assignColumns();
    bool readFile (juce::String& errorMessage);
    bool parseBlocks (juce::String& errorMessage);
    bool parseEvent (const juce::String& id, const juce::var& event, juce::String& errorMessage);
    void resolveCharacters (std::size_t firstRow, juce::String& errorMessage);
    [[nodiscard]] juce::String timecode (long frame) const;
};

} // namespace ZEP::Overmarks
