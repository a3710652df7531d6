// SPDX-License-Identifier: GPL-3.0-only
// Disks that fail while the program reads or writes, whatever the command: what is told, what stays, and that nothing is left.
#include "faults/FailingFiles.h"
#include "overmarks/ProgramFixture.h"
#include "support/Environment.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cerrno>

using testing::HasSubstr;
using ZEP::Overmarks::Testing::Environment;
using ZEP::Overmarks::Testing::FileFault;

namespace
{

using Call = FileFault::Call;

constexpr auto always = FileFault::always;

/** A fault in words that the program's surroundings take. */
std::string fault (Call call, int error, int first = 1, int times = always, long most = -1)
{
    return "|" + std::to_string (static_cast<int> (call)) + " " + std::to_string (error) + " "
           + std::to_string (first) + " " + std::to_string (times) + " " + std::to_string (most);
}

class ProgramFaults : public ProgramTest
{
protected:
    ProgramFaults()
    {
        write ("film.csv", threeCues);
        temporary.createDirectory();
    }

    ~ProgramFaults() override { temporary.deleteRecursively(); }

    /** A run in which the files whose paths hold a text fail. */
    ProgramResult runWith (const std::string& partOfPath, const std::string& faults,
                           std::vector<std::string> arguments) const
    {
        ProgramSurroundings surroundings;
        surroundings.temporaryFolder = temporary.getFullPathName().toStdString();
        arguments.emplace_back ("--json");

        // What replaces the functions of the system stands before a sanitizer's, which has to put up with it.
        const Environment failingFiles ("LD_PRELOAD", OVERMARKS_FAILING_FILES);
        const Environment orders ("OVERMARKS_FAULTS", partOfPath + faults);
        const Environment sanitizer ("ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0");
        return run (arguments, {}, surroundings);
    }

    static std::string errorIn (const ProgramResult& result)
    {
        const auto document = nlohmann::ordered_json::parse (result.output, nullptr, false);

        if (! document.is_object())
            return result.output + result.errors;
        if (document.contains ("error"))
            return document["error"];

        const auto problems = document.value ("problems", nlohmann::ordered_json::array());
        return problems.empty() ? std::string() : problems.front().value ("message", "");
    }

    void expectNothingTemporary() const
    {
        EXPECT_EQ (temporary.getNumberOfChildFiles (juce::File::findFilesAndDirectories), 0);
    }

    const juce::File temporary = juce::File::createTempFile ("elsewhere");
};

// ---- what the program writes -----------------------------------------------------------------------------------------------

struct Writing
{
    const char* name;
    std::vector<std::string> arguments;
    const char* file;
    const char* words;        ///< of a full disk; PATH stands for the file's
    bool isPlainText = false; ///< the same list makes the same bytes
};

class ProgramFaultyWriting : public ProgramFaults, public testing::WithParamInterface<Writing>
{
protected:
    void expectFailure (const std::string& partOfPath, const std::string& faults,
                        const std::string& words) const
    {
        const auto& [name, arguments, target, ignored, plain] = GetParam();

        for (const auto* const older : { "precious", "" })
        {
            file (target).deleteFile();
            auto names = filesInFolder();

            if (*older != 0)
            {
                write (target, older);
                names = filesInFolder();
            }

            const auto result = runWith (partOfPath, faults, arguments);
            EXPECT_EQ (result.status, 1) << result.output << result.errors;
            EXPECT_EQ (errorIn (result), words);
            EXPECT_EQ (filesInFolder(), names);
            EXPECT_EQ (read (target), older);
            expectNothingTemporary();
        }
    }

