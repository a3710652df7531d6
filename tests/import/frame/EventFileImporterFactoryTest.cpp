// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventFileImporterFactory.h"

#include "import/CSVEventFileImporter.h"
#include "import/ImportSupport.h"
#include "support/StandInTool.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using ImportSupport::dataFile;
using ImportSupport::TemporaryFolder;

namespace
{

/** The importer of a path, and what it said. */
struct Made
{
    std::shared_ptr<EventFileImporter> importer;
    juce::String message;
};

Made made (const juce::String& path)
{
    Made result;
    result.importer = EventFileImporterFactory::fileImporterWithFilepath (path, result.message, {}, {});
    return result;
}

/** dBase tables and STL subtitles never say what is wrong with a file. */
bool isSilentFormat (int type) { return type == 1 || type == 4; }

} // namespace

TEST (EventFileImporterFactory, knowsNineFormatsInTheOrderInWhichTheyAreTried)
{
    std::vector<int> types;
    juce::StringArray extensions;
    for (const auto& format : EventFileImporterFactory::formats())
    {
        types.push_back (format.type);
        extensions.addArray (format.extensions);
    }

    EXPECT_EQ (types, (std::vector<int> { 2, 0, 3, 4, 5, 1, 6, 7, 8 }));
    EXPECT_EQ (extensions.joinIntoString (" "), ".csv .tab .txt .srt .stl .xml .dbf .xlsx .ttal .docx");
}

TEST (EventFileImporterFactory, aMenuOfFormatsReadsAsPeopleCallThem)
{
    juce::StringArray names;
    for (const auto& format : EventFileImporterFactory::formats())
        names.add (format.name);

    EXPECT_EQ (names.joinIntoString (" | "),
               "Delimited text | Pro Tools session info | SubRip subtitles | EBU or text STL subtitles | "
               "ADR Studio cue list | dBase table | Excel workbook | TTAL cue list | Word cue sheet");
}

TEST (EventFileImporterFactory, theUserMayMapTheColumnsOfTables)
{
    juce::StringArray mapped;
    for (const auto& format : EventFileImporterFactory::formats())
        if (format.userMapping)
            mapped.add (format.extensions[0]);

    EXPECT_EQ (mapped.joinIntoString (" "), ".csv .xml .dbf .xlsx");
}

TEST (EventFileImporterFactory, everyFormatGivesTheImporterItPromises)
{
    const TemporaryFolder folder;
    const ZEP::Overmarks::Testing::StandInTool tool;

    for (const auto& format : EventFileImporterFactory::formats())
        for (const auto& extension : format.extensions)
        {
            const auto path = juce::String ((folder.path / "nothing").string()) + extension;
            const auto result = made (path);

            ASSERT_NE (result.importer, nullptr) << extension;
            EXPECT_EQ (result.message.isEmpty(), isSilentFormat (format.type)) << extension;
            EXPECT_EQ (result.importer->type(), format.type) << extension;
            EXPECT_EQ (result.importer->userMappingEnabled(), format.userMapping) << extension;
            EXPECT_EQ (result.importer->filePath, path);
        }
}

TEST (EventFileImporterFactory, upperAndLowerCaseOfTheExtensionAreTheSame)
{
    const TemporaryFolder folder;
    const ZEP::Overmarks::Testing::StandInTool tool;
    for (const auto* name : { "list.CSV", "list.Tab", "list.csv", "list.tAB", "a.txt.csv" })
    {
        const auto result = made (folder.file (name, "Start TC,Text\n1,2\n"));
        ASSERT_NE (result.importer, nullptr) << name;
        EXPECT_EQ (result.importer->type(), 2) << name;
        EXPECT_EQ (result.importer->rows.size(), 2u) << name;
        EXPECT_EQ (result.message, "") << name;
    }

    for (const auto& format : EventFileImporterFactory::formats())
        for (const auto& extension : format.extensions)
        {
            const auto small = made ("/nowhere/list" + extension);
            const auto capital = made ("/nowhere/list" + extension.toUpperCase());
            EXPECT_EQ (small.importer == nullptr, capital.importer == nullptr) << extension;
            EXPECT_TRUE (small.message.equalsIgnoreCase (capital.message)) << extension;
        }
}

TEST (EventFileImporterFactory, anExtensionOfNoImporterGivesNothingAndSaysNothing)
{
    for (const auto* path : { "/lists/list.pdf", "/lists/list", "list", "", "/lists.csv/list", "/lists/list.",
                              "/lists/csv", "/lists/list.csv ", "/lists/list.csvx", "/lists/" })
    {
        juce::String message ("from before");
        EXPECT_EQ (EventFileImporterFactory::fileImporterWithFilepath (path, message, {}, {}), nullptr)
            << path;
        EXPECT_EQ (message, "from before") << path;
    }
}

TEST (EventFileImporterFactory, aTableInATextFileNeverReachesTheCSVImporter)
{
    const TemporaryFolder folder;
    const auto result = made (folder.file ("list.txt", "Start TC,Text\n1,2\n"));

    EXPECT_EQ (std::dynamic_pointer_cast<CSVEventFileImporter> (result.importer), nullptr);
    EXPECT_TRUE (result.message.isNotEmpty());
}

TEST (EventFileImporterFactory, aBadFileStillGivesAnImporterAndAddsItsWords)
{
    juce::String message ("Before. ");
    const auto importer =
        EventFileImporterFactory::fileImporterWithFilepath (dataFile ("csv/empty.csv"), message, {}, {});

    ASSERT_NE (importer, nullptr);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (message, "Before. The CSV file you tried to import doesn't contain any parsable content");
}

TEST (EventFileImporterFactory, reasonsAndTimeOfTheProjectAreDroppedForDelimitedText)
{
    juce::String message;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
        dataFile ("csv/comma.csv"), message, { "Noise" }, std::make_shared<TimeInfo>());

    ASSERT_NE (importer, nullptr);
    EXPECT_EQ (importer->timeInfo, nullptr);
    EXPECT_EQ (importer->characterMap, nullptr);
    EXPECT_EQ (importer->languageCode(), "");
}
