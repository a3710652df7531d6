// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

/** A folder of the process's own, so that several can run, in memory where the system has a place for that. TMPDIR names it from now on,
    and it goes with the process. */
inline const std::filesystem::path& scratchFolder()
{
    struct Folder
    {
        Folder()
        {
            const std::filesystem::path memory ("/dev/shm");
            path = (::access (memory.c_str(), W_OK) == 0 ? memory : std::filesystem::temp_directory_path())
                   / ("overmarks-fuzz-" + std::to_string (::getpid()));
            std::filesystem::create_directories (path);
            ::setenv ("TMPDIR", path.c_str(), 1);
        }

        Folder (const Folder&) = delete;
        Folder& operator= (const Folder&) = delete;

        ~Folder()
        {
            std::error_code ignored;
            std::filesystem::remove_all (path, ignored);
        }

        std::filesystem::path path;
    };

    static const Folder folder;
    return folder.path;
}

/** Writes a file of that folder. @returns its path */
inline std::filesystem::path writeScratchFile (const std::string& name, std::string_view bytes)
{
    auto path = scratchFolder() / name;
    std::ofstream (path, std::ios::binary) << bytes;
    return path;
}
