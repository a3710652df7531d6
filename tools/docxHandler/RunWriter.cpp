// SPDX-License-Identifier: GPL-3.0-only
#include "RunWriter.h"

#include "CharacterText.h"
#include "SheetStyles.h"

#include <array>

namespace DocxHandler
{

namespace
{

std::string hexColour (std::uint32_t colour)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;

    for (int shift = 20; shift >= 0; shift -= 4)
        result += digits[(colour >> static_cast<unsigned> (shift)) & 0xfU];

    return result;
}

class RunWriter final
{
public:
    RunWriter (XMLText& destination, std::string_view wholeText, int pointsOfField, int halfPointsOfStyle)
        : xml (destination),
          text (wholeText),
          points (pointsOfField),
          styleSize (halfPointsOfStyle)
    {
    }

    /* The characters up to position `end`. */
    void write (const Look& look, std::size_t end)
    {
        const auto start = place;

        for (; position < end && place < text.size(); ++position)
            static_cast<void> (nextCharacter (text, place));

        if (place == start)
            return;

        const auto part = text.substr (start, place - start);
        xml.open ("w:r");
        writeLook (look, holdsRightToLeft (part));
        writeCharacters (part, place < text.size() && text[place] == '\n');
        xml.close();
    }

private:
    void writeLook (const Look& look, bool rightToLeft)
    {
        const auto size = points > 0 ? halfPoints (points * look.height / Look::usualHeight) : styleSize;
        auto usual = Look();
        usual.height = look.height;

        if (look == usual && size == styleSize && ! rightToLeft)
            return;

        xml.open ("w:rPr");
        writeFlags (look);

        if (look.colour != usual.colour)
            xml.leaf ("w:color", { { "w:val", hexColour (look.colour) } });

        if (size != styleSize)
        {
            xml.leaf ("w:sz", { { "w:val", size } });
            xml.leaf ("w:szCs", { { "w:val", size } });
        }

        if (look.underlined)
            xml.leaf ("w:u", { { "w:val", "single" } });

        if (rightToLeft)
            xml.leaf ("w:rtl");

        xml.close();
    }

    void writeFlags (const Look& look)
    {
        if (look.bold)
            xml.markup ("<w:b/><w:bCs/>");

        if (look.italic)
            xml.markup ("<w:i/><w:iCs/>");

        if (look.struckThrough)
            xml.leaf ("w:strike");
    }

    void writeCharacters (std::string_view part, bool lineFeedFollows)
    {
        while (! part.empty())
        {
            const auto length = std::min (part.find_first_of ("\n\r\t"), part.size());

            if (length > 0)
                xml.leafWithText ("w:t", part.substr (0, length), { { "xml:space", "preserve" } });

            if (length == part.size())
                return;

            const auto sign = part[length];
            part.remove_prefix (length + 1);

            if (sign == '\t')
                xml.leaf ("w:tab");
            else if (sign == '\n'
                     || ! (part.empty() ? lineFeedFollows : part.front() == '\n')) // CR LF is one break
                xml.leaf ("w:br");
        }
    }

    XMLText& xml;
    std::string_view text;
    int points;
    int styleSize;
    std::size_t place = 0;
    std::size_t position = 0;
};

} // namespace

void writeRuns (XMLText& xml, const SizedRichText& text, int styleSize)
{
    RunWriter writer (xml, text.text.text, text.size, styleSize);

    for (const auto& run : text.text.runs)
    {
        writer.write ({}, run.start);
        writer.write (run.look, run.end);
    }

    writer.write ({}, text.text.text.size());
}

void writeRuns (XMLText& xml, const SizedText& text, int styleSize)
{
    RunWriter (xml, text.text, text.size, styleSize).write ({}, text.text.size());
}

void writeWords (XMLText& xml, std::string_view words)
{
    xml.open ("w:r");
    xml.leafWithText ("w:t", words, { { "xml:space", "preserve" } });
    xml.close();
}

} // namespace DocxHandler
