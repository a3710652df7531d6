// SPDX-License-Identifier: GPL-3.0-only
#include "OutputFile.h"

#include "Session.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace overmarks
{

namespace
{

bool writeAll (int descriptor, const std::string& contents)
{
    for (std::size_t done = 0; done < contents.size();)
    {
        const auto written = ::write (descriptor, contents.data() + done, contents.size() - done);

        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;

        done += static_cast<std::size_t> (written);
    }

    return true;
}

bool writeInto (const juce::File& device, const std::string& contents)
{
    const int descriptor = open (device.getFullPathName().toRawUTF8(), O_WRONLY | O_CLOEXEC);

    if (descriptor < 0)
        return false;

    const bool isWritten = writeAll (descriptor, contents);
    const int reason = errno;
    close (descriptor);
    errno = reason;
    return isWritten;
}

/** A file of its own beside the target, gone again unless it has been moved into place. */
class FileBeside final
{
public:
    explicit FileBeside (const juce::File& target)
    {
        const auto pattern = target.getSiblingFile ("." + target.getFileName().substring (0, 60) + ".XXXXXX")
                                 .getFullPathName()
                                 .toStdString();
        path.assign (pattern.begin(), pattern.end());
        path.push_back ('\0');
        descriptor = mkstemp (path.data());
    }

    FileBeside (const FileBeside&) = delete;
    FileBeside& operator= (const FileBeside&) = delete;

    ~FileBeside()
    {
        if (descriptor >= 0)
            close (descriptor);
        if (descriptor >= 0 && ! isMoved)
            unlink (path.data());
    }

    bool write (const std::string& contents) const
    {
        return writeAll (descriptor, contents) && fsync (descriptor) == 0;
    }

    bool moveTo (const juce::File& target)
    {
        const auto mask = umask (0);
        umask (mask);
        fchmod (descriptor, 0666 & ~mask);
        isMoved = rename (path.data(), target.getFullPathName().toRawUTF8()) == 0;
        return isMoved;
    }

    bool isOpen() const { return descriptor >= 0; }

private:
    std::vector<char> path;
    int descriptor = -1;
    bool isMoved = false;
};

} // namespace

juce::File fileFromPath (const juce::String& path)
{
    // The shell has replaced a tilde already; one that is left belongs to the name.
    return juce::File::getCurrentWorkingDirectory().getChildFile (path.startsWithChar ('~') ? "./" + path
                                                                                            : path);
}

bool isDeviceOrPipe (const juce::File& file)
{
    struct stat status
    {
    };
    return stat (file.getFullPathName().toRawUTF8(), &status) == 0 && ! S_ISREG (status.st_mode)
           && ! S_ISDIR (status.st_mode);
}

void refuseToReplace (const juce::File& file, const OutputPolicy& policy)
{
    if (file.isDirectory())
        throw CommandFailure (file.getFullPathName() + " is a folder");

    if (file.exists() && ! policy.force && ! isDeviceOrPipe (file))
        throw CommandFailure (file.getFullPathName() + " exists already; --force replaces it");
}

void writeWholeFile (const juce::File& file, const std::string& contents)
{
    const auto fail = [&file]
    {
        throw CommandFailure ("Can't write " + file.getFullPathName() + ": "
                              + juce::String::fromUTF8 (std::strerror (errno)));
    };

    if (isDeviceOrPipe (file))
    {
        if (! writeInto (file, contents))
            fail();

        return;
    }

    FileBeside beside (file.getLinkedTarget());

    if (! beside.isOpen() || ! beside.write (contents) || ! beside.moveTo (file.getLinkedTarget()))
        fail();
}

} // namespace overmarks