    std::string wordsOf (std::string words) const
    {
        if (const auto place = words.find ("PATH"); place != std::string::npos)
            words.replace (place, 4, path (GetParam().file));

        return words;
    }
};

TEST_P (ProgramFaultyWriting, onAFullDiskLeavesTheOldFileAndNothingElse)
{
    expectFailure (path ("."), fault (Call::write, ENOSPC), wordsOf (GetParam().words));
}

TEST_P (ProgramFaultyWriting, onADiskThatIsFullBehindTheFirstBytesLeavesTheOldFile)
{
    expectFailure (path ("."), fault (Call::write, 0, 1, 1, 2) + fault (Call::write, ENOSPC, 2),
                   wordsOf (GetParam().words));
}

TEST_P (ProgramFaultyWriting, worksWithSevenBytesAtATimeAndInterruptedCalls)
{
    const auto& [name, arguments, target, ignored, plain] = GetParam();
    const auto expected = runWith (path ("."), {}, arguments);
    const auto before = read (target);
    const auto result = runWith (
        path ("."), fault (Call::write, EINTR, 2, 2) + fault (Call::write, 0, 1, always, 7), arguments);
    const auto content = read (target);
    EXPECT_EQ (result.status, expected.status) << result.errors;
    EXPECT_EQ (errorIn (result), errorIn (expected));
    EXPECT_GT (content.size(), 10u);
    expectNothingTemporary();

    // Some documents hold the time or identities that are made anew.
    ASSERT_EQ (runWith (path ("."), {}, arguments).status, expected.status);
    const bool isTheSameEachTime = read (target) == before;

    EXPECT_TRUE (isTheSameEachTime || ! plain);
    EXPECT_TRUE (! isTheSameEachTime || content == before);
}

const Writing writings[] = {
    { "csv",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "csv", "--force" },
      "new.csv",
      "Error writing file to PATH",
      true },
    { "taker",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "ds-taker", "--force" },
      "new.csv",
      "Error writing file to PATH",
      true },
    { "ttal",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "ttal", "--force" },
      "new.ttal",
      "Error writing file to PATH" },
    { "xlsx",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "xlsx", "--force" },
      "new.xlsx",
      "Can't write PATH: No space left on device" },
    { "asc",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "asc", "--force" },
      "new.asc",
      "Error writing file to PATH",
      true },
    { "arendis",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "arendis", "--force" },
      "new.txt",
      "Error writing file to PATH",
      true },
    { "html",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "html", "--force" },
      "new.html",
      "PATH was not written: No space left on device" },
    { "drawn",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "pdf", "--engine", "drawn", "--force" },
      "new.pdf",
      "Error writing file to PATH: No space left on device" },
    { "docx",
      { "export", "film.csv", "-o", ".", "--name", "new", "--format", "docx", "--force" },
      "new.docx",
      "Error writing file to PATH: Can't be written (No space left on device)" },
    { "overview",
      { "overview", "film.csv", "-o", "new.pdf", "--force" },
      "new.pdf",
      "Can't write PATH: No space left on device" },
    { "project",
      { "import", "film.csv", "-o", "new.overmarks", "--force" },
      "new.overmarks",
      "Can't write PATH: No space left on device" },
    { "json",
      { "import", "film.csv", "-o", "new.json", "--force" },
      "new.json",
      "Can't write PATH: No space left on device" },
    { "convert",
      { "convert", "film.csv", "new.json", "--force" },
      "new.json",
      "Can't write PATH: No space left on device" },
    { "checkPage",
      { "check", "film.csv", "--html", "new.html", "--force" },
      "new.html",
      "Can't write PATH: No space left on device" },
    { "checkTable",
      { "check", "film.csv", "--csv", "new.csv", "--force" },
      "new.csv",
      "Can't write PATH: No space left on device" },
    { "diffPage",
      { "diff", "film.csv", "film.csv", "--html", "new.html", "--force" },
      "new.html",
      "Can't write PATH: No space left on device" },
    { "diffTable",
      { "diff", "film.csv", "film.csv", "--csv", "new.csv", "--force" },
      "new.csv",
      "Can't write PATH: No space left on device" },
    { "statsPage",
      { "stats", "film.csv", "--html", "new.html", "--force" },
      "new.html",
      "Can't write PATH: No space left on device" },
};

INSTANTIATE_TEST_SUITE_P (Documents, ProgramFaultyWriting, testing::ValuesIn (writings),
                          [] (const auto& row) { return row.param.name; });

TEST_F (ProgramFaults, settingsOnAFullDiskStayAsTheyWere)
{
    ASSERT_EQ (run ({ "preferences", "--set", "ADRCueDefaultDuration=1", "--settings", "s.settings" }).status,
               0);
    const auto before = read ("s.settings");

    for (const auto& faults :
         { fault (Call::write, ENOSPC), fault (Call::sync, EIO), fault (Call::close, EDQUOT, 3) })
    {
        const auto result =
            runWith (path ("."), faults,
                     { "preferences", "--set", "ADRCueDefaultDuration=2", "--settings", "s.settings" });
        EXPECT_EQ (result.status, 1) << result.output;
        EXPECT_EQ (read ("s.settings"), before);
        EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "film.csv", "s.settings" }));
    }
}

