// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "overmarks/RunProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

/** A folder of its own for each test, in which the program runs. */
class ProgramTest : public testing::Test
{
protected:
    ProgramTest() { folder.createDirectory(); }
    ~ProgramTest() override { folder.deleteRecursively(); }

    ProgramResult run (const std::vector<std::string>& arguments, const std::string& standardInput = {},
                       const ProgramSurroundings& surroundings = {}) const
    {
        return runProgram (folder, arguments, standardInput, surroundings);
    }

    /** The error of a run with --json, which has to be all that there is on standard output. */
    std::string errorOf (std::vector<std::string> arguments, int status) const
    {
        arguments.emplace_back ("--json");
        const auto result = run (arguments);
        EXPECT_EQ (result.status, status) << result.output << result.errors;
        const auto document = nlohmann::ordered_json::parse (result.output, nullptr, false);
        EXPECT_TRUE (document.is_object() && document.size() == 1 && document.contains ("error"))
            << result.output;
        return document.is_object() ? document.value ("error", "") : std::string();
    }

    /** Names of all that is in the folder. */
    std::vector<std::string> filesInFolder() const
    {
        std::vector<std::string> names;

        for (const auto& found : folder.findChildFiles (juce::File::findFilesAndDirectories, true))
            names.push_back (found.getRelativePathFrom (folder).toStdString());

        std::sort (names.begin(), names.end());
        return names;
    }

    juce::File file (const juce::String& name) const { return folder.getChildFile (name); }
    std::string path (const juce::String& name) const { return file (name).getFullPathName().toStdString(); }

    void write (const juce::String& name, const std::string& text) const
    {
        juce::FileOutputStream stream (file (name));
        stream.setPosition (0);
        stream.truncate();
        stream.write (text.data(), text.size());
    }

    std::string read (const juce::String& name) const
    {
        juce::MemoryBlock block;
        file (name).loadFileAsData (block);
        return { block.begin(), block.end() };
    }

    const juce::File folder = juce::File::createTempFile ("program");

    static constexpr auto threeCues = "Start TC,End TC,Character,Actor,Text,Cue Number\n"
                                      "01:00:02:00,01:00:04:00,ANNA,B. Miller,Hello?,A1\n"
                                      "01:00:05:12,01:00:07:00,TOM,C. Berg,\"Who's \"\"there\"\"?\",T1\n"
                                      "01:00:08:00,01:00:09:00,ANNA,B. Miller,Me.,A2\n";
};
