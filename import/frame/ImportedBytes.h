// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** What the log is told of a file that a disk gives up in the middle. */
inline constexpr auto kFailedRead = "it can't be read to its end, and nothing of it is taken";

/** Whether a path names an ordinary file. To read anything else, a pipe above all, could mean to wait for ever. */
[[nodiscard]] bool isOrdinaryFile (const juce::String& path);

/** The bytes of a whole file; nothing if it can't be opened or read to its end, is no ordinary file, becomes shorter meanwhile,
    or is larger than ImportLimits allow. The log is told why. */
[[nodiscard]] std::optional<std::string> contentOfFile (const juce::String& path);

/** The bytes of a whole file; none where contentOfFile has nothing. */
[[nodiscard]] std::string bytesOfFile (const juce::String& path);

/** Replaces every occurrence, from left to right; what a replacement brings is not looked at again. An empty `sought`
    replaces nothing. Bytes of a file are searched before they are decoded, since a juce::String of anything but UTF-8
    corrupts memory. */
void replaceEach (std::string& bytes, std::string_view sought, std::string_view replacement);

/** Hands out the lines of a text one by one, without their "\n". Behind a "\n" at the end of the text one more line
    follows, an empty one. The text must outlive this. */
class TextLines final
{
public:
    explicit TextLines (std::string_view textToRead) : text (textToRead) {}

    /** False when all lines have been handed out. */
    [[nodiscard]] bool next (std::string_view& line);

    /** The number of the line that was handed out last, counted from 1. */
    [[nodiscard]] std::size_t lineNumber() const noexcept { return number; }

private:
    std::string_view text;
    std::size_t at = 0;
    std::size_t number = 0;
};

} // namespace ZEP::Overmarks
