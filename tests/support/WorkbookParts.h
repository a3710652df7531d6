// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "support/ZipArchive.h"

#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** A workbook as a test writes it down: the XML of its parts, with the usual ones where the test says nothing.

        WorkbookParts book;
        book.sheetData = R"(<row r="1"><c r="A1" t="inlineStr"><is><t>Hello</t></is></c></row>)";
        const auto bytes = book.zipped();
*/
struct WorkbookParts
{
    /** The content of the element "sheetData" of the only sheet, unless there are `sheets`. */
    std::string sheetData;

    struct Sheet
    {
        std::string name;
        std::string sheetData;
        std::string attributes; ///< of the workbook's element "sheet": state="hidden"
    };

    std::vector<Sheet> sheets;
    std::string workbookPr;           ///< attributes: date1904="1"
    std::string workbookView;         ///< attributes: activeTab="1"
    std::vector<std::string> strings; ///< the shared ones: contents of "si"
    std::string styles;               ///< content of "styleSheet"
    std::string theme;                ///< content of the theme's "clrScheme"
    Parts others;                     ///< put in, or in place of the part of that name
    std::vector<std::string> leftOut; ///< names of parts

    static std::string xml (const std::string& element, const std::string& content)
    {
        return R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
               "\n<"
               + element + R"( xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )"
               + R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)" + content
               + "</" + element + ">";
    }

    static std::string relation (const std::string& id, const std::string& kind, const std::string& target)
    {
        return "<Relationship Id=\"" + id
               + R"(" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/)" + kind
               + "\" Target=\"" + target + "\"/>";
    }

    static std::string relations (const std::string& content)
    {
        return R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
               + content + "</Relationships>";
    }

    Parts parts() const
    {
        const auto all = sheets.empty() ? std::vector<Sheet> { { "Cues", sheetData, "" } } : sheets;
        std::string entries;
        std::string targets = relation ("rId900", "styles", "styles.xml")
                              + relation ("rId901", "sharedStrings", "sharedStrings.xml")
                              + relation ("rId902", "theme", "theme/theme1.xml");
        Parts result;

        for (std::size_t i = 0; i < all.size(); ++i)
        {
            const auto number = std::to_string (i + 1);
            entries += "<sheet name=\"" + all[i].name + "\" sheetId=\"" + number + "\" " + all[i].attributes
                       + " r:id=\"rId" + number + "\"/>";
            targets += relation ("rId" + number, "worksheet", "worksheets/sheet" + number + ".xml");
            result.emplace_back ("xl/worksheets/sheet" + number + ".xml",
                                 xml ("worksheet", "<sheetData>" + all[i].sheetData + "</sheetData>"));
        }

        const auto view = workbookView.empty()
                              ? std::string()
                              : "<bookViews><workbookView " + workbookView + "/></bookViews>";
        result.emplace_back ("[Content_Types].xml", "<Types/>");
        result.emplace_back ("_rels/.rels",
                             relations (relation ("rId1", "officeDocument", "xl/workbook.xml")));
        result.emplace_back ("xl/workbook.xml", xml ("workbook", "<workbookPr " + workbookPr + "/>" + view
                                                                     + "<sheets>" + entries + "</sheets>"));
        result.emplace_back ("xl/_rels/workbook.xml.rels", relations (targets));
        result.emplace_back ("xl/styles.xml", xml ("styleSheet", styles));
        result.emplace_back ("xl/sharedStrings.xml", xml ("sst", joined (strings)));
        result.emplace_back ("xl/theme/theme1.xml", "<a:theme xmlns:a=\"a\"><a:themeElements><a:clrScheme>"
                                                        + theme
                                                        + "</a:clrScheme></a:themeElements></a:theme>");
        return withOthers (std::move (result));
    }

    std::string zipped() const { return Testing::zipped (parts()); }

private:
    static std::string joined (const std::vector<std::string>& items)
    {
        std::string all;

        for (const auto& item : items)
            all += "<si>" + item + "</si>";

        return all;
    }

    Parts withOthers (Parts result) const
    {
        for (const auto& other : others)
        {
            std::erase_if (result, [&] (const auto& part) { return part.first == other.first; });
            result.push_back (other);
        }

        for (const auto& name : leftOut)
            std::erase_if (result, [&] (const auto& part) { return part.first == name; });

        return result;
    }
};

} // namespace ZEP::Overmarks::Testing
