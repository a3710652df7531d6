// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/Descriptor.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <string>

namespace overmarks
{

/** What a command may do to a file that exists already. */
struct OutputPolicy
{
    bool force = false;  ///< replace it
    bool dryRun = false; ///< write nothing, only say what would be written
};

/** The absolute file of a path from the command line, relative to the working folder. */
juce::File fileFromPath (const juce::String& path);

/** Whether something stands there that is written into and never replaced: a device or a pipe. */
bool isDeviceOrPipe (const juce::File& file);

/** What the file leads to in the end: itself, or what stands behind links. Throws CommandFailure for a link that somebody else has put into
    a folder of everybody's, such as /tmp. */
juce::File placeOf (const juce::File& file);

/** Whether two names lead to the same file, through any links, folders and other names of it. Where there is no file yet, whether they
    lead to the same place. Throws CommandFailure as placeOf(). */
bool isSameFile (const juce::File& one, const juce::File& other);

/** Whether a file that is to be written is the list that is read. @param list  its path, "-" for standard input */
bool isTheList (const juce::File& file, const juce::String& list);

/** Throws CommandFailure if the file exists and may not be replaced. */
void refuseToReplace (const juce::File& file, const OutputPolicy& policy);

/** Waits until somebody reads the file if it is a pipe with a name, as programs do, and keeps it open; never for a stranger's.
    @param whileWaiting  called again and again; what it throws ends the wait. Whoever keeps a StopSignals::Patience meanwhile asks for the
                         signals here: nobody need ever come. */
[[nodiscard]] ZEP::Core::Descriptor waitForReader (
    const juce::File& file, const std::function<void()>& whileWaiting = [] {});

/** Writes a whole file: beside its place first, then moved into it, so that nobody ever sees half of it and a full disk
    leaves the old one. Waits until somebody reads a pipe. Throws CommandFailure. */
void writeWholeFile (const juce::File& file, const std::string& contents);

} // namespace overmarks
