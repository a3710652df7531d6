// SPDX-License-Identifier: GPL-3.0-only
// A workbook of one sheet, in an archive whose parts aren't packed:
//
//   for each part         offset  length  meaning
//                         0       4       50 4B 03 04
//                         4       2       version needed, 20
//                         6       8       flags, method, time and date, all 0
//                         14      4       checksum, left at 0: Orcus doesn't look at it
//                         18      4, 4    length of the part, twice
//                         26      2, 2    length of its path, 0
//                         30              path, part
//   directory, each part  0       4       50 4B 01 02
//                         4       2, 2    version made by and needed, 20
//                         8       34      as from offset 6 above, then zeros
//                         42      4       offset of the part's header
//                         46              path
//   end                   0       4       50 4B 05 06
//                         4       2, 2    0
//                         8       2, 2    number of parts, twice
//                         12      4, 4    length and offset of the directory
//                         20      2       0
#include "core/documents/OrcusSheet.h"

#include "core/documents/SheetTable.h"
#include "core/documents/UnreadableWorkbook.h"

#include <orcus/config.hpp>
#include <orcus/orcus_xlsx.hpp>
#include <orcus/spreadsheet/import_interface.hpp>

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <new>
#include <string>
#include <utility>

namespace ZEP::Core
{
namespace
{

using namespace std::string_view_literals;
using orcus::spreadsheet::col_t;
using orcus::spreadsheet::row_t;
namespace iface = orcus::spreadsheet::iface;

/** Writes the archive. */
class PlainArchive final
{
public:
    void add (std::string_view path, std::initializer_list<std::string_view> pieces)
    {
        std::uint32_t length = 0;

        for (const auto& piece : pieces)
            length += static_cast<std::uint32_t> (piece.size());

        const auto offset = static_cast<std::uint32_t> (bytes.size());
        const auto facts = factsOf (path, length);
        bytes.append ("PK\x03\x04\x14\0"sv).append (facts).append (path);

        for (const auto& piece : pieces)
            bytes += piece;

        directory.append ("PK\x01\x02\x14\0\x14\0"sv).append (facts).append (10, '\0');
        appendNumber (directory, offset, 4);
        directory += path;
        ++parts;
    }

    std::string finished()
    {
        const auto offset = bytes.size();
        bytes.append (directory).append ("PK\x05\x06\0\0\0\0"sv);
        appendNumber (bytes, parts, 2);
        appendNumber (bytes, parts, 2);
        appendNumber (bytes, directory.size(), 4);
        appendNumber (bytes, offset, 4);
        bytes.append (2, '\0');
        return std::move (bytes);
    }

    void reserve (std::size_t length) { bytes.reserve (length); }

private:
    static void appendNumber (std::string& target, std::size_t number, int length)
    {
        for (int i = 0; i < length; ++i)
            target += static_cast<char> (number >> (8 * i) & 0xFF);
    }

    static std::string factsOf (std::string_view path, std::size_t length)
    {
        std::string facts (12, '\0');
        appendNumber (facts, length, 4);
        appendNumber (facts, length, 4);
        appendNumber (facts, path.size(), 2);
        appendNumber (facts, 0, 2);
        return facts;
    }

    std::string bytes;
    std::string directory;
    std::size_t parts = 0;
};

constexpr auto contentTypes =
    R"(<?xml version="1.0"?><Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Override PartName="/xl/workbook.xml" ContentType="application/vnd.openxmlformats-officedocument.)"
    R"(spreadsheetml.sheet.main+xml"/><Override PartName="/xl/worksheets/sheet1.xml" ContentType=")"
    R"(application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/></Types>)"sv;

constexpr auto relationsOfArchive =
    R"(<?xml version="1.0"?><Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="r" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/)"
    R"(officeDocument" Target="xl/workbook.xml"/></Relationships>)"sv;

constexpr auto workbook =
    R"(<?xml version="1.0"?><workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )"
    R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
    R"(<sheets><sheet name="1" sheetId="1" r:id="r"/></sheets></workbook>)"sv;

constexpr auto relationsOfWorkbook =
    R"(<?xml version="1.0"?><Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="r" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" )"
    R"(Target="worksheets/sheet1.xml"/></Relationships>)"sv;

constexpr auto startOfSheet =
    R"(<?xml version="1.0"?><worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )"
    R"(xmlns:x14ac="http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac"><sheetData>)"sv;
constexpr auto endOfSheet = "</sheetData></worksheet>"sv;

