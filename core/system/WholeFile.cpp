// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/WholeFile.h"

#include "core/system/RandomIdentity.h"
#include "core/system/SharedFolder.h"
#include "core/system/SizeLimitIsAnError.h"
#include "core/system/Uninterrupted.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace ZEP::Core
{

namespace
{

namespace fs = std::filesystem;
using Until = WholeFile::Until;

[[noreturn]] void fail (int error) { throw std::system_error (error, std::generic_category()); }
[[noreturn]] void fail() { fail (errno); }

void require (bool succeeded)
{
    if (! succeeded)
        fail();
}

/** An open file, closed at the end of the scope. */
class Descriptor final
{
public:
    explicit Descriptor (int number) : descriptor (number) { require (number >= 0); }

    Descriptor (const Descriptor&) = delete;
    Descriptor& operator= (const Descriptor&) = delete;

    ~Descriptor()
    {
        if (descriptor >= 0)
            ::close (descriptor);
    }

    /** Some file systems tell only now that there was no room. */
    void close() { require (::close (std::exchange (descriptor, -1)) == 0); }

    int number() const { return descriptor; }

private:
    int descriptor;
};

void writeAll (int descriptor, std::string_view bytes)
{
    constexpr std::size_t mostAtOnce = std::size_t { 1 } << 30; // the system takes no more than 2 GiB

    while (! bytes.empty())
    {
        const auto written = uninterrupted (
            [&] { return ::write (descriptor, bytes.data(), std::min (bytes.size(), mostAtOnce)); });
        require (written >= 0);
        bytes.remove_prefix (static_cast<std::size_t> (written));
    }
}

void writeAll (int descriptor, std::span<const std::string_view> pieces)
{
    const SizeLimitIsAnError scope;

    for (const auto piece : pieces)
        writeAll (descriptor, piece);
}

/** The first bytes of a name, fewer where a character would be cut: some file systems take no half ones. */
std::string startOf (const std::string& name, std::size_t most)
{
    const auto isInsideCharacter = [&name] (std::size_t place)
    { return (static_cast<unsigned char> (name[place]) & 0xC0U) == 0x80U; };

    if (name.size() <= most)
        return name;

    while (most > 0 && isInsideCharacter (most))
        --most;

    return name.substr (0, most);
}

/** The file beside the target that will take its place; gone again unless it has. */
class FileBeside final
{
public:
    explicit FileBeside (fs::path finalPath)
        : target (std::move (finalPath)),
          replacesAFile (::stat (target.c_str(), &former) == 0)
    {
        if (replacesAFile && S_ISDIR (former.st_mode))
            fail (EISDIR);
        if (replacesAFile)
            require (::faccessat (AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0);

        open();
    }

    FileBeside (const FileBeside&) = delete;
    FileBeside& operator= (const FileBeside&) = delete;

    ~FileBeside()
    {
        if (! isMoved)
            ::unlink (path.c_str());
    }

    void write (std::span<const std::string_view> pieces, Until until)
    {
        if (replacesAFile)
            takeOwnerAndPermissions();

        writeAll (descriptor->number(), pieces);
        require (until == Until::theSystemHasIt
                 || uninterrupted ([this] { return ::fsync (descriptor->number()); }) == 0);
        descriptor->close();
    }

    void moveIntoPlace (Until until)
    {
        require (::rename (path.c_str(), target.c_str()) == 0);
        isMoved = true;

        if (until == Until::theDiskHasIt)
            makeMoveLast();
    }

private:
    void open()
    {
        // Whoever may read the old file, nobody else sees the new one while it is being written.
        const mode_t mode = replacesAFile ? 0600 : 0666;
        constexpr std::size_t mostOfName = 200; // names have at most 255 bytes
        const auto start = "." + startOf (target.filename().string(), mostOfName) + ".";

        for (;;)
        {
            path = target.parent_path() / (start + randomIdentity().substring (0, 8).toStdString());
            const int number = uninterrupted (
                [&] { return ::open (path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });

            if (number < 0 && errno == EEXIST)
                continue;

            descriptor.emplace (number);
            return;
        }
    }

    void takeOwnerAndPermissions() const
    {
        auto mode = former.st_mode & 0777;
        const int number = descriptor->number();

        // The rights of a group that can't be kept are not for another one.
        if (::fchown (number, former.st_uid, former.st_gid) != 0
            && ::fchown (number, static_cast<uid_t> (-1), former.st_gid) != 0)
            mode = (mode & 0707) | (mode & 07) << 3;

        require (::fchmod (number, mode) == 0);
    }

    /** The folder's new entry reaches the disk as well. A folder that may not be read can't be asked for it, and some file
        systems have no such thing. */
    void makeMoveLast() const
    {
        const int number = ::open (target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);

        if (number < 0)
            return;

        const Descriptor folder (number);
        require (uninterrupted ([&folder] { return ::fsync (folder.number()); }) == 0 || errno == EINVAL
                 || errno == ENOTSUP);
    }

    fs::path target;
    struct stat former
    {
    };
    bool replacesAFile;
    fs::path path;
    std::optional<Descriptor> descriptor;
    bool isMoved = false;
};

void writeInto (const fs::path& device, std::span<const std::string_view> pieces)
{
    Descriptor opened (::open (device.c_str(), O_WRONLY | O_CLOEXEC));
    writeAll (opened.number(), pieces);
    opened.close();
}

fs::path pathOf (const juce::File& file) { return file.getFullPathName().toStdString(); }

} // namespace

bool WholeFile::isDeviceOrPipe (const juce::File& file)
{
    struct stat status
    {
    };
    return ::stat (pathOf (file).c_str(), &status) == 0 && ! S_ISREG (status.st_mode)
           && ! S_ISDIR (status.st_mode);
}

juce::Result WholeFile::write (const juce::File& target, std::span<const std::string_view> pieces,
                               Until until)
{
    try
    {
        const auto place = SharedFolder::placeBehindLinks (pathOf (target));

        if (isDeviceOrPipe (target))
        {
            // Who has made a pipe may well be the one who reads it.
            if (SharedFolder::holdsAStrangers (place))
                fail (EACCES);

            writeInto (pathOf (target), pieces);
            return juce::Result::ok();
        }

        FileBeside beside (place);
        beside.write (pieces, until);
        beside.moveIntoPlace (until);
        return juce::Result::ok();
    }
    catch (const std::system_error& error)
    {
        return juce::Result::fail ("Can't write " + target.getFullPathName() + ": "
                                   + juce::String::fromUTF8 (error.code().message().c_str()));
    }
}

juce::Result WholeFile::write (const juce::File& target, std::string_view bytes, Until until)
{
    return write (target, std::span (&bytes, 1), until);
}

} // namespace ZEP::Core
