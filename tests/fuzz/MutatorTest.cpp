// SPDX-License-Identifier: GPL-3.0-only
// What takes the fuzzer's place in the tests.
#include "Mutator.h"

#include "Law.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace
{

using testing::ElementsAre;
using ZEP::Overmarks::Testing::TemporaryFolder;

const std::vector<std::string> lists { "01:00:00:00,ANNA,Hello\n", "01:00:02:00,PAUL,No 12\n" };

std::vector<std::string> damaged (unsigned seed, const std::vector<std::string>& inputs,
                                  const std::vector<std::string>& words = {})
{
    Mutator mutator (seed, words);
    std::vector<std::string> made;

    for (int i = 0; i < 500; ++i)
        made.push_back (mutator.next (inputs));

    return made;
}

std::vector<std::string> wordsIn (const std::string& dictionary)
{
    const TemporaryFolder folder;
    folder.write ("words.dict", dictionary);
    return wordsOfDictionary (folder.path / "words.dict");
}

TEST (Mutator, theSameSeedGivesTheSameInputs) { EXPECT_EQ (damaged (7, lists), damaged (7, lists)); }

TEST (Mutator, anotherSeedGivesOthers) { EXPECT_NE (damaged (7, lists), damaged (8, lists)); }

TEST (Mutator, hardlyAnyInputStaysWhole)
{
    const auto made = damaged (1, lists);
    const auto whole =
        std::count_if (made.begin(), made.end(),
                       [] (const auto& input) { return std::count (lists.begin(), lists.end(), input) > 0; });
    EXPECT_LT (whole, 50);
    EXPECT_GT (std::set<std::string> (made.begin(), made.end()).size(), 450u);
}

TEST (Mutator, wordsOfTheFormatGetIntoTheInputs)
{
    const auto made = damaged (1, lists, { "Sprecher" });
    EXPECT_TRUE (std::any_of (made.begin(), made.end(),
                              [] (const auto& input)
                              { return input.find ("Sprecher") != std::string::npos; }));
}

TEST (Mutator, somethingIsMadeOfNothing)
{
    for (const auto& inputs : { std::vector<std::string>(), { std::string() } })
    {
        const auto made = damaged (1, inputs);
        EXPECT_TRUE (
            std::any_of (made.begin(), made.end(), [] (const auto& input) { return ! input.empty(); }));
    }
}

TEST (Mutator, aDictionaryHasAWordALineWithOrWithoutAName)
{
    EXPECT_THAT (wordsIn ("# of a list\n\n\"Start TC\"\nend=\"End TC\"\n"),
                 ElementsAre ("Start TC", "End TC"));
}

TEST (Mutator, aDictionaryEscapesBytesQuotesAndBackslashes)
{
    EXPECT_THAT (wordsIn ("\"\\xef\\xBB\\x09\"\n\"\\\"\\\\\"\n"), ElementsAre ("\xef\xbb\t", "\"\\"));
}

TEST (Mutator, aZeroByteIsAWord)
{
    EXPECT_THAT (wordsIn ("\"a\\x00b\"\n"), ElementsAre (std::string ("a\0b", 3)));
}

TEST (Mutator, aBrokenDictionaryEndsTheProgram)
{
    EXPECT_DEATH (static_cast<void> (wordsIn ("no word\n")), "a line of a dictionary holds a word in quotes");
    EXPECT_DEATH (static_cast<void> (wordsIn ("\"\\q\"\n")), "a dictionary escapes");
    EXPECT_DEATH (static_cast<void> (wordsIn ("\"\\x1\"\n")), "two hexadecimal digits");
    EXPECT_DEATH (static_cast<void> (wordsIn ("\"a\\\"\n")), "half an escape");
    EXPECT_DEATH (static_cast<void> (wordsIn ("# nothing\n")), "a dictionary has words");
    EXPECT_DEATH (static_cast<void> (wordsOfDictionary ("/no/such.dict")), "the dictionary can be read");
}

TEST (Mutator, aLawThatIsBrokenEndsTheProgramWithItsWords)
{
    law (true, "all is well");
    EXPECT_DEATH (law (false, "a row is one event at most"), "This doesn't hold: a row is one event at most");
}

/** The names in the first column of the table of targets. */
std::set<std::string> namesOfTargets()
{
    std::ifstream table (std::filesystem::path (OVERMARKS_SOURCES) / "fuzz/targets");
    std::set<std::string> names;

    for (std::string line; std::getline (table, line);)
        if (! line.empty() && line.front() != '#')
            names.insert (line.substr (0, line.find_first_of (" |")));

    return names;
}

TEST (FuzzTargets, haveADictionaryEach)
{
    std::set<std::string> dictionaries;

    for (const auto& entry : std::filesystem::directory_iterator (std::filesystem::path (OVERMARKS_SOURCES)
                                                                  / "fuzz/dictionaries"))
    {
        dictionaries.insert (entry.path().stem().string());
        EXPECT_FALSE (wordsOfDictionary (entry.path()).empty()) << entry.path();
    }

    EXPECT_EQ (dictionaries, namesOfTargets());
}

TEST (FuzzTargets, ofCorpusAndRegressionsAreInTheTable)
{
    const auto names = namesOfTargets();
    int looked = 0;

    for (const auto* folder : { "fuzz/corpus", "fuzz/regressions" })
        for (const auto& entry :
             std::filesystem::directory_iterator (std::filesystem::path (OVERMARKS_SOURCES) / folder))
        {
            ++looked;
            EXPECT_EQ (names.count (entry.path().filename().string()), 1u) << entry.path();
            EXPECT_FALSE (std::filesystem::is_empty (entry.path())) << entry.path();
        }

    EXPECT_GT (looked, 0);
}

} // namespace
