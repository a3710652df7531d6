// SPDX-License-Identifier: GPL-3.0-only
#include "FileBytes.h"

#include "Failure.h"

#include "core/system/Descriptor.h"
#include "core/system/SharedFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace DocxHandler
{

namespace fs = std::filesystem;
using ZEP::Core::Descriptor;

namespace
{

/* Names that other threads may have to clean up. Held while a file gets or loses its name, never while it is written. */
std::mutex namesLock;
std::string unfinished;

std::string reason() { return std::strerror (errno); }

/* A file without its final name. */
class UnfinishedFile final
{
public:
    explicit UnfinishedFile (const fs::path& folder)
    {
        const std::scoped_lock lock (namesLock);
        unfinished = (folder / ".docxHandler-XXXXXX").string();
        descriptor = Descriptor (::mkostemp (unfinished.data(), O_CLOEXEC));

        if (! descriptor.isOpen())
            unfinished.clear();
    }

    UnfinishedFile (const UnfinishedFile&) = delete;
    UnfinishedFile& operator= (const UnfinishedFile&) = delete;

    ~UnfinishedFile()
    {
        const std::scoped_lock lock (namesLock);

        if (! unfinished.empty())
            ::unlink (unfinished.c_str());

        unfinished.clear();
    }

    [[nodiscard]] bool isOpen() const noexcept { return descriptor.isOpen(); }
    [[nodiscard]] bool write (std::string_view bytes) const { return descriptor.write (bytes); }

    /* Gives it the rights that a new file has here, or those of the file that it replaces. */
    [[nodiscard]] bool moveTo (const fs::path& file, Readers readers)
    {
        struct stat before
        {
        };
        const auto mask = ::umask (0);
        ::umask (mask);
        const auto usual = ::stat (file.c_str(), &before) == 0 ? before.st_mode & 0777U : 0666U & ~mask;
        const auto mode = readers == Readers::thisUser ? 0600U : usual;

        if (::fchmod (descriptor.number(), mode) != 0 || ! descriptor.close())
            return false;

        const std::scoped_lock lock (namesLock);

        if (::rename (unfinished.c_str(), file.c_str()) != 0)
            return false;

        unfinished.clear();
        return true;
    }

private:
    Descriptor descriptor;
};

std::string wordsForUnopened (int error)
{
    if (error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == ELOOP)
        return "No such file: ";

    return error == ENXIO ? "Not a file: " : "Can't be read: ";
}

/* What a link points to is replaced, not the link. */
fs::path placeOf (const fs::path& file)
{
    try
    {
        return ZEP::Core::SharedFolder::placeBehindLinks (file);
    }
    catch (const std::system_error& error)
    {
        throw Failure ("Can't be written (" + error.code().message() + "): " + file.string());
    }
}

} // namespace

std::string readFile (const fs::path& file, std::uintmax_t largest)
{
    const Descriptor opened (file, O_RDONLY | O_NONBLOCK | O_NOCTTY); // nobody waits for a pipe

    if (! opened.isOpen())
        throw Failure (wordsForUnopened (errno) + file.string());

    const auto status = opened.status();

    if (! status.has_value() || ! S_ISREG (status->st_mode))
        throw Failure ("Not a file: " + file.string());

    if (static_cast<std::uintmax_t> (status->st_size) > largest)
        throw Failure ("Too large: " + file.string());

    auto bytes = opened.read (largest + 1);

    // A file that has become shorter meanwhile isn't what somebody has written.
    if (! bytes.has_value() || bytes->size() < static_cast<std::uintmax_t> (status->st_size))
        throw Failure ("Can't be read: " + file.string());
    if (bytes->size() > largest)
        throw Failure ("Too large: " + file.string());

    return std::move (*bytes);
}

void placeFile (const fs::path& file, std::string_view bytes, Readers readers)
{
    std::error_code error;
    const auto target = placeOf (file);
    const auto folder = target.has_parent_path() ? target.parent_path() : fs::path (".");

    if (fs::is_directory (target, error))
        throw Failure ("Is a folder: " + file.string());

    // Devices and pipes of the system would be lost for everybody.
    if (fs::exists (target, error) && ! fs::is_regular_file (target, error))
        throw Failure ("Not a file: " + file.string());

    UnfinishedFile beside (folder);

    if (! beside.isOpen() || ! beside.write (bytes) || ! beside.moveTo (target, readers))
        throw Failure ("Can't be written (" + reason() + "): " + file.string());
}

void abandonPlacing() noexcept
{
    namesLock.lock(); // for good

    if (! unfinished.empty())
        ::unlink (unfinished.c_str());
}

} // namespace DocxHandler
