// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"
#include "SheetStyles.h"

#include <cstdint>
#include <map>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

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

/** What properties say about the look of text; nothing about the rest of it. */
struct LookChange
{
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<bool> underlined;
    std::optional<bool> struckThrough;
    std::optional<std::uint32_t> colour;
    std::optional<bool> isPrinted;

    void applyTo (Look& look) const;

    /** Takes over what other properties say, which count more. */
    void add (const LookChange& other);
};

/** The styles that a document defines. Each is read once, together with those that it is based on: thousands of runs may have a
    style of any length. */
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
        LookChange own;
        LookChange look; ///< with that of its bases
        Field field = Field::none;
    };

    using Styles = std::map<std::string, Style, std::less<>>;

    /** @returns the style and those that it is based on, as far as they are defined */
    [[nodiscard]] std::vector<const Style*> chainOf (const Style& style) const;
    void resolve (Style& style) const;

    Styles styles;
};

} // namespace DocxHandler
