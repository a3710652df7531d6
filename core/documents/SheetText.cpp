// SPDX-License-Identifier: GPL-3.0-only
//   element               meaning
//   sheetData / row       r: its number from 1; the one behind the last without, or where it is no number; a row that no sheet has is
//                         left out
//   row / c               r: its place, "B12"; the one behind the last without; a column that no sheet has is left out.
//                         s: number of its style. t: what it holds
//   c / v                 t missing or "n"   a number
//                         "s"                number of a shared text
//                         "b"                0 or 1
//                         "str"              a text, the result of a formula
//                         "e"                an error, "#N/A"
//                         "d"                a date that is written, not counted, see WrittenDates.cpp
//   c / is                "inlineStr"        a text, see WorkbookStrings.cpp
//   c / f                 the formula itself: nothing here
#include "core/documents/SheetText.h"

#include "core/documents/SheetTable.h"
#include "core/documents/UnreadableWorkbook.h"
#include "core/text/StringUtil.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace ZEP::Core
{
namespace
{

using namespace std::string_view_literals;

constexpr std::size_t bytesOfStretch = std::size_t { 1 } << 18;
constexpr auto endOfRow = "</row>"sv;

constexpr int depthOfTable = 2;
constexpr int depthOfRow = 3;
constexpr int depthOfCell = 4;
constexpr int depthOfContent = 5;

std::string_view withoutSpaceAround (std::string_view text)
{
    constexpr auto space = " \n\r\t"sv;
    const auto start = std::min (text.find_first_not_of (space), text.size());
    return text.substr (start, text.find_last_not_of (space) + 1 - start);
}

/** A number that there can be in a cell, in the way in which Orcus reads it; empty for anything else. */
std::string numberIn (std::string_view text)
{
    constexpr std::size_t mostLength = 40;

    if (text.starts_with ('+') && ! text.starts_with ("+-"sv))
        text.remove_prefix (1);

    double value = 0.0;
    const auto [end, error] = std::from_chars (text.data(), text.data() + text.size(), value);

    if (text.size() > mostLength || error != std::errc() || end != text.data() + text.size()
        || text.find_first_not_of ("0123456789+-.eE") != std::string_view::npos)
        return {};
    if (text.find_first_of ("0123456789") <= 1 && text.back() != '.') // Orcus reads neither "-.5" nor "5."
        return std::string (text);

    std::array<char, mostLength> digits {};
    return { digits.data(), std::to_chars (digits.data(), digits.data() + digits.size(), value).ptr };
}

/** Whether a row says where it stands, be it where no sheet has a row. */
bool isNumberOfRow (std::string_view text)
{
    text.remove_prefix (text.starts_with ('-') ? 1 : 0);
    return ! text.empty() && text.find_first_not_of ("0123456789"sv) == std::string_view::npos;
}

std::string lettersOfColumn (int column)
{
    std::string letters;

    for (auto rest = column + 1; rest > 0; rest = (rest - 1) / 26)
        letters.insert (letters.begin(), static_cast<char> ('A' + (rest - 1) % 26));

    return letters;
}

/** Writes the rows of a sheet anew. */
class Transcript final : public PartXML
{
public:
    Transcript (WorkbookStrings& stringsOfWorkbook, const WorkbookColours& colours,
                const WrittenDates& datesOfWorkbook, const TakeRows& takeRows, std::uint64_t bytesOfSheet)
        : strings (stringsOfWorkbook),
          dates (datesOfWorkbook),
          handOut (takeRows),
          text (colours, bytesOfSheet),
          textsLeft (SheetTable::mostCells (bytesOfSheet)),
          sharedTexts (stringsOfWorkbook.size())
    {
    }

    void handOutRest()
    {
        if (! rows.empty())
            handOut (rows);

        rows.clear();
    }

    bool isSheet = false;

private:
    void elementStarts (std::string_view name, const PartAttributes& attributes) override
    {
        if (depth() == 1)
            isSheet = name == "worksheet";
        else if (depth() == depthOfTable)
            isInTable = isSheet && name == "sheetData";
        else if (isInTable && depth() == depthOfRow)
            startRow (attributes["r"]);
        else if (isInRow && depth() == depthOfCell && name == "c")
            startCell (attributes);
        else if (isInCell && depth() == depthOfContent)
            content = name == "v" ? Content::value : name == "is" ? Content::text : Content::none;
        else if (isInCell && content == Content::text)
            text.elementStarts (name, attributes);
    }

    void elementEnds (std::string_view name) override
    {
        if (isInCell && depth() > depthOfContent && content == Content::text)
            text.elementEnds (name);
        else if (depth() == depthOfContent)
            content = Content::none;
        else if (isInCell && depth() == depthOfCell)
            endCell();
        else if (isInRow && depth() == depthOfRow)
            endRow();
    }

    void textComes (std::string_view piece) override
    {
        if (content == Content::value)
            value += piece;
        else if (content == Content::text)
            text.textComes (piece);
    }

    void startRow (std::string_view number)
    {
        const auto given = withoutSpaceAround (number);
        const auto wanted = isNumberOfRow (given) ? wholeNumber (given) : row + 1;
        isInRow = wanted > 0 && wanted <= SheetTable::mostRows;

        if (! isInRow)
            return;

        row = wanted;
        column = -1;
        rows.append ("<row r=\"").append (std::to_string (row)).append ("\">");
    }

    void endRow()
    {
        isInRow = false;
        rows += endOfRow;

        if (rows.size() >= bytesOfStretch)
            handOutRest();
    }

    void startCell (const PartAttributes& attributes)
    {
        const auto given = withoutSpaceAround (attributes["r"]);
        const auto wanted = given.empty() ? column + 1 : columnOfPlace (given);
        isInSheet = wanted >= 0 && wanted < SheetTable::mostColumns;
        column = isInSheet ? wanted : column;
        kind = attributes["t"];
        style = attributes.number ("s", 0);
        value.clear();
        isInCell = true;
    }

    void endCell()
    {
        isInCell = false;
        auto inlineText = text.take();

        if (! isInSheet)
            return;
        if (kind != "str")
            value = withoutSpaceAround (value);

        const auto number = kind.empty() || kind == "n" ? numberIn (value) : std::string();
        const bool isText = kind == "s";
        const bool isTruth = kind == "b" && ! value.empty();

        if (kind == "inlineStr")
            writeText (std::move (inlineText));
        else if (isText)
            writeCell ("s",
                       isSharedText (wholeNumber (value)) ? value : std::to_string (numberOfEmptyText()));
        else if (isTruth)
            writeCell ("b", value == "1" || value == "true" ? "1" : "0");
        else if (! number.empty())
            writeCell ("n", number);
        else
            writeText ({ StringUtil::fromUTF8 (withoutWorkbookEscapes (shownValue())), {} });
    }

    std::string shownValue() const
    {
        return kind == "d" ? dates.shown (value, static_cast<std::size_t> (style)) : value;
    }

    void writeText (CellText newText)
    {
        if (! newText.text.isEmpty() && textsLeft-- == 0)
            throw UnreadableWorkbook (WorkbookWords::isTooLarge);

        writeCell ("s", std::to_string (newText.text.isEmpty() ? numberOfEmptyText()
                                                               : strings.add (std::move (newText))));
    }

    void writeCell (std::string_view type, const std::string& number)
    {
        rows.append ("<c r=\"").append (lettersOfColumn (column)).append (std::to_string (row));
        rows.append ("\" s=\"").append (std::to_string (style)).append ("\" t=\"").append (type);
        rows.append ("\"><v>").append (number).append ("</v></c>");
    }

    /** Behind the shared texts stand those that only one cell has. */
    bool isSharedText (int number) const
    {
        return number >= 0 && static_cast<std::size_t> (number) < sharedTexts;
    }

    std::size_t numberOfEmptyText()
    {
        if (emptyText == 0)
            emptyText = strings.add ({}) + 1;

        return emptyText - 1;
    }

    enum class Content
    {
        none,
        value,
        text
    };

    WorkbookStrings& strings;
    const WrittenDates& dates;
    const TakeRows& handOut;
    CellTextBuilder text;
    std::uint64_t textsLeft; ///< that cells don't share
    std::string rows;
    std::string value;
    std::string kind;
    const std::size_t sharedTexts;
    std::size_t emptyText = 0; ///< its number and one
    int row = 0;               ///< from 1
    int column = -1;           ///< from 0
    int style = 0;
    bool isInTable = false;
    bool isInRow = false; ///< one that a sheet has
    bool isInCell = false;
    bool isInSheet = false; ///< the cell
    Content content = Content::none;
};

void handOutAsTheyAre (std::string_view rows, const TakeRows& take)
{
    while (rows.size() > bytesOfStretch)
    {
        const auto end = rows.find (endOfRow, bytesOfStretch);

        if (end == std::string_view::npos)
            break;

        take (rows.substr (0, end + endOfRow.size()));
        rows.remove_prefix (end + endOfRow.size());
    }

    take (rows);
}

} // namespace

int columnOfPlace (std::string_view place)
{
    int column = 0;

    for (const char sign : place)
    {
        const char letter = sign >= 'a' && sign <= 'z' ? static_cast<char> (sign - 'a' + 'A') : sign;

        if (letter < 'A' || letter > 'Z')
            break;

        column = column * 26 + (letter - 'A' + 1);

        if (column > SheetTable::mostColumns)
            return -1;
    }

    return column - 1;
}

void handOutRows (std::string_view xml, WorkbookStrings& strings, const WorkbookColours& colours,
                  const WrittenDates& dates, const TakeRows& take)
{
    if (const auto rows = plainRows (xml); rows.data() != nullptr)
        return handOutAsTheyAre (rows, take);

    Transcript transcript (strings, colours, dates, take, xml.size());
    transcript.take (xml);
    transcript.finish();
    transcript.handOutRest();
}

} // namespace ZEP::Core
