// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/ByCharacterWalk.h"

#include "export/ExportSupport.h"

using namespace ExportSupport;
using Walk = ByCharacterWalk;

namespace
{

/** An exporter whose files are nothing but their names. */
class NamingExporter final : public EventExporter
{
public:
    using EventExporter::EventExporter;
    juce::String exportEventsByCharacter() override { return {}; }
    juce::String exportEventsByTimecode() override { return {}; }
    EventExportType type() const override { return EventExportTypeNone; }

    Walk::WriteFile writer (const juce::String& failing = {})
    {
        return [this, failing] (const Walk::Block& block)
        {
            written.push_back (block.characterID.toStdString());
            return block.characterID == failing ? "No " + failing : juce::String();
        };
    }

    std::vector<std::string> written;
};

class ByCharacterWalkTest : public ExportTest
{
protected:
    void give (const std::string& id, const std::vector<Line>& lines)
    {
        settings->eventsByCharacter[text (id)] = events (lines);
    }

    static std::vector<std::string> idsOf (const Walk& walk)
    {
        std::vector<std::string> ids;

        for (const auto& block : walk.blocks())
            ids.push_back (block.characterID.toStdString());

        return ids;
    }

    void giveThree()
    {
        addCharacter ("1", "Cora");
        addCharacter ("2", "Ann");
        addCharacter ("3", "Bob");
        give ("1", { { "C1" }, { "C2" } });
        give ("2", { { "A1" } });
        give ("3", { { "B1" } });
    }
};

using Ids = std::vector<std::string>;

} // namespace

TEST_F (ByCharacterWalkTest, goesThroughTheCastByName)
{
    giveThree();
    EXPECT_EQ (idsOf (Walk (*settings, ".csv")), (Ids { "2", "3", "1" }));
}

TEST_F (ByCharacterWalkTest, namesAreComparedByCase)
{
    addCharacter ("1", "ann");
    addCharacter ("2", "Zoe");
    give ("1", {});
    give ("2", {});
    EXPECT_EQ (idsOf (Walk (*settings, ".csv")), (Ids { "2", "1" }));
}

TEST_F (ByCharacterWalkTest, keysWithoutACharacterComeFirst)
{
    addCharacter ("1", "Ann");
    give ("1", {});
    give ("unknown", { { "7" } });
    give ("", { { "8" } });
    const Walk walk (*settings, ".csv");
    EXPECT_EQ (idsOf (walk), (Ids { "", "unknown", "1" }));
    EXPECT_EQ (walk.blocks()[0].character, nullptr);
    EXPECT_EQ (walk.blocks()[0].file.getFileName(), "Reel 2_<no char>.csv");
    EXPECT_EQ (walk.blocks()[1].file.getFileName(), "Reel 2_<no char> (2).csv");
}

TEST_F (ByCharacterWalkTest, equalNamesFollowEachOtherByIdentifier)
{
    for (const auto* id : { "d", "b", "a", "c" })
    {
        addCharacter (id, "Ann");
        give (id, {});
    }

    EXPECT_EQ (idsOf (Walk (*settings, ".csv")), (Ids { "a", "b", "c", "d" }));
}

TEST_F (ByCharacterWalkTest, aProjectWithoutACastHasBlocksAllTheSame)
{
    Event::setADRCharacterMap (nullptr);
    give ("1", { { "7" } });
    EXPECT_EQ (Walk (*settings, ".csv").blocks().size(), 1u);
}

TEST_F (ByCharacterWalkTest, eachBlockHasItsEventsAndItsFile)
{
    giveThree();
    const Walk walk (*settings, ".docx");
    EXPECT_EQ (walk.blocks()[2].events, settings->eventsByCharacter["1"]);
    EXPECT_EQ (walk.blocks()[2].character, cast->characterForID ("1"));
    EXPECT_EQ (walk.blocks()[2].file, folder.file ("Reel 2_Cora.docx"));
    EXPECT_EQ (walk.singleFile(), folder.file ("Reel 2.docx"));
}

