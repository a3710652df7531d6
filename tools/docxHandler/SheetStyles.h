// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"

#include <string>
#include <string_view>

namespace DocxHandler
{

/** What a paragraph of a cue sheet holds. Each has a paragraph style, whose name tells the reader what it is: identifiers of
    styles are given anew by word processors that save the document, the names survive. */
enum class Field
{
    none,
    text,
    notes,
    engineeringNotes,
    reason,
    region,
    number,
    character,
    inPoint,
    outPoint,
    label,
    take,
    spacing,
    blockHeading,
    frontMatterTitle,
    frontMatterLabel,
    frontMatterValue,
    footer
};

/** Who the sheet is for, by the layout's name. */
enum class Layout
{
    director,
    actor,
    engineer
};

/** How loud a field is in a layout: what its reader works with stands out, what he doesn't need is small and grey. Nothing is
    left out, so that every sheet can be read back whole. */
enum class Weight
{
    usual,
    prominent,
    small
};

[[nodiscard]] Layout layoutOf (const Sheet& sheet);

[[nodiscard]] Weight weightOf (Field field, Layout layout) noexcept;

/** The identifier of a field's style in the documents that we write. */
[[nodiscard]] std::string_view styleIdentifier (Field field);

/** The field by its style's name, whatever its case; none for a style that isn't ours. */
[[nodiscard]] Field fieldOfStyleName (std::string_view name);

/** The size of a field's style in half points. Sizes come from the sheet's first cue. */
[[nodiscard]] int styleSize (Field field, const Sheet& sheet);

/** Half points of a size that was asked for in points, within what a page can hold. */
[[nodiscard]] int halfPoints (double points) noexcept;

/** The part word/styles.xml. */
[[nodiscard]] std::string stylesPart (const Sheet& sheet, std::string_view language);

/** The words before a field: "NOTES", "ENG. NOTES", "REASON", "FN REGION". */
[[nodiscard]] std::string_view labelOf (Field field);

/** The field that a label announces, also as people write it: "Notes:", "Engineering notes"; none for any other text. */
[[nodiscard]] Field fieldOfLabel (std::string_view label);

} // namespace DocxHandler
