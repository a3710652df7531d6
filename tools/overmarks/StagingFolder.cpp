// SPDX-License-Identifier: GPL-3.0-only
#include "StagingFolder.h"

#include "OutputFile.h"
#include "Session.h"

#include "core/system/WholeFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace overmarks
{

namespace
{

juce::String reason() { return juce::String::fromUTF8 (std::strerror (errno)); }

juce::File parentFor (const juce::File& target)
{
    refuseFolderOf (target);
    return isDeviceOrPipe (target) ? juce::File::getSpecialLocation (juce::File::tempDirectory)
                                   : placeOf (target).getParentDirectory();
}

} // namespace

void refuseFolderOf (const juce::File& target)
{
    if (isDeviceOrPipe (target))
        return;

    const auto folder = placeOf (target).getParentDirectory();

    if (! folder.exists())
        throw CommandFailure ("There is no folder " + folder.getFullPathName());
    if (! folder.isDirectory())
        throw CommandFailure (folder.getFullPathName() + " is no folder");
    if (access (folder.getFullPathName().toRawUTF8(), W_OK | X_OK) != 0)
        throw CommandFailure ("Can't write into " + folder.getFullPathName() + ": " + reason());
}

StagingFolder::StagingFolder (const juce::File& target) : folder (parentFor (target), ".overmarks.") {}

void StagingFolder::moveIntoPlace (const juce::File& finished, const juce::File& target)
{
    const auto place = placeOf (target);

    if (! isDeviceOrPipe (target)
        && std::rename (finished.getFullPathName().toRawUTF8(), place.getFullPathName().toRawUTF8()) == 0)
        return;

    // A device, or a link to another disk.
    if (! isDeviceOrPipe (target) && errno != EXDEV)
        throw CommandFailure ("Can't write " + target.getFullPathName() + ": " + reason());

    juce::MemoryBlock contents;

    if (! finished.loadFileAsData (contents))
        throw CommandFailure ("Can't read " + finished.getFullPathName());

    const std::string_view bytes (contents.begin(), contents.getSize());

    if (const auto result = ZEP::Core::WholeFile::write (target, bytes); result.failed())
        throw CommandFailure (result.getErrorMessage());
}

} // namespace overmarks
