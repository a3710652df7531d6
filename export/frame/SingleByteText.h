// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <Poco/TextEncoding.h>

#include <string>

namespace ZEP::Overmarks
{

/** UTF-8 in an encoding of one byte a character that agrees with ASCII; "?" for a character that it lacks. */
[[nodiscard]] OVERMARKS_API std::string singleByteText (std::string utf8, const Poco::TextEncoding& target);

/** UTF-8 in ISO 8859-1. */
[[nodiscard]] OVERMARKS_API std::string latin1Text (std::string utf8);

} // namespace ZEP::Overmarks
