// SPDX-License-Identifier: GPL-3.0-only
//   element of a font     meaning
//   b, i, strike          on, unless val says "0" or "false"
//   u                     underlined in some way, unless val says "none"
//   sz                    val: size in points
//   color                 rgb: eight hexadecimal digits, whose first two mean nothing; theme: place in the theme's colours, with
//                         tint; indexed: number in the old palette, 64 and above for the program's own choice
//
//   in the styles         meaning
//   styleSheet / colors / indexedColors / rgbColor
//                         rgb: the next colour of the workbook's own palette
#include "core/documents/CellLook.h"

#include "core/documents/PartXML.h"
#include "core/documents/UnreadableWorkbook.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ZEP::Core
{
namespace
{

constexpr std::uint32_t opaque = 0xff000000;
constexpr double mostPoints = 409.0; // no spreadsheet program has larger letters

/** The places in which fonts count a theme's colours: light before dark, unlike the theme itself. */
constexpr std::array<std::string_view, WorkbookColours::themeColours> namesOfThemeColours {
    "lt1",     "dk1",     "lt2",     "dk2",     "accent1", "accent2",
    "accent3", "accent4", "accent5", "accent6", "hlink",   "folHlink"
};

constexpr std::array<std::uint32_t, WorkbookColours::themeColours> usualTheme {
    0xffffffff, 0xff000000, 0xffeeece1, 0xff1f497d, 0xff4f81bd, 0xffc0504d,
    0xff9bbb59, 0xff8064a2, 0xff4bacc6, 0xfff79646, 0xff0000ff, 0xff800080
};

constexpr std::array<std::uint32_t, WorkbookColours::paletteColours> usualPalette {
    0x000000, 0xffffff, 0xff0000, 0x00ff00, 0x0000ff, 0xffff00, 0xff00ff, 0x00ffff, 0x000000, 0xffffff,
    0xff0000, 0x00ff00, 0x0000ff, 0xffff00, 0xff00ff, 0x00ffff, 0x800000, 0x008000, 0x000080, 0x808000,
    0x800080, 0x008080, 0xc0c0c0, 0x808080, 0x9999ff, 0x993366, 0xffffcc, 0xccffff, 0x660066, 0xff8080,
    0x0066cc, 0xccccff, 0x000080, 0xff00ff, 0xffff00, 0x00ffff, 0x800080, 0x800000, 0x008080, 0x0000ff,
    0x00ccff, 0xccffff, 0xccffcc, 0xffff99, 0x99ccff, 0xff99cc, 0xcc99ff, 0xffcc99, 0x3366ff, 0x33cccc,
    0x99cc00, 0xffcc00, 0xff9900, 0xff6600, 0x666699, 0x969696, 0x003366, 0x339966, 0x003300, 0x333300,
    0x993300, 0x993366, 0x333399, 0x333333
};

/** Six or eight hexadecimal digits as an opaque colour; 0 for anything else. Programs disagree on what stands for opaque. */
std::uint32_t colourFromDigits (std::string_view digits)
{
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars (digits.data(), digits.data() + digits.size(), value, 16);
    const bool isColour = error == std::errc() && end == digits.data() + digits.size()
                          && (digits.size() == 6 || digits.size() == 8);
    return isColour ? value | opaque : 0;
}

double realNumber (std::string_view text)
{
    double value = 0.0;
    const auto [end, error] = std::from_chars (text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite (value) ? value : 0.0;
}

class ThemeXML final : public PartXML
{
public:
    explicit ThemeXML (std::array<std::uint32_t, WorkbookColours::themeColours>& coloursToSet)
        : colours (coloursToSet)
    {
    }

private:
    void elementStarts (std::string_view name, const PartAttributes& attributes) override
    {
        if (depth() == 4)
            place = std::find (namesOfThemeColours.begin(), namesOfThemeColours.end(), name);
        else if (depth() == 5 && place != namesOfThemeColours.end())
            set (name, attributes);
    }

    void set (std::string_view name, const PartAttributes& attributes)
    {
        const auto colour = colourFromDigits (name == "sysClr" ? attributes["lastClr"] : attributes["val"]);

        if (colour != 0)
            colours[static_cast<std::size_t> (place - namesOfThemeColours.begin())] = colour;
    }

    void elementEnds (std::string_view) override
    {
        if (depth() == 4)
            place = namesOfThemeColours.end();
    }

    std::array<std::uint32_t, WorkbookColours::themeColours>& colours;
    decltype (namesOfThemeColours)::const_iterator place = namesOfThemeColours.end();
};

class PaletteXML final : public PartXML
{
public:
    explicit PaletteXML (std::array<std::uint32_t, WorkbookColours::paletteColours>& coloursToSet)
        : colours (coloursToSet)
    {
    }

private:
    void elementStarts (std::string_view name, const PartAttributes& attributes) override
    {
        if (depth() == 2)
            isInColours = name == "colors";
        else if (depth() == 3)
            isInPalette = isInColours && name == "indexedColors";
        else if (depth() == 4 && isInPalette && name == "rgbColor" && place < colours.size())
            set (colours[place++], colourFromDigits (attributes["rgb"]));
    }

    void elementEnds (std::string_view) override {}

    static void set (std::uint32_t& target, std::uint32_t colour) { target = colour != 0 ? colour : target; }

    std::array<std::uint32_t, WorkbookColours::paletteColours>& colours;
    std::size_t place = 0;
    bool isInColours = false;
    bool isInPalette = false;
};

/** A cue list can do without the colours of a part that can't be read. */
template <typename Walk, typename Colours>
void readColours (Colours& colours, std::string_view xml)
{
    try
    {
        Walk walk (colours);
        walk.take (xml);
        walk.finish();
    }
    catch (const UnreadableWorkbook&)
    {
    }
}

} // namespace

WorkbookColours::WorkbookColours() : theme (usualTheme), palette (usualPalette) {}

void WorkbookColours::readTheme (std::string_view xml) { readColours<ThemeXML> (theme, xml); }

void WorkbookColours::readPalette (std::string_view xml)
{
    if (xml.find ("indexedColors") != std::string_view::npos) // hardly any workbook has one
        readColours<PaletteXML> (palette, xml);
}

std::uint32_t WorkbookColours::colourOf (const PartAttributes& attributes) const
{
    std::uint32_t colour = 0;

    if (attributes.has ("rgb"))
        colour = colourFromDigits (attributes["rgb"]);
    else if (const auto place = attributes.number ("theme", -1); place >= 0)
        colour =
            static_cast<std::size_t> (place) < theme.size() ? theme[static_cast<std::size_t> (place)] : 0;
    else if (const auto number = attributes.number ("indexed", -1); number >= 0)
        colour = static_cast<std::size_t> (number) < palette.size()
                     ? palette[static_cast<std::size_t> (number)] | opaque
                     : 0;

    return colour == 0 ? 0 : tinted (colour, realNumber (attributes["tint"]));
}

void applyToLook (CellLook& look, std::string_view element, const PartAttributes& attributes,
                  const WorkbookColours& colours)
{
    if (element == "b")
        look.bold = attributes.isOn ("val", true);
    else if (element == "i")
        look.italic = attributes.isOn ("val", true);
    else if (element == "strike")
        look.struckThrough = attributes.isOn ("val", true);
    else if (element == "u")
        look.underlined = attributes["val"] != "none";
    else if (element == "color")
        look.colour = colours.colourOf (attributes);
    else if (element == "sz")
        look.points = std::clamp (realNumber (attributes["val"]), 0.0, mostPoints);
}

std::uint32_t tinted (std::uint32_t colour, double tint)
{
    if (tint == 0.0 || tint < -1.0 || tint > 1.0)
        return colour;

    float hue = 0.0F;
    float saturation = 0.0F;
    float lightness = 0.0F;
    const juce::Colour base (colour);
    base.getHSL (hue, saturation, lightness);
    const auto amount = static_cast<float> (tint);
    const auto changed =
        amount < 0.0F ? lightness * (1.0F + amount) : lightness + (1.0F - lightness) * amount;
    return juce::Colour::fromHSL (hue, saturation, changed, 1.0F).getARGB();
}

//==============================================================================
bool WorkbookFonts::isPlain (const CellLook& look) const
{
    return ! look.bold && ! look.italic && ! look.underlined && ! look.struckThrough
           && (look.points == 0.0 || look.points == plain.points)
           && (look.colour == 0 || look.colour == opaque || look.colour == plain.colour);
}

juce::Font WorkbookFonts::fontOf (const CellLook& look) const
{
    auto font = RichTextString::defaultFont();

    if (look.points > 0.0 && look.points != plain.points)
        font.setHeight (static_cast<float> (look.points));

    if (look.bold || look.italic)
        font.setStyleFlags ((look.bold ? juce::Font::bold : 0) | (look.italic ? juce::Font::italic : 0));

    font.setUnderline (look.underlined);
    return look.struckThrough ? RichTextString::withStrikethrough (font, true) : font;
}

juce::Colour WorkbookFonts::colourOf (const CellLook& look) const
{
    return juce::Colour (look.colour == 0 || look.colour == plain.colour ? opaque : look.colour);
}

} // namespace ZEP::Core
