// SPDX-License-Identifier: GPL-3.0-only
#include "list/RichTextJSON.h"

#include "list/JSONNumber.h"
#include "list/JSONText.h"

#include <optional>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

using json = nlohmann::ordered_json;
using ZEP::Core::RichTextString;

namespace
{

/** The looks of a run that every program understands. */
struct PlainLook
{
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckThrough = false;
    float height = RichTextString::defaultFont().getHeight();

    juce::Font appliedTo (juce::Font font) const
    {
        font.setHeight (height);
        font.setBold (bold);
        font.setItalic (italic);
        font.setUnderline (underlined);
        return RichTextString::withStrikethrough (font, struckThrough);
    }
};

json writeRun (const RichTextString::Attribute& run)
{
    const auto& font = run.font;
    const PlainLook look { font.isBold(), font.isItalic(), font.isUnderlined(),
                           RichTextString::isStruckThrough (font), font.getHeight() };
    json object { { "start", run.range.getStart() },
                  { "end", run.range.getEnd() },
                  { "bold", look.bold },
                  { "italic", look.italic },
                  { "underlined", look.underlined },
                  { "struckThrough", look.struckThrough },
                  { "height", shortestJSONNumber (look.height) },
                  { "colour", run.colour.toDisplayString (true).toLowerCase().toStdString() } };

    if (look.appliedTo (RichTextString::defaultFont()) != font)
    {
        object["typeface"] = font.getTypefaceName().toStdString();
        object["style"] = font.getTypefaceStyle().toStdString();
        object["horizontalScale"] = shortestJSONNumber (font.getHorizontalScale());
        object["extraKerning"] = shortestJSONNumber (font.getExtraKerningFactor());
    }

    return object;
}

juce::Colour readColour (const JSONMember& member)
{
    const auto digits = member.text();

    if (digits.length() != 8 || ! digits.containsOnly ("0123456789abcdefABCDEF"))
        member.fail ("eight hexadecimal digits are expected, alpha first");

    return juce::Colour::fromString (digits);
}

/** Sets what the plain look can't tell; the members come behind it. */
void readFace (juce::Font& font, const std::string& name, const JSONMember& member)
{
    if (name == "typeface")
        font.setTypefaceName (member.text());
    else if (name == "style")
        font.setTypefaceStyle (member.text());
    else if (name == "horizontalScale")
        font.setHorizontalScale (member.numberAboveZero());
    else if (name == "extraKerning")
        font.setExtraKerningFactor (member.number());
    else
        member.failUnknown();
}

RichTextString::Attribute readRun (const JSONMember& run, int textLength)
{
    PlainLook look;
    int start = 0, end = textLength;
    auto colour = juce::Colours::black;
    std::vector<std::pair<std::string, JSONMember>> face;

    run.forEachMember (
        [&] (const std::string& name, const JSONMember& member)
        {
            if (name == "start")
                start = member.integer (0, textLength);
            else if (name == "end")
                end = member.integer (0, textLength);
            else if (name == "bold")
                look.bold = member.flag();
            else if (name == "italic")
                look.italic = member.flag();
            else if (name == "underlined")
                look.underlined = member.flag();
            else if (name == "struckThrough")
                look.struckThrough = member.flag();
            else if (name == "height")
                look.height = member.numberAboveZero();
            else if (name == "colour")
                colour = readColour (member);
            else
                face.emplace_back (name, member);
        });

    if (end < start)
        run.fail ("its end lies before its start");

    auto font = look.appliedTo (RichTextString::defaultFont());

    for (const auto& [name, member] : face)
        readFace (font, name, member);

    return { { start, end }, font, colour };
}

} // namespace

void RichTextJSON::append (std::string& jsonText, const RichTextString& text)
{
    jsonText += "{\"text\":";
    JSONText::append (jsonText, text.getText());
    jsonText += ",\"runs\":[";
    const char* separator = "";

    for (const auto& run : text.formattedRuns())
    {
        jsonText += separator;
        JSONText::append (jsonText, writeRun (run));
        separator = ",";
    }

    jsonText += "]}";
}

RichTextString RichTextJSON::read (const JSONMember& value)
{
    if (value.element().is_string())
        return value.text();

    RichTextString text;
    std::optional<JSONMember> runs;

    value.forEachMember (
        [&] (const std::string& name, const JSONMember& member)
        {
            if (name == "text")
                text = RichTextString (member.text());
            else if (name == "runs")
                runs = member;
            else
                member.failUnknown();
        });

    std::vector<RichTextString::Attribute> attributes;

    if (runs.has_value())
        runs->forEachElement ([&] (const JSONMember& run)
                              { attributes.push_back (readRun (run, text.length())); });

    text.applyAttributes (attributes);
    return text;
}

} // namespace ZEP::Overmarks
