// SPDX-License-Identifier: GPL-3.0-only
// Cue lists on disks that fail, and under names that lead to no file: every format, every fault.
#include "faults/FailingFiles.h"
#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/protools/SessionSupport.h"
#include "support/CollectedLog.h"
#include "support/OvermarksTest.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <filesystem>
#include <tuple>

using namespace ZEP::Overmarks;
using namespace ImportSupport;
using Testing::FailingFiles;
using Testing::FileFault;

namespace
{

namespace fs = std::filesystem;
using Call = FileFault::Call;
using Faults = std::vector<FileFault>;

constexpr auto always = FileFault::always;

struct Reader
{
    std::string name;
    std::string sample;          ///< below tests/data/import
    std::string cantBeRead;      ///< the importer's words; empty where it has none, and the log alone is told
    std::string cantBeReadOn {}; ///< of a file that fails in the middle, where they are others
    bool opensTwice = false;
};

void PrintTo (const Reader& reader, std::ostream* out) { *out << reader.name; }

const Reader readers[] = {
    { "CSV", "csv/comma.csv", "Error parsing the CSV file" },
    { "tab", "csv/tab.tab", "Error parsing the CSV file" },
    { "taker", "taker/ds_taker.csv", "Error parsing the CSV file" },
    { "textSTL", "textstl/harbour.stl", "", "", true },
    { "EBU", "stl/harbour.stl", "", "", true },
    { "SRT", "srt/harbour.srt", "The file can't be parsed properly" },
    { "dBase", "dbf/harbour.dbf", "" },
    { "TTAL", "ttal/three_lines.ttal", "The file could not be opened." },
    { "ADRStudio", "adrstudio/three_cues.xml", "Only ADR Studio XML files are supported at the moment" },
    { "ProTools", "protools/harbour.txt",
      "The file doesn't contain valid Pro Tools session info data. If you're trying to import comma-separated values, "
      "please use the file extension '.csv'" },
    { "Excel", "xlsx/harbour.xlsx", "Error parsing the Excel file. The file can't be opened.",
      "Error parsing the Excel file. The file can't be read to its end." },
};

const auto nameOfReader = [] (const auto& info) { return info.param.name; };

struct Imported
{
    TextTable rows;
    std::string message;
};

class FaultyReaders : public Testing::OvermarksTest, public testing::WithParamInterface<Reader>
{
protected:
    FaultyReaders() { restore(); }

    void restore() const { std::ignore = folder.file (nameOfList(), bytes); }

    std::string nameOfList() const { return "list" + fs::path (GetParam().sample).extension().string(); }

    Imported import (const fs::path& path) const
    {
        linesBefore = log.lines().size();
        juce::String message;
        const auto importer = EventFileImporterFactory::fileImporterWithFilepath (
            juce::String::fromUTF8 (path.c_str()), message, {}, {});
        return { textsOf (importer->rows), message.toStdString() };
    }

    Imported importWith (const Faults& faults) const
    {
        const FailingFiles failing (folder.path.string(), faults);
        auto result = import (list);
        EXPECT_GT (failing.struck(), 0);
        return result;
    }

    /** Whoever looks for the reason finds one: in the message, or else in the log. */
    void expectRefused (const Imported& result, const std::string& message) const
    {
        EXPECT_EQ (result.rows, TextTable());
        EXPECT_EQ (result.message, message);
        EXPECT_TRUE (! message.empty() || log.lines().size() > linesBefore);
    }

    void expectUntouched (const Imported& result) const
    {
        EXPECT_EQ (result.message, "");
        EXPECT_EQ (result.rows, whole.rows);
    }

