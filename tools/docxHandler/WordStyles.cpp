// SPDX-License-Identifier: GPL-3.0-only
#include "WordStyles.h"

#include "Failure.h"

#include <algorithm>
#include <charconv>

namespace DocxHandler
{

namespace
{

constexpr int mostBases = 16; ///< a chain of styles may be a ring

/* An element of four bytes takes sixty-four once it is parsed, so that the size of the text alone bounds nothing. */
void refuseTooMuchMarkup (std::string_view bytes)
{
    constexpr long most = 12'000'000;

    if (std::count (bytes.begin(), bytes.end(), '<') + std::count (bytes.begin(), bytes.end(), '=') > most)
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

void applyColour (const pugi::xml_node& property, Look& look)
{
    constexpr std::uint32_t opaque = 0xff000000;
    const std::string_view digits = valueOf (property) == nullptr ? "" : valueOf (property);
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars (digits.data(), digits.data() + digits.size(), value, 16);
    const auto isColour = digits.size() == 6 && error == std::errc() && end == digits.data() + digits.size();
    look.colour = isColour ? opaque | value : Look().colour;
}

void applyProperties (const pugi::xml_node& properties, Look& look, bool& isPrinted)
{
    for (const auto& property : properties.children())
    {
        const auto name = localName (property);

        if (name == "b")
            look.bold = isOn (property);
        else if (name == "i")
            look.italic = isOn (property);
        else if (name == "u")
            look.underlined = isOn (property);
        else if (name == "strike" || name == "dstrike")
            look.struckThrough = isOn (property);
        else if (name == "color")
            applyColour (property, look);
        else if (name == "vanish")
            isPrinted = ! isOn (property);
    }
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

        styles.emplace (identifier, Style { text ("name"), text ("basedOn"), childNamed (element, "rPr") });
    }
}

Field WordStyles::fieldOf (std::string_view identifier) const
{
    for (int i = 0; i < mostBases && ! identifier.empty(); ++i)
    {
        const auto found = styles.find (identifier);

        if (found == styles.end())
            return fieldOfStyleName (identifier);

        const auto field = fieldOfStyleName (found->second.name);

        if (field != Field::none)
            return field;

        identifier = found->second.basedOn;
    }

    return Field::none;
}

bool WordStyles::applyStyle (std::string_view identifier, Look& look) const
{
    std::vector<const Style*> chain;

    while (chain.size() < mostBases)
    {
        const auto found = styles.find (identifier);

        if (found == styles.end())
            break;

        chain.push_back (&found->second);
        identifier = found->second.basedOn;
    }

    auto isPrinted = true;

    for (auto style = chain.rbegin(); style != chain.rend(); ++style)
        applyProperties ((*style)->runProperties, look, isPrinted);

    return isPrinted;
}

bool WordStyles::applyRunProperties (const pugi::xml_node& properties, Look& look) const
{
    const auto* style = valueOf (childNamed (properties, "rStyle"));
    auto isPrinted = style == nullptr || applyStyle (style, look);

    applyProperties (properties, look, isPrinted);
    return isPrinted;
}

} // namespace DocxHandler
