// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace ZEP::Overmarks
{

/** The cues that docxHandler has found in a document, as a table.

        {"cueList": [{"startTC", "endTC", "charName", "cueNumber", "reason", "forcedNarrativeRegion": strings,
                      "text", "note", "engineeringNotes": rich texts}]}
        rich text: {"text": string,
                    "fontAttributeList":   [{"range_start", "range_end", "font_type": juce::Font style flags}],
                    "colourAttributeList": [{"range_start", "range_end", "colour": {"red", "green", "blue"}}]}

        column  0         1       2          3     4           5      6                  7       8                 9
        title   Start TC  End TC  Character  Text  Cue Number  Notes  Engineering Notes  Reason  Forced Narrative  FN Region

    What is missing is empty, but for timecodes, which are "--:--:--:--". The text may be any: it holds what a stranger wrote. */
class DocxCueList final
{
public:
    using Row = std::vector<Core::RichTextString>; ///< ten cells

    static constexpr int numberOfColumns = 10; ///< what every row has
    static const juce::StringArray& titles();  ///< In the order of the columns.

    /** How the list could be read. */
    enum class Outcome
    {
        whole,    ///< every cue has a row
        cutOff,   ///< it asks for more cells than any cue list has
        noCueList ///< the text is no JSON, or holds no list of cues
    };

    /** Adds a row for each cue. */
    static Outcome addRows (const juce::String& json, std::vector<Row>& rows);

    /** A rich text of the list; empty for what is no object. */
    [[nodiscard]] static Core::RichTextString richTextOf (const juce::var& value);

    /** The cell of column 9: the first of left, right, top and bottom that the text holds in whatever case, "Bottom" for any other
        text, and empty for none. */
    [[nodiscard]] static juce::String regionOf (const juce::String& text);
};

} // namespace ZEP::Overmarks
