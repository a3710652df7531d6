// SPDX-License-Identifier: GPL-3.0-only
// The preferences file: one that isn't there, and trying out what would be written.
#include "overmarks/MIDIFixture.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <filesystem>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{

constexpr auto missing = "There is no file nosuch.settings; the registered defaults are used\n";

class ProgramSettingsTest : public ProgramTest
{
protected:
    static inline const std::vector<std::string> studio { "--settings", "studio.settings" };

    ProgramResult preferences (std::vector<std::string> options) const
    {
        options.insert (options.begin(), "preferences");
        options.insert (options.end(), studio.begin(), studio.end());
        return run (options);
    }

    void hasSettings() const
    {
        write ("x.csv", "Loop,Line\n01:00:02:00,Hello\n");
        ASSERT_EQ (preferences ({ "--set", "ADRCueDefaultDuration=1" }).status, 0);
        ASSERT_EQ (run ({ "list", "x.csv", "--map", "Line=Text", "--save-mapping", "loops", "--settings",
                          "studio.settings" })
                       .status,
                   0);
    }
};

TEST_F (ProgramSettingsTest, aPrivateFileStaysPrivate)
{
    hasSettings();
    ASSERT_EQ (chmod (path ("studio.settings").c_str(), 0600), 0);
    EXPECT_EQ (preferences ({ "--set", "ADRCueDefaultDuration=2" }).status, 0);
    EXPECT_EQ (std::filesystem::status (path ("studio.settings")).permissions(),
               std::filesystem::perms (0600));
}

// ---- a file that isn't there ---------------------------------------------------------------------------------------------

TEST_F (ProgramSettingsTest, aCommandThatReadsThemSaysThatTheyAreMissing)
{
    write ("x.csv", threeCues);
    write ("y.csv", threeCues);
    const std::vector<std::vector<std::string>> calls {
        { "list", "x.csv" },
        { "dump", "x.csv" },
        { "check", "x.csv" },
        { "stats", "x.csv" },
        { "rows", "x.csv" },
        { "search", "x.csv", "Me" },
        { "diff", "x.csv", "y.csv" },
        { "preferences" },
        { "reasons" },
        { "convert", "x.csv", "z.csv" },
    };

    for (auto call : calls)
    {
        call.insert (call.end(), { "--settings", "nosuch.settings" });
        const auto result = run (call);
        EXPECT_THAT (result.errors, StartsWith (missing)) << call.front();
        EXPECT_EQ (result.errors.find (missing, 1), std::string::npos) << call.front() << ": said twice";
        EXPECT_THAT (result.output, Not (HasSubstr ("nosuch"))) << call.front();
    }

    EXPECT_FALSE (file ("nosuch.settings").exists());
}

TEST_F (ProgramSettingsTest, aFileThatIsThereIsNotMentioned)
{
    hasSettings();
    EXPECT_THAT (run ({ "list", "x.csv", "--settings", "studio.settings" }).errors,
                 Not (HasSubstr ("settings")));
}

TEST_F (ProgramSettingsTest, aCommandThatWritesThemMakesTheFile)
{
    const auto stored =
        run ({ "preferences", "--set", "ADRCueDefaultDuration=1", "--settings", "nosuch.settings" });
    EXPECT_EQ (stored.status, 0);
    EXPECT_THAT (stored.errors, Not (HasSubstr ("There is no file")));
    EXPECT_TRUE (file ("nosuch.settings").existsAsFile());

    write ("x.csv", "Loop,Line\n01:00:02:00,Hello\n");
    const auto kept = run (
        { "list", "x.csv", "--map", "Line=Text", "--save-mapping", "loops", "--settings", "other.settings" });
    EXPECT_EQ (kept.status, 0);
    EXPECT_THAT (kept.errors, Not (HasSubstr ("There is no file")));
    EXPECT_TRUE (file ("other.settings").existsAsFile());
}

// ---- dry runs ------------------------------------------------------------------------------------------------------------

TEST_F (ProgramSettingsTest, aDryRunStoresNoPreference)
{
    const auto result = preferences ({ "--set", "ADRCueDefaultDuration=7", "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.errors, "Would write " + path ("studio.settings") + "\n");
    EXPECT_THAT (filesInFolder(), IsEmpty());

    hasSettings();
    const auto before = read ("studio.settings");
    EXPECT_EQ (preferences ({ "--set", "ADRCueDefaultDuration=7", "--dry-run" }).status, 0);
    EXPECT_EQ (read ("studio.settings"), before);
}

TEST_F (ProgramSettingsTest, aDryRunForgetsNoMapping)
{
    hasSettings();
    const auto before = read ("studio.settings");
    const auto result = preferences ({ "--forget-mapping", "loops", "--dry-run", "--json" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.errors, "Would write " + path ("studio.settings") + "\n");
    EXPECT_EQ (result.json()["dryRun"], true);
    EXPECT_EQ (result.json()["mappings"].size(), 1u);
    EXPECT_EQ (read ("studio.settings"), before);
}

TEST_F (ProgramSettingsTest, aDryRunRefusesWhatWouldBeRefused)
{
    hasSettings();
    EXPECT_EQ (preferences ({ "--forget-mapping", "loop", "--dry-run" }).status, 2);
    EXPECT_EQ (preferences ({ "--set", "ADRCueDefaultDuration=x", "--dry-run" }).status, 2);
    EXPECT_EQ (run ({ "preferences", "--set", "ADRCueDefaultDuration=1", "--dry-run" }).status, 2);
}

TEST_F (ProgramSettingsTest, aDryRunOfNothingSaysSo)
{
    hasSettings();
    const auto result = preferences ({ "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.errors, "--dry-run makes no difference without --set or --forget-mapping\n");
    EXPECT_FALSE (preferences ({ "--json" }).json().contains ("dryRun"));
}

TEST_F (ProgramSettingsTest, theFileIsEditedWithoutForce)
{
    hasSettings();
    EXPECT_EQ (preferences ({ "--set", "ADRCueDefaultDuration=7" }).status, 0);
    EXPECT_THAT (read ("studio.settings"), HasSubstr ("\"int:7\""));
    EXPECT_EQ (preferences ({ "--json" }).json()["mappings"].size(), 1u) << "what isn't named stays";
    EXPECT_THAT (run ({ "preferences", "--help" }).output, HasSubstr ("it needs no --force"));
}

TEST_F (ProgramMIDITest, aDryRunUnbindsNothing)
{
    hasFilm();
    ASSERT_EQ (bind ("PC 1 5", identityOf (0)).status, 0);
    const auto before = read (triggerFile);
    const auto tried = run ({ "midi", "unbind", "--message", "PC 1 5", "--dry-run" });
    EXPECT_EQ (tried.status, 0);
    EXPECT_EQ (tried.errors,
               "Would write " + path (triggerFile) + ": PC 1 5 would fire nothing, 1 binding removed\n");
    const auto told = run ({ "midi", "unbind", "--message", "PC 1 5", "--dry-run", "--json" }).json();
    EXPECT_EQ (told["dryRun"], true);
    EXPECT_EQ (told["removed"], 1);
    EXPECT_EQ (read (triggerFile), before);
    EXPECT_EQ (run ({ "midi", "unbind", "--message", "PC 1 6", "--dry-run" }).status, 1);

    const auto done = run ({ "midi", "unbind", "--message", "PC 1 5", "--json" });
    EXPECT_FALSE (done.json().contains ("dryRun"));
    EXPECT_TRUE (bindings().empty());
}

} // namespace
