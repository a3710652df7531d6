// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <pugixml.hpp>

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** The tree of an XML text with all its blanks; text that isn't well-formed is a failure of the test.

        const auto sheet = treeOf (partNamed (unzipped (bytes), "xl/worksheets/sheet1.xml"));
        EXPECT_EQ (textAt (*sheet, "//c[@r='B2']/is/t"), "Hello");
*/
inline std::unique_ptr<pugi::xml_document> treeOf (const std::string& xml)
{
    auto document = std::make_unique<pugi::xml_document>();
    const auto result =
        document->load_buffer (xml.data(), xml.size(), pugi::parse_default | pugi::parse_ws_pcdata);
    EXPECT_TRUE (result) << result.description() << " at " << result.offset << "\n" << xml.substr (0, 2000);
    return document;
}

/** The text of the first node that an XPath finds, empty if there is none. */
inline std::string textAt (const pugi::xml_node& node, const std::string& path)
{
    return node.select_node (path.c_str()).node().text().get();
}

/** The values of the attributes, or the texts of the elements, that an XPath finds. */
inline std::vector<std::string> valuesAt (const pugi::xml_node& node, const std::string& path)
{
    std::vector<std::string> values;

    for (const auto& found : node.select_nodes (path.c_str()))
        values.emplace_back (found.attribute() ? found.attribute().value() : found.node().text().get());

    return values;
}

/** The XML of the first node that an XPath finds, without blanks between elements. */
inline std::string xmlAt (const pugi::xml_node& node, const std::string& path)
{
    std::ostringstream stream;
    node.select_node (path.c_str()).node().print (stream, "", pugi::format_raw);
    return stream.str();
}

/** An XML text with an element a line, indented, so that two can be compared and their difference read. */
inline std::string linesOf (const std::string& xml)
{
    std::ostringstream stream;
    treeOf (xml)->save (stream, "  ", pugi::format_indent | pugi::format_no_declaration);
    return stream.str();
}

} // namespace ZEP::Overmarks::Testing
