// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <string>

namespace ZEP::Core
{

/** Reading a file whose name somebody has given: a cue list, a project, settings.

    What isn't an ordinary file is refused and never waited for, whatever becomes of the name meanwhile: a pipe without a writer would
    hold the program for ever, and a device has no end. A read that a signal interrupts is repeated, and one that gives less than
    was asked for goes on, as disks of a network do it.

    The rule that is easily missed: a read that comes to an end may have failed, so that half a list would pass for the whole of it;
    ask getStatus() behind it.

    One thread. */
class ZEP_CORE_API FileInput final : public juce::InputStream
{
public:
    explicit FileInput (const juce::String& path); ///< What fails here shows in getStatus().
    ~FileInput() override;

    /** Fine, or the first failure in the system's words. */
    [[nodiscard]] const juce::Result& getStatus() const noexcept { return status; }

    /** The bytes that the system knows of; 0 for a file of the system itself, which knows only when it is read. */
    juce::int64 getTotalLength() override { return length; }
    bool isExhausted() override { return atEnd; } ///< Whether a read has met the end, or has failed.

    /** Reads up to so many bytes. @returns how many: fewer only at the end and on failure */
    int read (void* destination, int most) override;

    juce::int64 getPosition() override { return position; } ///< How many bytes have been read or passed over.
    bool setPosition (
        juce::int64 newPosition) override; ///< From the start of the file. False if it can't be.

    /** The bytes of a whole file up to where it ends now.
        @param bytes  replaced on success, untouched on failure
        @param most   a file that has more bytes isn't read
        @returns on failure what the system says, "it is no file", "it is larger than NUMBER bytes", or "it became shorter while it
                 was being read" */
    [[nodiscard]] static juce::Result readWhole (const juce::String& path, std::string& bytes,
                                                 std::uint64_t most);

private:
    [[nodiscard]] juce::Result readToEnd (std::string& bytes, std::uint64_t most);
    void fail (int error);

    juce::Result status = juce::Result::ok();
    int descriptor = -1;
    juce::int64 length = 0;
    juce::int64 position = 0;
    bool atEnd = false;
};

} // namespace ZEP::Core
