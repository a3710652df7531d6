// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZEP::Core
{

/** A workbook between the library that writes it to a path and the disk: a file that lies in memory and has no name in any folder,
    so that nothing of it stays behind whatever happens. */
class PackedWorkbook final
{
public:
    /** @throws std::system_error if the system gives no such file */
    PackedWorkbook();
    PackedWorkbook (const PackedWorkbook&) = delete;
    PackedWorkbook& operator= (const PackedWorkbook&) = delete;
    ~PackedWorkbook();

    /** The path under which this process can open the file. */
    [[nodiscard]] std::string path() const;

    /** What has been written to it, valid as long as this object is. Called once.
        @throws std::system_error if there is no room for it */
    [[nodiscard]] std::string_view bytes();

private:
    int descriptor;
    void* begin = nullptr;
    std::size_t length = 0;
};

} // namespace ZEP::Core
