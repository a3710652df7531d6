// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <orcus/spreadsheet/import_interface.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench
{

namespace iface = orcus::spreadsheet::iface;

/** The texts, and which of them each cell has: the least that is of any use. */
class PlainDocument final : public iface::import_factory,
                            public iface::import_shared_strings,
                            public iface::import_sheet
{
public:
    std::vector<std::string> texts;
    std::vector<std::vector<std::size_t>> rows;

    // import_factory
    iface::import_shared_strings* get_shared_strings() override { return this; }
    iface::import_reference_resolver* get_reference_resolver (
        orcus::spreadsheet::formula_ref_context_t) override
    {
        return &places;
    }
    iface::import_sheet* append_sheet (orcus::spreadsheet::sheet_t, std::string_view) override
    {
        return this;
    }
    iface::import_sheet* get_sheet (std::string_view) override { return this; }
    iface::import_sheet* get_sheet (orcus::spreadsheet::sheet_t) override { return this; }
    void finalize() override {}

    // import_shared_strings
    std::size_t append (std::string_view text) override
    {
        texts.emplace_back (text);
        return texts.size() - 1;
    }
    std::size_t add (std::string_view text) override { return append (text); }
    void set_segment_font (std::size_t) override {}
    void set_segment_bold (bool) override {}
    void set_segment_italic (bool) override {}
    void set_segment_font_name (std::string_view) override {}
    void set_segment_font_size (double) override {}
    void set_segment_font_color (std::uint8_t, std::uint8_t, std::uint8_t, std::uint8_t) override {}
    void append_segment (std::string_view text) override { segments += text; }
    std::size_t commit_segments() override
    {
        texts.push_back (std::move (segments));
        segments.clear();
        return texts.size() - 1;
    }

    // import_sheet
    void set_auto (int, int, std::string_view) override {}
    void set_string (int row, int column, std::uint32_t text) override
    {
        const auto place = static_cast<std::size_t> (row);

        if (place >= rows.size())
            rows.resize (place + 1);
        if (static_cast<std::size_t> (column) >= rows[place].size())
            rows[place].resize (static_cast<std::size_t> (column) + 1);

        rows[place][static_cast<std::size_t> (column)] = text;
    }
    void set_value (int, int, double) override {}
    void set_bool (int, int, bool) override {}
    void set_date_time (int, int, int, int, int, int, int, double) override {}
    void set_format (int, int, std::size_t) override {}
    void set_format (int, int, int, int, std::size_t) override {}
    void fill_down_cells (int, int, int) override {}
    orcus::spreadsheet::range_size_t get_sheet_size() const override { return { 1048576, 16384 }; }

private:
    class Places final : public iface::import_reference_resolver
    {
    public:
        orcus::spreadsheet::src_address_t resolve_address (std::string_view text) override
        {
            orcus::spreadsheet::src_address_t address { 0, 0, 0 };

            for (const char sign : text)
                if (sign >= 'A')
                    address.column = address.column * 26 + (sign - 'A' + 1);
                else
                    address.row = address.row * 10 + (sign - '0');

            --address.row;
            --address.column;
            return address;
        }

        orcus::spreadsheet::src_range_t resolve_range (std::string_view) override { return {}; }
    };

    Places places;
    std::string segments;
};

} // namespace bench
