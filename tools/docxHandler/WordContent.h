// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"
#include "SheetStyles.h"

#include <string>
#include <variant>
#include <vector>

namespace DocxHandler
{

/** Puts a rich text together from left to right. */
class RichTextBuilder final
{
public:
    void append (std::string_view text, const Look& look);
    void append (const RichText& text);

    /** The same on a line of its own, where both it and what is there already hold something. */
    void appendLine (const RichText& text);

    [[nodiscard]] RichText take() { return std::move (result); }
    [[nodiscard]] bool isEmpty() const noexcept { return result.text.empty(); }

private:
    RichText result;
    std::size_t length = 0; ///< in characters
};

/** A paragraph as it is read: what its style says it holds, and its text as it would be printed. Deleted text of tracked changes
    is gone, inserted text is there. */
struct Paragraph
{
    Field field = Field::none;
    RichText text;
    bool isNested = false;  ///< stands in a table within the cell
    bool joinsNext = false; ///< its end was deleted, so that the next paragraph goes on in it

    [[nodiscard]] bool isBlank() const;
};

struct Cell
{
    int column = 0;
    int span = 1;                ///< the columns that it covers
    bool continuesAbove = false; ///< merged with the cell above it, which has the content
    std::vector<Paragraph> paragraphs;

    [[nodiscard]] bool isBlank() const;
};

struct Row
{
    std::vector<Cell> cells;
};

struct Table
{
    std::vector<Row> rows;
    bool isPartOfCell = false; ///< its text is in the cell that holds it, too
};

/** What a document holds, in its order. A table within a cell follows the table that holds it, and its text is in that cell too,
    but for whole blocks of a cue sheet: those are cues of their own. */
struct WordContent
{
    std::vector<std::variant<Paragraph, Table>> blocks;
};

/** The text of some paragraphs, a line feed between two; blank paragraphs at both ends are left out. */
[[nodiscard]] RichText joinedText (const std::vector<Paragraph>& paragraphs);

/** What the parts of a document hold. Throws a Failure whose words go on after the file's name.
    @param styles  the part with the styles; may be empty */
[[nodiscard]] WordContent readWordContent (std::string document, std::string styles);

} // namespace DocxHandler
