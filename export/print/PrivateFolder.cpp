// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PrivateFolder.h"

#include "export/print/PrintError.h"

#include <juce_core/juce_core.h>

#include <stdlib.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>
#include <thread>

namespace ZEP::Overmarks
{

PrivateFolder::PrivateFolder()
{
    const auto parent = juce::File::getSpecialLocation (juce::File::tempDirectory).getFullPathName();
    auto pattern = parent.toStdString() + "/overmarks-print-XXXXXX";

    if (::mkdtemp (pattern.data()) == nullptr)
        throw PrintError ("there is no place for temporary files in " + parent.toStdString() + ": "
                          + std::strerror (errno));

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

} // namespace ZEP::Overmarks
