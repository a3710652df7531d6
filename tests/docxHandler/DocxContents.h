// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <zip.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace DocxHandler::Testing
{

/** The parts of a package in memory by their names, unzipped. */
inline std::map<std::string, std::string> partsOf (const std::string& document)
{
    std::map<std::string, std::string> parts;
    zip_error_t error;
    zip_error_init (&error);
    auto* source = zip_source_buffer_create (document.data(), document.size(), 0, &error);
    auto* archive = zip_open_from_source (source, ZIP_RDONLY | ZIP_CHECKCONS, &error);
    EXPECT_NE (archive, nullptr) << zip_error_strerror (&error);

    if (archive == nullptr)
        return parts;

    for (zip_int64_t i = 0; i < zip_get_num_entries (archive, 0); ++i)
    {
        const auto index = static_cast<zip_uint64_t> (i);
        zip_stat_t state;
        zip_stat_index (archive, index, 0, &state);
        std::string bytes (state.size, '\0');
        auto* file = zip_fopen_index (archive, index, 0);
        EXPECT_EQ (zip_fread (file, bytes.data(), bytes.size()), static_cast<zip_int64_t> (bytes.size()));
        zip_fclose (file);
        EXPECT_TRUE (parts.emplace (state.name, bytes).second) << state.name << " is there twice";
    }

    zip_discard (archive);
    return parts;
}

/** A package of parts, as it is. */
inline std::string packed (const std::map<std::string, std::string>& parts)
{
    auto* source = zip_source_buffer_create (nullptr, 0, 0, nullptr);
    zip_source_keep (source);
    auto* archive = zip_open_from_source (source, ZIP_TRUNCATE, nullptr);

    for (const auto& [name, bytes] : parts)
        zip_file_add (archive, name.c_str(), zip_source_buffer (archive, bytes.data(), bytes.size(), 0), 0);

    EXPECT_EQ (zip_close (archive), 0);
    zip_stat_t state;
    zip_source_stat (source, &state);
    zip_source_open (source);
    std::string bytes (state.size, '\0');
    zip_source_read (source, bytes.data(), bytes.size());
    zip_source_close (source);
    zip_source_free (source);
    return bytes;
}

inline std::unique_ptr<pugi::xml_document> parsedXML (const std::string& xml)
{
    auto document = std::make_unique<pugi::xml_document>();
    const auto result =
        document->load_buffer (xml.data(), xml.size(), pugi::parse_full | pugi::parse_ws_pcdata);
    EXPECT_TRUE (result) << result.description() << " at " << result.offset;
    return document;
}

/** All elements of a name below a node, in document order. */
inline std::vector<pugi::xml_node> all (const pugi::xml_node& top, const std::string& name)
{
    std::vector<pugi::xml_node> found;

    for (const auto& hit : top.select_nodes (("//" + name).c_str()))
        found.push_back (hit.node());

    return found;
}

/** The text of an element: breaks as line feeds, tabs as tabs. */
inline std::string textOf (const pugi::xml_node& element)
{
    std::string text;

    auto hits = element.select_nodes (".//w:t | .//w:br | .//w:tab[not(@w:pos)]");
    hits.sort();

    for (const auto& hit : hits)
    {
        const std::string name = hit.node().name();
        text += name == "w:br" ? "\n" : name == "w:tab" ? "\t" : hit.node().child_value();
    }

    return text;
}

/** The texts of the paragraphs of a style. */
inline std::vector<std::string> textsOfStyle (const pugi::xml_node& top, const std::string& style)
{
    std::vector<std::string> texts;

    for (const auto& hit : top.select_nodes (("//w:p[w:pPr/w:pStyle/@w:val='" + style + "']").c_str()))
        texts.push_back (textOf (hit.node()));

    return texts;
}

} // namespace DocxHandler::Testing
