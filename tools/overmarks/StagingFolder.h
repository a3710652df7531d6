// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "PrivateFolder.h"

#include <juce_core/juce_core.h>

namespace overmarks
{

/** A folder of this run's own, inside the folder where its files will stand in the end: what fails half way, on a full disk
    for example, has touched nothing of the user's. Gone again, with all that is still in it, at the end of the scope, or when a
    signal ends the program before. */
class StagingFolder final
{
public:
    /** @param target  a file that will be written. For a device or a pipe the folder lies among the temporary files.
        Throws CommandFailure if the target's folder is missing or can't be written to. */
    explicit StagingFolder (const juce::File& target);

    StagingFolder (const StagingFolder&) = delete;
    StagingFolder& operator= (const StagingFolder&) = delete;

    const juce::File& getFolder() const noexcept { return folder.get(); }
    const StopSignals& getSignals() const noexcept { return folder.getSignals(); }

    /** Gives a file that was made the owner, group and permissions of the one that it replaces, if there is one: it is for the same
        people. False if that can't be; errno tells why. */
    [[nodiscard]] static bool takeRightsOf (const juce::File& place, const juce::File& made);

    /** Moves a finished file of this folder to its place, where it replaces what is there; a link stays a link. A pipe gets what is in it
        if somebody reads it; here nobody is waited for.
        Throws CommandFailure; the old file is whole then. */
    static void moveIntoPlace (const juce::File& finished, const juce::File& target);

private:
    PrivateFolder folder;
};

/** Throws CommandFailure unless files can be written to the folder. */
void refuseFolderOf (const juce::File& target);

} // namespace overmarks
