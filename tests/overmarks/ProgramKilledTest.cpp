// SPDX-License-Identifier: GPL-3.0-only
// The program is killed while it works on a project: a terminal is closed, the machine runs out of power.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>

namespace
{

class ProgramKilledTest : public ProgramTest
{
protected:
    /** film.overmarks, with enough cues that saving takes a moment. */
    void importFilm() const
    {
        std::string list = "Start TC,Text,Cue Number\n";

        for (int i = 0; i < 3000; ++i)
        {
            const auto two = [] (int number) { return (number < 10 ? "0" : "") + std::to_string (number); };
            list += "00:" + two (i / 60) + ":" + two (i % 60) + ":00,A line that is neither long nor short,A"
                    + std::to_string (i) + "\n";
        }

        write ("x.csv", list);
        const auto result = run ({ "import", "x.csv", "-o", "film.overmarks" });
        ASSERT_EQ (result.status, 0) << result.errors;
    }

    /** Sets the notes of every cue. @param killedAfter  microseconds; -1: never */
    ProgramResult setNotes (const std::string& notes, int killedAfter = -1) const
    {
        ProgramSurroundings surroundings;
        surroundings.killedAfter = killedAfter;
        return run ({ "set", "film.overmarks", "-o", "film.overmarks", "Notes=" + notes }, {}, surroundings);
    }

    /** The project with these notes, whole. */
    std::string wholeWith (const std::string& notes) const
    {
        const auto result = setNotes (notes);
        EXPECT_EQ (result.status, 0) << result.errors;
        return read ("film.overmarks");
    }
};

TEST_F (ProgramKilledTest, theProjectIsTheOldOneOrTheNewOneWhole)
{
    importFilm();
    const auto start = std::chrono::steady_clock::now();
    const auto one = wholeWith ("one");
    const auto other = wholeWith ("quite another");
    const auto usual = static_cast<int> (
        std::chrono::duration_cast<std::chrono::microseconds> (std::chrono::steady_clock::now() - start)
            .count()
        / 2);
    ASSERT_NE (one, other);
    int killed = 0;

    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round)
    {
        // From the first moment to the last: most of them while the project is read, changed or written.
        const auto result = setNotes (round % 2 == 0 ? "one" : "quite another", usual * round / (rounds - 2));
        killed += result.status == 128 + SIGKILL ? 1 : 0;
        const auto now = read ("film.overmarks");
        ASSERT_EQ (now == one || now == other, true)
            << "round " << round << ": " << now.size() << " bytes, and whole ones have " << one.size()
            << " and " << other.size();
    }

    EXPECT_GT (killed, 0) << "else the test has seen nothing";

    // What a killed program leaves behind is hidden and in nobody's way.
    EXPECT_EQ (wholeWith ("one"), one);
    for (const auto& name : filesInFolder())
        EXPECT_TRUE (name == "x.csv" || name == "film.overmarks" || name.starts_with (".film.overmarks."))
            << name;
}

} // namespace
