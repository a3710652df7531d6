// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/documents/CellLook.h"
#include "core/documents/PartXML.h"

#include <cstdint>
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
class ZEP_CORE_API CellTextBuilder final
{
public:
    /** The colours outlive this. */
    explicit CellTextBuilder (const WorkbookColours& coloursOfWorkbook) : colours (coloursOfWorkbook) {}

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
    bool isInText = false;
    bool isInLook = false;
    bool hasLook = false;
    int phonetic = 0;
};

/** The texts that the cells of a workbook share, in the order of their numbers. Read with take() and finish().

    They are read here and not with the library that reads the cells, since that one takes the phonetic helps for the text,
    gives a text that is empty the one before it, and knows half of the attributes. */
class ZEP_CORE_API WorkbookStrings final : public PartXML
{
public:
    explicit WorkbookStrings (const WorkbookColours& colours) : builder (colours) {} ///< Refers to them.

    [[nodiscard]] std::size_t size() const noexcept { return texts.size(); } ///< Texts read so far.

    /** The text with a number; an empty one where there is none. */
    [[nodiscard]] const CellText& operator[] (std::size_t number) const;

    /** Adds a text that no cell shares. Returns its number. */
    std::size_t add (CellText text);

private:
    void elementStarts (std::string_view name, const PartAttributes& attributes) override;
    void elementEnds (std::string_view name) override;
    void textComes (std::string_view text) override;

    CellTextBuilder builder;
    std::vector<CellText> texts;
    CellText nothing;
};

/** The text without its escapes: "_x000D_" is the character with this number, "_x005F_" the underscore of what only looks
    like one. Characters that no text can have are left out, or as they are. */
[[nodiscard]] ZEP_CORE_API std::string withoutWorkbookEscapes (std::string_view text);

} // namespace ZEP::Core
