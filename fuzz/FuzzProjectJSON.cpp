// SPDX-License-Identifier: GPL-3.0-only
// A project in JSON from a stranger: one that is refused has a message, and every other one is a project.
#include "CheckProject.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    Project project;
    const auto complaint = ProjectJSON::fromText (std::string (bytesOfInput (data, size)), project);
    checkText (complaint);

    if (complaint.isEmpty())
        checkProject (project);

    return 0;
}
