// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace ZEP::Overmarks
{

/** A text to be sorted by. In UTF-8 the order of the bytes is that of the characters, and the first of them stand here, so that most
    comparisons don't look for the text itself in the memory. Holds no copy: the text stays where it is while this is in use. */
class TextKey final
{
public:
    TextKey() = default; ///< An empty text.

    /** @param bytes  UTF-8 with a zero behind it */
    explicit TextKey (const char* bytes) noexcept : text (bytes)
    {
        for (auto& half : start)
            for (int shift = 56; shift >= 0 && *bytes != 0; shift -= 8)
                half |= std::uint64_t { static_cast<unsigned char> (*bytes++) } << shift;
    }

    bool operator<(const TextKey& other) const noexcept { return compare (other) < 0; }

    /** Negative, zero or positive, as for std::strcmp. */
    [[nodiscard]] int compare (const TextKey& other) const noexcept
    {
        if (start != other.start)
            return start < other.start ? -1 : 1;

        const bool endsHere = (start.back() & 0xff) == 0;
        return endsHere ? 0 : std::strcmp (text, other.text);
    }

private:
    std::array<std::uint64_t, 2>
        start {}; ///< the first sixteen bytes, the first one highest; zeros behind the end
    const char* text = "";
};

} // namespace ZEP::Overmarks
