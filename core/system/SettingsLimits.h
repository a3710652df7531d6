// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <cstdint>

namespace ZEP::Core
{

/** How large a file of preferences may be that UserDefaults reads. What goes beyond it gives a message with the number. */
struct ZEP_CORE_API SettingsLimits
{
    std::uint64_t bytesOfFile = std::uint64_t { 16 }
                                << 20; ///< far beyond what any number of preferences needs

    /** The limits of the process, as they stand above unless the application has changed them. Change them only while no
        settings are being read. */
    static SettingsLimits& limits();
};

} // namespace ZEP::Core
