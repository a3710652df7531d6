// SPDX-License-Identifier: GPL-3.0-only
//   element            meaning
//   sst / si           a text that cells share
//   c / is             a text of one cell
//   si, is / t         all of the text
//          / r / t     a run of it, with the look of rPr or else of the cell
//          / r / rPr   see CellLook.cpp
//          / rPh / t   how to read a Japanese text: no part of it
#include "core/documents/WorkbookStrings.h"

#include "core/documents/SheetTable.h"
#include "core/documents/UnreadableWorkbook.h"
#include "core/text/TextDecoding.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace ZEP::Core
{
namespace
{

constexpr std::size_t lengthOfEscape = 7; // _x000D_

/** The number of an escape at the front of a text; nothing where there is none. */
std::optional<std::uint32_t> escapeAt (std::string_view text)
{
    if (text.size() < lengthOfEscape || ! text.starts_with ("_x") || text[lengthOfEscape - 1] != '_')
        return std::nullopt;

    std::uint32_t number = 0;
    const auto* end = text.data() + lengthOfEscape - 1;
    const auto result = std::from_chars (text.data() + 2, end, number, 16);
    return result.ec == std::errc() && result.ptr == end ? std::optional (number) : std::nullopt;
}

bool isFirstHalf (std::uint32_t number) { return number >= 0xD800 && number < 0xDC00; }
bool isSecondHalf (std::uint32_t number) { return number >= 0xDC00 && number < 0xE000; }

void append (std::string& text, std::uint32_t character)
{
    const auto byte = [&text] (std::uint32_t value) { text += static_cast<char> (value); };

    if (character < 0x80)
        return byte (character);

    if (character < 0x800)
    {
        byte (0xC0 | character >> 6);
        return byte (0x80 | (character & 0x3F));
    }

    if (character < 0x10000)
    {
        byte (0xE0 | character >> 12);
    }
    else
    {
        byte (0xF0 | character >> 18);
        byte (0x80 | (character >> 12 & 0x3F));
    }

    byte (0x80 | (character >> 6 & 0x3F));
    byte (0x80 | (character & 0x3F));
}

/** Appends what an escape at the front of a text stands for. Returns how much of the text that was; 0 for nothing. */
std::size_t appendEscape (std::string& result, std::string_view text)
{
    const auto number = escapeAt (text);

    if (! number.has_value() || isSecondHalf (*number))
        return 0;

    if (! isFirstHalf (*number))
    {
        if (*number != 0)
            append (result, *number);

        return lengthOfEscape;
    }

    const auto second = escapeAt (text.substr (lengthOfEscape));

    if (! second.has_value() || ! isSecondHalf (*second))
        return 0;

    append (result, 0x10000 + ((*number - 0xD800) << 10) + (*second - 0xDC00));
    return 2 * lengthOfEscape;
}

int numberOfCharacters (std::string_view bytes)
{
    return static_cast<int> (std::count_if (bytes.begin(), bytes.end(),
                                            [] (char byte)
                                            { return (static_cast<unsigned char> (byte) & 0xC0) != 0x80; }));
}

/** Takes one of so many. */
void takeOneOf (std::uint64_t& left)
{
    if (left == 0)
        throw UnreadableWorkbook (WorkbookWords::isTooLarge);

    --left;
}

} // namespace

std::string withoutWorkbookEscapes (std::string_view text)
{
    std::string result;

    while (! text.empty())
    {
        const auto underscore = std::min (text.find ('_'), text.size());
        result += text.substr (0, underscore);
        text.remove_prefix (underscore);

        if (text.empty())
            break;

        auto length = appendEscape (result, text);

        if (length == 0)
        {
            result += text.front();
            length = 1;
        }

        text.remove_prefix (length);
    }

    return result;
}

//==============================================================================
RichTextString CellText::inCell (const CellLook& cell, const WorkbookFonts& fonts) const
{
    if (text.isEmpty() || (runs.empty() && fonts.isPlain (cell)))
        return RichTextString (text);

    if (runs.empty())
    {
        juce::AttributedString whole;
        whole.append (text, fonts.fontOf (cell), fonts.colourOf (cell));
        return RichTextString (whole);
    }

    std::vector<RichTextString::Attribute> attributes;
    int start = 0;

    for (const auto& run : runs)
    {
        const auto& look = run.look.has_value() ? *run.look : cell;

        if (! fonts.isPlain (look))
            attributes.push_back (
                { { start, start + run.length }, fonts.fontOf (look), fonts.colourOf (look) });

        start += run.length;
    }

    RichTextString rich (text);
    rich.applyAttributes (attributes);
    rich.setText (text); // the same, but shared by all cells
    return rich;
}

//==============================================================================
CellTextBuilder::CellTextBuilder (const WorkbookColours& coloursOfWorkbook, std::uint64_t bytes)
    : colours (coloursOfWorkbook),
      runsLeft (SheetTable::mostRuns (bytes))
{
}

void CellTextBuilder::elementStarts (std::string_view name, const PartAttributes& attributes)
{
    if (isInLook)
    {
        applyToLook (*look, name, attributes, colours);
    }
    else if (name == "rPr")
    {
        look.emplace();
        isInLook = true;
    }
    else if (name == "rPh")
    {
        ++phonetic;
    }
    else if (name == "t")
    {
        isInText = phonetic == 0;
    }
    else if (name == "r")
    {
        look.reset();
    }
}

void CellTextBuilder::elementEnds (std::string_view name)
{
    if (isInLook)
        isInLook = name != "rPr";
    else if (name == "rPh")
        --phonetic;
    else if (name == "r")
        look.reset();
    else if (name == "t" && std::exchange (isInText, false))
        addPiece();
}

void CellTextBuilder::textComes (std::string_view text)
{
    if (isInText)
        piece += text;
}

void CellTextBuilder::addPiece()
{
    if (piece.find ("_x") != std::string::npos)
        piece = withoutWorkbookEscapes (piece);

    hasLook = hasLook || look.has_value();

    if (piece.empty())
        return;

    if (! runs.empty() && runs.back().look != look)
        takeOneOf (runsLeft);
    if (runs.empty() || runs.back().look != look)
        runs.push_back ({ 0, look });

    runs.back().length += static_cast<int> (piece.size());
    all += piece;
    piece.clear();
}

CellText CellTextBuilder::take()
{
    constexpr std::size_t largeBytes = 1024;
    constexpr std::size_t largeRuns = 8;
    CellText result;
    result.isLarge = all.size() > largeBytes || runs.size() > largeRuns;
    result.text = textFromStrictUTF8 (all); // the parser lets nothing else through

    if (hasLook)
    {
        std::size_t start = 0;

        for (auto& run : runs)
        {
            const auto bytes = static_cast<std::size_t> (run.length);
            run.length = numberOfCharacters (std::string_view (all).substr (start, bytes));
            start += bytes;
        }

        result.runs = std::move (runs);
    }

    all.clear();
    runs.clear();
    hasLook = false;
    isInText = false;
    isInLook = false;
    phonetic = 0;
    look.reset();
    return result;
}

//==============================================================================
WorkbookStrings::WorkbookStrings (const WorkbookColours& colours, std::uint64_t bytes)
    : builder (colours, bytes),
      textsLeft (SheetTable::mostCells (bytes))
{
}

const CellText& WorkbookStrings::operator[] (std::size_t number) const
{
    return number < texts.size() ? texts[number] : nothing;
}

std::size_t WorkbookStrings::add (CellText text)
{
    texts.push_back (std::move (text));
    return texts.size() - 1;
}

void WorkbookStrings::elementStarts (std::string_view name, const PartAttributes& attributes)
{
    if (depth() > 2)
        builder.elementStarts (name, attributes);
}

void WorkbookStrings::elementEnds (std::string_view name)
{
    if (depth() > 2)
        builder.elementEnds (name);
    else if (depth() == 2 && name == "si")
    {
        takeOneOf (textsLeft);
        texts.push_back (builder.take());
    }
}

void WorkbookStrings::textComes (std::string_view text)
{
    if (depth() > 2)
        builder.textComes (text);
}

} // namespace ZEP::Core
