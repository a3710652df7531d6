// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** A folder that exists as long as the test does. */
class TemporaryFolder final
{
public:
    TemporaryFolder()
    {
        auto pattern = (std::filesystem::temp_directory_path() / "overmarks-test-XXXXXX").string();
        path = ::mkdtemp (pattern.data());
    }

    TemporaryFolder (const TemporaryFolder&) = delete;
    TemporaryFolder& operator= (const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all (path); }

    /** The names of what lies in it, sorted. */
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;

        for (const auto& entry : std::filesystem::directory_iterator (path))
            found.push_back (entry.path().filename().string());

        std::sort (found.begin(), found.end());
        return found;
    }

    std::string bytes (const std::string& name) const
    {
        std::ifstream stream (path / name, std::ios::binary);
        return { std::istreambuf_iterator<char> (stream), {} };
    }

    void write (const std::string& name, const std::string& content) const
    {
        std::ofstream (path / name, std::ios::binary) << content;
    }

    juce::String directory() const { return juce::String::fromUTF8 (path.c_str()); }
    juce::File file (const std::string& name) const
    {
        return juce::File (juce::String::fromUTF8 ((path / name).c_str()));
    }

    std::filesystem::path path;
};

} // namespace ZEP::Overmarks::Testing
