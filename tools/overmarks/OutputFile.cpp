// SPDX-License-Identifier: GPL-3.0-only
#include "OutputFile.h"

#include "Session.h"

#include "core/system/SharedFolder.h"
#include "core/system/WholeFile.h"
#include "core/text/StringUtil.h"

#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>

namespace overmarks
{

namespace
{

/** What the system knows of the file behind all links; nothing if there is none. */
std::optional<struct stat> statusOf (const juce::File& file)
{
    struct stat status
    {
    };
    return ::stat (file.getFullPathName().toRawUTF8(), &status) == 0 ? std::optional (status) : std::nullopt;
}

/** Where a file would stand, with no link left in the names of its folders. */
std::filesystem::path plainPathOf (const juce::File& file)
{
    const std::filesystem::path place (placeOf (file).getFullPathName().toStdString());
    std::error_code error;
    const auto plain = std::filesystem::weakly_canonical (place, error);
    return error ? place : plain;
}

} // namespace

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

bool isSameFile (const juce::File& one, const juce::File& other)
{
    const auto first = statusOf (one), second = statusOf (other);

    if (first.has_value() && second.has_value())
        return first->st_dev == second->st_dev && first->st_ino == second->st_ino;

    return ! first.has_value() && ! second.has_value() && plainPathOf (one) == plainPathOf (other);
}

bool isTheList (const juce::File& file, const juce::String& list)
{
    return list != "-" && isSameFile (fileFromPath (list), file);
}

void refuseToReplace (const juce::File& file, const OutputPolicy& policy)
{
    if (file.isDirectory())
        throw CommandFailure (file.getFullPathName() + " is a folder");

    if (file.exists() && ! policy.force && ! isDeviceOrPipe (file))
        throw CommandFailure (file.getFullPathName() + " exists already; --force replaces it");
}

ZEP::Core::Descriptor waitForReader (const juce::File& file, const std::function<void()>& whileWaiting)
{
    constexpr auto pause = std::chrono::milliseconds (20);
    const auto path = placeOf (file).getFullPathName().toStdString();
    struct stat found
    {
    };

    if (::lstat (path.c_str(), &found) != 0 || ! S_ISFIFO (found.st_mode)
        || ZEP::Core::SharedFolder::isAStrangers (path, found))
        return {};

    for (;;)
    {
        ZEP::Core::Descriptor pipe (path, O_WRONLY | O_NOFOLLOW | O_NONBLOCK);

        if (pipe.isOpen() || errno != ENXIO)
            return pipe;

        whileWaiting();
        std::this_thread::sleep_for (pause);
    }
}

void writeWholeFile (const juce::File& file, const std::string& contents)
{
    const auto reader = waitForReader (file);

    if (const auto result = ZEP::Core::WholeFile::write (file, contents); result.failed())
        throw CommandFailure (result.getErrorMessage());
}

} // namespace overmarks
