// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "WordContent.h"

#include <map>
#include <optional>

namespace DocxHandler
{

/** What a column holds, by its title. */
enum class Role
{
    inPoint,
    outPoint,
    bothPoints,
    number,
    character,
    text,
    notes,
    engineeringNotes,
    reason,
    region,
    duration ///< timecodes that are neither in nor out point
};

/** A title and the columns that it stands over. */
struct TitledColumns
{
    std::optional<Role> role; ///< none for a title that isn't known
    int end = 0;              ///< behind the last column
};

using Titles = std::map<int, TitledColumns>; // by the first column

/** The titles in a row of them; none if it is no row of titles. */
[[nodiscard]] Titles titlesOf (const Row& row);

/** The title over a column; null if there is none. */
[[nodiscard]] const TitledColumns* titleAt (const Titles& titles, int column);

[[nodiscard]] bool holdsRole (const Titles& titles, Role role);

} // namespace DocxHandler
