// SPDX-License-Identifier: GPL-3.0-only
// What nearly all sheets are made of, and nothing else:
//
//   <row r="12" ...>                            other attributes as they like, unless they need a prefix but x14ac
//   <c r="B12" s="3" t="s"><v>17</v></c>        t is s, n, b or missing; s, and others but it, may be missing
//   <c r="C12" s="3"/>                          s is not 0
//   </row>
#include "core/documents/SheetTable.h"
#include "core/documents/SheetText.h"

#include <algorithm>
#include <cstring>

namespace ZEP::Core
{
namespace
{

using namespace std::string_view_literals;

constexpr auto startOfRows = "<sheetData>"sv;
constexpr auto endOfRows = "</sheetData>"sv;
constexpr auto prefixThatMayBe = "x14ac:"sv;
constexpr std::size_t mostDigits = 7; // of a row, and of a style

bool isDigit (char byte) { return byte >= '0' && byte <= '9'; }
bool isCapital (char byte) { return byte >= 'A' && byte <= 'Z'; }
bool isSpace (char byte) { return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t'; }
bool isOfName (char byte) { return isCapital (byte) || isDigit (byte) || (byte >= 'a' && byte <= 'z'); }
bool isOfValue (char byte) { return isOfName (byte) || std::strchr (" .:_-", byte) != nullptr; }

bool isDigits (std::string_view text)
{
    return ! text.empty() && text.size() <= mostDigits && std::all_of (text.begin(), text.end(), isDigit);
}

/** A place of the row with these digits. */
bool isPlace (std::string_view place, std::string_view row)
{
    const auto letters =
        static_cast<std::size_t> (std::find_if_not (place.begin(), place.end(), isCapital) - place.begin());
    return letters > 0 && letters <= 3 && place.substr (letters) == row;
}

/** Goes through the rows from front to back. */
class Walk final
{
public:
    explicit Walk (std::string_view rows) : at (rows.data()), end (rows.data() + rows.size()) {}

    bool isPlain()
    {
        for (skipSpace(); at < end; skipSpace())
            if (! takeRow())
                return false;

        return true;
    }

private:
    /** What is known of the attributes of an element. */
    struct Attributes
    {
        std::string_view place;
        std::string_view kind;
        std::string_view style;
        bool isWhole = false; ///< the element is empty
    };

    void skipSpace()
    {
        while (at < end && isSpace (*at))
            ++at;
    }

    bool take (std::string_view text)
    {
        if (static_cast<std::size_t> (end - at) < text.size()
            || std::memcmp (at, text.data(), text.size()) != 0)
            return false;

        at += text.size();
        return true;
    }

    bool takeRow()
    {
        Attributes row;

        if (! take ("<row"sv) || ! takeAttributes (row) || ! isDigits (row.place) || row.place.front() == '0')
            return false;

        if (row.isWhole)
            return true;

        for (skipSpace(); ! take ("</row>"sv); skipSpace())
            if (! takeCell (row.place))
                return false;

        return true;
    }

    bool takeCell (std::string_view row)
    {
        Attributes cell;

        if (! take ("<c"sv) || ! takeAttributes (cell) || ! isPlace (cell.place, row))
            return false;
        if (! cell.style.empty() && ! isDigits (cell.style))
            return false;
        if (cell.isWhole) // Orcus tells of an empty cell only if it has a style
            return cell.style.find_first_not_of ('0') != std::string_view::npos;

        const bool isText = cell.kind == "s"sv || cell.kind == "b"sv;
        const bool isNumber = cell.kind.empty() || cell.kind == "n"sv;
        return (isText || isNumber) && take ("<v>"sv) && (isText ? takeWholeNumber() : takeNumber())
               && take ("</v></c>"sv);
    }

    bool takeWholeNumber()
    {
        constexpr std::ptrdiff_t most = 9;
        const auto* start = at;

        while (at < end && isDigit (*at))
            ++at;

        return at > start && at - start <= most;
    }

    bool takeDigits()
    {
        const auto* start = at;

        while (at < end && isDigit (*at))
            ++at;

        return at > start;
    }

    bool takeNumber()
    {
        constexpr std::ptrdiff_t most = 40;
        constexpr std::ptrdiff_t mostDigitsOfPower = 2; // Orcus can't tell which numbers are too large
        const auto* start = at;
        take ("-"sv);

        if (! takeDigits() || (take ("."sv) && ! takeDigits()))
            return false;

        if (take ("E"sv) || take ("e"sv))
        {
            if (! take ("-"sv))
                take ("+"sv);

            const auto* digits = at;

            if (! takeDigits() || at - digits > mostDigitsOfPower)
                return false;
        }

        return at - start <= most;
    }

    /** Takes the attributes and the end of the tag. */
    bool takeAttributes (Attributes& attributes)
    {
        for (;;)
        {
            const auto* before = at;
            skipSpace();

            if (take (">"sv))
                return true;
            if (take ("/>"sv))
                return attributes.isWhole = true;
            if (at == before || ! takeAttribute (attributes))
                return false;
        }
    }

    bool takeAttribute (Attributes& attributes)
    {
        const bool hasPrefix = take (prefixThatMayBe);
        const auto name = takeWhile (isOfName);

        if (name.empty() || ! take ("=\""sv))
            return false;

        const auto value = takeWhile (isOfValue);

        if (name.size() == 1 && ! hasPrefix)
        {
            auto* known = name == "r"sv   ? &attributes.place
                          : name == "t"sv ? &attributes.kind
                          : name == "s"sv ? &attributes.style
                                          : nullptr;

            if (known == nullptr || ! known->empty() || value.empty())
                return false;

            *known = value;
        }

        return take ("\""sv);
    }

    template <typename Test>
    std::string_view takeWhile (Test test)
    {
        const auto* start = at;

        while (at < end && test (*at))
            ++at;

        return { start, static_cast<std::size_t> (at - start) };
    }

    const char* at;
    const char* end;
};

/** What stands around the rows. */
class Frame final : public PartXML
{
public:
    /** Whether a table of the sheet is open. */
    bool isInTable() const { return depth() == 2 && tables > 0; }

    int sheets = 0;
    int tables = 0;

private:
    void elementStarts (std::string_view name, const PartAttributes&) override
    {
        sheets += depth() == 1 && name == "worksheet" ? 1 : 0;
        tables += depth() == 2 && name == "sheetData" ? 1 : 0;
    }

    void elementEnds (std::string_view) override {}
};

/** Whether the table of the sheet, and no other, stands around the place where the rows were taken out: what looks like its
    beginning may be part of a comment, or of an extension. */
bool isSound (std::string_view front, std::string_view back)
{
    Frame frame;
    frame.take (front);

    if (frame.tables > 0)
        return false;

    frame.take (startOfRows);

    if (! frame.isInTable())
        return false;

    frame.take (back);
    frame.finish();
    return frame.sheets == 1 && frame.tables == 1;
}

} // namespace

std::string_view plainRows (std::string_view xml)
{
    const auto start = xml.find (startOfRows);
    const auto end = xml.rfind (endOfRows);

    if (start == std::string_view::npos || end == std::string_view::npos || end < start)
        return {};

    const auto front = start + startOfRows.size();
    const auto rows = xml.substr (front, end - front);
    return Walk (rows).isPlain() && isSound (xml.substr (0, start), xml.substr (end)) ? rows
                                                                                      : std::string_view();
}

} // namespace ZEP::Core
