// SPDX-License-Identifier: GPL-3.0-only
#include "OutputFile.h"

#include "Session.h"

#include "core/system/SharedFolder.h"
#include "core/system/WholeFile.h"
#include "core/text/StringUtil.h"

#include <system_error>

namespace overmarks
{

juce::File fileFromPath (const juce::String& path)
{
    // The shell has replaced a tilde already; one that is left belongs to the name.
    return juce::File::getCurrentWorkingDirectory().getChildFile (path.startsWithChar ('~') ? "./" + path
                                                                                            : path);
}

bool isDeviceOrPipe (const juce::File& file) { return ZEP::Core::WholeFile::isDeviceOrPipe (file); }

juce::File placeOf (const juce::File& file)
{
    try
    {
        const auto path = file.getFullPathName().toStdString();
        const auto place = ZEP::Core::SharedFolder::placeBehindLinks (path).string();
        return place == path ? file : juce::File (ZEP::Core::StringUtil::fromUTF8 (place));
    }
    catch (const std::system_error& error)
    {
        throw CommandFailure ("Can't write " + file.getFullPathName() + ": "
                              + juce::String (error.code().message()));
    }
}

void refuseToReplace (const juce::File& file, const OutputPolicy& policy)
{
    if (file.isDirectory())
        throw CommandFailure (file.getFullPathName() + " is a folder");

    if (file.exists() && ! policy.force && ! isDeviceOrPipe (file))
        throw CommandFailure (file.getFullPathName() + " exists already; --force replaces it");
}

ZEP::Core::Descriptor waitForReader (const juce::File& file)
{
    const auto path = placeOf (file).getFullPathName().toStdString();
    struct stat found
    {
    };

    if (::lstat (path.c_str(), &found) != 0 || ! S_ISFIFO (found.st_mode)
        || ZEP::Core::SharedFolder::isAStrangers (path, found))
        return {};

    return { path, O_WRONLY | O_NOFOLLOW };
}

void writeWholeFile (const juce::File& file, const std::string& contents)
{
    const auto reader = waitForReader (file);

    if (const auto result = ZEP::Core::WholeFile::write (file, contents); result.failed())
        throw CommandFailure (result.getErrorMessage());
}

} // namespace overmarks
