// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "DocxContents.h"
#include "Failure.h"
#include "SheetJSON.h"
#include "SheetSupport.h"
#include "WordImport.h"

#include <string>

namespace DocxHandler::Testing
{

inline std::string documentOf (const JSON& json)
{
    return wordDocument (sheetFromJSON (json.dump()), { {}, "en-GB", 0 }, [] (double) {});
}

/** A document of ours with every `from` of its body replaced, as an editor might. */
inline std::string edited (const JSON& json, const std::vector<std::pair<std::string, std::string>>& changes)
{
    auto parts = partsOf (documentOf (json));
    auto& body = parts.at ("word/document.xml");

    for (const auto& [from, to] : changes)
    {
        auto place = body.find (from);
        EXPECT_NE (place, std::string::npos) << from;

        for (; place != std::string::npos; place = body.find (from, place + to.size()))
            body.replace (place, from.size(), to);
    }

    return packed (parts);
}

/** A package of the least parts around a body. */
inline std::string documentAround (const std::string& body, const std::string& styles = {})
{
    std::map<std::string, std::string> parts {
        { "_rels/.rels",
          R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="r" )"
          R"(Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="word/document.xml"/></Relationships>)" },
        { "word/document.xml",
          R"(<?xml version="1.0"?><w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main"><w:body>)"
              + body + "</w:body></w:document>" }
    };

    if (! styles.empty())
    {
        parts["word/styles.xml"] = R"(<w:styles xmlns:w="x">)" + styles + "</w:styles>";
        parts["word/_rels/document.xml.rels"] =
            R"(<Relationships><Relationship Id="r" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles" Target="styles.xml"/></Relationships>)";
    }

    return packed (parts);
}

inline std::string paragraphXML (const std::string& text)
{
    return "<w:p><w:r><w:t xml:space=\"preserve\">" + text + "</w:t></w:r></w:p>";
}

inline std::string cellXML (const std::string& text, const std::string& properties = {})
{
    return "<w:tc>" + (properties.empty() ? "" : "<w:tcPr>" + properties + "</w:tcPr>") + paragraphXML (text)
           + "</w:tc>";
}

inline std::string rowXML (const std::vector<std::string>& texts)
{
    std::string row = "<w:tr>";

    for (const auto& text : texts)
        row += cellXML (text);

    return row + "</w:tr>";
}

inline std::string tableXML (const std::vector<std::vector<std::string>>& rows)
{
    std::string table = "<w:tbl>";

    for (const auto& row : rows)
        table += rowXML (row);

    return table + "</w:tbl>";
}

/** What a refusal says; empty if there is none. */
inline std::string refusalOf (const std::string& document)
{
    try
    {
        static_cast<void> (cuesOfWordDocument (document));
        return {};
    }
    catch (const Failure& failure)
    {
        return failure.what();
    }
}

/** The cue that fullCueJSON() shows. */
inline ImportedCue fullCue()
{
    ImportedCue cue { "01:00:07:01", "01:00:11:07", "ANNA", "R1-001", "Aeroplane", "Top", {}, {}, {} };
    Look bold, italic, struck;
    bold.bold = true;
    italic.italic = italic.underlined = true;
    italic.colour = 0xffc00000;
    struck.struckThrough = true;
    cue.text = { "No.\nNot \xe2\x99\xaa again\t& <never>.",
                 { { 0, 2, bold }, { 4, 9, italic }, { 10, 12, struck } } };
    cue.notes = { "Softer.", { { 0, 7, bold } } };
    cue.engineeringNotes = { "Use the lavalier.", {} };
    return cue;
}

} // namespace DocxHandler::Testing

namespace DocxHandler
{

inline void PrintTo (const ImportedCue& cue, std::ostream* stream) { *stream << cueListJSON ({ cue }); }

} // namespace DocxHandler
