// SPDX-License-Identifier: GPL-3.0-only
// Documents, projects and settings on disks that are full, fail, or refuse: the old file stays, and nothing else does.
#include "core/documents/ExcelFileHandler.h"
#include "core/documents/PDFDocument.h"
#include "core/system/SettingsFile.h"
#include "core/system/SystemUtility.h"
#include "core/system/WholeFile.h"
#include "export/ADROverviewPDFExporter.h"
#include "export/EventASCExporter.h"
#include "export/EventArendisTXTExporter.h"
#include "export/EventCSVExporter.h"
#include "export/EventExcelExporter.h"
#include "export/EventTTALExporter.h"
#include "export/ExportSupport.h"
#include "export/TakerTemplate.h"
#include "export/print/DrawnCueSheetExporter.h"
#include "faults/FailingFiles.h"
#include "list/ProjectFile.h"
#include "midi/MIDITriggerEventFile.h"
#include "support/CollectedLog.h"
#include "support/Environment.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

using namespace ExportSupport;
using Testing::FailingFiles;
using Testing::FileFault;
using ZEP::Core::SystemUtility;

namespace
{

using Call = FileFault::Call;
using Faults = std::vector<FileFault>;
using Names = std::vector<std::string>;

constexpr auto always = FileFault::always;

/** What a writer tells of a failure. */
enum class Words
{
    none,       ///< it has none: there is no file
    path,       ///< "Error writing file to PATH"
    pathReason, ///< "Error writing file to PATH: REASON"
    cantWrite,  ///< "Can't write PATH: REASON"
    settings    ///< "Error writing the settings file \"PATH\""
};

class WriterTest;

struct Writer
{
    std::string name;
    std::string file;
    Words words;
    bool waitsForTheDisk; ///< until the disk itself has the file
    std::string (*write) (WriterTest&);
    std::string older = "older";
    bool readsFirst = false;       ///< what stands there already
    bool isTheSameEachTime = true; ///< a PDF document tells when it was made
};

void PrintTo (const Writer& writer, std::ostream* out) { *out << writer.name; }

class WriterTest : public ExportTest
{
protected:
    WriterTest()
    {
        addCharacter ("c1", "ANNA");
        trigger->event = event ({ "", 0 }, EventTypeStreamer);
        settings->events = events ({ { "A1", 90100, 90150, "c1", "Good evening." },
                                     { "A2", 90200, 90250, "c1", "The harbour is far away." } });
        SystemUtility::Configuration configuration;
        configuration.supportPath = folder.directory();
        SystemUtility::configure (configuration);
    }

    ~WriterTest() override { SystemUtility::configure ({}); }

    /** All that the events are, as they are stored. */
    std::string stateOfEvents() const
    {
        std::string state;

        for (const auto& event : settings->events)
        {
            tessera1::ProtoOvermark stored;
            event->fillProtoObject (&stored);
            state += stored.SerializeAsString();
        }

        return state;
    }

public:
    template <typename Exporter>
    std::string byTimecode()
    {
        return Exporter (settings).exportEventsByTimecode().toStdString();
    }

    const Project project = Project::createEmpty (timeInfo);

    const std::shared_ptr<MIDITriggerEvent> trigger = std::make_shared<MIDITriggerEvent>();

    std::string place (const std::string& name) const { return (folder.path / name).string(); }

