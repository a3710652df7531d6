// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>

namespace ZEP::Core
{

/** The file this code was loaded from: the library or, where it is linked into a program, that program. Links are followed.
    @returns  bytes, as the system has them; none where it can't tell */
[[nodiscard]] std::string ownPath();

} // namespace ZEP::Core
