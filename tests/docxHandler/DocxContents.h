// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "support/ZipArchive.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

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

    for (auto& [name, bytes] : ZEP::Overmarks::Testing::unzipped (document))
        EXPECT_TRUE (parts.emplace (name, std::move (bytes)).second) << name << " is there twice";

    return parts;
}

/** A package of parts, as it is. */
inline std::string packed (const std::map<std::string, std::string>& parts)
{
    return ZEP::Overmarks::Testing::zipped ({ parts.begin(), parts.end() });
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
