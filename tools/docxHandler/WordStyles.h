// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"
#include "SheetStyles.h"

#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace DocxHandler
{

/** The part of an element's name behind the prefix. */
[[nodiscard]] std::string_view localName (const pugi::xml_node& element) noexcept;

/** The first child with this local name; a null node if there is none. */
[[nodiscard]] pugi::xml_node childNamed (const pugi::xml_node& parent, std::string_view name) noexcept;

/** The attribute "val", whatever its prefix; null if there is none. */
[[nodiscard]] const char* valueOf (const pugi::xml_node& element) noexcept;

/** Whether a property that can be switched on and off is on. */
[[nodiscard]] bool isOn (const pugi::xml_node& property) noexcept;

/** What an XML part holds. Throws a Failure for a malformed one, for one that declares a document type (none of Word's parts
    does, and its entities could be endless), and for one that is nested more deeply or has more elements than any document. */
void parseXMLPart (pugi::xml_document& document, std::string& bytes);

/** The styles that a document defines. */
class WordStyles final
{
public:
    WordStyles() = default;
    explicit WordStyles (const pugi::xml_document& part);

    /** What a paragraph of this style holds, by the style's name or that of a style that it is based on. */
    [[nodiscard]] Field fieldOf (std::string_view identifier) const;

    /** The look that run properties give, their character style included. @returns false for text that isn't printed */
    bool applyRunProperties (const pugi::xml_node& properties, Look& look) const;

private:
    struct Style
    {
        std::string name;
        std::string basedOn;
        pugi::xml_node runProperties;
    };

    bool applyStyle (std::string_view identifier, Look& look) const;

    std::map<std::string, Style, std::less<>> styles;
};

} // namespace DocxHandler