// ---- what the program reads ------------------------------------------------------------------------------------------------

TEST_F (ProgramFaults, aProjectOnADiskThatFailsIsTold)
{
    for (const auto* const name : { "film.overmarks", "film.json" })
    {
        ASSERT_EQ (run ({ "import", "film.csv", "-o", name }).status, 0);
        const auto before = read (name);
        const auto result = runWith (
            path (name), fault (Call::read, 0, 1, 1, 30) + fault (Call::read, EIO, 2), { "list", name });
        EXPECT_EQ (result.status, 1);
        EXPECT_THAT (errorIn (result), HasSubstr ("Input/output error"));
        EXPECT_EQ (read (name), before);

        const auto edited =
            runWith (path (name), fault (Call::read, EIO), { "set", name, "-o", name, "Done=yes" });
        EXPECT_EQ (edited.status, 1);
        EXPECT_EQ (read (name), before);
    }
}

TEST_F (ProgramFaults, aProjectIsReadSevenBytesAtATimeAndWithInterruptions)
{
    for (const auto* const name : { "film.overmarks", "film.json" })
    {
        ASSERT_EQ (run ({ "import", "film.csv", "-o", name }).status, 0);
        const auto expected = run ({ "dump", name, "--json" }).output;
        const auto result =
            runWith (path (name), fault (Call::read, EINTR, 2, 3) + fault (Call::read, 0, 1, always, 7),
                     { "dump", name });
        EXPECT_EQ (result.output, expected);
    }
}