    const std::shared_ptr<EventExportSettingsSet>& settingsSet() const { return settings; }
};

std::string writeOverview (WriterTest& test)
{
    ZEP::Orvelle::ADROverviewPDFExporter exporter (text (test.place ("sheet.pdf")),
                                                   ZEP::Core::PaperSize::a4());
    exporter.openFile = [] (const juce::File&) {};
    exporter.exportPDF ({ { "ANNA", "B. Miller", "A", 3, 1, 0.5f } }, "Harbour", "", "", "", "");
    return exporter.document->saveResult().getErrorMessage().toStdString();
}

std::string writeTaker (WriterTest& test)
{
    test.settingsSet()->options[EventExportCSVTemplateKey] = csvTemplateDSTaker;
    return test.byTimecode<EventCSVExporter>();
}

std::string writeTriggers (WriterTest& test)
{
    return MIDITriggerEventFile::write ({ test.trigger }).getErrorMessage().toStdString();
}

const Writer writers[] = {
    { "CSV", "Reel 2.csv", Words::path, false,
      [] (WriterTest& test) { return test.byTimecode<EventCSVExporter>(); } },
    { "taker", "Reel 2.csv", Words::path, false, writeTaker },
    { "TTAL", "Reel 2.ttal", Words::path, false,
      [] (WriterTest& test) { return test.byTimecode<EventTTALExporter>(); } },
    { "Excel", "Reel 2.xlsx", Words::cantWrite, false,
      [] (WriterTest& test) { return test.byTimecode<EventExcelExporter>(); } },
    { "ASC", "list.asc", Words::none, false,
      [] (WriterTest& test)
      {
          return EventASCExporter()
              .exportEvents (test.settingsSet()->events, text (test.place ("list.asc")))
              .toStdString();
      } },
    { "Arendis", "list.txt", Words::none, false,
      [] (WriterTest& test)
      {
          return EventArendisTXTExporter()
              .exportEvents (test.settingsSet()->events, text (test.place ("list.txt")), "Harbour")
              .toStdString();
      } },
    { "drawnSheet", "Reel 2.pdf", Words::pathReason, true,
      [] (WriterTest& test) { return test.byTimecode<DrawnCueSheetExporter>(); }, "older", false, false },
    { "overview", "sheet.pdf", Words::cantWrite, true, writeOverview, "older", false, false },
    { "project", "reel.overmarks", Words::cantWrite, true,
      [] (WriterTest& test)
      {
          return ProjectFile::save (test.project, juce::File (text (test.place ("reel.overmarks"))))
              .toStdString();
      } },
    { "settings", "studio.settings", Words::settings, true,
      [] (WriterTest& test)
      {
          return ZEP::Core::SettingsFile::write (juce::File (text (test.place ("studio.settings"))),
                                                 { { "key", Poco::Any (1) } })
              .getErrorMessage()
              .toStdString();
      } },
    { "triggers", "midiEventsV3.bin", Words::cantWrite, true, writeTriggers, "", true },
    { "anyWholeFile", "list.json", Words::cantWrite, true,
      [] (WriterTest& test)
      {
          return ZEP::Core::WholeFile::write (juce::File (text (test.place ("list.json"))),
                                              "{\"events\": []}")
              .getErrorMessage()
              .toStdString();
      } },
};

class FaultyWriters : public WriterTest, public testing::WithParamInterface<Writer>
{
protected:
    std::string path() const { return place (GetParam().file); }

    std::string writeWith (const Faults& faults)
    {
        // What is read beforehand isn't struck: it has other words.
        const FailingFiles failing (folder.path.string() + (GetParam().readsFirst ? "/." : ""), faults);
        auto message = GetParam().write (*this);
        EXPECT_GT (failing.struck(), 0);
        return message;
    }

    std::string messageFor (int error) const
    {
        const auto reason = std::generic_category().message (error);

        switch (GetParam().words)
        {
            case Words::none: return {};
            case Words::path: return "Error writing file to " + path();
            case Words::pathReason: return "Error writing file to " + path() + ": " + reason;
            case Words::cantWrite: return "Can't write " + path() + ": " + reason;
            case Words::settings: return "Error writing the settings file \"" + path() + "\"";
        }

        return {};
    }

    /** Over an older file, and where there is none. */
    void expectFailure (const Faults& faults, int error)
    {
        const auto before = stateOfEvents();
        const bool olderStays = GetParam().words != Words::none;

        folder.write (GetParam().file, GetParam().older);
        EXPECT_EQ (writeWith (faults), messageFor (error));
        EXPECT_EQ (folder.names(), olderStays ? Names { GetParam().file } : Names());
        EXPECT_EQ (folder.bytes (GetParam().file), olderStays ? GetParam().older : "");

        std::filesystem::remove (path());
        EXPECT_EQ (writeWith (faults), messageFor (error));
        EXPECT_EQ (folder.names(), Names());
        EXPECT_EQ (stateOfEvents(), before);
    }

