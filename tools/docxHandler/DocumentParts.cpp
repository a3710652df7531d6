// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentParts.h"

#include "CharacterText.h"
#include "WordNames.h"

#include <array>
#include <charconv>
#include <clocale>
#include <cstdlib>

namespace DocxHandler
{

namespace
{

std::string timestamp (std::time_t time)
{
    std::tm parts {};
    ::gmtime_r (&time, &parts);
    std::array<char, 32> text {};
    return { text.data(), std::strftime (text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts) };
}

std::time_t presentTime()
{
    const auto* fixed = std::getenv ("SOURCE_DATE_EPOCH");
    const std::string_view digits = fixed == nullptr ? "" : fixed;
    std::time_t time = 0;
    const auto [end, error] = std::from_chars (digits.data(), digits.data() + digits.size(), time);
    const auto isFixed = ! digits.empty() && error == std::errc() && end == digits.data() + digits.size();
    return isFixed ? time : std::time (nullptr);
}

void writeRelation (XMLText& xml, std::string_view identifier, std::string_view type, std::string_view target)
{
    xml.leaf ("Relationship", { { "Id", identifier }, { "Type", type }, { "Target", target } });
}

std::string relationType (std::string_view kind)
{
    return WordNames::relationships + ("/" + std::string (kind));
}

void openRelations (XMLText& xml)
{
    xml.declaration();
    xml.open ("Relationships", { { "xmlns", WordNames::packageRelationships } });
}

void writePictureRelations (XMLText& xml, const Icons& icons)
{
    for (const auto* picture : icons.shown())
        writeRelation (xml, picture->relation, relationType ("image"), picture->partName);
}

std::string titleOf (const Sheet& sheet)
{
    const auto name = sheet.frontMatter ? trimmed (sheet.frontMatter->projectName) : std::string_view();
    return name.empty() ? "Cue sheet" : onOneLine (name);
}

} // namespace

std::string languageOfLocale (std::string_view locale)
{
    const auto isLetter = [] (char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    const auto name = locale.substr (0, locale.find_first_of (".@"));
    const auto language = name.substr (0, name.find ('_'));
    const auto country =
        name.size() > language.size() ? name.substr (language.size() + 1) : std::string_view();

    if (language.size() < 2 || language.size() > 3 || language == "C" || ! isLetter (language.front()))
        return "en-US";

    return country.size() == 2 ? std::string (language) + "-" + std::string (country)
                               : std::string (language);
}

Surroundings Surroundings::ofEnvironment()
{
    Surroundings result;
    result.paper = Paper::ofLocale();
    const auto* locale = std::setlocale (LC_MESSAGES, "");
    result.language = languageOfLocale (locale == nullptr ? "" : locale);
    result.now = presentTime();
    return result;
}

std::string contentTypesPart (bool hasFooter)
{
    constexpr auto word = "application/vnd.openxmlformats-officedocument.wordprocessingml.";
    XMLText xml;
    const auto part = [&xml] (std::string_view name, const std::string& type) {
        xml.leaf ("Override", { { "PartName", name }, { "ContentType", type } });
    };

    xml.declaration();
    xml.open ("Types", { { "xmlns", WordNames::contentTypes } });
    xml.leaf ("Default", { { "Extension", "rels" },
                           { "ContentType", "application/vnd.openxmlformats-package.relationships+xml" } });
    xml.leaf ("Default", { { "Extension", "xml" }, { "ContentType", "application/xml" } });
    xml.leaf ("Default", { { "Extension", "png" }, { "ContentType", "image/png" } });
    part ("/word/document.xml", std::string (word) + "document.main+xml");
    part ("/word/styles.xml", std::string (word) + "styles+xml");
    part ("/word/settings.xml", std::string (word) + "settings+xml");
    part ("/word/fontTable.xml", std::string (word) + "fontTable+xml");

    if (hasFooter)
        part ("/word/footer1.xml", std::string (word) + "footer+xml");

    part ("/docProps/core.xml", "application/vnd.openxmlformats-package.core-properties+xml");
    part ("/docProps/app.xml", "application/vnd.openxmlformats-officedocument.extended-properties+xml");
    xml.close();
    return xml.take();
}

std::string packageRelationsPart()
{
    XMLText xml;
    openRelations (xml);
    writeRelation (xml, "rId1", relationType ("officeDocument"), "word/document.xml");
    writeRelation (xml, "rId2", std::string (WordNames::packageRelationships) + "/metadata/core-properties",
                   "docProps/core.xml");
    writeRelation (xml, "rId3", relationType ("extended-properties"), "docProps/app.xml");
    xml.close();
    return xml.take();
}

std::string documentRelationsPart (const Icons& icons, bool hasFooter)
{
    XMLText xml;
    openRelations (xml);
    writeRelation (xml, "rId1", relationType ("styles"), "styles.xml");
    writeRelation (xml, "rId2", relationType ("settings"), "settings.xml");
    writeRelation (xml, "rId3", relationType ("fontTable"), "fontTable.xml");

    if (hasFooter)
        writeRelation (xml, "rId4", relationType ("footer"), "footer1.xml");

    writePictureRelations (xml, icons);
    xml.close();
    return xml.take();
}

std::string footerRelationsPart (const Icons& icons)
{
    XMLText xml;
    openRelations (xml);
    writePictureRelations (xml, icons);
    xml.close();
    return xml.take();
}

std::string settingsPart (std::string_view language)
{
    constexpr auto word = "http://schemas.microsoft.com/office/word";

    XMLText xml;
    xml.declaration();
    xml.open ("w:settings", { { "xmlns:w", WordNames::main } });
    xml.leaf ("w:zoom", { { "w:percent", 100 } });
    xml.leaf ("w:defaultTabStop", { { "w:val", 720 } });
    xml.leaf ("w:characterSpacingControl", { { "w:val", "doNotCompress" } });
    xml.open ("w:compat");
    xml.leaf ("w:compatSetting", { { "w:name", "compatibilityMode" }, { "w:uri", word }, { "w:val", 15 } });
    xml.close();
    xml.leaf ("w:themeFontLang", { { "w:val", language } });
    xml.leaf ("w:decimalSymbol", { { "w:val", "." } });
    xml.leaf ("w:listSeparator", { { "w:val", "," } });
    xml.close();
    return xml.take();
}

std::string fontTablePart()
{
    XMLText xml;
    xml.declaration();
    xml.open ("w:fonts", { { "xmlns:w", WordNames::main } });
    xml.open ("w:font", { { "w:name", "Arial" } });
    xml.leaf ("w:altName", { { "w:val", "Liberation Sans" } });
    xml.leaf ("w:family", { { "w:val", "swiss" } });
    xml.leaf ("w:pitch", { { "w:val", "variable" } });
    xml.close();
    xml.close();
    return xml.take();
}

std::string corePropertiesPart (const Sheet& sheet, const Surroundings& surroundings)
{
    const XMLText::Attribute type ("xsi:type", "dcterms:W3CDTF");
    XMLText xml;
    xml.declaration();
    xml.open ("cp:coreProperties",
              { { "xmlns:cp", "http://schemas.openxmlformats.org/package/2006/metadata/core-properties" },
                { "xmlns:dc", "http://purl.org/dc/elements/1.1/" },
                { "xmlns:dcterms", "http://purl.org/dc/terms/" },
                { "xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance" } });
    xml.leafWithText ("dc:title", titleOf (sheet));
    xml.leafWithText ("dc:subject", sheet.footer ? sheet.footer->layout : std::string());
    xml.leafWithText ("dc:creator", sheet.frontMatter ? sheet.frontMatter->soundSupervisor : std::string());
    xml.leafWithText ("dcterms:created", timestamp (surroundings.now), { type });
    xml.leafWithText ("dcterms:modified", timestamp (surroundings.now), { type });
    xml.leafWithText ("dc:language", surroundings.language);
    xml.close();
    return xml.take();
}

std::string applicationPropertiesPart (const Sheet& sheet)
{
    XMLText xml;
    xml.declaration();
    xml.open ("Properties",
              { { "xmlns", "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties" } });
    xml.leafWithText ("Application", "Overmarks");
    xml.leafWithText ("Company", sheet.frontMatter ? sheet.frontMatter->productionCompany : std::string());
    xml.close();
    return xml.take();
}

} // namespace DocxHandler
