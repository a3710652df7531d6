// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/UserDefaults.h"

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <limits>

namespace
{
using ZEP::Core::UserDefaults;
using Limits = std::numeric_limits<int>;

class Preferences : public testing::Test
{
protected:
    void SetUp() override { forget(); }

    void TearDown() override { forget(); }

    /** As the next start of the application finds things. */
    void restart()
    {
        forget();
        ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    }

    static void forget()
    {
        ASSERT_TRUE (UserDefaults::setSettingsFile ({}));
        ASSERT_TRUE (UserDefaults::removeAllStoredValues());
    }

    const ZEP::Overmarks::Testing::TemporaryFolder folder;
    const juce::File file = folder.file ("settings.xml");
};
} // namespace

TEST_F (Preferences, anUnknownKeyIsZeroFalseAndEmpty)
{
    EXPECT_EQ (UserDefaults::getIntForKey ("unknown"), 0);
    EXPECT_EQ (UserDefaults::getFloatForKey ("unknown"), 0.0f);
    EXPECT_FALSE (UserDefaults::getBoolForKey ("unknown"));
    EXPECT_EQ (UserDefaults::getStringForKey ("unknown"), "");
    EXPECT_EQ (UserDefaults::getColourForKey ("unknown"), juce::Colour());
    EXPECT_TRUE (UserDefaults::valueForKey ("unknown").empty());
    EXPECT_FALSE (UserDefaults::hasStoredValue ("unknown"));
    EXPECT_EQ (UserDefaults::getIntForKey (juce::String()), 0);
}

TEST_F (Preferences, aDefaultHoldsUntilTheUserStoresSomething)
{
    UserDefaults::registerUserDefaults ({ { "pitch", 1000 } });
    EXPECT_EQ (UserDefaults::getIntForKey ("pitch"), 1000);
    EXPECT_FALSE (UserDefaults::hasStoredValue ("pitch"));

    EXPECT_TRUE (UserDefaults::setValueForKey ("pitch", 440));
    EXPECT_EQ (UserDefaults::getIntForKey ("pitch"), 440);
    EXPECT_TRUE (UserDefaults::hasStoredValue ("pitch"));

    EXPECT_TRUE (UserDefaults::removeValueForKey ("pitch"));
    EXPECT_EQ (UserDefaults::getIntForKey ("pitch"), 1000);
    EXPECT_FALSE (UserDefaults::hasStoredValue ("pitch"));
    EXPECT_TRUE (UserDefaults::removeValueForKey ("pitch"));
}

TEST_F (Preferences, registeringNeverTouchesWhatTheUserStored)
{
    ASSERT_TRUE (UserDefaults::setValueForKey ("pitch", 440));
    UserDefaults::registerUserDefaults ({ { "pitch", 1000 } });

    EXPECT_EQ (UserDefaults::getIntForKey ("pitch"), 440);
}

TEST_F (Preferences, aSecondRegistrationAddsToTheFirst)
{
    UserDefaults::registerUserDefaults ({ { "first", 1 }, { "both", 1 } });
    UserDefaults::registerUserDefaults ({ { "second", 2 }, { "both", 2 } });

    EXPECT_EQ (UserDefaults::getIntForKey ("first"), 1);
    EXPECT_EQ (UserDefaults::getIntForKey ("second"), 2);
    EXPECT_EQ (UserDefaults::getIntForKey ("both"), 2);
    EXPECT_THAT (UserDefaults::registeredKeys(), testing::IsSupersetOf ({ "both", "first", "second" }));
}

TEST_F (Preferences, theKeysWithADefaultAreListedInOrderAndWithoutStoredOnes)
{
    UserDefaults::registerUserDefaults ({ { "zebra", 1 }, { "Apple", 1 }, { "apple", 1 } });
    ASSERT_TRUE (UserDefaults::setValueForKey ("stored only", 1));
    const auto keys = UserDefaults::registeredKeys();

    EXPECT_TRUE (std::is_sorted (keys.begin(), keys.end()));
    EXPECT_THAT (keys, testing::IsSupersetOf ({ "Apple", "apple", "zebra" }));
    EXPECT_THAT (keys, testing::Not (testing::Contains ("stored only")));
}

