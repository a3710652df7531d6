// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/LongText.h"

#include <algorithm>
#include <cstring>

namespace ZEP::Overmarks
{

LongText::LongText (juce::String& destination, std::size_t room)
    : text (destination),
      length (std::strlen (destination.toRawUTF8())),
      capacity (0)
{
    makeRoom (length + room);
}

void LongText::add (std::string_view bytes)
{
    if (bytes.size() > capacity - length)
        makeRoom (std::max (length + bytes.size(), 2 * capacity));

    auto* const end = text.getCharPointer().getAddress() + length;
    std::memcpy (end, bytes.data(), bytes.size());
    end[bytes.size()] = 0;
    length += bytes.size();
}

void LongText::makeRoom (std::size_t bytes)
{
    text.preallocateBytes (bytes);
    capacity = bytes;
}

} // namespace ZEP::Overmarks
