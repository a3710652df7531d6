// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/OutputFile.h"

#include "core/system/RandomIdentity.h"
#include "core/system/SharedFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
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
    complete = file.isOpen();
}

OutputFile::~OutputFile()
{
    if (! keep)
        removeUnfinished();
    if (! keep && whenItFails == OnFailure::nothingStaysThere)
        removeOlder();
}

void OutputFile::removeUnfinished()
{
    if (removedUnlessKept.empty() || ::unlink (removedUnlessKept.c_str()) == 0 || isBeside)
        return;

    // It stands in a folder of which nothing can be removed. An empty document doesn't look like a whole one.
    if (! file.isOpen())
        file = openFormer (O_WRONLY);

    std::ignore = ::ftruncate (file.number(), 0);
}

void OutputFile::removeOlder() const
{
    struct stat older
    {
    };
    const bool leadsNowhere = ::stat (target.toRawUTF8(), &older) != 0;

    if ((leadsNowhere || S_ISREG (older.st_mode))
        && ! Core::SharedFolder::holdsAStrangers (target.toStdString()))
        ::unlink (target.toRawUTF8());
}

void OutputFile::open()
{
    if (Core::SharedFolder::holdsAStrangers (target.toStdString()))
        return;

    const bool stands = ::stat (target.toRawUTF8(), &former) == 0;

    if (stands && (S_ISCHR (former.st_mode) || S_ISBLK (former.st_mode)))
        file = openFormer (O_WRONLY | O_NOCTTY);
    else if (! stands || S_ISREG (former.st_mode))
        openBeside();

    // A folder in which nobody may make a file may still hold one that can be written to. On a full disk that would lose it.
    if (! file.isOpen() && stands && S_ISREG (former.st_mode) && (errno == EACCES || errno == EPERM))
        openInPlace();
}

void OutputFile::openBeside()
{
    const std::filesystem::path folder = std::filesystem::path (target.toStdString()).parent_path();

    do
    {
        removedUnlessKept = (folder / (".overmarks-" + Core::randomIdentity().toStdString())).string();
        file = Core::Descriptor (removedUnlessKept, O_WRONLY | O_CREAT | O_EXCL, modeOfNewFile);
    } while (! file.isOpen() && errno == EEXIST);

    isBeside = file.isOpen();

    if (! isBeside)
        removedUnlessKept.clear(); // leaves errno alone
}

void OutputFile::openInPlace()
{
    file = openFormer (O_WRONLY);

    if (file.isOpen() && ::ftruncate (file.number(), 0) == 0)
        removedUnlessKept = target.toStdString();
    else
        file = {};
}

/** What was found in the target's place, and nothing that somebody has put there since, nor what a stranger's link leads to. */
Core::Descriptor OutputFile::openFormer (int flags) const
{
    try
    {
        const auto place = Core::SharedFolder::placeBehindLinks (target.toStdString());
        Core::Descriptor opened (place, flags | O_NONBLOCK | O_NOFOLLOW);
        const auto status = opened.status();
        const bool isTheSame = status.has_value() && status->st_dev == former.st_dev
                               && status->st_ino == former.st_ino
                               && ! Core::SharedFolder::isAStrangers (place, *status);
        return isTheSame && opened.wait() ? std::move (opened) : Core::Descriptor();
    }
    catch (const std::system_error&)
    {
        return {};
    }
}

void OutputFile::write (const void* bytes, std::size_t numberOfBytes)
{
    const std::string_view piece (static_cast<const char*> (bytes), numberOfBytes);

    if (buffer.size() + piece.size() >= bufferSize)
        writeBuffer();

    if (piece.size() >= bufferSize)
        writeThrough (piece);
    else
        buffer += piece;
}

void OutputFile::writeString (const juce::String& text)
{
    const auto* const bytes = text.toRawUTF8();
    write (bytes, std::strlen (bytes) + 1); // the framework would count them character by character
}

void OutputFile::writeBuffer()
{
    writeThrough (buffer);
    buffer.clear();
}

void OutputFile::writeThrough (std::string_view bytes) { complete = complete && file.write (bytes); }

bool OutputFile::finish()
{
    writeBuffer();
    complete = complete && file.close();

    if (isBeside)
        complete = complete && std::rename (removedUnlessKept.c_str(), target.toRawUTF8()) == 0;

    keep = complete;
    return keep;
}

} // namespace ZEP::Overmarks
