// SPDX-License-Identifier: GPL-3.0-only
#include "SheetStyles.h"

#include "CharacterText.h"
#include "WordNames.h"
#include "XMLText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace DocxHandler
{

namespace
{

enum class Frame
{
    none,
    padded,    ///< filled, with a border of the same colour around it
    lineBelow, ///< set off from what follows
    lineAbove
};

/* Distances are in twentieths of a point, sizes in half points. */
struct Style
{
    Field field;
    std::string_view identifier;
    std::string_view name;
    int size;
    bool bold;
    std::string_view colour;
    std::string_view fill;
    Frame frame;
    int before;
    int after;
    int hanging; ///< width of the icon before the text
    std::string_view alignment;
    bool keepsWithNext;
};

constexpr std::string_view paleBlue = "ECF5FF";
constexpr std::string_view paleAmber = "FFF1CC";
constexpr std::string_view grey = "6E6E6E";

/* Everything in a cue's block keeps with the next paragraph, the small one behind the block doesn't: so a block is never torn,
   and no page begins with the gap. */
constexpr std::array styles {
    Style { Field::text, "CueText", "Cue Text", 28, false, "", "", Frame::none, 40, 60, 0, "", true },
    Style { Field::notes, "CueNotes", "Cue Notes", 16, false, "", paleBlue, Frame::padded, 0, 0, 0, "",
            true },
    Style { Field::engineeringNotes, "CueEngineeringNotes", "Cue Engineering Notes", 16, false, "", paleBlue,
            Frame::padded, 0, 0, 0, "", true },
    Style { Field::reason, "CueReason", "Cue Reason", 16, false, "", paleBlue, Frame::padded, 0, 0, 0, "",
            true },
    Style { Field::region, "CueRegion", "Cue Region", 16, false, "", paleBlue, Frame::padded, 0, 0, 0, "",
            true },
    Style { Field::number, "CueNumber", "Cue Number", 24, true, "", "", Frame::lineBelow, 20, 60, 0, "",
            true },
    Style { Field::character, "CueCharacter", "Cue Character", 26, true, "2568B9", "", Frame::none, 0, 40,
            340, "", true },
    Style { Field::inPoint, "CueIn", "Cue In", 16, true, "", "", Frame::none, 0, 20, 340, "", true },
    Style { Field::outPoint, "CueOut", "Cue Out", 16, true, "", "", Frame::none, 0, 40, 340, "", true },
    Style { Field::label, "CueLabel", "Cue Label", 12, true, "404040", "", Frame::none, 36, 0, 0, "", true },
    Style { Field::take, "CueTake", "Cue Take", 12, false, "", "", Frame::none, 0, 0, 0, "center", true },
    Style { Field::spacing, "CueSpacing", "Cue Spacing", 2, false, "", "", Frame::none, 0, 0, 0, "", false },
    Style { Field::blockHeading, "CueBlockHeading", "Cue Block Heading", 32, true, "2568B9", "", Frame::none,
            0, 120, 0, "", true },
    Style { Field::frontMatterTitle, "FrontMatterTitle", "Front Matter Title", 32, true, "", "", Frame::none,
            0, 20, 0, "", false },
    Style { Field::frontMatterLabel, "FrontMatterLabel", "Front Matter Label", 10, true, grey, "",
            Frame::none, 0, 0, 0, "", false },
    Style { Field::frontMatterValue, "FrontMatterValue", "Front Matter Value", 18, false, "", "", Frame::none,
            0, 0, 0, "", false },
    Style { Field::footer, "CueSheetFooter", "Cue Sheet Footer", 16, false, "404040", "", Frame::lineAbove, 0,
            0, 0, "", false },
};

const Style& styleOf (Field field)
{
    return *std::find_if (styles.begin(), styles.end(),
                          [field] (const Style& style) { return style.field == field; });
}

const SheetCue* firstCue (const Sheet& sheet)
{
    for (const auto& block : sheet.blocks)
        if (! block.empty())
            return &block.front();

    return nullptr;
}

/* The size that the sheet asks for, in points; 0 where it asks for none. */
int sizeAskedFor (Field field, const Sheet& sheet)
{
    const auto ofFrontMatter = sheet.frontMatter ? sheet.frontMatter->size : 0;

    if (field == Field::frontMatterLabel)
        return ofFrontMatter;

    // The labels are as small as those of a form; what is filled in has to be read at arm's length.
    if (field == Field::frontMatterValue)
        return ofFrontMatter > 0 ? ofFrontMatter + 4 : 0;

    if (field == Field::frontMatterTitle)
        return ofFrontMatter > 0 ? ofFrontMatter + 11 : 0;

    if (field == Field::footer)
        return sheet.footer ? sheet.footer->size : 0;

    const auto* cue = firstCue (sheet);

    if (cue == nullptr)
        return 0;

    switch (field)
    {
        case Field::text: return cue->text.size;
        case Field::notes: return cue->notes.size;
        case Field::engineeringNotes: return cue->engineeringNotes.size;
        case Field::reason: return cue->reason.size;
        case Field::region: return cue->region.size;
        case Field::number: return cue->number.size;
        case Field::character: return cue->character.size;
        case Field::inPoint: return cue->inPoint.size;
        case Field::outPoint: return cue->outPoint.size;
        case Field::none:
        case Field::label:
        case Field::take:
        case Field::spacing:
        case Field::blockHeading:
        case Field::frontMatterTitle:
        case Field::frontMatterLabel:
        case Field::frontMatterValue:
        case Field::footer: break;
    }

    return 0;
}

/* The style as a layout wants it. */
Style inLayout (Style style, const Sheet& sheet)
{
    const auto weight = weightOf (style.field, layoutOf (sheet));

    if (weight == Weight::prominent)
        style.fill = paleAmber;

    if (weight == Weight::small)
    {
        style.fill = "";
        style.frame = Frame::none;
        style.colour = grey;
        style.before = 24; // level with its label
    }

    style.size = styleSize (style.field, sheet);
    return style;
}

void writeBorder (XMLText& xml, std::string_view side, std::string_view colour, int space)
{
    xml.leaf (side, { { "w:val", "single" }, { "w:sz", 4 }, { "w:space", space }, { "w:color", colour } });
}

void writeFrame (XMLText& xml, const Style& style)
{
    if (style.frame == Frame::none)
        return;

    xml.open ("w:pBdr");

    if (style.frame == Frame::padded)
    {
        for (const auto* side : { "w:top", "w:left", "w:bottom", "w:right" })
            writeBorder (xml, side, style.fill, 2);
    }
    else if (style.frame == Frame::lineBelow)
        writeBorder (xml, "w:bottom", "000000", 3);
    else
        writeBorder (xml, "w:top", "808080", 4);

    xml.close();
}

void writeParagraphProperties (XMLText& xml, const Style& style)
{
    xml.open ("w:pPr");

    if (style.keepsWithNext)
        xml.leaf ("w:keepNext");

    writeFrame (xml, style);

    if (! style.fill.empty())
        xml.leaf ("w:shd", { { "w:val", "clear" }, { "w:color", "auto" }, { "w:fill", style.fill } });

    if (style.field == Field::spacing) // a gap of four points, whatever the font
        xml.leaf ("w:spacing",
                  { { "w:before", 0 }, { "w:after", 0 }, { "w:line", 80 }, { "w:lineRule", "exact" } });
    else
        xml.leaf ("w:spacing", { { "w:before", style.before }, { "w:after", style.after } });

    if (style.hanging > 0)
        xml.leaf ("w:ind", { { "w:left", style.hanging }, { "w:hanging", style.hanging } });
    else if (style.field == Field::take) // as wide as its box, without the margins of other cells
        xml.leaf ("w:ind", { { "w:left", -90 }, { "w:right", -90 } });
    else if (style.frame == Frame::padded)
        xml.leaf ("w:ind", { { "w:left", 60 }, { "w:right", 60 } });

    if (! style.alignment.empty())
        xml.leaf ("w:jc", { { "w:val", style.alignment } });

    if (style.field == Field::blockHeading)
        xml.leaf ("w:outlineLvl", { { "w:val", 0 } });

    xml.close();
}

void writeRunProperties (XMLText& xml, const Style& style)
{
    xml.open ("w:rPr");

    if (style.bold)
    {
        xml.leaf ("w:b");
        xml.leaf ("w:bCs");
    }

    if (! style.colour.empty())
        xml.leaf ("w:color", { { "w:val", style.colour } });

    xml.leaf ("w:sz", { { "w:val", style.size } });
    xml.leaf ("w:szCs", { { "w:val", style.size } });
    xml.close();
}

void writeStyle (XMLText& xml, const Style& style)
{
    xml.open ("w:style",
              { { "w:type", "paragraph" }, { "w:customStyle", 1 }, { "w:styleId", style.identifier } });
    xml.leaf ("w:name", { { "w:val", style.name } });
    xml.leaf ("w:basedOn", { { "w:val", "Normal" } });
    xml.leaf ("w:qFormat");
    writeParagraphProperties (xml, style);
    writeRunProperties (xml, style);
    xml.close();
}

void writeDefaults (XMLText& xml, std::string_view language)
{
    constexpr auto font = "Arial";

    xml.open ("w:docDefaults");
    xml.open ("w:rPrDefault");
    xml.open ("w:rPr");
    xml.leaf ("w:rFonts",
              { { "w:ascii", font }, { "w:eastAsia", font }, { "w:hAnsi", font }, { "w:cs", font } });
    xml.leaf ("w:sz", { { "w:val", 20 } });
    xml.leaf ("w:szCs", { { "w:val", 20 } });
    xml.leaf ("w:lang", { { "w:val", language } });
    xml.close();
    xml.close();
    xml.open ("w:pPrDefault");
    xml.open ("w:pPr");
    xml.leaf ("w:spacing", { { "w:before", 0 }, { "w:after", 0 } });
    xml.close();
    xml.close();
    xml.close();
}

void writeUsualStyles (XMLText& xml)
{
    xml.open ("w:style", { { "w:type", "paragraph" }, { "w:default", 1 }, { "w:styleId", "Normal" } });
    xml.leaf ("w:name", { { "w:val", "Normal" } });
    xml.leaf ("w:qFormat");
    xml.close();

    xml.open ("w:style", { { "w:type", "table" }, { "w:default", 1 }, { "w:styleId", "TableNormal" } });
    xml.leaf ("w:name", { { "w:val", "Normal Table" } });
    xml.leaf ("w:uiPriority", { { "w:val", 99 } });
    xml.leaf ("w:semiHidden");
    xml.leaf ("w:unhideWhenUsed");
    xml.close();
}

} // namespace

Layout layoutOf (const Sheet& sheet)
{
    if (! sheet.footer)
        return Layout::engineer;

    if (sheet.footer->layout.starts_with ("Director"))
        return Layout::director;

    return sheet.footer->layout.starts_with ("Actor") ? Layout::actor : Layout::engineer;
}

Weight weightOf (Field field, Layout layout) noexcept
{
    if (field == Field::engineeringNotes)
        return layout == Layout::engineer ? Weight::prominent : Weight::small;

    if (field == Field::region)
        return layout == Layout::engineer ? Weight::usual : Weight::small;

    return field == Field::reason && layout == Layout::actor ? Weight::small : Weight::usual;
}

std::string_view styleIdentifier (Field field) { return styleOf (field).identifier; }

Field fieldOfStyleName (std::string_view name)
{
    const auto wanted = skeleton (name);
    const auto found =
        std::find_if (styles.begin(), styles.end(),
                      [&wanted] (const Style& style) { return skeleton (style.name) == wanted; });
    return found == styles.end() ? Field::none : found->field;
}

int halfPoints (double points) noexcept
{
    constexpr double smallest = 3.0;
    constexpr double largest = 96.0;
    return std::isfinite (points)
               ? static_cast<int> (std::lround (2.0 * std::clamp (points, smallest, largest)))
               : static_cast<int> (2.0 * smallest);
}

int styleSize (Field field, const Sheet& sheet)
{
    const auto asked = sizeAskedFor (field, sheet);
    const auto size = asked > 0 ? halfPoints (asked) : styleOf (field).size;
    constexpr int legible = 10;
    return weightOf (field, layoutOf (sheet)) == Weight::small ? std::max (size - 4, std::min (size, legible))
                                                               : size;
}

std::string stylesPart (const Sheet& sheet, std::string_view language)
{
    XMLText xml;
    xml.declaration();
    xml.open ("w:styles", { { "xmlns:w", WordNames::main } });
    writeDefaults (xml, language);
    writeUsualStyles (xml);

    for (const auto& style : styles)
        writeStyle (xml, inLayout (style, sheet));

    xml.close();
    return xml.take();
}

std::string_view labelOf (Field field)
{
    if (field == Field::notes)
        return "NOTES";

    if (field == Field::engineeringNotes)
        return "ENG. NOTES";

    return field == Field::reason ? "REASON" : "FN REGION";
}

Field fieldOfLabel (std::string_view label)
{
    const auto word = skeleton (label);

    if (word == "notes" || word == "note")
        return Field::notes;

    if (word == "engnotes" || word == "engineeringnotes" || word == "engineernotes")
        return Field::engineeringNotes;

    if (word == "reason")
        return Field::reason;

    return word == "fnregion" || word == "region" || word == "forcednarrativeregion" ? Field::region
                                                                                     : Field::none;
}

} // namespace DocxHandler
