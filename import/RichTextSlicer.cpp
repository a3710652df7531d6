// SPDX-License-Identifier: GPL-3.0-only
#include "import/RichTextSlicer.h"

#include <algorithm>

namespace ZEP::Overmarks
{

using Core::RichTextString;

RichTextSlicer::RichTextSlicer (const RichTextString& textToCut) : text (textToCut), emptyText (textToCut)
{
    emptyText.clear();
    places.reserve (static_cast<std::size_t> (text.length()) + 1);
    const auto start = text.getText().getCharPointer();

    for (auto p = start;; ++p)
    {
        places.push_back (static_cast<std::size_t> (p.getAddress() - start.getAddress()));

        if (p.isEmpty())
            break;
    }
}

RichTextString RichTextSlicer::slice (int start, int end) const
{
    const auto length = static_cast<int> (places.size()) - 1;
    const auto wanted = juce::Range<int> (std::max (start, 0), std::min (end, length));

    if (wanted.isEmpty())
        return emptyText;

    std::vector<RichTextString::Attribute> runs;

    for (auto i = runAt (wanted.getStart()); i < static_cast<std::size_t> (text.getNumAttributes()); ++i)
    {
        auto run = text.getAttribute (static_cast<int> (i));

        if (run.range.getStart() >= wanted.getEnd())
            break;

        run.range = run.range.getIntersectionWith (wanted) - wanted.getStart();
        runs.push_back (run);
    }

    const auto bytes = text.getText().getCharPointer().getAddress();
    const auto place = [&] (int character) { return bytes + places[static_cast<std::size_t> (character)]; };
    RichTextString piece (juce::String (juce::CharPointer_UTF8 (place (wanted.getStart())),
                                        juce::CharPointer_UTF8 (place (wanted.getEnd()))));
    piece.applyAttributes (runs);

    auto result = emptyText;
    result.append (piece);
    return result;
}

/** The number of the first run that ends behind the character. */
std::size_t RichTextSlicer::runAt (int character) const
{
    std::size_t first = 0;

    for (auto count = static_cast<std::size_t> (text.getNumAttributes()); count > 0;)
    {
        const auto half = count / 2;

        if (text.getAttribute (static_cast<int> (first + half)).range.getEnd() <= character)
        {
            first += half + 1;
            count -= half + 1;
        }
        else
        {
            count = half;
        }
    }

    return first;
}

} // namespace ZEP::Overmarks
