// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookCheck.h"

#include <expat.h>
#include <zip.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ZEP::Core
{

namespace
{

constexpr auto firstSheet = "xl/worksheets/sheet1.xml";
constexpr std::size_t bytesAtOnce = 1 << 16;

template <auto function>
struct Calls
{
    template <typename Pointer>
    void operator() (Pointer* pointer) const
    {
        function (pointer);
    }
};

using Archive = std::unique_ptr<zip_t, Calls<zip_discard>>;
using Part = std::unique_ptr<zip_file_t, Calls<zip_fclose>>;
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, Calls<XML_ParserFree>>;

/** Calls `take (pieces)` for the bytes of a part as they come. @returns whether all could be read */
template <typename Take>
bool readAll (zip_file_t& part, Take&& take)
{
    std::vector<char> piece (bytesAtOnce);

    for (;;)
    {
        const auto length = zip_fread (&part, piece.data(), piece.size());

        if (length <= 0)
            return length == 0;

        take (std::string_view (piece.data(), static_cast<std::size_t> (length)));
    }
}

/** A sheet without its rows: they are only counted, since they are long. */
class SheetWithoutRows final
{
public:
    explicit SheetWithoutRows (std::size_t bytesOfRows) : rows (bytesOfRows) {}

    void take (std::string_view piece)
    {
        if (! areRowsBegun)
            return takeHead (piece);

        const auto skipped = std::min (rows, piece.size());
        rows -= skipped;
        rest += piece.substr (skipped);
    }

    /** What stands around the rows, if they are as long as they should be. */
    [[nodiscard]] std::string_view whole() const
    {
        const bool areRowsWhole =
            areRowsBegun && rows == 0 && std::string_view (rest).substr (headLength).starts_with (endOfRows);
        return areRowsWhole ? std::string_view (rest) : std::string_view();
    }

private:
    static constexpr std::string_view beginOfRows = "<sheetData>";
    static constexpr std::string_view endOfRows = "</sheetData>";

    void takeHead (std::string_view piece)
    {
        rest += piece;
        const auto begin = rest.find (beginOfRows);

        if (begin == std::string::npos)
            return;

        headLength = begin + beginOfRows.size();
        areRowsBegun = true;
        const auto behind = rest.substr (headLength);
        rest.resize (headLength);
        take (behind);
    }

    std::size_t rows; ///< bytes that are still to come
    std::size_t headLength = 0;
    bool areRowsBegun = false;
    std::string rest;
};

bool isWellFormed (std::string_view xml)
{
    const Parser parser (XML_ParserCreate (nullptr));

    if (parser == nullptr)
        throw std::bad_alloc();

    return XML_Parse (parser.get(), xml.data(), static_cast<int> (xml.size()), 1) == XML_STATUS_OK;
}

Archive archiveIn (std::string_view bytes)
{
    auto* const source = zip_source_buffer_create (bytes.data(), bytes.size(), 0, nullptr);

    if (source == nullptr)
        throw std::bad_alloc();

    Archive archive (zip_open_from_source (source, ZIP_RDONLY, nullptr));

    if (archive == nullptr)
        zip_source_free (source);

    return archive;
}

bool isWhole (zip_file_t& part)
{
    std::string xml;
    return readAll (part, [&xml] (auto piece) { xml += piece; }) && isWellFormed (xml);
}

bool isWholeSheet (zip_file_t& part, std::size_t bytesOfRows)
{
    if (bytesOfRows == 0)
        return isWhole (part);

    SheetWithoutRows sheet (bytesOfRows);
    return readAll (part, [&sheet] (auto piece) { sheet.take (piece); }) && isWellFormed (sheet.whole());
}

} // namespace

bool isWholeWorkbook (std::string_view bytes, std::size_t bytesOfRows)
{
    const auto archive = archiveIn (bytes);

    if (archive == nullptr || zip_name_locate (archive.get(), firstSheet, 0) < 0)
        return false;

    const auto parts = static_cast<zip_uint64_t> (zip_get_num_entries (archive.get(), 0));

    for (zip_uint64_t i = 0; i < parts; ++i)
    {
        const Part part (zip_fopen_index (archive.get(), i, 0));
        const bool isSheet = std::string_view (zip_get_name (archive.get(), i, 0)) == firstSheet;

        if (part == nullptr || ! (isSheet ? isWholeSheet (*part, bytesOfRows) : isWhole (*part)))
            return false;
    }

    return true;
}

} // namespace ZEP::Core
