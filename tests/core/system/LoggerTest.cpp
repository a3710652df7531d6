// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/Logger.h"

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>
#include <Poco/Logger.h>
#include <Poco/Message.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using ZEP::Core::Logger;

class Collector final : public Poco::Channel
{
public:
    void log (const Poco::Message& message) override
    {
        lines.push_back (std::to_string (message.getPriority()) + " " + message.getText());
    }

    std::vector<std::string> lines;
};

class Log : public testing::Test
{
protected:
    void SetUp() override { Poco::Logger::destroy ("ZEP"); }
    void TearDown() override { Poco::Logger::destroy ("ZEP"); }

    Poco::AutoPtr<Collector> collector { new Collector };
};
} // namespace

TEST_F (Log, errorsGoToStandardErrorByDefault)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    Logger::error ("The tool isn't there");
    Logger::debug ("cell 4");

    EXPECT_EQ (testing::internal::GetCapturedStderr(), "The tool isn't there\n");
    EXPECT_EQ (testing::internal::GetCapturedStdout(), "");
}

TEST_F (Log, nothingQuotedCommandsTheTerminal)
{
    testing::internal::CaptureStderr();
    Logger::error (juce::String::fromUTF8 ("\x1b]0;pwned\x07.srt: L\xc3\xa4rm\tone\ntwo \xc2\x9b"
                                           "31m\x7f"));

    EXPECT_EQ (testing::internal::GetCapturedStderr(), "?]0;pwned?.srt: L\xc3\xa4rm one two ?31m?\n");
}

TEST_F (Log, aMessageIsOneLine)
{
    testing::internal::CaptureStderr();
    Logger::error (
        juce::String::fromUTF8 ("a\nEverything was saved\r\n\xe2\x80\xa8.dbf: \xc2\x85it is cut off\n"));
    EXPECT_EQ (testing::internal::GetCapturedStderr(), "a Everything was saved? ?.dbf: ?it is cut off \n");
}

TEST_F (Log, aMessageOfManyMegabytesIsWrittenAsAnyOther)
{
    const std::string name (std::size_t { 20 } << 20U, 'x');
    Poco::Logger::get ("ZEP").setChannel (collector);
    Logger::error (juce::String (name) + "\n");
    ASSERT_EQ (collector->lines.size(), 1u);
    EXPECT_TRUE (collector->lines[0] == "3 " + name + " ");
}

TEST_F (Log, anApplicationAttachesAChannelBeforeTheFirstMessage)
{
    Poco::Logger::get ("ZEP").setChannel (collector);
    Poco::Logger::get ("ZEP").setLevel ("debug");

    testing::internal::CaptureStderr();
    Logger::error ("one");
    Logger::debug ("two");

    EXPECT_EQ (testing::internal::GetCapturedStderr(), "");
    EXPECT_THAT (collector->lines, ElementsAre ("3 one", "7 two"));
}

TEST_F (Log, anApplicationAttachesAChannelLater)
{
    testing::internal::CaptureStderr();
    Logger::error ("early");
    Poco::Logger::get ("ZEP").setChannel (collector);
    Logger::error ("one");
    Logger::debug ("hidden");
    Poco::Logger::get ("ZEP").setLevel ("debug");
    Logger::debug ("two");

    EXPECT_EQ (testing::internal::GetCapturedStderr(), "early\n");
    EXPECT_THAT (collector->lines, ElementsAre ("3 one", "7 two"));
}

TEST_F (Log, theRootLoggersChannelIsTakenOver)
{
    Poco::Logger::root().setChannel (collector);
    Logger::error ("one");
    Poco::Logger::root().setChannel (nullptr);

    EXPECT_THAT (collector->lines, ElementsAre ("3 one"));
}

TEST_F (Log, anApplicationMaySilenceIt)
{
    Poco::Logger::get ("ZEP").setChannel (collector);
    Poco::Logger::get ("ZEP").setLevel ("none");
    Logger::error ("one");

    EXPECT_THAT (collector->lines, IsEmpty());
}

TEST_F (Log, aTextIsNeverAFormat)
{
    Poco::Logger::get ("ZEP").setChannel (collector);
    Logger::error ("100 % of %s %d %n {} %[0]s");
    Logger::error (juce::CharPointer_UTF8 ("\xc3\xa4\n\xe2\x99\xaa"));
    Logger::error ({});

    EXPECT_THAT (collector->lines,
                 ElementsAre ("3 100 % of %s %d %n {} %[0]s", "3 \xc3\xa4 \xe2\x99\xaa", "3 "));
}
