// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookReader.h"

#include "core/documents/OrcusSheet.h"
#include "core/documents/SheetTable.h"
#include "core/documents/SheetText.h"
#include "core/documents/UnreadableWorkbook.h"
#include "core/documents/WorkbookArchive.h"
#include "core/documents/WorkbookParts.h"
#include "core/documents/WorkbookStrings.h"
#include "core/documents/WorkbookStyles.h"
#include "core/documents/WrittenDates.h"
#include "core/text/StringUtil.h"

#include <algorithm>
#include <exception>
#include <new>

namespace ZEP::Core
{
namespace
{

/** The palette stands behind the fonts that have their colours from it, and so is read before them. */
void readStyles (WorkbookStyles& styles, WorkbookColours& colours, const WorkbookArchive& archive,
                 const std::string& part)
{
    if (part.empty())
        return;

    const auto xml = archive.bytesOf (part);
    colours.readPalette (xml);
    styles.take (xml);
    styles.finish();
}

SheetTable::Rows readSheet (const WorkbookArchive& archive, const WorkbookParts& parts,
                            const SheetEntry& sheet)
{
    if (! sheet.isTable)
        throw UnreadableWorkbook (WorkbookWords::isChart);

    WorkbookColours colours;

    if (! parts.theme.empty())
        colours.readTheme (archive.bytesOf (parts.theme));

    WorkbookStyles styles (colours);
    readStyles (styles, colours, archive, parts.styles);
    const auto bytesOfStrings = parts.sharedStrings.empty() ? 0 : archive.sizeOf (parts.sharedStrings);
    WorkbookStrings strings (colours, bytesOfStrings);

    if (! parts.sharedStrings.empty())
        archive.walkThrough (parts.sharedStrings, strings);

    const auto xml = archive.bytesOf (sheet.part);
    SheetTable table ({ strings, styles, WorkbookFonts (styles.plainLook()), parts.countsFrom1904 },
                      SheetTable::mostCells (xml.size()), SheetTable::mostRuns (xml.size() + bytesOfStrings));
    const OrcusSheet orcus (table);
    handOutRows (xml, strings, colours, WrittenDates (styles, parts.countsFrom1904),
                 [&orcus] (std::string_view rows) { orcus.read (rows); });
    auto rows = table.take();

    if (table.isTooLarge())
        throw UnreadableWorkbook (table.isMostlyGaps() ? WorkbookWords::isTooWide
                                                       : WorkbookWords::isTooLarge);

    return rows;
}

const SheetEntry& sheetNamed (const WorkbookParts& parts, const juce::String& name)
{
    const auto sheet = std::find_if (parts.sheets.begin(), parts.sheets.end(),
                                     [&name] (const auto& candidate) {
                                         return StringUtil::fromUTF8 (candidate.name).equalsIgnoreCase (name);
                                     });

    if (sheet == parts.sheets.end())
        throw UnreadableWorkbook (("The workbook has no sheet \"" + name + "\".").toStdString());

    return *sheet;
}

} // namespace

juce::String wordsOfFailure (const std::function<void()>& work)
{
    try
    {
        work();
        return {};
    }
    catch (const UnreadableWorkbook& failure)
    {
        return StringUtil::fromUTF8 (failure.what());
    }
    catch (const std::bad_alloc&)
    {
        throw;
    }
    catch (const std::exception&) // of a library, whose words nobody understands
    {
        return WorkbookWords::isDamaged;
    }
}

juce::String readWorkbook (const juce::String& path, std::vector<std::vector<RichTextString>>& rows)
{
    return wordsOfFailure (
        [&]
        {
            const WorkbookArchive archive (path);
            const auto parts = readWorkbookParts (archive);
            const auto& sheet = parts.sheets[parts.sheetInFront];

            if (! sheet.isTable)
                throw UnreadableWorkbook (WorkbookWords::isChartInFront);

            rows = readSheet (archive, parts, sheet);
        });
}

juce::String readSheetOfWorkbook (const juce::String& path, const juce::String& sheet,
                                  std::vector<std::vector<RichTextString>>& rows)
{
    return wordsOfFailure (
        [&]
        {
            const WorkbookArchive archive (path);
            const auto parts = readWorkbookParts (archive);
            rows = readSheet (archive, parts, sheetNamed (parts, sheet));
        });
}

juce::String readSheetsOfWorkbook (const juce::String& path, std::vector<juce::String>& names,
                                   int& sheetInFront)
{
    return wordsOfFailure (
        [&]
        {
            const auto parts = readWorkbookParts (WorkbookArchive (path));
            names.clear();

            for (const auto& sheet : parts.sheets)
                names.push_back (StringUtil::fromUTF8 (sheet.name));

            sheetInFront = static_cast<int> (parts.sheetInFront);
        });
}

} // namespace ZEP::Core
