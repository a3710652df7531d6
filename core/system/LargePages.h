// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <cstddef>

namespace ZEP::Core
{

/** Asks the system for large pages where the memory holds whole ones, which saves a stop at each small page that is written to for the first
    time. Its contents stay. A system that has none does without. Any thread. */
ZEP_CORE_API void preferLargePages (void* memory, std::size_t bytes) noexcept;

} // namespace ZEP::Core