TEST_F (Preferences, numbersConvertIntoEachOther)
{
    UserDefaults::registerUserDefaults ({ { "tempo", 120 },
                                          { "width", 0.06f },
                                          { "wide", -2.9f },
                                          { "yes", true },
                                          { "no", false },
                                          { "real", 2.5 } });

    EXPECT_EQ (UserDefaults::getFloatForKey ("tempo"), 120.0f);
    EXPECT_TRUE (UserDefaults::getBoolForKey ("tempo"));
    EXPECT_EQ (UserDefaults::getIntForKey ("width"), 0);
    EXPECT_TRUE (UserDefaults::getBoolForKey ("width"));
    EXPECT_EQ (UserDefaults::getFloatForKey ("width"), 0.06f);
    EXPECT_EQ (UserDefaults::getIntForKey ("wide"), -2);
    EXPECT_EQ (UserDefaults::getIntForKey ("yes"), 1);
    EXPECT_EQ (UserDefaults::getFloatForKey ("yes"), 1.0f);
    EXPECT_EQ (UserDefaults::getIntForKey ("no"), 0);
    EXPECT_EQ (UserDefaults::getFloatForKey ("real"), 2.5f);
    EXPECT_EQ (UserDefaults::getIntForKey ("real"), 2);
}

TEST_F (Preferences, numbersBeyondAnIntBecomeTheNearestOne)
{
    const auto infinity = std::numeric_limits<float>::infinity();
    UserDefaults::registerUserDefaults (
        { { "large", 1e30f }, { "small", -infinity }, { "none", std::numeric_limits<float>::quiet_NaN() } });

    EXPECT_EQ (UserDefaults::getIntForKey ("large"), Limits::max());
    EXPECT_EQ (UserDefaults::getIntForKey ("small"), Limits::min());
    EXPECT_EQ (UserDefaults::getIntForKey ("none"), 0);
}

TEST_F (Preferences, textsAndColoursAreNoNumbersAndTheReverse)
{
    UserDefaults::registerUserDefaults ({ { "text", juce::String ("12") },
                                          { "colour", juce::Colour (0xff00ff00) },
                                          { "number", 12 },
                                          { "other", std::string ("12") } });

    EXPECT_EQ (UserDefaults::getStringForKey ("text"), "12");
    EXPECT_EQ (UserDefaults::getColourForKey ("colour"), juce::Colour (0xff00ff00));
    for (const auto* key : { "text", "colour", "other" })
    {
        EXPECT_EQ (UserDefaults::getIntForKey (key), 0) << key;
        EXPECT_EQ (UserDefaults::getFloatForKey (key), 0.0f) << key;
        EXPECT_FALSE (UserDefaults::getBoolForKey (key)) << key;
    }
    EXPECT_EQ (UserDefaults::getStringForKey ("number"), "");
    EXPECT_EQ (UserDefaults::getColourForKey ("number"), juce::Colour());
    EXPECT_EQ (Poco::AnyCast<std::string> (UserDefaults::valueForKey ("other")), "12");
}

TEST_F (Preferences, aStoredValueThatTheKeyCannotMeanLeavesTheDefault)
{
    UserDefaults::registerUserDefaults (
        { { "length", 3 }, { "name", juce::String ("Stage A") }, { "on", true } });
    ASSERT_TRUE (UserDefaults::setValueForKey ("length", juce::String ("5")));
    ASSERT_TRUE (UserDefaults::setValueForKey ("name", 7));
    ASSERT_TRUE (UserDefaults::setValueForKey ("on", juce::Colours::red));

    EXPECT_EQ (UserDefaults::getIntForKey ("length"), 3);
    EXPECT_EQ (UserDefaults::getStringForKey ("name"), "Stage A");
    EXPECT_TRUE (UserDefaults::getBoolForKey ("on"));
}

