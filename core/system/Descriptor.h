// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/Uninterrupted.h"
#include "core/system/WritingWithoutSignals.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ZEP::Core
{

/** An open file of the system, closed at the end of the scope. Where something fails errno tells why. One thread. */
class Descriptor final
{
public:
    Descriptor() = default;
    explicit Descriptor (int opened) : descriptor (opened) {} ///< From now on it is this object's.

    /** @param flags  of open(); O_CLOEXEC is added  @param mode  of a file that is made */
    Descriptor (const std::filesystem::path& file, int flags, mode_t mode = 0)
        : descriptor (uninterrupted ([&] { return ::open (file.c_str(), flags | O_CLOEXEC, mode); }))
    {
    }

    /** Takes over the file of the other one. */
    Descriptor (Descriptor&& other) noexcept : descriptor (std::exchange (other.descriptor, -1)) {}

    /** Takes over the file of the other one, which closes what this one had. */
    Descriptor& operator= (Descriptor&& other) noexcept
    {
        std::swap (descriptor, other.descriptor);
        return *this;
    }

    ~Descriptor()
    {
        const int error = errno;

        if (isOpen())
            ::close (descriptor);

        errno = error;
    }

    [[nodiscard]] bool isOpen() const noexcept { return descriptor >= 0; } ///< Whether there is a file.
    [[nodiscard]] int number() const noexcept { return descriptor; }       ///< Negative if there is none.

    /** What it is; nothing if it isn't open. */
    [[nodiscard]] std::optional<struct stat> status() const
    {
        struct stat found
        {
        };
        return ::fstat (descriptor, &found) == 0 ? std::optional (found) : std::nullopt;
    }

    /** Writes all of it, however few bytes the disk takes at a time. */
    [[nodiscard]] bool write (std::string_view bytes) const
    {
        constexpr std::size_t mostAtOnce = std::size_t { 1 } << 30; // the system takes no more than 2 GiB
        const WritingWithoutSignals scope;

        while (! bytes.empty())
        {
            const auto written = uninterrupted (
                [&] { return ::write (descriptor, bytes.data(), std::min (bytes.size(), mostAtOnce)); });

            if (written <= 0)
                return false;

            bytes.remove_prefix (static_cast<std::size_t> (written));
        }

        return true;
    }

    /** The bytes from here to the end, at most so many; nothing on failure. */
    [[nodiscard]] std::optional<std::string> read (std::size_t most) const
    {
        constexpr std::size_t atOnce = 65536;
        std::string bytes;

        for (ssize_t length = 1; length > 0 && bytes.size() < most;)
        {
            const auto before = bytes.size();
            bytes.resize (before + std::min (most - before, atOnce));
            length = uninterrupted (
                [&] { return ::read (descriptor, bytes.data() + before, bytes.size() - before); });

            if (length < 0)
                return std::nullopt;

            bytes.resize (before + static_cast<std::size_t> (length));
        }

        return bytes;
    }

    /** From now on a pipe that is full, or empty, is waited for, although it was opened without waiting. */
    [[nodiscard]] bool wait() const
    {
        const int flags = ::fcntl (descriptor, F_GETFL);
        return flags >= 0 && ::fcntl (descriptor, F_SETFL, flags & ~O_NONBLOCK) == 0;
    }

    /** Hands it over to the caller, who closes it. */
    [[nodiscard]] int release() noexcept { return std::exchange (descriptor, -1); }

    /** Some disks tell only now that there was no room. True for what isn't open. */
    [[nodiscard]] bool close() { return ! isOpen() || ::close (std::exchange (descriptor, -1)) == 0; }

private:
    int descriptor = -1;
};

} // namespace ZEP::Core
