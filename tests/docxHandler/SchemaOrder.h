// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <pugixml.hpp>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace DocxHandler::Testing
{

/** The order in which the elements of a document may follow each other. Word processors are lenient about much, never about
    this: a property out of its place makes some of them call the whole document damaged. An element that isn't listed below its
    parent is a mistake too. */
inline const std::map<std::string, std::vector<std::string>>& schemaOrder()
{
    static const std::vector<std::string> runProperties {
        "w:rStyle",  "w:rFonts",    "w:b",       "w:bCs",        "w:i",        "w:iCs",
        "w:caps",    "w:smallCaps", "w:strike",  "w:dstrike",    "w:outline",  "w:shadow",
        "w:emboss",  "w:imprint",   "w:noProof", "w:snapToGrid", "w:vanish",   "w:webHidden",
        "w:color",   "w:spacing",   "w:w",       "w:kern",       "w:position", "w:sz",
        "w:szCs",    "w:highlight", "w:u",       "w:effect",     "w:bdr",      "w:shd",
        "w:fitText", "w:vertAlign", "w:rtl",     "w:cs",         "w:em",       "w:lang"
    };
    static const std::vector<std::string> sides { "w:top",   "w:left",    "w:bottom",
                                                  "w:right", "w:insideH", "w:insideV" };
    static const std::map<std::string, std::vector<std::string>> order {
        { "w:document", { "w:background", "w:body" } },
        { "w:ftr", { "w:p" } },
        { "w:p", { "w:pPr", "*" } },
        { "w:pPr", { "w:pStyle",  "w:keepNext",      "w:keepLines",     "w:pageBreakBefore",
                     "w:framePr", "w:widowControl",  "w:numPr",         "w:suppressLineNumbers",
                     "w:pBdr",    "w:shd",           "w:tabs",          "w:suppressAutoHyphens",
                     "w:bidi",    "w:spacing",       "w:ind",           "w:contextualSpacing",
                     "w:jc",      "w:textDirection", "w:textAlignment", "w:outlineLvl",
                     "w:rPr" } },
        { "w:rPr", runProperties },
        { "w:r", { "w:rPr", "*" } },
        { "w:fldSimple", { "w:r" } },
        { "w:pBdr", { "w:top", "w:left", "w:bottom", "w:right", "w:between", "w:bar" } },
        { "w:tbl", { "w:tblPr", "w:tblGrid", "w:tr" } },
        { "w:tblPr",
          { "w:tblStyle", "w:tblpPr", "w:tblOverlap", "w:bidiVisual", "w:tblStyleRowBandSize",
            "w:tblStyleColBandSize", "w:tblW", "w:jc", "w:tblCellSpacing", "w:tblInd", "w:tblBorders",
            "w:shd", "w:tblLayout", "w:tblCellMar", "w:tblLook", "w:tblCaption", "w:tblDescription" } },
        { "w:tblBorders", sides },
        { "w:tblCellMar", sides },
        { "w:tblGrid", { "w:gridCol" } },
        { "w:tr", { "w:trPr", "w:tc" } },
        { "w:trPr", { "w:cantSplit", "w:trHeight", "w:tblHeader" } },
        { "w:tc", { "w:tcPr", "w:p" } },
        { "w:tcPr",
          { "w:cnfStyle", "w:tcW", "w:gridSpan", "w:hMerge", "w:vMerge", "w:tcBorders", "w:shd", "w:noWrap",
            "w:tcMar", "w:textDirection", "w:tcFitText", "w:vAlign", "w:hideMark" } },
        { "w:tcBorders", sides },
        { "w:sectPr",
          { "w:headerReference", "w:footerReference", "w:footnotePr", "w:endnotePr", "w:type", "w:pgSz",
            "w:pgMar", "w:paperSrc", "w:pgBorders", "w:lnNumType", "w:pgNumType", "w:cols" } },
        { "w:tabs", { "w:tab" } },
        { "w:drawing", { "wp:inline" } },
        { "wp:inline", { "wp:extent", "wp:effectExtent", "wp:docPr", "wp:cNvGraphicFramePr", "a:graphic" } },
        { "a:graphic", { "a:graphicData" } },
        { "a:graphicData", { "pic:pic" } },
        { "pic:pic", { "pic:nvPicPr", "pic:blipFill", "pic:spPr" } },
        { "pic:nvPicPr", { "pic:cNvPr", "pic:cNvPicPr" } },
        { "pic:blipFill", { "a:blip", "a:srcRect", "a:stretch" } },
        { "a:stretch", { "a:fillRect" } },
        { "pic:spPr", { "a:xfrm", "a:prstGeom" } },
        { "a:xfrm", { "a:off", "a:ext" } },
        { "a:prstGeom", { "a:avLst" } },
        { "w:styles", { "w:docDefaults", "w:latentStyles", "w:style" } },
        { "w:docDefaults", { "w:rPrDefault", "w:pPrDefault" } },
        { "w:rPrDefault", { "w:rPr" } },
        { "w:pPrDefault", { "w:pPr" } },
        { "w:style",
          { "w:name", "w:aliases", "w:basedOn", "w:next", "w:link", "w:autoRedefine", "w:hidden",
            "w:uiPriority", "w:semiHidden", "w:unhideWhenUsed", "w:qFormat", "w:locked", "w:rsid", "w:pPr",
            "w:rPr", "w:tblPr", "w:trPr", "w:tcPr" } },
        { "w:settings",
          { "w:writeProtection", "w:view", "w:zoom", "w:mirrorMargins", "w:proofState",
            "w:documentProtection", "w:defaultTabStop", "w:characterSpacingControl", "w:footnotePr",
            "w:compat", "w:rsids", "w:themeFontLang", "w:clrSchemeMapping", "w:decimalSymbol",
            "w:listSeparator" } },
        { "w:compat", { "w:compatSetting" } },
        { "w:fonts", { "w:font" } },
        { "w:font",
          { "w:altName", "w:panose1", "w:charset", "w:family", "w:notTrueType", "w:pitch", "w:sig" } },
    };
    return order;
}

/** What is out of order below a node; empty if nothing is. */
inline std::vector<std::string> mistakesOfOrder (const pugi::xml_node& top)
{
    std::vector<std::string> mistakes;

    for (const auto& hit : top.select_nodes ("//*"))
    {
        const auto parent = hit.node();
        const auto listed = schemaOrder().find (parent.name());

        if (listed == schemaOrder().end()) // the body, and what holds no elements at all
        {
            if (std::string (parent.name()) != "w:body"
                && parent.find_child ([] (const pugi::xml_node& child)
                                      { return child.type() == pugi::node_element; }))
                mistakes.push_back (std::string ("Not known to hold elements: ") + parent.name());

            continue;
        }

        std::size_t place = 0;

        for (const auto& child : parent.children())
        {
            if (child.type() != pugi::node_element)
                continue;

            const auto& names = listed->second;
            auto found = std::find (names.begin() + static_cast<long> (place), names.end(), child.name());

            if (found == names.end() && ! names.empty() && names.back() == "*")
                found = names.end() - 1;

            if (found == names.end())
                mistakes.push_back (std::string (child.name()) + " in " + parent.name());
            else
                place = static_cast<std::size_t> (found - names.begin());
        }
    }

    return mistakes;
}

} // namespace DocxHandler::Testing
