// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <vector>

namespace ZEP::Overmarks
{

/** Cuts many pieces out of one long text, each as RichTextString::substring() would, in a time that depends on the piece and not on
    the text around it. The text must outlive this and stay as it is. One thread. */
class RichTextSlicer final
{
public:
    explicit RichTextSlicer (const Core::RichTextString& textToCut);

    /** From character `start` up to, not including, `end`. Positions outside the text stop at its ends. */
    [[nodiscard]] Core::RichTextString slice (int start, int end) const;

private:
    std::size_t runAt (int character) const;

    const Core::RichTextString& text;
    Core::RichTextString emptyText;  ///< with the layout settings of the text
    std::vector<std::size_t> places; ///< byte of each character, and of the end
};

} // namespace ZEP::Overmarks