TEST_F (Preferences, oneUsersSettingsDoNotGoIntoTheFileOfAnother)
{
    const auto first = folder.file ("first.settings");
    const auto second = folder.file ("second.settings");

    ASSERT_TRUE (UserDefaults::setSettingsFile (first));
    ASSERT_TRUE (UserDefaults::setValueForKey ("x", 1));
    ASSERT_TRUE (UserDefaults::setSettingsFile (second));
    EXPECT_FALSE (UserDefaults::hasStoredValue ("x"));
    ASSERT_TRUE (UserDefaults::setValueForKey ("y", 2));
    ASSERT_TRUE (UserDefaults::setSettingsFile (first));
    EXPECT_TRUE (UserDefaults::hasStoredValue ("x"));
    EXPECT_FALSE (UserDefaults::hasStoredValue ("y"));
}

TEST_F (Preferences, keysMayBeGivenAsTheGlobalsAre)
{
    UserDefaults::registerUserDefaults ({ { "tempo", 120 } });
    const std::string key = "tempo";

    EXPECT_EQ (UserDefaults::getIntForKey (key), 120);
    EXPECT_EQ (UserDefaults::getFloatForKey (key), 120.0f);
    EXPECT_TRUE (UserDefaults::getBoolForKey (key));
    EXPECT_EQ (UserDefaults::getIntForKey (juce::String (key)), 120);
}

TEST_F (Preferences, keysDifferByCase)
{
    UserDefaults::registerUserDefaults ({ { "tempo", 120 } });

    EXPECT_EQ (UserDefaults::getIntForKey ("Tempo"), 0);
}

TEST_F (Preferences, aValueOfAnotherTypeIsRefused)
{
    ASSERT_TRUE (UserDefaults::setValueForKey ("pitch", 440));

    const auto result = UserDefaults::setValueForKey ("pitch", std::vector<int> {});

    EXPECT_EQ (result.getErrorMessage(), "The value of \"pitch\" is of no type that can be stored");
    EXPECT_EQ (UserDefaults::getIntForKey ("pitch"), 440);
}

TEST_F (Preferences, storedValuesAndTheirTypesOutliveTheProgram)
{
    ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    EXPECT_FALSE (file.exists());
    ASSERT_TRUE (UserDefaults::setValueForKey ("flag", true));
    ASSERT_TRUE (UserDefaults::setValueForKey ("code", 3));
    ASSERT_TRUE (UserDefaults::setValueForKey ("width", 0.06f));
    ASSERT_TRUE (UserDefaults::setValueForKey ("font", juce::String ("Arial")));
    ASSERT_TRUE (UserDefaults::setValueForKey ("colour", juce::Colour (0x80123456)));

    restart();

    EXPECT_TRUE (Poco::AnyCast<bool> (UserDefaults::valueForKey ("flag")));
    EXPECT_EQ (Poco::AnyCast<int> (UserDefaults::valueForKey ("code")), 3);
    EXPECT_EQ (Poco::AnyCast<float> (UserDefaults::valueForKey ("width")), 0.06f);
    EXPECT_EQ (Poco::AnyCast<juce::String> (UserDefaults::valueForKey ("font")), "Arial");
    EXPECT_EQ (Poco::AnyCast<juce::Colour> (UserDefaults::valueForKey ("colour")), juce::Colour (0x80123456));
}

TEST_F (Preferences, aRemovedValueStaysRemoved)
{
    ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    ASSERT_TRUE (UserDefaults::setValueForKey ("a", 1));
    ASSERT_TRUE (UserDefaults::setValueForKey ("b", 2));
    ASSERT_TRUE (UserDefaults::removeValueForKey ("a"));
    restart();
    EXPECT_FALSE (UserDefaults::hasStoredValue ("a"));
    EXPECT_TRUE (UserDefaults::hasStoredValue ("b"));

    ASSERT_TRUE (UserDefaults::removeAllStoredValues());
    restart();
    EXPECT_FALSE (UserDefaults::hasStoredValue ("b"));
}

TEST_F (Preferences, whatWasStoredBeforeTheFileWasNamedIsKeptInIt)
{
    ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    ASSERT_TRUE (UserDefaults::setValueForKey ("both", 1));
    forget();
    ASSERT_TRUE (UserDefaults::setValueForKey ("both", 2));
    ASSERT_TRUE (UserDefaults::setValueForKey ("memory", 3));

    ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    EXPECT_EQ (UserDefaults::getIntForKey ("both"), 1);
    EXPECT_EQ (UserDefaults::getIntForKey ("memory"), 3);

    restart();
    EXPECT_EQ (UserDefaults::getIntForKey ("memory"), 3);
}

