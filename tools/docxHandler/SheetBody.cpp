// SPDX-License-Identifier: GPL-3.0-only
//
// The parts of a document that a reader sees: its body and its footer.
#include "CharacterText.h"
#include "CueBlock.h"
#include "DocumentParts.h"
#include "FrontMatter.h"
#include "RunWriter.h"
#include "WordNames.h"

#include <algorithm>

namespace DocxHandler
{

namespace
{

constexpr int footerDistance = 450; ///< from the paper's edge, in twentieths of a point

void openRoot (XMLText& xml, std::string_view element)
{
    xml.declaration();
    xml.open (element, { { "xmlns:w", WordNames::main },
                         { "xmlns:r", WordNames::relationships },
                         { "xmlns:wp", WordNames::wordDrawing },
                         { "xmlns:a", WordNames::drawing },
                         { "xmlns:pic", WordNames::picture } });
}

void writeSection (XMLText& xml, const Paper& paper, bool hasFooter)
{
    xml.open ("w:sectPr");

    if (hasFooter)
        xml.leaf ("w:footerReference", { { "w:type", "default" }, { "r:id", "rId4" } });

    xml.leaf ("w:pgSz", { { "w:w", paper.width }, { "w:h", paper.height } });
    xml.leaf ("w:pgMar", { { "w:top", Paper::margin },
                           { "w:right", Paper::margin },
                           { "w:bottom", Paper::margin + 100 },
                           { "w:left", Paper::margin },
                           { "w:header", footerDistance },
                           { "w:footer", footerDistance },
                           { "w:gutter", 0 } });
    xml.close();
}

/* The character whose cues follow, on a page of their own. */
void writeBlockHeading (XMLText& xml, const SheetCue& first)
{
    const auto name = trimmed (first.character.text);

    xml.open ("w:p");
    xml.open ("w:pPr");
    xml.leaf ("w:pStyle", { { "w:val", styleIdentifier (Field::blockHeading) } });
    xml.leaf ("w:pageBreakBefore");

    if (readsRightToLeft (name))
        xml.leaf ("w:bidi");

    xml.close();
    writeRuns (xml, SizedText { 0, name.empty() ? "No character" : std::string (name) }, 0);
    xml.close();
}

void writeField (XMLText& xml, std::string_view instruction)
{
    xml.open ("w:fldSimple", { { "w:instr", " " + std::string (instruction) + " " } });
    writeWords (xml, "1");
    xml.close();
}

void writeTab (XMLText& xml) { xml.markup ("<w:r><w:tab/></w:r>"); }

std::string joined (const std::string& a, const std::string& b)
{
    return a.empty() || b.empty() ? a + b : a + "  ·  " + b;
}

} // namespace

std::string documentPart (const Sheet& sheet, const Paper& paper, Icons& icons,
                          const std::function<void (double)>& progress)
{
    std::size_t cueCount = 0;
    std::size_t cuesDone = 0;

    for (const auto& block : sheet.blocks)
        cueCount += block.size();

    constexpr std::size_t usualBytesOfCue = 6000;
    constexpr std::size_t mostCuesExpected = 10000; // a stranger's file may have millions that are empty
    XMLText xml (std::min (cueCount, mostCuesExpected) * usualBytesOfCue);
    openRoot (xml, "w:document");
    xml.open ("w:body");

    if (sheet.frontMatter)
        writeFrontMatter (xml, *sheet.frontMatter, paper);

    CueBlock cueBlock (xml, sheet, paper, icons);

    for (const auto& block : sheet.blocks)
    {
        if (sheet.combined)
            writeBlockHeading (xml, block.front());

        for (const auto& cue : block)
        {
            cueBlock.write (cue);
            progress (static_cast<double> (++cuesDone) / static_cast<double> (cueCount));
        }
    }

    writeSection (xml, paper, sheet.footer.has_value());
    xml.close();
    xml.close();
    return xml.take();
}

std::string footerPart (const SheetFooter& footer, const Paper& paper, Icons& icons)
{
    constexpr double iconHeight = 11.0;

    XMLText xml;
    openRoot (xml, "w:ftr");
    xml.open ("w:p");
    xml.open ("w:pPr");
    xml.leaf ("w:pStyle", { { "w:val", styleIdentifier (Field::footer) } });
    xml.open ("w:tabs");
    xml.leaf ("w:tab", { { "w:val", "center" }, { "w:pos", paper.textWidth() / 2 } });
    xml.leaf ("w:tab", { { "w:val", "right" }, { "w:pos", paper.textWidth() } });
    xml.close();
    xml.close();

    if (icons.write (xml, footer.icon, iconHeight, "Application") && ! footer.version.empty())
        writeWords (xml, "  ");

    writeRuns (xml, SizedText { 0, footer.version }, 0);
    writeTab (xml);
    writeRuns (xml, SizedText { 0, joined (footer.layout, footer.date) }, 0);
    writeTab (xml);
    writeWords (xml, "Page ");
    writeField (xml, "PAGE");
    writeWords (xml, " of ");
    writeField (xml, "NUMPAGES");
    xml.close();
    xml.close();
    return xml.take();
}

} // namespace DocxHandler
