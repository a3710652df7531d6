// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/FileStream.h"

#include "core/system/Descriptor.h"

#include <ext/stdio_filebuf.h>

#include <utility>

namespace ZEP::Overmarks
{

bool openOrdinaryFile (const std::string& path, std::ifstream& stream, std::uint64_t& length)
{
    // Looked at only when it is open: a name may change its meaning in between.
    Core::Descriptor file (path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    const auto status = file.status();
    length = 0;

    if (status.has_value() && S_ISREG (status->st_mode))
    {
        length = static_cast<std::uint64_t> (status->st_size);
        const int number = file.release(); // the buffer closes it from now on, also where it throws
        __gnu_cxx::stdio_filebuf<char> opened (number, std::ios::in | std::ios::binary);

        if (opened.is_open())
            *stream.rdbuf() = std::move (opened);
        else
            file = Core::Descriptor (number);
    }

    if (! stream.is_open())
        stream.setstate (std::ios::failbit);

    return stream.is_open();
}

bool hasEndedBefore (std::uint64_t length, std::ifstream& stream)
{
    const std::streamoff place = stream.rdbuf()->pubseekoff (0, std::ios::cur, std::ios::in);
    return stream.eof() && std::cmp_less (place, length);
}

} // namespace ZEP::Overmarks
