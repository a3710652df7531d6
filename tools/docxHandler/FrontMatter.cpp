// SPDX-License-Identifier: GPL-3.0-only
#include "FrontMatter.h"

#include "CharacterText.h"
#include "RunWriter.h"
#include "SheetStyles.h"

namespace DocxHandler
{

namespace
{

constexpr int columns = 2;
constexpr int gapBelow = 200;

struct Entry
{
    std::string_view label;
    std::string_view value;
};

std::vector<Entry> filledEntries (const SheetFrontMatter& frontMatter)
{
    std::vector<Entry> entries { { "SOUND SUPERVISOR", frontMatter.soundSupervisor },
                                 { "PRODUCED BY", frontMatter.productionCompany },
                                 { "SOUND STUDIO", frontMatter.studio },
                                 { "TIMELINE NAME", frontMatter.timeline } };
    std::erase_if (entries, [] (const Entry& entry) { return trimmed (entry.value).empty(); });

    if (entries.size() % columns != 0)
        entries.push_back ({});

    entries.push_back ({ "EPISODE/REEL", frontMatter.episodeReel });
    entries.push_back ({ "PICTURE VERSION", frontMatter.pictureVersion });
    return entries;
}

class FrontMatterTable final
{
public:
    FrontMatterTable (XMLText& destination, const Paper& paper)
        : xml (destination),
          columnWidth (paper.textWidth() / columns)
    {
    }

    void writeHead()
    {
        xml.open ("w:tblPr");
        xml.leaf ("w:tblW", { { "w:w", columns * columnWidth }, { "w:type", "dxa" } });
        xml.leaf ("w:jc", { { "w:val", "center" } });
        xml.open ("w:tblBorders");

        for (const auto* side : { "w:top", "w:left", "w:bottom", "w:right", "w:insideH", "w:insideV" })
            xml.leaf (side,
                      { { "w:val", "single" }, { "w:sz", 4 }, { "w:space", 0 }, { "w:color", "A0A0A0" } });

        xml.close();
        xml.leaf ("w:tblLayout", { { "w:type", "fixed" } });
        xml.markup (R"(<w:tblCellMar><w:top w:w="40" w:type="dxa"/><w:left w:w="90" w:type="dxa"/>)"
                    R"(<w:bottom w:w="40" w:type="dxa"/><w:right w:w="90" w:type="dxa"/></w:tblCellMar>)");
        xml.close();
        xml.open ("w:tblGrid");

        for (int i = 0; i < columns; ++i)
            xml.leaf ("w:gridCol", { { "w:w", columnWidth } });

        xml.close();
    }

    void writeWideRow (const Entry& entry, Field valueStyle, std::string_view fill)
    {
        openRow();
        writeCell (entry, columns, valueStyle, fill);
        xml.close();
    }

    void writePairs (const std::vector<Entry>& entries)
    {
        for (std::size_t i = 0; i + 1 < entries.size(); i += columns)
        {
            openRow();
            writeCell (entries[i], 1, Field::frontMatterValue, {});
            writeCell (entries[i + 1], 1, Field::frontMatterValue, {});
            xml.close();
        }
    }

private:
    void openRow()
    {
        xml.open ("w:tr");
        xml.markup ("<w:trPr><w:cantSplit/></w:trPr>");
    }

    void writeCell (const Entry& entry, int columnCount, Field valueStyle, std::string_view fill)
    {
        xml.open ("w:tc");
        xml.open ("w:tcPr");
        xml.leaf ("w:tcW", { { "w:w", columnCount * columnWidth }, { "w:type", "dxa" } });

        if (columnCount > 1)
            xml.leaf ("w:gridSpan", { { "w:val", columnCount } });

        if (! fill.empty())
            xml.leaf ("w:shd", { { "w:val", "clear" }, { "w:color", "auto" }, { "w:fill", fill } });

        xml.close();
        writeParagraph (Field::frontMatterLabel, entry.label);
        writeParagraph (valueStyle, entry.value);
        xml.close();
    }

    void writeParagraph (Field style, std::string_view text)
    {
        xml.open ("w:p");
        xml.open ("w:pPr");
        xml.leaf ("w:pStyle", { { "w:val", styleIdentifier (style) } });

        if (readsRightToLeft (text))
            xml.leaf ("w:bidi");

        xml.close();
        writeRuns (xml, SizedText { 0, std::string (text) }, 0);
        xml.close();
    }

    XMLText& xml;
    int columnWidth;
};

} // namespace

void writeFrontMatter (XMLText& xml, const SheetFrontMatter& frontMatter, const Paper& paper)
{
    FrontMatterTable table (xml, paper);

    xml.open ("w:tbl");
    table.writeHead();

    if (! trimmed (frontMatter.projectName).empty())
        table.writeWideRow ({ "PROJECT", frontMatter.projectName }, Field::frontMatterTitle, "ECF5FF");

    if (! trimmed (frontMatter.projectFile).empty())
        table.writeWideRow ({ "PROJECT FILE", frontMatter.projectFile }, Field::frontMatterValue, {});

    table.writePairs (filledEntries (frontMatter));

    if (! trimmed (frontMatter.charactersAndActors).empty())
        table.writeWideRow ({ "CHARACTERS (ACTORS)", frontMatter.charactersAndActors },
                            Field::frontMatterValue, {});

    xml.close();
    xml.open ("w:p");
    xml.open ("w:pPr");
    xml.leaf ("w:pStyle", { { "w:val", styleIdentifier (Field::spacing) } });
    xml.leaf ("w:spacing", { { "w:after", gapBelow } });
    xml.close();
    xml.close();
}

} // namespace DocxHandler
