// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace ZEP::Overmarks
{

/** A text on its way: what there is of it goes to the sink as soon as it is long enough, so that it never stands in memory as a whole.

    The rule that is easily missed: what is left in the end goes only by passOn (1). One object belongs to one thread. */
class TextInParts final
{
public:
    using Sink = std::function<void (const std::string& part)>; ///< Gets the parts, one behind the other.

    explicit TextInParts (Sink takesParts) : sink (std::move (takesParts)) {} ///< Nothing is passed on yet.

    /** Passes on what there is.
        @param longEnough  unless it has fewer bytes */
    void passOn (std::size_t longEnough = partSize)
    {
        if (text.size() < longEnough)
            return;

        sink (text);
        text.clear();
    }

    std::string text; ///< what the sink hasn't yet

private:
    static constexpr std::size_t partSize = 1 << 16;
    Sink sink;
};

} // namespace ZEP::Overmarks
