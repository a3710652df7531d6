// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/WholeFile.h"

#include "core/system/Descriptor.h"
#include "core/system/FormerRights.h"
#include "core/system/RandomIdentity.h"
#include "core/system/SharedFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

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

void writeAll (const Descriptor& file, std::span<const std::string_view> pieces)
{
    for (const auto piece : pieces)
        require (file.write (piece));
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
            require (takeFormerRights (file.number(), former));

        writeAll (file, pieces);
        require (until == Until::theSystemHasIt
                 || uninterrupted ([this] { return ::fsync (file.number()); }) == 0);
        require (file.close());
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
            file = Descriptor (path, O_WRONLY | O_CREAT | O_EXCL, mode);

            if (! file.isOpen() && errno == EEXIST)
                continue;

            require (file.isOpen());
            return;
        }
    }

    /** The folder's new entry reaches the disk as well. A folder that may not be read can't be asked for it, and some file
        systems have no such thing. */
    void makeMoveLast() const
    {
        const Descriptor folder (target.parent_path(), O_RDONLY | O_DIRECTORY);

        if (! folder.isOpen())
            return;

        require (uninterrupted ([&folder] { return ::fsync (folder.number()); }) == 0 || errno == EINVAL
                 || errno == ENOTSUP);
    }

    fs::path target;
    struct stat former
    {
    };
    bool replacesAFile;
    fs::path path;
    Descriptor file;
    bool isMoved = false;
};

/** @param place  the device or pipe itself, to which the target may be a link */
void writeInto (const fs::path& target, const fs::path& place, std::span<const std::string_view> pieces)
{
    // Who has made a pipe may well be the one who reads it.
    if (SharedFolder::holdsAStrangers (place))
        fail (EACCES);

    // Nobody need ever come to read a pipe.
    Descriptor file (target, O_WRONLY | O_NOCTTY | O_NONBLOCK);
    require (file.isOpen());

    // It may be another one by now.
    const auto status = file.status();
    require (status.has_value());

    if (S_ISREG (status->st_mode) || SharedFolder::isAStrangers (place, *status))
        fail (EACCES);

    require (file.wait());
    writeAll (file, pieces);
    require (file.close());
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
            writeInto (pathOf (target), place, pieces);
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
