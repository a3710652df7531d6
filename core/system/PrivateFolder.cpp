// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/PrivateFolder.h"

#include <juce_core/juce_core.h>

#include <stdlib.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace ZEP::Core
{

PrivateFolder::PrivateFolder (const std::string& nameStart)
{
    const auto parent =
        juce::File::getSpecialLocation (juce::File::tempDirectory).getFullPathName().toStdString();
    auto pattern = parent + "/" + nameStart + "XXXXXX";

    if (::mkdtemp (pattern.data()) == nullptr)
        throw std::runtime_error ("no place for temporary files in " + parent + ": " + std::strerror (errno));

    folder = pattern;
}

PrivateFolder::~PrivateFolder()
{
    constexpr int attempts = 50;
    constexpr auto pause = std::chrono::milliseconds (20);

    // A process that has just been killed may still be about to make a file.
    for (int i = 0; i < attempts; ++i)
    {
        std::error_code error;
        std::filesystem::remove_all (folder, error);

        if (! std::filesystem::exists (folder, error))
            return;

        std::this_thread::sleep_for (pause);
    }
}

} // namespace ZEP::Core