TEST_F (ByCharacterWalkTest, namesGiveUpTheCharactersThatAnExporterCannotHave)
{
    addCharacter ("1", "Ann, old/young");
    give ("1", {});
    EXPECT_EQ (Walk (*settings, ".docx", ",").blocks()[0].file, folder.file ("Reel 2_Ann  old_young.docx"));
}

TEST_F (ByCharacterWalkTest, joinsTheEventsInTheOrderOfTheNames)
{
    giveThree();
    std::string numbers;

    for (const auto& joined : Walk (*settings, ".csv").joinedEvents())
        numbers += joined->getCueNumber().toStdString() + " ";

    EXPECT_EQ (numbers, "A1 B1 C1 C2 ");
}

TEST_F (ByCharacterWalkTest, theOptionTellsWhetherThereIsOneFile)
{
    EXPECT_FALSE (Walk (*settings, ".csv").isCombined());
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    EXPECT_TRUE (Walk (*settings, ".csv").isCombined());
}

TEST_F (ByCharacterWalkTest, theOptionHasToBeThere)
{
    settings->options.erase (EventExportCombineIntoSingleFileKey);
    EXPECT_THROW (Walk (*settings, ".csv"), std::out_of_range);
}

TEST_F (ByCharacterWalkTest, reportsAfterEachFile)
{
    giveThree();
    NamingExporter exporter (settings);
    exporter.delegate = &progress;
    EXPECT_EQ (Walk (*settings, ".csv").writeFiles (exporter, Walk::AfterFailure::stop, exporter.writer()),
               "");
    EXPECT_EQ (progress.reports, (std::vector<std::pair<int, int>> { { 1, 3 }, { 2, 3 }, { 3, 3 } }));
    EXPECT_EQ (progress.senders, (std::vector<EventExporter*> (3, &exporter)));
    EXPECT_EQ (exporter.written, (Ids { "2", "3", "1" }));
}

TEST_F (ByCharacterWalkTest, needsNoDelegate)
{
    giveThree();
    NamingExporter exporter (settings);
    EXPECT_EQ (Walk (*settings, ".csv").writeFiles (exporter, Walk::AfterFailure::stop, exporter.writer()),
               "");
    EXPECT_EQ (exporter.written.size(), 3u);
}

TEST_F (ByCharacterWalkTest, mayStopAtTheFirstFailureWhichIsReportedToo)
{
    giveThree();
    NamingExporter exporter (settings);
    exporter.delegate = &progress;
    EXPECT_EQ (
        Walk (*settings, ".csv").writeFiles (exporter, Walk::AfterFailure::stop, exporter.writer ("3")),
        "No 3");
    EXPECT_EQ (progress.reports, (std::vector<std::pair<int, int>> { { 1, 3 }, { 2, 3 } }));
    EXPECT_EQ (exporter.written, (Ids { "2", "3" }));
}

TEST_F (ByCharacterWalkTest, mayGoOnAfterAFailure)
{
    giveThree();
    NamingExporter exporter (settings);
    exporter.delegate = &progress;
    EXPECT_EQ (
        Walk (*settings, ".csv").writeFiles (exporter, Walk::AfterFailure::goOn, exporter.writer ("3")), "");
    EXPECT_EQ (progress.reports.size(), 3u);
    EXPECT_EQ (exporter.written, (Ids { "2", "3", "1" }));
}

TEST_F (ByCharacterWalkTest, mayBeCancelledBetweenFiles)
{
    giveThree();
    NamingExporter exporter (settings);
    const auto afterOne = [&exporter] { return exporter.written.size() == 1; };
    const Walk walk (*settings, ".pdf");
    EXPECT_EQ (walk.writeFiles (exporter, Walk::AfterFailure::stop, exporter.writer(), afterOne), "");
    EXPECT_EQ (exporter.written, (Ids { "2" }));
}

TEST_F (ByCharacterWalkTest, withoutCharactersThereIsNothingToWrite)
{
    NamingExporter exporter (settings);
    exporter.delegate = &progress;
    EXPECT_EQ (Walk (*settings, ".csv").writeFiles (exporter, Walk::AfterFailure::stop, exporter.writer()),
               "");
    EXPECT_TRUE (progress.reports.empty());
}
