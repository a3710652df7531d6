// SPDX-License-Identifier: GPL-3.0-only
#include "Icons.h"

#include "Failure.h"
#include "FileBytes.h"
#include "WordNames.h"

#include <algorithm>
#include <cmath>

namespace DocxHandler
{

namespace
{

constexpr std::uintmax_t largestIcon = std::uintmax_t { 4 } << 20U;
constexpr std::size_t mostIcons = 100;

/* Of the header chunk at offset 8: its length, "IHDR", width and height, four bytes each, the highest first. */
constexpr std::string_view pngSignature ("\x89PNG\r\n\x1a\n", 8);
constexpr std::size_t widthOffset = 16;
constexpr std::size_t heightOffset = 20;
constexpr std::size_t headerEnd = 24;

int bigEndian (std::string_view bytes, std::size_t offset)
{
    std::uint32_t value = 0;

    for (std::size_t i = 0; i < 4; ++i)
        value = (value << 8U) | static_cast<unsigned char> (bytes[offset + i]);

    constexpr std::uint32_t largestSide = 10000;
    return value > largestSide ? 0 : static_cast<int> (value);
}

Icons::Picture readPicture (const std::string& file)
{
    Icons::Picture picture;

    try
    {
        auto bytes = readFile (file, largestIcon);

        if (bytes.size() <= headerEnd || ! bytes.starts_with (pngSignature))
            return picture;

        picture.width = bigEndian (bytes, widthOffset);
        picture.height = bigEndian (bytes, heightOffset);

        if (picture.width > 0 && picture.height > 0)
            picture.bytes = std::move (bytes);
    }
    catch (const Failure&)
    {
        return picture;
    }

    return picture;
}

void writePicture (XMLText& xml, const Icons::Picture& picture, long width, long height, int number)
{
    xml.open ("pic:pic");
    xml.open ("pic:nvPicPr");
    xml.leaf ("pic:cNvPr", { { "id", number }, { "name", picture.partName } });
    xml.leaf ("pic:cNvPicPr");
    xml.close();
    xml.open ("pic:blipFill");
    xml.leaf ("a:blip", { { "r:embed", picture.relation } });
    xml.open ("a:stretch");
    xml.leaf ("a:fillRect");
    xml.close();
    xml.close();
    xml.open ("pic:spPr");
    xml.open ("a:xfrm");
    xml.leaf ("a:off", { { "x", 0 }, { "y", 0 } });
    xml.leaf ("a:ext", { { "cx", width }, { "cy", height } });
    xml.close();
    xml.open ("a:prstGeom", { { "prst", "rect" } });
    xml.leaf ("a:avLst");
    xml.close();
    xml.close();
    xml.close();
}

} // namespace

const Icons::Picture& Icons::pictureOf (const std::string& file)
{
    static const Picture none;
    const auto known = pictures.find (file);

    if (known != pictures.end())
        return known->second;

    if (file.empty() || pictures.size() >= mostIcons)
        return none;

    auto picture = readPicture (file);

    if (! picture.bytes.empty())
    {
        const auto number = std::to_string (++lastNumber);
        picture.relation = "rIdImage" + number;
        picture.partName = "media/" + name + number + ".png";
    }

    return pictures.emplace (file, std::move (picture)).first->second;
}

bool Icons::write (XMLText& xml, const std::string& file, double height, std::string_view description)
{
    const auto& picture = pictureOf (file);

    if (picture.bytes.empty())
        return false;

    constexpr double unitsOfPoint = 12700.0;
    const auto high = std::lround (height * unitsOfPoint);
    const auto wide = std::max (1L, std::lround (height * unitsOfPoint * picture.width / picture.height));
    const auto number = ++lastDrawing;

    xml.open ("w:r");
    xml.open ("w:drawing");
    xml.open ("wp:inline", { { "distT", 0 }, { "distB", 0 }, { "distL", 0 }, { "distR", 0 } });
    xml.leaf ("wp:extent", { { "cx", wide }, { "cy", high } });
    xml.leaf ("wp:docPr",
              { { "id", number }, { "name", "Icon " + std::to_string (number) }, { "descr", description } });
    xml.leaf ("wp:cNvGraphicFramePr");
    xml.open ("a:graphic");
    xml.open ("a:graphicData", { { "uri", WordNames::picture } });
    writePicture (xml, picture, wide, high, number);

    for (int i = 0; i < 5; ++i)
        xml.close();

    return true;
}

std::vector<const Icons::Picture*> Icons::shown() const
{
    std::vector<const Picture*> result;

    for (const auto& [file, picture] : pictures)
        if (! picture.bytes.empty())
            result.push_back (&picture);

    std::sort (result.begin(), result.end(),
               [] (const Picture* a, const Picture* b)
               {
                   return a->partName.size() != b->partName.size() ? a->partName.size() < b->partName.size()
                                                                   : a->partName < b->partName;
               });
    return result;
}

} // namespace DocxHandler
