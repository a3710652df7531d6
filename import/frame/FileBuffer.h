// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/FileInput.h"

#include <array>
#include <cstddef>
#include <streambuf>

namespace ZEP::Overmarks
{

/** The bytes of a file for a stream of the standard library, which would wait for a pipe for ever and take a file that is cut while
    it is read for a shorter one.

    The rule that is easily missed: a stream asks whether a read is good, not whether the file could be opened; ask getStatus().
    A read that fails, or ends before the file should, leaves the stream bad(). One thread. */
class FileBuffer final : public std::streambuf
{
public:
    explicit FileBuffer (const juce::String& path) : file (path) {} ///< What fails here shows in getStatus().

    /** Fine, or why the file can't be read, in the system's words. */
    [[nodiscard]] const juce::Result& getStatus() const noexcept { return file.getStatus(); }

private:
    int_type underflow() override;

    Core::FileInput file;
    std::array<char, std::size_t { 1 } << 14> piece {};
};

} // namespace ZEP::Overmarks
