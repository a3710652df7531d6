// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/FileBuffer.h"

#include <ios>

namespace ZEP::Overmarks
{

FileBuffer::int_type FileBuffer::underflow()
{
    const auto length = file.read (piece.data(), static_cast<int> (piece.size()));

    // What is thrown here a stream keeps to itself: it becomes bad.
    if (getStatus().failed() || (file.isExhausted() && file.getPosition() < file.getTotalLength()))
        throw std::ios_base::failure ("the file can't be read to its end");
    if (length == 0)
        return traits_type::eof();

    setg (piece.data(), piece.data(), piece.data() + length);
    return traits_type::to_int_type (piece.front());
}

} // namespace ZEP::Overmarks
