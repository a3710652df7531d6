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

/** The browser has kept its caller waiting for the whole of its patience: the next one may do the same. */
struct BrowserHangs : PrintError
{
    using PrintError::PrintError;
};

} // namespace ZEP::Overmarks
