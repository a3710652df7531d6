// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/OwnPath.h"

#include "core/system/ProcessLifetime.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <memory>

namespace ZEP::Core
{
namespace
{

// Any address of ours will do.
const char ownAddress = 0;

std::string realPath (const char* path)
{
    const std::unique_ptr<char, decltype (&std::free)> resolved (realpath (path, nullptr), &std::free);
    return resolved == nullptr ? std::string() : std::string (resolved.get());
}

std::string pathNow()
{
    Dl_info info {};
    // A program is known by the word it was called with, which need not be a path.
    if (dladdr (&ownAddress, &info) != 0 && std::strchr (info.dli_fname, '/') != nullptr)
        if (auto path = realPath (info.dli_fname); ! path.empty())
            return path;
    return realPath ("/proc/self/exe");
}

const std::string& notedPath()
{
    static const ProcessLifetime<std::string> path (pathNow());
    return path.get();
}

// While the libraries are loaded: the system tells a path as it was given, which may count from a folder that is left later.
[[maybe_unused]] const auto& notedInTime = notedPath();

} // namespace

std::string ownPath() { return notedPath(); }

} // namespace ZEP::Core