std::string workbookWith (std::string_view rows)
{
    constexpr std::size_t roomForTheRest = 8192;
    PlainArchive archive;
    archive.reserve (rows.size() + roomForTheRest);
    archive.add ("[Content_Types].xml", { contentTypes });
    archive.add ("_rels/.rels", { relationsOfArchive });
    archive.add ("xl/workbook.xml", { workbook });
    archive.add ("xl/_rels/workbook.xml.rels", { relationsOfWorkbook });
    archive.add ("xl/worksheets/sheet1.xml", { startOfSheet, rows, endOfSheet });
    return archive.finished();
}

//==============================================================================
/** The sheet that Orcus fills. What goes wrong in it waits until Orcus, which may be at work in threads, has returned. */
class Sheet final : public iface::import_sheet
{
public:
    explicit Sheet (SheetTable& tableToFill) : table (tableToFill) {}

    void set_auto (row_t, col_t, std::string_view) override {}

    void set_string (row_t row, col_t column, orcus::spreadsheet::string_id_t string) override
    {
        guarded ([=] (SheetTable& t) { t.setText (row, column, string); });
    }

    void set_value (row_t row, col_t column, double value) override
    {
        guarded ([=] (SheetTable& t) { t.setNumber (row, column, value); });
    }

    void set_bool (row_t row, col_t column, bool value) override
    {
        guarded ([=] (SheetTable& t) { t.setBoolean (row, column, value); });
    }

    void set_date_time (row_t, col_t, int, int, int, int, int, double) override {}

    void set_format (row_t row, col_t column, std::size_t style) override
    {
        guarded ([=] (SheetTable& t) { t.setStyle (row, column, style); });
    }

    void set_format (row_t, col_t, row_t, col_t, std::size_t) override {}
    void fill_down_cells (row_t, col_t, row_t) override {}

    orcus::spreadsheet::range_size_t get_sheet_size() const override
    {
        return { SheetTable::mostRows, SheetTable::mostColumns };
    }

    std::exception_ptr failure;

private:
    template <typename Work>
    void guarded (Work work) noexcept
    {
        if (failure != nullptr)
            return;

        try
        {
            work (table);
        }
        catch (...)
        {
            failure = std::current_exception();
        }
    }

    SheetTable& table;
};

orcus::spreadsheet::src_address_t addressOf (std::string_view text)
{
    orcus::spreadsheet::src_address_t address { 0, 0, 0 };

    for (const char sign : text)
    {
        if (sign >= 'A' && sign <= 'Z' && address.column < SheetTable::mostColumns)
            address.column = address.column * 26 + (sign - 'A' + 1);
        else if (sign >= '0' && sign <= '9' && address.row < SheetTable::mostRows)
            address.row = address.row * 10 + (sign - '0');
    }

    --address.row;
    --address.column;
    return address;
}

/** Tells Orcus what "B12" means. */
class Places final : public iface::import_reference_resolver
{
public:
    orcus::spreadsheet::src_address_t resolve_address (std::string_view address) override
    {
        return addressOf (address);
    }

    orcus::spreadsheet::src_range_t resolve_range (std::string_view) override { return {}; }
};

/** What Orcus asks for everything. */
class Document final : public iface::import_factory
{
public:
    explicit Document (SheetTable& table) : sheet (table) {}

    iface::import_reference_resolver* get_reference_resolver (
        orcus::spreadsheet::formula_ref_context_t) override
    {
        return &places;
    }

    iface::import_sheet* append_sheet (orcus::spreadsheet::sheet_t, std::string_view) override
    {
        return &sheet;
    }
    iface::import_sheet* get_sheet (std::string_view) override { return &sheet; }
    iface::import_sheet* get_sheet (orcus::spreadsheet::sheet_t) override { return &sheet; }
    void finalize() override {}

    Sheet sheet;

private:
    Places places;
};

} // namespace

void OrcusSheet::read (std::string_view rows) const
{
    Document document (table);

    try
    {
        orcus::orcus_xlsx reader (&document);
        orcus::config config (orcus::format_t::xlsx);
        config.debug = false;
        config.structure_check = false;
        reader.set_config (config);
        reader.read_stream (workbookWith (rows));
    }
    catch (const std::bad_alloc&)
    {
        throw;
    }
    catch (const std::exception&)
    {
        throw UnreadableWorkbook (WorkbookWords::isDamaged);
    }

    if (document.sheet.failure != nullptr)
        std::rethrow_exception (document.sheet.failure);
}

} // namespace ZEP::Core
