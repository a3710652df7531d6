// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace ZEP::Overmarks
{

/** A text to be sorted by. In UTF-8 the order of the bytes is that of the characters, and the first of them stand here, so that most
    comparisons don't look for the text itself in the memory. Holds no copy of the rest: a longer text stays where it is while this is in
    use. */
class TextKey final
{
public:
    TextKey() = default; ///< An empty text.

    /** @param bytes  UTF-8 with a zero behind it */
    explicit TextKey (const char* bytes) noexcept : text (bytes)
    {
        const auto length = ::strnlen (bytes, sizeof (start));
        std::memcpy (start.data(), bytes, length);

        for (auto& word : start)
            word = numberOf (word);
    }

    /** Whether all of the text stands here, so that it needn't stay where it is. */
    [[nodiscard]] bool isWhole() const noexcept { return endsIn (start.back()); }

    /** Eight bytes of the text as a number, zeros behind its end; none where it has ended before, or has no more of them here. Of texts
        that are alike up to these the one with the lower number goes first.
        @param index  0 for the first eight */
    [[nodiscard]] std::optional<std::uint64_t> word (std::size_t index) const noexcept
    {
        const bool isHere = index < start.size() && (index == 0 || ! endsIn (start[index - 1]));
        return isHere ? std::optional (start[index]) : std::nullopt;
    }

    bool operator<(const TextKey& other) const noexcept { return compare (other) < 0; }

    /** Negative, zero or positive, as for std::strcmp. */
    [[nodiscard]] int compare (const TextKey& other) const noexcept
    {
        for (std::size_t i = 0; i < start.size(); ++i)
            if (start[i] != other.start[i])
                return start[i] < other.start[i] ? -1 : 1;

        return isWhole() ? 0 : std::strcmp (text, other.text);
    }

private:
    /** The first byte highest, whatever the order of the bytes in this machine's numbers. */
    static std::uint64_t numberOf (std::uint64_t bytes) noexcept
    {
        return std::endian::native == std::endian::little ? __builtin_bswap64 (bytes) : bytes;
    }

    static bool endsIn (std::uint64_t word) noexcept { return (word & 0xff) == 0; }

    std::array<std::uint64_t, 4> start {}; ///< the first bytes, the first one highest; zeros behind the end
    const char* text = "";
};

} // namespace ZEP::Overmarks
