// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/FileStream.h"

#include "core/system/Descriptor.h"

#include <ext/stdio_filebuf.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace ZEP::Overmarks
{

juce::Result openOrdinaryFile (const std::string& path, std::ifstream& stream, std::uint64_t& length)
{
    // Looked at only when it is open: a name may change its meaning in between.
    Core::Descriptor file (path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    const int error = errno;
    const auto status = file.status();
    length = 0;

    if (status.has_value() && S_ISREG (status->st_mode))
    {
        length = static_cast<std::uint64_t> (status->st_size);
        *stream.rdbuf() = __gnu_cxx::stdio_filebuf<char> (file.release(), std::ios::in | std::ios::binary);
    }

    if (stream.is_open())
        return juce::Result::ok();

    stream.setstate (std::ios::failbit);
    return juce::Result::fail (
        file.isOpen() || error == ENXIO || error == ENODEV // a socket has no other way to say it
            ? juce::String ("it is no file")
            : juce::String::fromUTF8 (std::generic_category().message (error).c_str()));
}

bool hasEndedBefore (std::uint64_t length, std::ifstream& stream)
{
    const std::streamoff place = stream.rdbuf()->pubseekoff (0, std::ios::cur, std::ios::in);
    return stream.eof() && std::cmp_less (place, length);
}

} // namespace ZEP::Overmarks
