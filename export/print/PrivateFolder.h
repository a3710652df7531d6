// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <filesystem>

namespace ZEP::Overmarks
{

/** A folder among the temporary files that only this user can look into, and that is gone with this object. */
class OVERMARKS_API PrivateFolder final
{
public:
    /** Throws PrintError. */
    PrivateFolder();
    ~PrivateFolder();

    PrivateFolder (const PrivateFolder&) = delete;
    PrivateFolder& operator= (const PrivateFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return folder; } ///< Absolute.

private:
    std::filesystem::path folder;
};

} // namespace ZEP::Overmarks
