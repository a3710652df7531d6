// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/FileInput.h"

#include "core/system/LargePages.h"
#include "core/system/Uninterrupted.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace ZEP::Core
{

namespace
{

constexpr auto noFile = "it is no file";

} // namespace

FileInput::FileInput (const juce::String& path)
{
    // A pipe is opened without waiting for its writer, and only then looked at: a name may change its meaning in between.
    descriptor = uninterrupted (
        [&path] { return ::open (path.toRawUTF8(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); });
    struct stat found
    {
    };

    if (descriptor < 0 && (errno == ENXIO || errno == ENODEV)) // a socket has no other way to say it
        status = juce::Result::fail (noFile);
    else if (descriptor < 0 || ::fstat (descriptor, &found) != 0)
        fail (errno);
    else if (! S_ISREG (found.st_mode))
        status = juce::Result::fail (noFile);
    else
        length = found.st_size;

    atEnd = status.failed();
}

FileInput::~FileInput()
{
    if (descriptor >= 0)
        ::close (descriptor);
}

int FileInput::read (void* destination, int most)
{
    int done = 0;

    while (done < most && ! atEnd)
    {
        const auto got = uninterrupted (
            [&]
            {
                return ::read (descriptor, static_cast<char*> (destination) + done,
                               static_cast<std::size_t> (most - done));
            });

        if (got < 0)
            fail (errno);

        atEnd = got <= 0;
        done += static_cast<int> (std::max<ssize_t> (got, 0));
    }

    position += done;
    return done;
}

bool FileInput::setPosition (juce::int64 newPosition)
{
    if (status.failed() || newPosition < 0 || ::lseek (descriptor, newPosition, SEEK_SET) < 0)
        return false;

    position = newPosition;
    atEnd = false;
    return true;
}

void FileInput::fail (int error)
{
    status = juce::Result::fail (juce::String::fromUTF8 (std::generic_category().message (error).c_str()));
}

juce::Result FileInput::readWhole (const juce::String& path, std::string& bytes, std::uint64_t most)
{
    return FileInput (path).readToEnd (bytes, most);
}

juce::Result FileInput::readToEnd (std::string& bytes, std::uint64_t most)
{
    const auto expected = static_cast<std::uint64_t> (length);
    const auto tooLarge = [most]
    { return juce::Result::fail ("it is larger than " + juce::String (most) + " bytes"); };

    if (status.wasOk() && expected > most)
        return tooLarge();

    // Files of the system itself tell no length, and others may grow meanwhile.
    constexpr std::uint64_t piece = 16384, largestPiece = std::uint64_t { 1 } << 28;
    std::string found;
    found.reserve (expected + piece);
    useLargePages (found.data(), found.capacity());

    while (! atEnd && found.size() <= most)
    {
        const auto start = found.size();
        const auto room = expected > start ? std::min (expected - start, largestPiece) : piece;
        found.resize (start + room);
        found.resize (start + static_cast<std::size_t> (read (&found[start], static_cast<int> (room))));
    }

    if (found.size() > most)
        return tooLarge();
    if (status.failed())
        return status;
    if (found.size() < expected)
        return juce::Result::fail ("it became shorter while it was being read");

    bytes = std::move (found);
    return juce::Result::ok();
}

} // namespace ZEP::Core
