// SPDX-License-Identifier: GPL-3.0-only
#pragma once

namespace DocxHandler
{

/** A sheet of paper, upright. All lengths are twentieths of a point. */
struct Paper
{
    static constexpr int margin = 850; ///< on all sides; the footer stands in the lower one's place

    int width = 11906;
    int height = 16838;

    [[nodiscard]] int textWidth() const noexcept { return width - 2 * margin; }

    /** By its size in millimetres; A4 for a size that no desk printer takes. */
    [[nodiscard]] static Paper ofMillimetres (int width, int height) noexcept;

    /** The paper of the country that the environment names. */
    [[nodiscard]] static Paper ofLocale();
};

} // namespace DocxHandler
