// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <stdexcept>

namespace DocxHandler
{

/** Something that is wrong with a document or the disk, in words for the person at the desk. One line, no full stop. */
class Failure final : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace DocxHandler
