// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/OutputFile.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::size_t bufferSize = 16384;

} // namespace

OutputFile::OutputFile (const juce::File& target) : file (target)
{
    const bool leadsNowhere = file.isSymbolicLink() && ! file.exists();

    if (leadsNowhere || isRegularFile())
        file.deleteFile();

    const bool couldNotBeRemoved = isRegularFile();
    stream.emplace (file, bufferSize);
    begun = stream->openedOk();

    // The stream would go on behind the old text.
    if (couldNotBeRemoved && begun)
        complete = stream->setPosition (0) && stream->truncate().wasOk();
}

OutputFile::~OutputFile()
{
    stream.reset();

    if (begun && ! keep && isRegularFile())
        file.deleteFile();
}

void OutputFile::write (const void* bytes, std::size_t numberOfBytes)
{
    complete = stream->write (bytes, numberOfBytes) && complete;
}

void OutputFile::writeString (const juce::String& text) { complete = stream->writeString (text) && complete; }

bool OutputFile::finish()
{
    // A full disk shows only when the buffer is emptied, a write that was cut short only in the size. Going back to the start
    // empties it; flush() would wait for the disk as well, which takes longer than all the rest for a long list.
    const auto length = stream->getPosition();
    stream->setPosition (0);
    const bool allThere = ! isRegularFile() || file.getSize() == length;
    keep = complete && stream->openedOk() && allThere;
    return keep;
}

bool OutputFile::isRegularFile() const
{
    std::error_code error;
    return std::filesystem::is_regular_file (std::filesystem::path (file.getFullPathName().toStdString()),
                                             error);
}

} // namespace ZEP::Overmarks
