// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookLook.h"

#include "core/documents/WorkbookText.h"

#include <algorithm>
#include <cmath>

namespace ZEP::Core
{

namespace
{

// The default font of a new workbook.
constexpr auto defaultTypeface = R"(<rFont val="Calibri"/><family val="2"/><scheme val="minor"/>)";
constexpr int defaultHundredthPoints = 1100;

// Fonts that a spreadsheet takes.
constexpr float smallest = 1.0f;
constexpr float largest = 409.0f;
constexpr int longestTypeface = 31;

constexpr std::uint32_t rgb = 0xffffff;

/** 0 for the height of unformatted text. */
int hundredthPointsOf (const juce::Font& font)
{
    constexpr float hardlyAnything = 0.01f;
    constexpr float hundredths = 100.0f;
    const auto height = font.getHeight();
    const bool isUsual = std::abs (height - RichTextString::defaultFont().getHeight()) < hardlyAnything;

    return isUsual || ! std::isfinite (height)
               ? 0
               : static_cast<int> (std::lround (std::clamp (height, smallest, largest) * hundredths));
}

/** Control codes and what Unicode keeps from ever being characters. XML has no place for most of them, and what the name of a
    typeface stands in knows no escapes. */
bool isNoCharacter (std::uint32_t c)
{
    const bool isControl = c < 0x20 || (c >= 0x7f && c < 0xa0);
    return isControl || (c >= 0xd800 && c < 0xe000) || (c & 0xfffeU) == 0xfffeU;
}

std::string withoutWhatIsNoCharacter (const juce::String& name)
{
    std::string all;

    for (auto place = name.getCharPointer(); ! place.isEmpty();)
    {
        const auto* const start = place.getAddress();
        if (! isNoCharacter (static_cast<std::uint32_t> (place.getAndAdvance())))
            all.append (start, static_cast<std::size_t> (place.getAddress() - start));
    }

    return all;
}

/** Empty for one of the framework's names that stand for whatever the system has, and for what no spreadsheet takes. */
std::string typefaceOf (const juce::Font& font)
{
    const auto& given = font.getTypefaceName();

    if (given.length() > longestTypeface)
        return {};

    auto name = withoutWhatIsNoCharacter (given);
    return name.starts_with ('<') ? std::string() : name;
}

/** 11, 14.5, 9.25 */
std::string pointsAsText (int hundredths)
{
    constexpr int inAPoint = 100;
    auto text = std::to_string (hundredths / inAPoint) + "."
                + std::to_string (inAPoint + hundredths % inAPoint).substr (1);
    text.erase (text.find_last_not_of ('0') + 1);

    if (text.ends_with ('.'))
        text.pop_back();

    return text;
}

/** The value of an attribute. */
std::string quoted (const std::string& text)
{
    std::string out = "\"";

    for (const char c : WorkbookText::asXML (WorkbookText::escaped (text)))
        if (c == '"')
            out += "&quot;";
        else
            out += c;

    return out + "\"";
}

std::string hexadecimal (std::uint32_t colour)
{
    return juce::String::toHexString (static_cast<int> (colour))
        .paddedLeft ('0', 6)
        .toUpperCase()
        .toStdString();
}

std::string element (const std::string& escapedText)
{
    return "<t xml:space=\"preserve\">" + WorkbookText::asXML (escapedText) + "</t>";
}

/** In the order in which spreadsheets write it. */
std::string propertiesOf (const WorkbookLook& look)
{
    std::string xml;
    xml += look.bold ? "<b/>" : "";
    xml += look.italic ? "<i/>" : "";
    xml += look.struckThrough ? "<strike/>" : "";
    xml += look.underlined ? "<u/>" : "";
    xml += "<sz val=\""
           + pointsAsText (look.hundredthPoints > 0 ? look.hundredthPoints : defaultHundredthPoints) + "\"/>";
    xml += look.colour != 0 ? "<color rgb=\"FF" + hexadecimal (look.colour) + "\"/>" : "<color theme=\"1\"/>";

    if (look.typeface.empty())
        xml += defaultTypeface;
    else
        xml += "<rFont val=" + quoted (look.typeface) + "/>";

    return xml;
}

} // namespace

WorkbookLook WorkbookLook::of (const RichTextString::Attribute& attribute)
{
    const auto& font = attribute.font;
    return { font.isBold(),
             font.isItalic(),
             font.isUnderlined(),
             RichTextString::isStruckThrough (font),
             hundredthPointsOf (font),
             attribute.colour.getARGB() & rgb,
             typefaceOf (font) };
}

std::vector<WorkbookRun> workbookRunsOf (const RichTextString& text, bool allBold)
{
    std::vector<WorkbookRun> runs;
    auto place = text.getText().getCharPointer();
    const auto add = [&runs] (const char* start, const char* end, const WorkbookLook& look)
    {
        if (! runs.empty() && runs.back().look == look)
            runs.back().text = { runs.back().text.data(), end };
        else if (start != end)
            runs.push_back ({ { start, end }, look });
    };

    for (int i = 0; i < text.getNumAttributes(); ++i)
    {
        const auto& attribute = text.getAttribute (i);
        const auto* const start = place.getAddress();
        place += attribute.range.getLength();
        auto look = WorkbookLook::of (attribute);
        look.bold = look.bold || allBold;
        add (start, place.getAddress(), look);
    }

    return runs;
}

std::string workbookXMLOf (const std::vector<WorkbookRun>& runs)
{
    std::string xml;
    const auto* const endOfText = runs.empty() ? nullptr : runs.back().text.data() + runs.back().text.size();

    for (const auto& [text, look] : runs)
    {
        const auto* const end = text.data() + text.size(); // where the next run begins
        xml += "<r>";

        if (look != WorkbookLook())
            xml += "<rPr>" + propertiesOf (look) + "</rPr>";

        xml += element (WorkbookText::escaped (text, { end, static_cast<std::size_t> (endOfText - end) }));
        xml += "</r>";
    }

    return xml;
}

std::string workbookXMLOf (std::string_view text) { return element (WorkbookText::escaped (text)); }

} // namespace ZEP::Core
