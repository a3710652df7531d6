// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "import/DocxCueList.h"
#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace ZEP::Overmarks
{

/** Reads Word cue sheets as the Word exporter writes them, also after somebody has edited them.

    parse() has the program docxHandler of the resource folder find the cues (export/word/DocxHandlerProtocol.h):

        column  0         1       2          3     4           5      6                  7       8                 9
        title   Start TC  End TC  Character  Text  Cue Number  Notes  Engineering Notes  Reason  Forced Narrative  FN Region

    parseFileContent() is a second way in, for whoever has the plain text of such a document, and fills columns 0 to 7. After a
    title page that ends with a form feed the text is a row of cues:

        START<U+2028>END<separator>CHARACTER\nCUE NUMBER\nTEXT[\nNotes\n...][\nEng. Notes\n...][\nReason\n...]

    with perhaps the printed boxes of the take numbers behind, fifty short lines that are no part of the cue.

    The rules that callers get wrong: a message of this importer replaces what stood in the caller's string; rows are added to
    those that are there; a list of cues that an earlier run left in the temporary folder is read in the place of the document; and
    of a text with n cues only the first n - 1 are found. parse() waits for the tool as long as it takes. */
class OVERMARKS_API DublaneDocxEventFileImporter final : public EventFileImporter
{
public:
    using RichTextString = Core::RichTextString; ///< a cell

    DublaneDocxEventFileImporter (const juce::String& path, juce::String& errorMessage); ///< Reads the file.
    ~DublaneDocxEventFileImporter() override;

    /** Adds the cues of the document; the encoding makes no difference. A list of cues that can't be understood has no message, but
        the log tells, and `outcome` and `refusal`. */
    void parse (juce::String& errorMessage, Core::TextEncoding textEncoding) override;
    [[nodiscard]] bool userMappingEnabled() const override;
    [[nodiscard]] int type() override;

    /** Adds the cues of a text. @param content  loses its title page */
    void parseFileContent (RichTextString& content);

    /** The cues of a text without its title page, from the timecodes up to the character before the next ones. What follows the
        last timecodes is no cue. */
    [[nodiscard]] std::vector<RichTextString> parseCueBlocks (const RichTextString& content);

    /** The cue up to the boxes of its take numbers. */
    [[nodiscard]] RichTextString shortenCueStringByTakeNumberBoxes (const RichTextString& cue);

    /** Takes what every cue begins with. @returns what follows it */
    [[nodiscard]] RichTextString parseMandatoryTokensFromCueString (RichTextString cue, juce::String& startTC,
                                                                    juce::String& endTC,
                                                                    juce::String& character,
                                                                    juce::String& cueNumber);

    /** Splits the rest at its headings. How many of the three there are decides where it is split, not which: a cue with engineering
        notes alone loses its text to the notes. What there is no heading for keeps its value. */
    void parseOptionalTokensFromCueString (const RichTextString& cue, RichTextString& text,
                                           RichTextString& notes, RichTextString& engineeringNotes,
                                           juce::String& reason);

    DocxCueList::Outcome outcome =
        DocxCueList::Outcome::whole; ///< of the last list of cues that parse() has looked into
    juce::String refusal;            ///< why rows of that list were left out; empty unless they were

    /** What the log says behind a refusal. */
    static constexpr auto restIsLeftOut = "; the rest is left out";

private:
    void assignColumns (int number);
};

} // namespace ZEP::Overmarks
