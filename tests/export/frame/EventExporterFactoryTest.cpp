// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/EventExporterFactory.h"

#include "export/EventCSVExporter.h"
#include "export/EventExcelExporter.h"
#include "export/word/EventWordExporter.h"

#include <gtest/gtest.h>
#include <map>

using namespace ZEP::Overmarks;

namespace
{

std::shared_ptr<EventExportSettingsSet> settingsOfKind (int kind)
{
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = static_cast<EventExportType> (kind);
    return settings;
}

} // namespace

class KindsWithoutAnExporter : public ::testing::TestWithParam<int>
{
};

TEST_P (KindsWithoutAnExporter, yieldNone)
{
    EXPECT_EQ (EventExporterFactory::eventExporter (settingsOfKind (GetParam())), nullptr);
}

INSTANTIATE_TEST_SUITE_P (EventExporterFactory, KindsWithoutAnExporter,
                          ::testing::Values (0, 4, 5, 8, -1, 1 << 30));

TEST (EventExporterFactory, makesTheDelimitedTextExporter)
{
    const auto settings = settingsOfKind (3);
    const auto exporter = EventExporterFactory::eventExporter (settings);
    ASSERT_NE (dynamic_cast<EventCSVExporter*> (exporter.get()), nullptr);
    EXPECT_EQ (exporter->type(), EventExportTypeCSV);
    EXPECT_EQ (exporter->settings, settings);
    EXPECT_EQ (exporter->delegate, nullptr);
}

TEST (EventExporterFactory, makesTheWorkbookExporter)
{
    const auto settings = settingsOfKind (7);
    const auto exporter = EventExporterFactory::eventExporter (settings);
    ASSERT_NE (dynamic_cast<EventExcelExporter*> (exporter.get()), nullptr);
    EXPECT_EQ (exporter->type(), EventExportTypeExcel);
    EXPECT_EQ (exporter->settings, settings);
    EXPECT_EQ (exporter->delegate, nullptr);
}

TEST (EventExporterFactory, makesTheWordExporter)
{
    const auto settings = settingsOfKind (2);
    const auto exporter = EventExporterFactory::eventExporter (settings);
    ASSERT_NE (dynamic_cast<EventWordExporter*> (exporter.get()), nullptr);
    EXPECT_EQ (exporter->type(), EventExportTypeWord);
    EXPECT_EQ (exporter->settings, settings);
}

TEST (EventExporterFactory, makesAnExporterOfItsOwnForEachExport)
{
    const auto settings = settingsOfKind (3);
    EXPECT_NE (EventExporterFactory::eventExporter (settings),
               EventExporterFactory::eventExporter (settings));
}

TEST (EventExporterFactory, emptySettingsHaveNoExporter)
{
    EXPECT_EQ (EventExporterFactory::eventExporter (nullptr), nullptr);
}

TEST (EventExporterFactory, callsEachKindByTheNameThatPeopleReadInTheListOfFormats)
{
    std::map<juce::String, juce::String> names;

    for (const auto& format : EventExporterFactory::formats())
        names[format.extension] = format.name;

    EXPECT_EQ (names, (std::map<juce::String, juce::String> { { ".pdf", "PDF document" },
                                                              { ".docx", "Word document" },
                                                              { ".csv", "Delimited text" },
                                                              { ".ttal", "TTAL cue list" },
                                                              { ".xlsx", "Excel workbook" },
                                                              { ".asc", "ASC cue list" },
                                                              { ".txt", "Arendis cue list" } }));
}

TEST (EventExporterFactory, listsEveryKindInTheOrderOfItsNumber)
{
    std::map<int, juce::String> extensions;
    int last = 0;

    for (const auto& format : EventExporterFactory::formats())
    {
        EXPECT_GT (format.type, last);
        EXPECT_TRUE (format.name.isNotEmpty());
        last = format.type;
        extensions[format.type] = format.extension;
    }

    const std::map<int, juce::String> expected { { 1, ".pdf" }, { 2, ".docx" }, { 3, ".csv" }, { 4, ".asc" },
                                                 { 5, ".txt" }, { 6, ".ttal" }, { 7, ".xlsx" } };
    EXPECT_EQ (extensions, expected);
}

TEST (EventExporterFactory, offersExactlyWhatItMakes)
{
    for (const auto& format : EventExporterFactory::formats())
    {
        const auto exporter = EventExporterFactory::eventExporter (settingsOfKind (format.type));
        EXPECT_EQ (exporter != nullptr, format.available && format.madeByFactory) << format.name;

        if (exporter != nullptr)
        {
            EXPECT_EQ (exporter->type(), format.type);
        }
    }
}

TEST (EventExporterFactory, textFilesOfFixedWidthAreCalledDirectly)
{
    for (const auto& format : EventExporterFactory::formats())
        EXPECT_EQ (format.madeByFactory,
                   format.type != EventExportTypeASC && format.type != EventExportTypeArendis);
}

TEST (EventExporter, cancellingDoesNothingWhereAnExporterCannotBeStopped)
{
    EventCSVExporter exporter (settingsOfKind (3));
    exporter.cancel();
    EXPECT_EQ (exporter.csvString, "");
    EXPECT_EQ (exporter.textEncoding, 2);
    EXPECT_EQ (exporter.maxSubcueCount, -1);
    EXPECT_EQ (exporter.delimiter, 0);
    EXPECT_TRUE (exporter.columnKeys.empty());
    EXPECT_TRUE (exporter.cueBySubcueMap.empty());
}
