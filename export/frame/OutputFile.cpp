// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/OutputFile.h"

#include "core/system/RandomIdentity.h"
#include "core/system/SharedFolder.h"
#include "core/system/SizeLimitIsAnError.h"
#include "core/system/Uninterrupted.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <tuple>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::size_t bufferSize = 16384;
constexpr mode_t modeOfNewFile = 0644;

} // namespace

OutputFile::OutputFile (const juce::File& targetFile, OnFailure onFailure)
    : target (targetFile.getFullPathName()),
      whenItFails (onFailure)
{
    open();
    complete = descriptor >= 0;
}

OutputFile::~OutputFile()
{
    std::ignore = close();

    if (! keep && ! removedUnlessKept.empty())
        ::unlink (removedUnlessKept.c_str());
    if (! keep && whenItFails == OnFailure::nothingStaysThere)
        removeOlder();
}

void OutputFile::removeOlder() const
{
    struct stat older
    {
    };
    const bool leadsNowhere = ::stat (target.toRawUTF8(), &older) != 0;

    if (leadsNowhere || S_ISREG (older.st_mode))
        ::unlink (target.toRawUTF8());
}

void OutputFile::open()
{
    if (Core::SharedFolder::holdsAStrangers (target.toStdString()))
        return;

    struct stat former
    {
    };
    const bool stands = ::stat (target.toRawUTF8(), &former) == 0;

    if (stands && (S_ISCHR (former.st_mode) || S_ISBLK (former.st_mode)))
        return openInPlace (O_WRONLY | O_NOCTTY);
    if (stands && ! S_ISREG (former.st_mode))
        return;

    openBeside();

    // A folder in which nobody may make a file may still hold one that can be written to. On a full disk that would lose it.
    if (descriptor < 0 && stands && (errno == EACCES || errno == EPERM))
    {
        openInPlace (O_WRONLY | O_TRUNC);

        if (descriptor >= 0)
            removedUnlessKept = target.toStdString();
    }
}

void OutputFile::openBeside()
{
    const std::filesystem::path folder = std::filesystem::path (target.toStdString()).parent_path();

    do
    {
        removedUnlessKept = (folder / (".overmarks-" + Core::randomIdentity().toStdString())).string();
        descriptor = Core::uninterrupted (
            [this] {
                return ::open (removedUnlessKept.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                               modeOfNewFile);
            });
    } while (descriptor < 0 && errno == EEXIST);

    isBeside = descriptor >= 0;

    if (! isBeside)
        removedUnlessKept.clear(); // leaves errno alone
}

void OutputFile::openInPlace (int flags)
{
    descriptor = Core::uninterrupted ([&] { return ::open (target.toRawUTF8(), flags | O_CLOEXEC); });
}

void OutputFile::write (const void* bytes, std::size_t numberOfBytes)
{
    buffer.append (static_cast<const char*> (bytes), numberOfBytes);

    if (buffer.size() >= bufferSize)
        writeBuffer();
}

void OutputFile::writeString (const juce::String& text)
{
    write (text.toRawUTF8(), text.getNumBytesAsUTF8() + 1);
}

void OutputFile::writeBuffer()
{
    const Core::SizeLimitIsAnError scope;
    writeAll (buffer);
    buffer.clear();
}

/** All of it, however few bytes the disk takes at a time. */
void OutputFile::writeAll (std::string_view bytes)
{
    while (complete && ! bytes.empty())
    {
        const auto written =
            Core::uninterrupted ([&] { return ::write (descriptor, bytes.data(), bytes.size()); });
        complete = written > 0;

        if (complete)
            bytes.remove_prefix (static_cast<std::size_t> (written));
    }
}

/** Some disks tell only now that there was no room. */
bool OutputFile::close() { return descriptor < 0 || ::close (std::exchange (descriptor, -1)) == 0; }

bool OutputFile::finish()
{
    writeBuffer();
    complete = close() && complete;

    if (isBeside)
        complete = complete && std::rename (removedUnlessKept.c_str(), target.toRawUTF8()) == 0;

    keep = complete;
    return keep;
}

} // namespace ZEP::Overmarks
