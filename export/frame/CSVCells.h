// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** What becomes of the quotes of a text that goes into a quoted cell. */
enum class CSVQuotes
{
    kept,    ///< as they are; may end the cell early
    doubled, ///< as delimited text wants it
    removed  ///< left out
};

/** What becomes of the line breaks of a text. */
enum class CSVBreaks
{
    kept,              ///< a cell may have several lines
    lineFeedsToBlanks, ///< carriage returns stay
    toBlanks           ///< each of carriage return and line feed becomes a blank
};

/** What becomes of a text before it stands in a cell. */
struct CSVTextRule
{
    CSVQuotes quotes = CSVQuotes::kept; ///< of the text, not those around the cell
    CSVBreaks breaks = CSVBreaks::kept; ///< of either kind
    bool withoutDoubleStars = false;    ///< "**", which stands for a line break in imported lists, goes

    [[nodiscard]] constexpr bool keepsAll() const noexcept ///< Whether any text stays as it is.
    {
        return quotes == CSVQuotes::kept && breaks == CSVBreaks::kept && ! withoutDoubleStars;
    }
};

/** The UTF-8 bytes of a text, valid as long as the text is. */
[[nodiscard]] inline std::string_view utf8 (const juce::String& text)
{
    return text.getCharPointer().getAddress();
}

/** Writes the cells of a delimited table, each followed by its delimiter, behind a text that the caller holds. */
class OVERMARKS_API CSVCells final
{
public:
    /** @param destination  outlives this object */
    CSVCells (std::string& destination, std::string_view delimiter)
        : out (destination),
          quoteAndDelimiter ("\"" + std::string (delimiter))
    {
    }

    /** The text between quotes, and the delimiter. */
    void quoted (std::string_view text, CSVTextRule rule = {});

    /** The text as it stands, and the delimiter. */
    void plain (std::string_view text);

    void number (int value); ///< In digits, without quotes.

    /** The text of a row's last cell, which has no delimiter behind it. */
    void last (std::string_view text);

private:
    void append (std::string_view text, CSVTextRule rule);

    std::string& out;
    std::string quoteAndDelimiter; // what most cells end with
};

} // namespace ZEP::Overmarks