TEST_F (ProgramFaults, aCueSheetOnADiskThatFailsIsTold)
{
    ASSERT_EQ (run ({ "export", "film.csv", "-o", ".", "--name", "sheet", "--format", "docx" }).status, 0);
    const auto result = runWith (path ("sheet.docx"), fault (Call::read, EIO), { "list", "sheet.docx" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (errorIn (result), "sheet.docx: Can't be read: " + path ("sheet.docx"));
    expectNothingTemporary();

    const auto whole =
        runWith (path ("sheet.docx"), fault (Call::read, 0, 1, always, 7), { "rows", "sheet.docx" });
    EXPECT_EQ (whole.output, run ({ "rows", "sheet.docx", "--json" }).output);
}

TEST_F (ProgramFaults, aListOfADiskThatFailsIsNoEmptyList)
{
    const auto result =
        runWith (path ("film.csv"), fault (Call::read, 0, 1, 1, 40) + fault (Call::read, EIO, 2),
                 { "import", "film.csv", "-o", "new.overmarks" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (errorIn (result), "film.csv: Error parsing the CSV file");
    EXPECT_FALSE (file ("new.overmarks").exists());
}

TEST_F (ProgramFaults, aListThatCannotBeReadTakesNoProjectsPlace)
{
    write ("film.stl", "00:00:10:00,00:00:12:00,Hello?\n00:00:13:00,00:00:14:00,Me.\n");
    write ("film.overmarks", "precious");

    for (const auto& faults : { fault (Call::read, EIO), fault (Call::open, EACCES) })
    {
        const auto result =
            runWith (path ("film.stl"), faults, { "import", "film.stl", "-o", "film.overmarks", "--force" });
        EXPECT_EQ (result.status, 1);
        EXPECT_THAT (errorIn (result), testing::StartsWith ("film.stl: "));
        EXPECT_EQ (read ("film.overmarks"), "precious");
    }
}

TEST_F (ProgramFaults, aDiskThatFailsOnceLeavesAListWholeOrIsTold)
{
    for (const auto* const sample : { "dbf/harbour.dbf", "stl/harbour.stl", "textstl/harbour.stl" })
    {
        const auto name = juce::String (sample).replaceCharacter ('/', '.');
        const auto list = name.toStdString();
        ASSERT_TRUE (
            juce::File (OVERMARKS_TEST_DATA "/import").getChildFile (sample).copyFileTo (file (name)));
        const auto whole = run ({ "list", list, "--json" }).json()["events"].size();
        int failures = 0;

        for (int call = 1; call <= 6; ++call)
        {
            write ("film.json", "precious");
            const auto result = runWith (path (name), fault (Call::read, EIO, call),
                                         { "import", list, "-o", "film.json", "--force" });

            if (result.status == 0)
            {
                EXPECT_EQ (run ({ "list", "film.json", "--json" }).json()["events"].size(), whole)
                    << list << call;
                continue;
            }

            ++failures;
            EXPECT_EQ (read ("film.json"), "precious") << list << call;
            EXPECT_THAT (errorIn (result), testing::StartsWith (list + ": ")) << call;
        }

        EXPECT_GT (failures, 0) << list;
    }
}

TEST_F (ProgramFaults, aBindingOnADiskThatFailsOnceLosesNoOther)
{
    const Environment data ("XDG_DATA_HOME", path ("data"));
    const auto triggers = "data/overmarks/midiEventsV3.bin";
    ASSERT_EQ (run ({ "import", "film.csv", "-o", "film.json" }).status, 0);
    const auto uuid = run ({ "list", "film.json", "--json" }).json()["events"][0]["uuid"].get<std::string>();
    ASSERT_EQ (run ({ "midi", "bind", "film.json", "--message", "PC 1 5", "--uuid", uuid }).status, 0);
    const auto stored = read (triggers);
    int failures = 0;

    for (int call = 1; call <= 6; ++call)
    {
        write (triggers, stored);
        const auto result = runWith (path (triggers), fault (Call::read, EIO, call),
                                     { "midi", "bind", "film.json", "--message", "PC 1 6", "--uuid", uuid });

        if (result.status == 0)
        {
            EXPECT_EQ (run ({ "midi", "list", "--json" }).json()["bindings"].size(), 2u) << call;
            continue;
        }

        ++failures;
        EXPECT_EQ (read (triggers), stored) << call;
        EXPECT_THAT (errorIn (result), HasSubstr ("can't be read")) << call;
    }

    EXPECT_GT (failures, 0);
    EXPECT_EQ (file ("data/overmarks").getNumberOfChildFiles (juce::File::findFiles), 1);
}

TEST_F (ProgramFaults, aProjectOnStandardInputThatCannotBeReadHasItsName)
{
    for (const auto* const form : { "overmarks", "json" })
    {
        const auto result =
            runWith ("standard input", fault (Call::read, EIO), { "list", "-", "--format", form });
        EXPECT_EQ (result.status, 1);
        EXPECT_EQ (errorIn (result), "The project on standard input can't be read: Input/output error");
    }
}

TEST_F (ProgramFaults, aDocumentWhoseTemporaryFilesFindNoRoomIsNotWritten)
{
    for (const auto* const format : { "docx", "xlsx" })
    {
        const auto name = std::string ("new.") + format;
        write (name, "precious");
        const auto result =
            runWith (temporary.getFullPathName().toStdString(), fault (Call::write, ENOSPC),
                     { "export", "film.csv", "-o", ".", "--name", "new", "--format", format, "--force" });
        EXPECT_EQ (result.status, 1) << format;
        EXPECT_THAT (errorIn (result), HasSubstr (temporary.getFullPathName().toStdString())) << format;
        EXPECT_EQ (read (name), "precious") << format;
        expectNothingTemporary();
    }
}

TEST_F (ProgramFaults, whatIsNoFileIsRefusedWithoutWaiting)
{
    for (const auto* const name : { "x.csv", "x.stl", "x.srt", "x.dbf", "x.ttal", "x.xml", "x.txt", "x.xlsx",
                                    "x.docx", "x.json", "x.overmarks" })
    {
        ASSERT_EQ (::mkfifo (path (name).c_str(), 0600), 0);
        EXPECT_EQ (run ({ "import", name, "-o", "new.overmarks", "--json" }).status, 1) << name;
        file (name).deleteFile();

        ASSERT_TRUE (juce::File::createSymbolicLink (file (name), "/dev/zero", true));
        EXPECT_EQ (run ({ "import", name, "-o", "new.overmarks", "--json" }).status, 1) << name;
        file (name).deleteFile();
        EXPECT_EQ (filesInFolder(), (std::vector<std::string> { "film.csv" })) << name;
    }
}

} // namespace
