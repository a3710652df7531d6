// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <vector>

/** dBase tables, built byte by byte. */
namespace DBFSupport
{

struct Field
{
    std::string name;
    int length;
};

/** A flag and the cells, each filled up with blanks or cut to the length of its field. */
using Record = std::vector<std::string>;

/** A descriptor of 32 bytes. The name runs into the bytes behind it if it is longer than eleven. */
inline std::string descriptor (const Field& field)
{
    std::string bytes (32, '\0');
    bytes[11] = 'C';
    bytes.replace (0, field.name.size(), field.name);
    bytes[16] = static_cast<char> (field.length);
    return bytes;
}

inline std::string head (const std::vector<Field>& fields)
{
    const auto length = 33 + 32 * fields.size();
    std::string bytes (32, '\0');
    bytes[0] = 3;
    bytes[8] = static_cast<char> (length & 0xffU);
    bytes[9] = static_cast<char> (length >> 8U);
    for (const auto& field : fields)
        bytes += descriptor (field);
    return bytes + "\r";
}

inline std::string record (const std::vector<Field>& fields, const Record& cells)
{
    auto bytes = cells.at (0);
    for (std::size_t i = 0; i < fields.size(); ++i)
    {
        auto cell = cells.at (i + 1);
        cell.resize (static_cast<std::size_t> (fields[i].length), ' ');
        bytes += cell;
    }
    return bytes;
}

inline std::string table (const std::vector<Field>& fields, const std::vector<Record>& records,
                          const std::string& end = "\x1a")
{
    auto bytes = head (fields);
    for (const auto& cells : records)
        bytes += record (fields, cells);
    return bytes + end;
}

} // namespace DBFSupport