    TemporaryFolder folder;
    Testing::CollectedLog log;
    mutable std::size_t linesBefore = 0; ///< of the log, when the last import began
    SessionSupport::Chooser user { SessionSupport::allOf };
    const std::string bytes = bytesOfFile (dataFile (GetParam().sample));
    const Imported whole = import (dataFile (GetParam().sample));
    const fs::path list = folder.path / nameOfList();
    const std::size_t half = bytes.size() / 2;
};

// ---- disks -----------------------------------------------------------------------------------------------------------------

TEST_P (FaultyReaders, theSampleIsAListWithoutFaults)
{
    EXPECT_GT (whole.rows.size(), 1u);
    expectUntouched (import (list));
}

TEST_P (FaultyReaders, sevenBytesAtATimeAreTheSameList)
{
    expectUntouched (importWith ({ { .call = Call::read, .times = always, .most = 7 } }));
}

TEST_P (FaultyReaders, interruptedReadsAreRepeated)
{
    expectUntouched (importWith ({ { .call = Call::read, .error = EINTR },
                                   { .call = Call::read, .error = EINTR, .first = 3, .times = 5 } }));
}

TEST_P (FaultyReaders, aDiskThatGivesNothingIsTold)
{
    expectRefused (importWith ({ { .call = Call::read, .error = EIO, .times = always } }),
                   GetParam().cantBeRead);
}

TEST_P (FaultyReaders, aDiskThatFailsInTheMiddleDoesNotPassForAShorterList)
{
    const auto& words = GetParam().cantBeReadOn;
    expectRefused (importWith ({ { .call = Call::read, .most = static_cast<long> (half) },
                                 { .call = Call::read, .error = EIO, .first = 2, .times = always } }),
                   words.empty() ? GetParam().cantBeRead : words);
}

TEST_P (FaultyReaders, aFileThatCannotBeOpenedIsTold)
{
    for (const int error : { EACCES, EMFILE, ENOENT, EIO })
        expectRefused (importWith ({ { .call = Call::open, .error = error, .times = always } }),
                       GetParam().cantBeRead);
}

// ---- files that change -----------------------------------------------------------------------------------------------------

TEST_P (FaultyReaders, aFileThatIsDeletedWhileItIsReadIsReadOrRefused)
{
    const auto result = importWith ({ { .call = Call::read, .before = [this] { fs::remove (list); } } });

    if (GetParam().opensTwice)
        expectRefused (result, GetParam().cantBeRead);
    else
        expectUntouched (result);
}

TEST_P (FaultyReaders, aFileThatIsDeletedBeforeItIsOpenedIsTold)
{
    expectRefused (importWith ({ { .call = Call::open, .before = [this] { fs::remove (list); } } }),
                   GetParam().cantBeRead);
}

TEST_P (FaultyReaders, aFileThatGrowsIsTheOldListOrTheNewOne)
{
    const auto grow = [this] { std::ofstream (list, std::ios::app | std::ios::binary) << '\n'; };
    const auto result = importWith ({ { .call = Call::read, .before = grow } });
    const auto grown = import (list);
    EXPECT_EQ (bytesOfFile (list.string()).size(), bytes.size() + 1);
    EXPECT_TRUE (result.rows == whole.rows || result.rows == grown.rows);
    EXPECT_EQ (result.message, "");
}

TEST_P (FaultyReaders, aFileThatShrinksIsRefusedOrReadAsTheShorterFile)
{
    const auto shrink = [this] { fs::resize_file (list, half); };
    const auto result = importWith ({ { .call = Call::read, .before = shrink } });
    EXPECT_LT (result.rows.size(), whole.rows.size());

    // One that is opened anew is the shorter file, whole.
    EXPECT_TRUE (! result.message.empty() || log.lines().size() > linesBefore || GetParam().opensTwice);

    const auto shrunk = import (list);
    EXPECT_TRUE (result.rows == shrunk.rows || result.rows.empty());
}

// ---- names that lead to no file --------------------------------------------------------------------------------------------

TEST_P (FaultyReaders, aPipeIsNeverWaitedFor)
{
    fs::remove (list);
    ASSERT_EQ (::mkfifo (list.c_str(), 0600), 0);
    expectRefused (import (list), GetParam().cantBeRead);
}

TEST_P (FaultyReaders, aSocketIsNoFile)
{
    fs::remove (list);
    const int socket = ::socket (AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    list.string().copy (address.sun_path, sizeof (address.sun_path) - 1);
    ASSERT_EQ (::bind (socket, reinterpret_cast<const sockaddr*> (&address), sizeof (address)), 0);
    ::close (socket);
    expectRefused (import (list), GetParam().cantBeRead);
}

TEST_P (FaultyReaders, aFolderIsNoFile)
{
    fs::remove (list);
    fs::create_directory (list);
    expectRefused (import (list), GetParam().cantBeRead);
}

TEST_P (FaultyReaders, aDeviceWithoutEndIsNeverRead)
{
    for (const auto* device : { "/dev/zero", "/dev/full", "/dev/null", "/dev/tty" })
    {
        fs::remove (list);
        fs::create_symlink (device, list);
        expectRefused (import (list), GetParam().cantBeRead);
    }
}

TEST_P (FaultyReaders, aLinkThatLeadsNowhereIsTold)
{
    for (const auto& target : { folder.path / "nowhere", list })
    {
        fs::remove (list);
        fs::create_symlink (target, list);
        expectRefused (import (list), GetParam().cantBeRead);
    }
}

TEST_P (FaultyReaders, aNameThatIsTooLongIsTold)
{
    const auto extension = list.extension().string();

    for (const std::size_t length : { 256u, 4000u })
        expectRefused (import (folder.path / (std::string (length - extension.size(), 'x') + extension)),
                       GetParam().cantBeRead);
}

TEST_P (FaultyReaders, theLongestNameIsRead)
{
    constexpr std::size_t longest = 255;
    const auto extension = list.extension().string();
    const auto path = folder.path / (std::string (longest - extension.size(), 'x') + extension);
    fs::rename (list, path);
    expectUntouched (import (path));
}

TEST_P (FaultyReaders, aFileOfTheSystemWithoutASizeIsReadAndNothingBreaks)
{
    fs::remove (list);
    fs::create_symlink ("/proc/self/status", list);
    const auto result = import (list);
    EXPECT_TRUE (! result.rows.empty() || ! result.message.empty() || log.lines().size() > linesBefore);
}

INSTANTIATE_TEST_SUITE_P (Formats, FaultyReaders, testing::ValuesIn (readers), nameOfReader);

using ListsReadOnce = FaultyReaders;

TEST_P (ListsReadOnce, aFileThatShrinksDoesNotPassForAShorterList)
{
    const auto shrink = [this] { fs::resize_file (list, half); };
    expectRefused (importWith ({ { .call = Call::read, .before = shrink } }), GetParam().cantBeRead);
}

INSTANTIATE_TEST_SUITE_P (Formats, ListsReadOnce,
                          testing::Values (readers[0], readers[5], readers[6], readers[7], readers[8],
                                           readers[9]),
                          nameOfReader);

} // namespace
