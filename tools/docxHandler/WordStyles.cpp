// SPDX-License-Identifier: GPL-3.0-only
#include "WordStyles.h"

#include "Failure.h"
#include "ImportLimits.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace DocxHandler
{

namespace
{

constexpr int mostBases = 16; ///< a chain of styles may be a ring

void refuseTooMuchMarkup (std::string_view bytes)
{
    if (std::count (bytes.begin(), bytes.end(), '<') + std::count (bytes.begin(), bytes.end(), '=')
        > ImportLimits::marksOfText)
        throw Failure ("is too large when unpacked");
}

void refuseTooDeep (const pugi::xml_document& document)
{
    constexpr int deepest = 200;
    int depth = 0;

    for (auto node = document.first_child(); node;)
    {
        if (node.first_child())
        {
            node = node.first_child();

            if (++depth > deepest)
                throw Failure ("is nested too deeply");

            continue;
        }

        while (node && ! node.next_sibling())
        {
            node = node.parent();
            --depth;
        }

        node = node ? node.next_sibling() : node;
    }
}

std::uint32_t colourOf (const pugi::xml_node& property)
{
    constexpr std::uint32_t opaque = 0xff000000;
    const std::string_view digits = valueOf (property) == nullptr ? "" : valueOf (property);
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars (digits.data(), digits.data() + digits.size(), value, 16);
    const auto isColour = digits.size() == 6 && error == std::errc() && end == digits.data() + digits.size();
    return isColour ? opaque | value : Look().colour;
}

LookChange changeOf (const pugi::xml_node& properties)
{
    LookChange change;

    for (const auto& property : properties.children())
    {
        const auto name = localName (property);

        if (name == "b")
            change.bold = isOn (property);
        else if (name == "i")
            change.italic = isOn (property);
        else if (name == "u")
            change.underlined = isOn (property);
        else if (name == "strike" || name == "dstrike")
            change.struckThrough = isOn (property);
        else if (name == "color")
            change.colour = colourOf (property);
        else if (name == "vanish")
            change.isPrinted = ! isOn (property);
    }

    return change;
}

} // namespace

std::string_view localName (const pugi::xml_node& element) noexcept
{
    const std::string_view name = element.name();
    const auto colon = name.find (':');
    return colon == std::string_view::npos ? name : name.substr (colon + 1);
}

pugi::xml_node childNamed (const pugi::xml_node& parent, std::string_view name) noexcept
{
    for (const auto& child : parent.children())
        if (localName (child) == name)
            return child;

    return {};
}

const char* valueOf (const pugi::xml_node& element) noexcept
{
    for (const auto& attribute : element.attributes())
    {
        const std::string_view name = attribute.name();

        if (name == "w:val" || name == "val" || name.ends_with (":val"))
            return attribute.value();
    }

    return nullptr;
}

bool isOn (const pugi::xml_node& property) noexcept
{
    if (! property)
        return false;

    const std::string_view value = valueOf (property) == nullptr ? "true" : valueOf (property);
    return value != "0" && value != "false" && value != "off" && value != "none";
}

void parseXMLPart (pugi::xml_document& document, std::string& bytes)
{
    refuseTooMuchMarkup (bytes);
    const auto result = document.load_buffer_inplace (
        bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_doctype);

    if (! result)
        throw Failure ("is damaged: its XML is malformed");

    for (const auto& node : document.children())
        if (node.type() == pugi::node_doctype)
            throw Failure ("declares a document type, which no Word document does");

    refuseTooDeep (document);
}

void LookChange::applyTo (Look& look) const
{
    look.bold = bold.value_or (look.bold);
    look.italic = italic.value_or (look.italic);
    look.underlined = underlined.value_or (look.underlined);
    look.struckThrough = struckThrough.value_or (look.struckThrough);
    look.colour = colour.value_or (look.colour);
}

void LookChange::add (const LookChange& other)
{
    const auto take = [] (auto& own, const auto& others) { own = others ? others : own; };
    take (bold, other.bold);
    take (italic, other.italic);
    take (underlined, other.underlined);
    take (struckThrough, other.struckThrough);
    take (colour, other.colour);
    take (isPrinted, other.isPrinted);
}

WordStyles::WordStyles (const pugi::xml_document& part)
{
    for (const auto& element : part.document_element().children())
    {
        if (localName (element) != "style")
            continue;

        std::string identifier;

        for (const auto& attribute : element.attributes())
            if (std::string_view (attribute.name()).ends_with ("styleId"))
                identifier = attribute.value();

        const auto text = [&element] (std::string_view name)
        {
            const auto* value = valueOf (childNamed (element, name));
            return std::string (value == nullptr ? "" : value);
        };

        Style style { text ("name"), text ("basedOn"), changeOf (childNamed (element, "rPr")), {} };
        styles.emplace (identifier, std::move (style));
    }

    for (auto& [identifier, style] : styles)
        resolve (style);
}

std::vector<const WordStyles::Style*> WordStyles::chainOf (const Style& style) const
{
    std::vector<const Style*> chain { &style };

    while (chain.size() < mostBases)
    {
        const auto base = styles.find (chain.back()->basedOn);

        if (base == styles.end())
            break;

        chain.push_back (&base->second);
    }

    return chain;
}

void WordStyles::resolve (Style& style) const
{
    const auto chain = chainOf (style);

    for (auto base = chain.rbegin(); base != chain.rend(); ++base)
        style.look.add ((*base)->own);

    for (const auto* base : chain)
        if (style.field == Field::none)
            style.field = fieldOfStyleName (base->name);

    // A style that nobody has defined may still have the name of one of ours.
    if (style.field == Field::none && chain.size() < mostBases)
        style.field = fieldOfStyleName (chain.back()->basedOn);
}

Field WordStyles::fieldOf (std::string_view identifier) const
{
    const auto found = styles.find (identifier);
    return found == styles.end() ? fieldOfStyleName (identifier) : found->second.field;
}

bool WordStyles::applyRunProperties (const pugi::xml_node& properties, Look& look) const
{
    LookChange change;

    if (const auto* identifier = valueOf (childNamed (properties, "rStyle")); identifier != nullptr)
        if (const auto style = styles.find (std::string_view (identifier)); style != styles.end())
            change = style->second.look;

    change.add (changeOf (properties));
    change.applyTo (look);
    return change.isPrinted.value_or (true);
}

} // namespace DocxHandler
