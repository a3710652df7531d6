// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/CellLook.h"
#include "core/documents/PartXML.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace ZEP::Core
{

/** A text of a workbook before it stands in a cell, whose own look shows where the text has none. */
struct CellText
{
    /** Neighbouring characters of one look. */
    struct Run
    {
        int length;                   ///< in characters
        std::optional<CellLook> look; ///< none for the cell's own
    };

    juce::String text;     ///< all characters, without looks
    std::vector<Run> runs; ///< none for a text without attributes; else they cover it all
    bool isLarge = false;  ///< worth being made once for all cells that share it
    /** With the cell's look where the text has none. */
    [[nodiscard]] RichTextString inCell (const CellLook& cell, const WorkbookFonts& fonts) const;
};

/** Puts a text together from the elements within an "si" or "is".

    Phonetic helps, which tell how to read a Japanese text, are left out. */
class CellTextBuilder final
{
public:
    /** The colours outlive this.
        @param bytes  of the part that the texts stand in: they may have as many runs, beyond the first of each, as
                      SheetTable::mostRuns() says for it; an UnreadableWorkbook is thrown for more */
    explicit CellTextBuilder (const WorkbookColours& coloursOfWorkbook, std::uint64_t bytes = 0);

    void elementStarts (std::string_view name, const PartAttributes& attributes); ///< An element in the text.
    void elementEnds (std::string_view name);                                     ///< The end of the element.
    void textComes (std::string_view text); ///< UTF-8; what stands outside "t" is no text.

    /** The text that has been put together; the builder begins anew. */
    [[nodiscard]] CellText take();

private:
    void addPiece();

    const WorkbookColours& colours;
    std::string piece; ///< of the open "t"
    std::string all;
    std::vector<CellText::Run> runs; ///< their lengths still in bytes
    std::optional<CellLook> look;    ///< of the open run
    std::uint64_t runsLeft;
    bool isInText = false;
    bool isInLook = false;
    bool hasLook = false;
    int phonetic = 0;
};

/** The texts that the cells of a workbook share, in the order of their numbers. Read with take() and finish().

    They are read here and not with the library that reads the cells, since that one takes the phonetic helps for the text,
    gives a text that is empty the one before it, and knows half of the attributes. */
class WorkbookStrings final : public PartXML
{
public:
    /** Refers to the colours.
        @param bytes  of the part: there may be as many texts as SheetTable::mostCells() says for it, and runs in them */
    explicit WorkbookStrings (const WorkbookColours& colours, std::uint64_t bytes = 0);

    [[nodiscard]] std::size_t size() const noexcept { return texts.size(); } ///< Texts read so far.

    /** The text with a number; an empty one where there is none. */
    [[nodiscard]] const CellText& operator[] (std::size_t number) const;

    /** Adds a text that no cell shares, however many there are. Returns its number. */
    std::size_t add (CellText text);

private:
    void elementStarts (std::string_view name, const PartAttributes& attributes) override;
    void elementEnds (std::string_view name) override;
    void textComes (std::string_view text) override;

    CellTextBuilder builder;
    std::deque<CellText> texts; ///< of millions none is ever moved
    std::uint64_t textsLeft;
    CellText nothing;
};

/** The text without its escapes: "_x000D_" is the character with this number, "_x005F_" the underscore of what only looks
    like one. Characters that no text can have are left out, or as they are. */
[[nodiscard]] std::string withoutWorkbookEscapes (std::string_view text);

} // namespace ZEP::Core
