// SPDX-License-Identifier: GPL-3.0-only
// The least that any reader of a format does, without a rule of ours: each cell as a string, or the library that we read with alone.
#include "OrcusAlone.h"
#include "Works.h"

#include <orcus/orcus_xlsx.hpp>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#if __has_include(<rapidjson/document.h>)
#include <rapidjson/document.h>
#define OVERMARKS_HAS_RAPIDJSON 1
#endif

namespace bench
{

namespace
{

using Rows = std::vector<std::vector<std::string>>;

std::string bytesOf (const juce::String& path)
{
    std::ifstream file (path.toStdString(), std::ios::binary | std::ios::ate);
    std::string bytes (static_cast<std::size_t> (file.tellg()), '\0');
    file.seekg (0).read (bytes.data(), static_cast<std::streamsize> (bytes.size()));
    return bytes;
}

/** @param titleRows  rows beside the cues */
template <typename Read>
WorkDone rowsRead (const juce::String& path, std::size_t titleRows, Read read)
{
    Rows rows;
    const auto seconds = secondsOf ([&] { rows = read (bytesOf (path)); });
    return { seconds, static_cast<long long> (rows.size() - titleRows) };
}

WorkDone cellsOfCSV (const WorkOrder& order)
{
    return rowsRead (order.list ("list.csv"), 1,
                     [] (const std::string& csv)
                     {
                         Rows rows (1);
                         const char* start = csv.data();
                         const char* const end = csv.data() + csv.size();

                         for (const char* sign = start; sign < end; ++sign)
                         {
                             if (*sign != ',' && *sign != '\n')
                                 continue;

                             rows.back().emplace_back (start, sign);
                             start = sign + 1;

                             if (*sign == '\n')
                                 rows.emplace_back();
                         }

                         rows.pop_back();
                         return rows;
                     });
}

std::string_view nextLine (std::string_view& text)
{
    const auto end = text.find ('\n');
    auto line = text.substr (0, end);
    text.remove_prefix (end == std::string_view::npos ? text.size() : end + 1);

    if (line.ends_with ('\r'))
        line.remove_suffix (1);

    return line;
}

std::string withoutTags (std::string_view text)
{
    std::string plain;
    bool isInTag = false;

    for (const char sign : text)
        if (isInTag || sign == '<')
            isInTag = sign != '>';
        else
            plain += sign;

    return plain;
}

WorkDone cellsOfSRT (const WorkOrder& order)
{
    return rowsRead (order.list ("list.srt"), 0,
                     [] (const std::string& file)
                     {
                         Rows rows;
                         std::string_view text = file;

                         while (! text.empty())
                         {
                             const auto number = nextLine (text);
                             const auto times = nextLine (text);
                             auto& row = rows.emplace_back();
                             row.emplace_back (number);
                             row.emplace_back (times.substr (0, 12));
                             row.emplace_back (times.substr (17));

                             for (auto line = nextLine (text); ! line.empty(); line = nextLine (text))
                                 row.push_back (withoutTags (line));
                         }

                         return rows;
                     });
}

std::string timecodeOf (std::string_view bytes)
{
    std::string text;

    for (const char byte : bytes)
    {
        if (! text.empty())
            text += ':';

        text += static_cast<char> ('0' + byte / 10);
        text += static_cast<char> ('0' + byte % 10);
    }

    return text;
}

WorkDone cellsOfEBU (const WorkOrder& order)
{
    return rowsRead (order.list ("list.stl"), 0,
                     [] (const std::string& file)
                     {
                         constexpr std::size_t head = 1024;
                         constexpr std::size_t block = 128;
                         Rows rows;

                         for (auto i = head; i + block <= file.size(); i += block)
                         {
                             const auto bytes = std::string_view (file).substr (i, block);
                             auto text = bytes.substr (16);
                             text = text.substr (0, text.find ('\x8f'));
                             rows.push_back ({ std::to_string (rows.size() + 1),
                                               timecodeOf (bytes.substr (5, 4)),
                                               timecodeOf (bytes.substr (9, 4)), std::string (text) });
                         }

                         return rows;
                     });
}

std::string trimmed (std::string_view text)
{
    const auto last = text.find_last_not_of (' ');
    return std::string (text.substr (0, last == std::string_view::npos ? 0 : last + 1));
}

WorkDone cellsOfDBF (const WorkOrder& order)
{
    return rowsRead (order.list ("list.dbf"), 0,
                     [] (const std::string& file)
                     {
                         constexpr std::size_t descriptor = 32;
                         std::vector<std::size_t> lengths;
                         std::size_t place = descriptor;

                         for (; file[place] != '\r'; place += descriptor)
                             lengths.push_back (static_cast<unsigned char> (file[place + 16]));

                         Rows rows;

                         for (++place; file[place] != '\x1a';)
                         {
                             ++place;
                             auto& row = rows.emplace_back();

                             for (const auto length : lengths)
                             {
                                 row.push_back (trimmed (std::string_view (file).substr (place, length)));
                                 place += length;
                             }
                         }

                         return rows;
                     });
}

WorkDone parseTTAL (const WorkOrder& order)
{
    juce::var json;
    const auto seconds = secondsOf (
        [&] { json = juce::JSON::parse (juce::File (order.list ("list.ttal")).loadFileAsString()); });
    return { seconds, json["events"].getDynamicObject()->getProperties().size() };
}

WorkDone readWithOrcus (const WorkOrder& order)
{
    PlainDocument document;
    const auto seconds = secondsOf (
        [&]
        {
            orcus::orcus_xlsx reader (&document);
            reader.read_file (order.list ("list.xlsx").toStdString());
        });
    return { seconds, static_cast<long long> (document.rows.size()) - 1 };
}

#ifdef OVERMARKS_HAS_RAPIDJSON
WorkDone readWithRapidJSON (const WorkOrder& order)
{
    Rows rows;
    const auto seconds = secondsOf (
        [&]
        {
            const auto text = bytesOf (order.list ("list.ttal"));
            rapidjson::Document document;
            document.Parse (text.data(), text.size());

            for (const auto& [id, event] : document["events"].GetObject())
                rows.push_back ({ id.GetString(), std::to_string (event["start"].GetInt()),
                                  std::to_string (event["end"].GetInt()), event["cue"].GetString(),
                                  event["txt"].GetString(), event["characterId"].GetString(),
                                  event["dubAnnotations"]["text"].GetString() });
        });
    return { seconds, static_cast<long long> (rows.size()) };
}
#endif

constexpr Work works[] = {
    { "csv-in.floor", cellsOfCSV },
    { "srt-in.floor", cellsOfSRT },
    { "ebu-in.floor", cellsOfEBU },
    { "dbf-in.floor", cellsOfDBF },
    { "ttal-in.floor", parseTTAL },
    { "xlsx-in.floor", readWithOrcus },
#ifdef OVERMARKS_HAS_RAPIDJSON
    { "ttal-in.rapidjson", readWithRapidJSON },
#endif
};

} // namespace

std::span<const Work> floorsOfReading() { return works; }

} // namespace bench
