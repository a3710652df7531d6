// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <stdexcept>
#include <string>

namespace ZEP::Overmarks
{

/** Why a page can't be printed, in words for a person. Never leaves the print adapter. */
struct PrintError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

} // namespace ZEP::Overmarks
