// SPDX-License-Identifier: GPL-3.0-only
#include "SettingsStore.h"

#include "Session.h"
#include "StagingFolder.h"

#include "core/system/FileInput.h"
#include "core/system/MissingFile.h"
#include "core/system/SettingsLimits.h"
#include "core/system/UserDefaults.h"
#include "core/system/WholeFile.h"

namespace overmarks
{

using ZEP::Core::UserDefaults;

namespace
{

void throwOnFailure (const juce::Result& result, const juce::File& written, const juce::File& meant)
{
    if (result.failed())
        throw CommandFailure (
            result.getErrorMessage().replace (written.getFullPathName(), meant.getFullPathName()));
}

juce::Result copied (const juce::File& file, const juce::File& copy)
{
    std::string bytes;
    const auto read = ZEP::Core::FileInput::readWhole (file.getFullPathName(), bytes,
                                                       ZEP::Core::SettingsLimits::limits().bytesOfFile);
    return read.wasOk()
               ? ZEP::Core::WholeFile::write (copy, bytes, ZEP::Core::WholeFile::Until::theSystemHasIt)
               : juce::Result::fail ("The settings file \"" + file.getFullPathName()
                                     + "\" can't be read: " + read.getErrorMessage());
}

} // namespace

void storeSettings (const std::vector<std::pair<std::string, Poco::Any>>& values, const juce::File& file)
{
    if (const auto made = file.getParentDirectory().createDirectory(); made.failed())
        throw CommandFailure (made.getErrorMessage());

    const StagingFolder stage (file);
    const auto copy = stage.getFolder().getChildFile ("settings");

    if (! ZEP::Core::isMissing (file))
        throwOnFailure (copied (file, copy), copy, file);

    throwOnFailure (UserDefaults::setSettingsFile (copy), copy, file);

    for (const auto& [key, value] : values)
        throwOnFailure (UserDefaults::setValueForKey (juce::String (key), value), copy, file);

    StagingFolder::moveIntoPlace (copy, file);
    throwOnFailure (UserDefaults::setSettingsFile (file), file, file);
}

} // namespace overmarks
