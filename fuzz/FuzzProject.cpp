// SPDX-License-Identifier: GPL-3.0-only
// A project file from a stranger. Its checksum keeps a fuzzer that changes bytes from all that lies behind it, so the record is also
// read with a header that fits; an input that is no project file is taken for such a record.
#include "CheckProject.h"

#include <Poco/Checksum.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

constexpr std::string_view mark { "\x89OVM\r\n\x1a\n", 8 };
constexpr std::size_t lengthOfHeader = 24;

std::string inBytes (std::uint64_t number, int length)
{
    std::string bytes;

    for (int i = 0; i < length; ++i)
        bytes += static_cast<char> (number >> (8 * i) & 0xFF);

    return bytes;
}

/** The record as a file of this version holds it. */
std::string fileAround (std::string_view record)
{
    constexpr int lengthOfNumber = 4, lengthOfLength = 8;
    Poco::Checksum checksum (Poco::Checksum::TYPE_CRC32);
    checksum.update (record.data(), static_cast<unsigned int> (record.size()));
    return std::string (mark) + inBytes (ProjectFile::formatVersion, lengthOfNumber)
           + inBytes (checksum.checksum(), lengthOfNumber) + inBytes (record.size(), lengthOfLength)
           + std::string (record);
}

void open (std::string_view bytes)
{
    Project project;
    const auto before = project.list;
    const auto complaint = ProjectFile::fromBytes (bytes, "a stranger's", project);
    checkText (complaint);

    if (complaint.isEmpty())
        checkProject (project);
    else
        law (project.list == before, "a project that can't be opened leaves the old one as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    const auto bytes = bytesOfInput (data, size);
    open (bytes);
    open (fileAround (bytes.starts_with (mark) && size >= lengthOfHeader ? bytes.substr (lengthOfHeader)
                                                                         : bytes));
    return 0;
}
