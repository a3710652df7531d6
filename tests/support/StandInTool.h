// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/SystemUtility.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** A shell script in the place of docxHandler, which notes how it was started, with a resource folder and a temporary folder of
    the test's own. Before its own work the script sets `here` to the resource folder, and for each part of the command line that
    begins with "json=" and so on a variable of that name. */
class StandInTool final
{
public:
    /** @param work            what the tool does, in the shell's language
        @param resourceFolder  its name */
    explicit StandInTool (const std::string& work = {}, const std::string& resourceFolder = "resources")
        : resources (folder.path / resourceFolder),
          temporary (folder.path / "temporary")
    {
        std::filesystem::create_directories (resources);
        std::filesystem::create_directories (temporary);
        install (work);
        ::setenv ("TMPDIR", temporary.c_str(), 1);
        Core::SystemUtility::configure ({ 1, {}, juce::String::fromUTF8 (resources.c_str()), {} });
    }

    StandInTool (const StandInTool&) = delete;
    StandInTool& operator= (const StandInTool&) = delete;

    ~StandInTool()
    {
        Core::SystemUtility::configure ({});

        if (before.empty())
            ::unsetenv ("TMPDIR");
        else
            ::setenv ("TMPDIR", before.c_str(), 1);
    }

    /** Another tool in the place of the first. */
    void install (const std::string& work) const
    {
        static constexpr auto notes = R"(#!/bin/sh
here=${0%/*}
echo run >> "$here/runs"
printf '%s\0' "$0" "$@" > "$here/words"
for part in "$@"
do
    case $part in
        json=*) json=${part#json=} ;;
        output=*) output=${part#output=} ;;
        input=*) input=${part#input=} ;;
        com=*) com=${part#com=}; progress=${com%%,*}; cancel=${com#*,} ;;
    esac
done
)";
        const auto path = resources / "docxHandler";
        std::ofstream (path, std::ios::binary) << notes << work << "\n";
        ::chmod (path.c_str(), 0755);
    }

    /** The words of the last command line, the tool's own path first; none if it hasn't been started. */
    std::vector<std::string> words() const
    {
        std::vector<std::string> found;
        const auto bytes = note ("words");

        for (std::size_t start = 0; start < bytes.size();)
        {
            const auto end = bytes.find ('\0', start);
            found.push_back (bytes.substr (start, end - start));
            start = end + 1;
        }

        return found;
    }

    /** How often it was started. */
    int runs() const
    {
        const auto bytes = note ("runs");
        return static_cast<int> (std::count (bytes.begin(), bytes.end(), '\n'));
    }

    /** A file that the tool has written to its resource folder. */
    std::string note (const std::string& name) const
    {
        std::ifstream stream (resources / name, std::ios::binary);
        return { std::istreambuf_iterator<char> (stream), {} };
    }

    /** Puts a file into the temporary folder. */
    void plant (const std::string& name, const std::string& content) const
    {
        std::ofstream (temporary / name, std::ios::binary) << content;
    }

    /** A file of the temporary folder. */
    std::string bytes (const std::string& name) const
    {
        std::ifstream stream (temporary / name, std::ios::binary);
        return { std::istreambuf_iterator<char> (stream), {} };
    }

    bool has (const std::string& name) const { return std::filesystem::exists (temporary / name); }

    /** The names of what lies in the temporary folder, sorted. */
    std::vector<std::string> temporaryFiles() const
    {
        std::vector<std::string> found;

        for (const auto& entry : std::filesystem::directory_iterator (temporary))
            found.push_back (entry.path().filename().string());

        std::sort (found.begin(), found.end());
        return found;
    }

    std::string inTemporary (const std::string& name) const { return (temporary / name).string(); }

private:
    const std::string before = std::getenv ("TMPDIR") != nullptr ? std::getenv ("TMPDIR") : "";

public:
    const TemporaryFolder folder;
    const std::filesystem::path resources;
    const std::filesystem::path temporary;
};

/** Has the tool keep the JSON files that it was given, and make the documents. */
inline constexpr auto keepJSONAndWrite = R"(
IFS=,
for file in $json; do cp "$file" "$here/"; done
for file in $output; do echo document > "$file"; done
)";

} // namespace ZEP::Overmarks::Testing