    void expectSuccess (const Faults& faults)
    {
        EXPECT_EQ (GetParam().write (*this), "");
        const auto expected = folder.bytes (GetParam().file);
        EXPECT_FALSE (expected.empty());

        folder.write (GetParam().file, GetParam().older);
        EXPECT_EQ (writeWith (faults), "");
        EXPECT_EQ (folder.names(), Names { GetParam().file });
        const auto written = folder.bytes (GetParam().file);

        if (GetParam().isTheSameEachTime)
        {
            EXPECT_EQ (written, expected);
            return;
        }

        // What tells the time differs within the text; the file is there from its first line to its last.
        constexpr std::size_t ofTheStart = 5, ofTheEnd = 2;
        ASSERT_GT (written.size(), expected.size() / 2);
        EXPECT_EQ (written.substr (0, ofTheStart), expected.substr (0, ofTheStart));
        EXPECT_EQ (written.substr (written.size() - ofTheEnd), expected.substr (expected.size() - ofTheEnd));
    }

    Testing::CollectedLog log;
};

const auto nameOfWriter = [] (const auto& info) { return info.param.name; };

// ---- what goes wrong -------------------------------------------------------------------------------------------------------

TEST_P (FaultyWriters, aFullDiskLeavesTheOldFile)
{
    expectFailure ({ { .call = Call::write, .error = ENOSPC, .times = always } }, ENOSPC);
}

TEST_P (FaultyWriters, aDiskThatIsFullAfterTheFirstBytesLeavesTheOldFile)
{
    expectFailure ({ { .call = Call::write, .most = 2 },
                     { .call = Call::write, .error = ENOSPC, .first = 2, .times = always } },
                   ENOSPC);
}

TEST_P (FaultyWriters, aDiskThatFailsInTheMiddleLeavesTheOldFile)
{
    expectFailure (
        { { .call = Call::write, .times = 2, .most = 1 }, { .call = Call::write, .error = EIO, .first = 3 } },
        EIO);
}

TEST_P (FaultyWriters, aQuotaThatShowsOnlyAtTheEndLeavesTheOldFile)
{
    expectFailure ({ { .call = Call::close, .error = EDQUOT } }, EDQUOT);
}

TEST_P (FaultyWriters, whatCannotBeMovedIntoItsPlaceLeavesTheOldFile)
{
    for (const int error : { EACCES, EROFS, EIO })
        expectFailure ({ { .call = Call::rename, .error = error, .times = always } }, error);
}

TEST_P (FaultyWriters, aFolderThatTakesNoFileLeavesTheOldOne)
{
    for (const int error : { EACCES, EROFS, ENOSPC, EMFILE })
        expectFailure ({ { .call = Call::open, .error = error, .times = always } }, error);
}

TEST_P (FaultyWriters, aDiskThatConfirmsNothingLeavesTheOldFile)
{
    const Faults faults { { .call = Call::sync, .error = EIO, .times = always } };

    if (GetParam().waitsForTheDisk)
        expectFailure (faults, EIO);
    else
    {
        const FailingFiles failing (folder.path.string(), faults);
        EXPECT_EQ (GetParam().write (*this), "");
        EXPECT_EQ (failing.struck(), 0) << "nobody waits for the disk";
    }
}

// ---- what doesn't ----------------------------------------------------------------------------------------------------------

TEST_P (FaultyWriters, sevenBytesAtATimeAreTheSameFile)
{
    expectSuccess ({ { .call = Call::write, .times = always, .most = 7 } });
}

TEST_P (FaultyWriters, interruptedCallsAreRepeated)
{
    expectSuccess ({ { .call = Call::write, .error = EINTR, .times = 3 },
                     { .call = Call::sync, .error = EINTR, .times = 2 },
                     { .call = Call::open, .error = EINTR } });
}

INSTANTIATE_TEST_SUITE_P (Writers, FaultyWriters, testing::ValuesIn (writers), nameOfWriter);

// ---- written into, not replaced --------------------------------------------------------------------------------------------

using FaultyPlaces = WriterTest;

TEST_F (FaultyPlaces, anInterruptedOpenOfADeviceIsRepeated)
{
    std::filesystem::create_symlink ("/dev/null", folder.path / "list.json");
    const FailingFiles failing (place ("list.json"), { { .call = Call::open, .error = EINTR, .times = 2 } });
    EXPECT_EQ (ZEP::Core::WholeFile::write (folder.file ("list.json"), "{}").getErrorMessage(), "");
    EXPECT_EQ (failing.struck(), 2);
}

/** Somebody puts something else under a document's name, in the moment before it is opened in a folder that takes no new file. */
class SwappedDocument : public WriterTest
{
protected:
    std::string writeWith (const std::function<void()>& swap)
    {
        folder.write ("Reel 2.csv", "older");
        const FailingFiles failing (
            folder.path.string(),
            { { .call = Call::open, .error = EACCES }, { .call = Call::open, .first = 2, .before = swap } });
        auto message = byTimecode<EventCSVExporter>();
        EXPECT_GE (failing.struck(), 2);
        return message;
    }

