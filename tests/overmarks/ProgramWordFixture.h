// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "overmarks/ProgramFixture.h"
#include "support/ZipArchive.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

inline constexpr auto writesDocuments = R"(
IFS=,
for file in $output; do cp "$here/good.docx" "$file"; done)";

inline constexpr auto readsOneCue = R"(
echo '{"cueList": [{"startTC": "01:00:02:00", "endTC": "01:00:04:00", "charName": "ANNA", "cueNumber": "A1", )"
                                    R"("text": {"text": "Hello?"}}]}' > "$json")";

/** Never ends by itself, unless it is told to. */
inline constexpr auto waitsForCancel = R"(
touch "$here/started"
while ! grep -q cancel "$cancel" 2> /dev/null; do sleep 0.05; done
echo cancelled > "$here/end")";

inline constexpr auto waitsForEver = R"(
touch "$here/started"
sleep 600)";

/** The program with a shell script in the place of docxHandler. */
class ProgramWordTest : public ProgramTest
{
protected:
    using Names = std::vector<std::string>;

    ProgramWordTest()
    {
        file ("resources").createDirectory();
        file ("temporary").createDirectory();
        file ("out").createDirectory();
        write ("resources/good.docx", ZEP::Overmarks::Testing::zipped ({ { "word/document.xml", "<x/>" } }));
        write ("x.csv", threeCues);
    }

    void install (const std::string& work) const
    {
        write ("resources/docxHandler", R"(#!/bin/sh
here=${0%/*}
echo run >> "$here/runs"
for part in "$@"
do
    case $part in
        json=*) json=${part#json=} ;;
        output=*) output=${part#output=} ;;
        input=*) input=${part#input=}; echo "$part" > "$here/input" ;;
        com=*) com=${part#com=}; progress=${com%%,*}; cancel=${com#*,} ;;
    esac
done
echo "$output" >> "$here/output"
cp "${progress%/*}"/WordDocumentJSON_* "$here/" 2> /dev/null
)" + work + "\n");
        ::chmod (path ("resources/docxHandler").c_str(), 0755);
    }

    ProgramResult start (std::vector<std::string> arguments, ProgramSurroundings surroundings = {}) const
    {
        arguments.insert (arguments.end(), { "--resources", "resources" });
        if (surroundings.temporaryFolder.empty())
            surroundings.temporaryFolder = path ("temporary");
        auto result = run (arguments, {}, surroundings);
        EXPECT_THAT (found ("temporary"), testing::IsEmpty()) << "nothing is left behind";
        return result;
    }

    /** An export of x.csv that fails. @returns its message */
    std::string failureOf (const std::string& work, std::vector<std::string> options = {},
                           const ProgramSurroundings& surroundings = {}) const
    {
        install (work);
        std::vector<std::string> arguments { "export", "x.csv", "-o", "out", "--format", "docx", "--json" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        const auto result = start (arguments, surroundings);
        EXPECT_EQ (result.status, 1) << result.output << result.errors;
        EXPECT_THAT (found ("out"), testing::IsEmpty());
        const auto document = nlohmann::ordered_json::parse (result.output, nullptr, false);
        return document.is_object() ? document.value ("error", "") : result.output;
    }

    Names found (const juce::String& folderName) const
    {
        Names names;
        for (const auto& entry : file (folderName)
                                     .findChildFiles (juce::File::findFilesAndDirectories, true, "*",
                                                      juce::File::FollowSymlinks::no))
            names.push_back (entry.getFileName().toStdString());
        std::sort (names.begin(), names.end());
        return names;
    }

    ProgramSurroundings stoppedBy (std::vector<int> signals) const
    {
        ProgramSurroundings surroundings;
        surroundings.signals = std::move (signals);
        surroundings.signalsWhen = path ("resources/started");
        return surroundings;
    }

    std::string good() const { return read ("resources/good.docx"); }
};
