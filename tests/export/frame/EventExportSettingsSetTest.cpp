// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/EventExportSettingsSet.h"

#include <gtest/gtest.h>
#include <tuple>
#include <type_traits>

using namespace ZEP::Overmarks;

TEST (EventExportSettingsSet, optionsHaveTheirKeys)
{
    EXPECT_EQ (EventExportCSVDelimiterKey, "EventExportCSVDelimiter");
    EXPECT_EQ (EventExportCSVTemplateKey, "EventExportCSVTemplate");
    EXPECT_EQ (EventExportCombineIntoSingleFileKey, "EventExportCombineIntoSingleFile");
    EXPECT_EQ (EventExportAppVersionKey, "EventExportAppVersion");
    EXPECT_EQ (EventExportAppIconKey, "EventExportAppIcon");
    EXPECT_EQ (EventExportADRCueDefaultReasonsKey, "EventExportADRCueDefaultReasons");
    EXPECT_EQ (EventExportADRCueUserReasonsKey, "EventExportADRCueUserReasons");
}

TEST (EventExportSettingsSet, documentsHaveTheirUsualNames)
{
    EXPECT_EQ (kExportedEventsPDFFileName, "Dublane - Event List.pdf");
    EXPECT_EQ (kExportedADROverviewPDFFilename, "Dublane - ADR Overview Sheet.pdf");
}

TEST (EventExportSettingsSet, recordsKeepTheOrderOfTheirFields)
{
    const auto [path, project, studio, supervisor, company] =
        EventExportProjectSettings { "a", "b", "c", "d", "e" };
    EXPECT_EQ (path + project + studio + supervisor + company, "abcde");

    const auto [timeline, reel, version, language, timecode] =
        EventExportTimelineSettings { "f", "g", "h", "i", { 1 } };
    EXPECT_EQ (timeline + reel + version + language, "fghi");
    EXPECT_EQ (timecode.hours, 1);

    const EventExportSettingsSet set {
        { { "key", 7 } },       {},   {},     {},    { { "id", {} } }, EventExportTypeWord,
        EventExportLayoutActor, true, "/out", "name"
    };
    EXPECT_EQ (static_cast<int> (set.options.at ("key")), 7);
    EXPECT_EQ (set.eventsByCharacter.count ("id"), 1u);
    EXPECT_EQ (set.exportType, 2);
    EXPECT_EQ (set.layout, 2);
    EXPECT_TRUE (set.showTakeNumbers);
    EXPECT_EQ (set.outputDirectory + "/" + set.fileName, "/out/name");
}

TEST (EventExportSettingsSet, kindAndLayoutAreNumbersOf32Bits)
{
    static_assert (sizeof (EventExportType) == 4 && sizeof (EventExportLayout) == 4);
    const EventExportSettingsSet untouched;
    EXPECT_EQ (untouched.exportType, EventExportTypeNone);
    EXPECT_FALSE (untouched.showTakeNumbers);
}

class ExportTypeNames : public ::testing::TestWithParam<std::pair<int, const char*>>
{
};

TEST_P (ExportTypeNames, areWrittenIntoTheLog)
{
    const auto [number, name] = GetParam();
    EXPECT_EQ (exportTypeName (static_cast<EventExportType> (number)), name);
}

INSTANTIATE_TEST_SUITE_P (EventExportType, ExportTypeNames,
                          ::testing::Values (std::pair (0, "None"), std::pair (1, "PDF"),
                                             std::pair (2, "Word"), std::pair (3, "CSV"),
                                             std::pair (4, "ASC"), std::pair (5, "Arendis"),
                                             std::pair (6, "TTAL"), std::pair (7, "Excel"),
                                             std::pair (8, "None"), std::pair (-1, "None")));

class ExportLayoutNames : public ::testing::TestWithParam<std::pair<int, const char*>>
{
};

TEST_P (ExportLayoutNames, standInTheFooter)
{
    const auto [number, name] = GetParam();
    EXPECT_EQ (exportLayoutName (static_cast<EventExportLayout> (number)), name);
}

INSTANTIATE_TEST_SUITE_P (EventExportLayout, ExportLayoutNames,
                          ::testing::Values (std::pair (1, "Director Layout"), std::pair (2, "Actor Layout"),
                                             std::pair (3, "Engineer Layout"),
                                             std::pair (0, "Engineer Layout"),
                                             std::pair (99, "Engineer Layout")));
