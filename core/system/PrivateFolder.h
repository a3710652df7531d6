// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <filesystem>
#include <string>

namespace ZEP::Core
{

/** A folder among the temporary files that only this user can look into, and that is gone with everything in it with this object. Any
    thread. */
class ZEP_CORE_API PrivateFolder final
{
public:
    /** @param nameStart  what its name begins with; the rest is random
        Throws std::runtime_error: "no place for temporary files in", the folder and the reason. */
    explicit PrivateFolder (const std::string& nameStart);
    ~PrivateFolder();

    PrivateFolder (const PrivateFolder&) = delete;
    PrivateFolder& operator= (const PrivateFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return folder; } ///< Absolute.

private:
    std::filesystem::path folder;
};

} // namespace ZEP::Core
