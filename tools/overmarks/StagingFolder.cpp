// SPDX-License-Identifier: GPL-3.0-only
#include "StagingFolder.h"

#include "OutputFile.h"
#include "Session.h"

#include "core/system/Descriptor.h"
#include "core/system/FormerRights.h"
#include "core/system/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
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

bool StagingFolder::takeRightsOf (const juce::File& place, const juce::File& made)
{
    struct stat former
    {
    };

    if (::stat (place.getFullPathName().toRawUTF8(), &former) != 0)
        return true;

    const ZEP::Core::Descriptor file (made.getFullPathName().toStdString(), O_RDONLY);
    return file.isOpen() && ZEP::Core::takeFormerRights (file.number(), former);
}

void StagingFolder::moveIntoPlace (const juce::File& finished, const juce::File& target)
{
    if (! isDeviceOrPipe (target))
    {
        const auto place = placeOf (target);

        if (takeRightsOf (place, finished)
            && std::rename (finished.getFullPathName().toRawUTF8(), place.getFullPathName().toRawUTF8()) == 0)
            return;
        if (errno != EXDEV) // a link to another disk is written through
            throw CommandFailure ("Can't write " + target.getFullPathName() + ": " + reason());
    }

    juce::MemoryBlock contents;

    if (! finished.loadFileAsData (contents))
        throw CommandFailure ("Can't read " + finished.getFullPathName());

    const std::string_view bytes (contents.begin(), contents.getSize());

    if (const auto result = ZEP::Core::WholeFile::write (target, bytes); result.failed())
        throw CommandFailure (result.getErrorMessage());
}

} // namespace overmarks
