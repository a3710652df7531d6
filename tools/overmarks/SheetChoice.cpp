// SPDX-License-Identifier: GPL-3.0-only
#include "SheetChoice.h"

#include "Suggestion.h"

#include "core/documents/ExcelFileHandler.h"
#include "core/text/StringUtil.h"
#include "import/ExcelEventFileImporter.h"

#include <algorithm>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

std::vector<std::string> texts (const std::vector<juce::String>& names)
{
    std::vector<std::string> result;

    for (const auto& name : names)
        result.push_back (name.toStdString());

    return result;
}

} // namespace

juce::String SheetReport::words() const
{
    std::vector<std::string> others;

    for (const auto& name : names)
        if (name != sheetRead)
            others.push_back (name.toStdString());

    return "the sheet \"" + sheetRead + "\" is read"
           + (others.empty() ? juce::String()
                             : "; the workbook also has " + StringUtil::fromUTF8 (joined (others)));
}

std::optional<SheetReport> readWantedSheet (EventFileImporter& importer, const std::string& option,
                                            const std::string& wanted, juce::String& error)
{
    auto* workbook = dynamic_cast<ExcelEventFileImporter*> (&importer);

    if (workbook == nullptr)
        return std::nullopt;

    SheetReport report;
    int sheetInFront = 0;
    juce::String failure;
    ExcelFileHandler().readSheetNames (importer.filePath, report.names, sheetInFront, failure);

    if (failure.isNotEmpty()) // which is the importer's too
        return std::nullopt;

    report.sheetRead = report.names[static_cast<std::size_t> (sheetInFront)];

    if (wanted.empty())
        return report;

    const auto name = StringUtil::fromUTF8 (wanted);
    const auto found =
        std::find_if (report.names.begin(), report.names.end(),
                      [&name] (const auto& candidate) { return candidate.equalsIgnoreCase (name); });

    if (found == report.names.end())
        refuseValue (option, wanted, texts (report.names));

    error.clear();
    importer.rows.clear();
    importer.columnMap.clear();
    workbook->parseSheet (*found, error);
    report.sheetRead = *found;
    return report;
}

} // namespace overmarks
