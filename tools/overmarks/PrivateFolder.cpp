// SPDX-License-Identifier: GPL-3.0-only
#include "PrivateFolder.h"

#include "core/text/TextDecoding.h"

#include <cstdlib>
#include <cstring>

namespace overmarks
{

PrivateFolder::PrivateFolder (const juce::File& parent, const juce::String& start)
    : folder (signals.makeFolder (parent.getFullPathName() + "/" + start))
{
}

PrivateFolder::~PrivateFolder() { signals.removeFolder (folder); }

juce::File usualTemporaryFolder()
{
    const char* given = std::getenv ("TMPDIR");
    const bool isUsable = given != nullptr && *given == '/' && std::strchr (given, ',') == nullptr
                          && ZEP::Core::ByteSurvey (given).isUTF8;
    return juce::File (juce::String (std::string (isUsable ? given : "/tmp")));
}

} // namespace overmarks