TEST_F (Preferences, aDamagedFileLeavesEverythingAsItWas)
{
    ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    ASSERT_TRUE (UserDefaults::setValueForKey ("code", 3));
    const auto damaged = folder.file ("damaged.xml");
    ASSERT_TRUE (damaged.replaceWithText ("<PROPERTIES><VALUE name=\"code\" val=\"int:9\"/>"));

    EXPECT_EQ (UserDefaults::setSettingsFile (damaged).getErrorMessage(),
               "The settings file \"" + damaged.getFullPathName() + "\" is damaged");

    EXPECT_EQ (UserDefaults::getIntForKey ("code"), 3);
    EXPECT_EQ (damaged.loadFileAsString(), "<PROPERTIES><VALUE name=\"code\" val=\"int:9\"/>");
    ASSERT_TRUE (UserDefaults::setValueForKey ("code", 4));
    restart();
    EXPECT_EQ (UserDefaults::getIntForKey ("code"), 4);
}

TEST_F (Preferences, aFileThatCannotBeReachedIsNotTakenForOneThatIsMissing)
{
    ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    ASSERT_TRUE (UserDefaults::setValueForKey ("code", 3));
    forget();
    const auto stored = file.loadFileAsString();
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0));
    const auto outcome = ZEP::Overmarks::Testing::inChildProcess (
        [this]
        {
            return ZEP::Overmarks::Testing::becomeOrdinaryUser()
                       ? UserDefaults::setSettingsFile (file).getErrorMessage().toStdString()
                       : "still an administrator";
        });
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0700));
    EXPECT_EQ (outcome,
               ("The settings file \"" + file.getFullPathName() + "\" can't be read: Permission denied")
                   .toStdString());
    EXPECT_EQ (file.loadFileAsString(), stored);
}

TEST_F (Preferences, aFileThatCannotBeWrittenGivesAMessageAndTheValueHolds)
{
    ASSERT_TRUE (file.replaceWithText ("a file"));
    const auto below = file.getChildFile ("settings.xml");
    const auto message = "Error writing the settings file \"" + below.getFullPathName() + "\"";
    ASSERT_TRUE (UserDefaults::setSettingsFile (below));

    EXPECT_EQ (UserDefaults::setValueForKey ("code", 3).getErrorMessage(), message);
    EXPECT_EQ (UserDefaults::getIntForKey ("code"), 3);

    ASSERT_TRUE (UserDefaults::setSettingsFile ({}));
    EXPECT_EQ (UserDefaults::setSettingsFile (below).getErrorMessage(), message);
    EXPECT_EQ (UserDefaults::getIntForKey ("code"), 3);
}

TEST_F (Preferences, aLinkToTheFileStaysALink)
{
    const auto link = folder.file ("link.xml");
    ASSERT_TRUE (UserDefaults::setSettingsFile (file));
    ASSERT_TRUE (UserDefaults::setValueForKey ("code", 3));
    ASSERT_TRUE (file.createSymbolicLink (link, false));

    ASSERT_TRUE (UserDefaults::setSettingsFile (link));
    ASSERT_TRUE (UserDefaults::setValueForKey ("code", 4));

    EXPECT_TRUE (link.isSymbolicLink());
    restart();
    EXPECT_EQ (UserDefaults::getIntForKey ("code"), 4);
}

TEST_F (Preferences, aMillionLookupsFindTheSame)
{
    std::map<juce::String, Poco::Any> defaults;
    for (int i = 0; i < 100; ++i)
        defaults["SomeDefaultWithALongName" + juce::String (i)] = i;
    UserDefaults::registerUserDefaults (defaults);
    const std::string key = "SomeDefaultWithALongName99";

    const auto start = std::clock();
    long sum = 0;
    for (int i = 0; i < 1000000; ++i)
        sum += UserDefaults::getIntForKey (key);
    const auto seconds = static_cast<double> (std::clock() - start) / CLOCKS_PER_SEC;
    RecordProperty ("milliseconds", static_cast<int> (seconds * 1000.0));

    EXPECT_EQ (sum, 99000000);
}
