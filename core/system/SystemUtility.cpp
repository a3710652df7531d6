// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/SystemUtility.h"

#include "core/system/OwnPath.h"
#include "core/system/ProcessLifetime.h"
#include "core/text/TextDecoding.h"

#include <cstdlib>

namespace ZEP::Core
{
namespace
{
SystemUtility::Configuration& currentConfiguration()
{
    static const ProcessLifetime<SystemUtility::Configuration> configuration;
    return configuration.get();
}

/** Empty for bytes that are no text, which could not be told apart from other paths. */
juce::String pathFromBytes (const char* bytes)
{
    return ByteSurvey (bytes).isUTF8 ? textFromStrictUTF8 (bytes) : juce::String();
}

/** share/overmarks/resources of the tree that holds this library, be it installed or just built. */
juce::String defaultResourcePath()
{
    static constexpr auto resources = "share/overmarks/resources";
    const auto folder = juce::File (pathFromBytes (ownPath().c_str())).getParentDirectory();
    const auto root = folder.getParentDirectory();
    // Some systems give each processor a folder of its own inside lib.
    if (root.getFileName().startsWith ("lib") && ! root.getChildFile (resources).isDirectory())
        return root.getParentDirectory().getChildFile (resources).getFullPathName();
    return root.getChildFile (resources).getFullPathName();
}

juce::String defaultSupportPath()
{
    const char* dataHome = std::getenv ("XDG_DATA_HOME");
    // A relative path there is to be ignored.
    const auto given = dataHome != nullptr && *dataHome == '/' ? pathFromBytes (dataHome) : juce::String();
    const auto folder =
        given.isNotEmpty()
            ? juce::File (given)
            : juce::File::getSpecialLocation (juce::File::userHomeDirectory).getChildFile (".local/share");
    return folder.getChildFile ("overmarks").getFullPathName();
}

juce::String withoutFinalSeparators (const juce::String& path)
{
    return path == "/" ? path : path.trimCharactersAtEnd ("/");
}
} // namespace

void SystemUtility::configure (const Configuration& configuration)
{
    auto& current = currentConfiguration();
    current = configuration;
    current.resourcePath = withoutFinalSeparators (configuration.resourcePath);
    current.supportPath = withoutFinalSeparators (configuration.supportPath);
}

int SystemUtility::getApplicationType() { return currentConfiguration().applicationType; }

juce::String SystemUtility::applicationSupportDirectoryPath()
{
    const auto& path = currentConfiguration().supportPath;
    return path.isNotEmpty() ? path : defaultSupportPath();
}

juce::String SystemUtility::bundleResourcePath()
{
    // The library doesn't move while it runs, and every cue of a document asks for its icons.
    static const ProcessLifetime<juce::String> byDefault { defaultResourcePath() };
    const auto& path = currentConfiguration().resourcePath;
    return path.isNotEmpty() ? path : byDefault.get();
}

juce::String SystemUtility::executableVersion()
{
    const auto& version = currentConfiguration().executableVersion;
    return version.isNotEmpty() ? version : juce::String (OVERMARKS_VERSION_STRING);
}
} // namespace ZEP::Core
