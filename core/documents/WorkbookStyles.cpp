// SPDX-License-Identifier: GPL-3.0-only
//   styleSheet / numFmts / numFmt     numFmtId, formatCode
//              / fonts / font         see CellLook.cpp; the first one is that of plain text
//              / cellXfs / xf         fontId, numFmtId; a cell names its place in this list, from 0
#include "core/documents/WorkbookStyles.h"

namespace ZEP::Core
{
namespace
{

constexpr int depthOfSection = 2;
constexpr int depthOfItem = 3;
constexpr int depthOfDetail = 4;

} // namespace

CellLook WorkbookStyles::plainLook() const { return fonts.empty() ? CellLook() : fonts.front(); }

const CellLook& WorkbookStyles::lookOf (std::size_t style) const
{
    return style < cellFormats.size() && cellFormats[style].font < fonts.size()
               ? fonts[cellFormats[style].font]
               : nothing;
}

const NumberFormat& WorkbookStyles::formatOf (std::size_t style) const
{
    return style < cellFormats.size() ? *cellFormats[style].numbers : general;
}

void WorkbookStyles::elementStarts (std::string_view name, const PartAttributes& attributes)
{
    if (depth() == depthOfSection)
        section = name;
    else if (depth() == depthOfItem && section == "numFmts" && name == "numFmt")
        codes[attributes.number ("numFmtId", -1)] = attributes["formatCode"];
    else if (depth() == depthOfItem && section == "fonts" && name == "font")
        fonts.emplace_back();
    else if (depth() == depthOfItem && section == "cellXfs" && name == "xf")
        addCellFormat (attributes);
    else if (depth() == depthOfDetail && section == "fonts" && ! fonts.empty())
        applyToLook (fonts.back(), name, attributes, colours);
}

void WorkbookStyles::elementEnds (std::string_view) {}

void WorkbookStyles::addCellFormat (const PartAttributes& attributes)
{
    cellFormats.push_back ({ static_cast<std::size_t> (attributes.number ("fontId", 0)),
                             &formatWithNumber (attributes.number ("numFmtId", 0)) });
}

const NumberFormat& WorkbookStyles::formatWithNumber (int number)
{
    if (const auto known = formats.find (number); known != formats.end())
        return known->second;

    const auto own = codes.find (number);
    return formats
        .emplace (number, NumberFormat (own != codes.end() ? own->second : NumberFormat::usualCode (number)))
        .first->second;
}

} // namespace ZEP::Core
