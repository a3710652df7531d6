// SPDX-License-Identifier: GPL-3.0-only
// The library for workbooks and drawn pages, which the program loads when it needs it.
#include "overmarks/ProgramFixture.h"
#include "support/Environment.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using ZEP::Overmarks::Testing::Environment;

namespace
{

using Words = std::vector<std::string>;

const Words workbook { "convert", "list.csv", "list.xlsx" };
const Words drawnSheet { "export", "list.csv", "-o", ".", "--format", "pdf", "--engine", "drawn" };
const Words overview { "overview", "list.csv", "-o", "overview.pdf" };

/** Our own libraries in the order in which the loader has begun with them, of what it tells of a run. */
Words begunIn (const std::string& told)
{
    std::istringstream lines (told);
    Words libraries;

    for (std::string line; std::getline (lines, line);)
        if (const auto name = line.find ("libZEP_");
            line.find ("calling init: ") < name && name < line.size())
            libraries.push_back (line.substr (name, line.find ('.', name) - name));

    return libraries;
}

class ProgramLibrariesTest : public ProgramTest
{
protected:
    ProgramLibrariesTest() { write ("list.csv", threeCues); }

    /** What the loader tells of a run, with the program's own words in between. */
    std::string loaderOn (const Words& command) const
    {
        const Environment everyFile ("LD_DEBUG", "files");
        const auto result = run (command);
        EXPECT_EQ (result.status, 0) << result.output;
        return result.errors;
    }

    /** Runs the program with a library of the core that stands alone. */
    ProgramResult runWithoutDocuments (const Words& command) const
    {
        const std::filesystem::path built = OVERMARKS_CORE_LIBRARY, alone = path ("alone");
        std::filesystem::create_directory (alone);
        std::filesystem::copy_file (built, alone / built.filename(),
                                    std::filesystem::copy_options::skip_existing);

        const Environment otherFolder ("LD_LIBRARY_PATH", alone.string());
        return run (command);
    }

    std::string words (const std::string& reason) const
    {
        return "The library for workbooks and drawn pages can't be loaded: "
               + path ("alone/" OVERMARKS_DOCUMENTS_FILE) + ": " + reason + "\n";
    }

    const Words atStart { "libZEP_FileFormat", "libZEP_Core", "libZEP_MIDIIO", "libZEP_Overmarks" };
    static constexpr auto missing = "cannot open shared object file: No such file or directory";
};

} // namespace

TEST_F (ProgramLibrariesTest, whatNeedsNoDocumentLoadsNothingForThem)
{
    for (const auto& command : { Words { "--version" }, Words { "list", "list.csv" },
                                 Words { "convert", "list.csv", "list.ttal" } })
    {
        const auto told = loaderOn (command);
        EXPECT_EQ (begunIn (told), atStart) << command[0];

        for (const auto* library : { "liborcus", "libxlsxwriter", "libzip", "libpango", "libcairo" })
            EXPECT_THAT (told, Not (HasSubstr (library))) << command[0];
    }
}

TEST_F (ProgramLibrariesTest, aWorkbookAndADrawnPageLoadTheirLibraryAndNoOtherTwice)
{
    auto all = atStart;
    all.emplace_back ("libZEP_Documents");

    for (const auto& command : { workbook, Words { "rows", "list.xlsx" }, drawnSheet, overview })
        EXPECT_EQ (begunIn (loaderOn (command)), all) << command[0];
}

TEST_F (ProgramLibrariesTest, withoutTheLibraryAWorkbookIsAFailureInWords)
{
    ASSERT_EQ (run (workbook).status, 0);

    const auto read = runWithoutDocuments ({ "convert", "list.xlsx", "list.ttal", "--quiet" });
    EXPECT_EQ (read.status, 1);
    EXPECT_EQ (read.errors, "overmarks: list.xlsx: Error parsing the Excel file. " + words (missing));

    const auto written = runWithoutDocuments ({ "convert", "list.csv", "other.xlsx", "--quiet" });
    EXPECT_EQ (written.status, 1);
    EXPECT_EQ (written.errors, "overmarks: Can't write " + path ("other.xlsx") + ": " + words (missing));
    EXPECT_FALSE (file ("other.xlsx").exists());
}

TEST_F (ProgramLibrariesTest, withoutTheLibraryADrawnPageIsAFailureInWords)
{
    for (const auto& command : { drawnSheet, overview })
    {
        const auto drawn = runWithoutDocuments (command);
        EXPECT_EQ (drawn.status, 1);
        EXPECT_THAT (drawn.errors, EndsWith (".pdf: " + words (missing)));
    }

    EXPECT_EQ (folder.getNumberOfChildFiles (juce::File::findFiles, "*.pdf"), 0);
}

TEST_F (ProgramLibrariesTest, withoutTheLibraryAllElseGoesOn)
{
    const auto result = runWithoutDocuments ({ "convert", "list.csv", "list.asc", "--quiet" });
    EXPECT_EQ (result.status, 0) << result.errors;
    ASSERT_EQ (run ({ "convert", "list.csv", "again.asc", "--quiet" }).status, 0);
    EXPECT_EQ (read ("list.asc"), read ("again.asc"));
}

TEST_F (ProgramLibrariesTest, aLibraryOfSomethingElseIsAFailureInWords)
{
    const auto in = [this] (const char* other)
    {
        file ("alone").createDirectory();
        std::filesystem::copy_file (other, path ("alone/" OVERMARKS_DOCUMENTS_FILE),
                                    std::filesystem::copy_options::overwrite_existing);
        return runWithoutDocuments ({ "convert", "list.csv", "list.xlsx", "--quiet" });
    };

    const auto foreign = in (OVERMARKS_FAILING_FILES);
    EXPECT_EQ (foreign.status, 1);
    EXPECT_EQ (foreign.errors, "overmarks: Can't write " + path ("list.xlsx") + ": "
                                   + words ("undefined symbol: overmarksDocuments"));

    const auto older = in (OVERMARKS_OLDER_DOCUMENTS);
    EXPECT_EQ (older.status, 1);
    EXPECT_THAT (older.errors,
                 HasSubstr (": The library for workbooks and drawn pages can't be loaded: it is of version "
                            "0.0.1-older, and libZEP_Core of "));
    EXPECT_FALSE (file ("list.xlsx").exists());
}

TEST_F (ProgramLibrariesTest, aFileThatIsNoLibraryIsAFailureInWords)
{
    file ("alone").createDirectory();
    write ("alone/" OVERMARKS_DOCUMENTS_FILE, std::string (5000, '?'));
    const auto written = runWithoutDocuments ({ "convert", "list.csv", "list.xlsx", "--quiet" });
    EXPECT_EQ (written.status, 1);
    EXPECT_EQ (written.errors,
               "overmarks: Can't write " + path ("list.xlsx") + ": " + words ("invalid ELF header"));
}
