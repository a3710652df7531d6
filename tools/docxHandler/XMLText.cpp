// SPDX-License-Identifier: GPL-3.0-only
#include "XMLText.h"

#include "CharacterText.h"

#include <algorithm>
#include <array>

namespace DocxHandler
{

namespace
{

/* Bytes that may stand in XML for something else than themselves, or be no character. */
constexpr auto careful = []
{
    std::array<bool, 256> table {};

    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = i < 0x20 || i >= 0x80 || i == '&' || i == '<' || i == '>' || i == '"';

    return table;
}();

bool needsCare (char c) { return careful[static_cast<unsigned char> (c)]; }

} // namespace

void XMLText::declaration() { out += "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"; }

void XMLText::open (std::string_view element, Attributes attributes)
{
    start (element, attributes);
    out += '>';
    openElements.push_back (element);
}

void XMLText::leaf (std::string_view element, Attributes attributes)
{
    start (element, attributes);
    out += "/>";
}

void XMLText::leafWithText (std::string_view element, std::string_view content, Attributes attributes)
{
    open (element, attributes);
    text (content);
    close();
}

void XMLText::close()
{
    out += "</";
    out += openElements.back();
    out += '>';
    openElements.pop_back();
}

void XMLText::start (std::string_view element, Attributes attributes)
{
    out += '<';
    out += element;

    for (const auto& attribute : attributes)
    {
        out += ' ';
        out += attribute.name;
        out += "=\"";
        text (attribute.value());
        out += '"';
    }
}

void XMLText::character (char32_t c)
{
    switch (c)
    {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\t': out += "&#9;"; break;
        case '\n': out += "&#10;"; break;
        case '\r': out += "&#13;"; break;
        default:
            if (isAllowedInXML (c))
                appendCharacter (out, c);
    }
}

void XMLText::text (std::string_view content)
{
    for (std::size_t place = 0; place < content.size();)
    {
        const auto* const next = std::find_if (content.begin() + place, content.end(), needsCare);
        const auto end = static_cast<std::size_t> (next - content.begin());
        out += content.substr (place, end - place);
        place = end;

        if (place < content.size())
            character (nextCharacter (content, place));
    }
}

} // namespace DocxHandler