    const std::string path = place ("Reel 2.csv");
};

TEST_F (SwappedDocument, aPipeHoldsNothingUp)
{
    constexpr unsigned int mostSeconds = 20;
    ::alarm (mostSeconds);
    EXPECT_EQ (writeWith (
                   [this]
                   {
                       std::filesystem::remove (path);
                       ::mkfifo (path.c_str(), 0600);
                   }),
               "Error writing file to " + path);
    ::alarm (0);
}

TEST_F (SwappedDocument, anotherFileKeepsWhatItHolds)
{
    folder.write ("other", "kept");
    EXPECT_EQ (writeWith ([this] { std::filesystem::rename (place ("other"), path); }),
               "Error writing file to " + path);
    EXPECT_EQ (folder.bytes ("Reel 2.csv"), "kept");
}

// ---- the temporary files of workbooks --------------------------------------------------------------------------------------

class FaultyWorkbook : public WriterTest
{
protected:
    std::vector<Names> rowsInWorkbook() const
    {
        std::vector<std::vector<ZEP::Core::RichTextString>> rows;
        juce::String error;
        ZEP::Core::ExcelFileHandler().readFileContent (text (place ("Reel 2.xlsx")), rows, error);
        EXPECT_EQ (error, "");
        std::vector<Names> texts;

        for (const auto& row : rows)
        {
            auto& cells = texts.emplace_back();

            for (const auto& cell : row)
                cells.push_back (cell.getText().toStdString());
        }

        return texts;
    }

    TemporaryFolder elsewhere;
    const Testing::Environment temporaryFiles { "TMPDIR", elsewhere.path.string() };
};

TEST_F (FaultyWorkbook, temporaryFilesThatFailAnywhereLeaveTheOldWorkbookOrAWholeOne)
{
    EXPECT_EQ (byTimecode<EventExcelExporter>(), "");
    const auto whole = rowsInWorkbook();
    EXPECT_EQ (whole.size(), 3u);
    int failures = 0;

    for (int first = 1; first < 400; ++first)
    {
        folder.write ("Reel 2.xlsx", "older");
        const FailingFiles failing (
            elsewhere.path.string(),
            { { .call = Call::write, .error = ENOSPC, .first = first, .times = always } });
        const auto message = byTimecode<EventExcelExporter>();

        if (failing.struck() == 0)
            break;

        if (message.empty()) // what failed is of no account
        {
            EXPECT_EQ (rowsInWorkbook(), whole) << first;
        }
        else
        {
            ++failures;
            EXPECT_TRUE (message.starts_with ("Can't write " + place ("Reel 2.xlsx") + ": ")) << message;
            EXPECT_EQ (folder.bytes ("Reel 2.xlsx"), "older") << first;
        }

        EXPECT_EQ (folder.names(), Names { "Reel 2.xlsx" }) << first;
        EXPECT_EQ (elsewhere.names(), Names()) << first;
    }

    EXPECT_GT (failures, 0);
}

// ---- a folder that takes no new file ---------------------------------------------------------------------------------------

class FaultyFolder : public WriterTest
{
};

TEST_F (FaultyFolder, aDocumentOfAFolderThatTakesNoNewFileIsWrittenOver)
{
    folder.write ("Reel 2.csv",
                  "an older and much longer list, so long that the new one would end within it. "
                  "an older and much longer list, so long that the new one would end within it. "
                  "an older and much longer list, so long that the new one would end within it. ");
    EXPECT_EQ (byTimecode<EventCSVExporter>(), "");
    const auto expected = folder.bytes ("Reel 2.csv");

    for (const auto* older : { "", "older" })
    {
        folder.write ("Reel 2.csv", older);
        const FailingFiles failing (folder.path.string() + "/.overmarks-",
                                    { { .call = Call::open, .error = EACCES } });
        EXPECT_EQ (byTimecode<EventCSVExporter>(), "");
        EXPECT_EQ (failing.struck(), 1);
        EXPECT_EQ (folder.bytes ("Reel 2.csv"), expected);
    }
}

} // namespace
