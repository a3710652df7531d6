// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

/** Folders in which everybody may make files and nobody may remove those of others, such as /tmp.

    Whoever knows the name that a file is going to have can put something under it before: a link to a file of the user's, which
    would be replaced, or a pipe at whose other end he sits. So a link counts there only if it belongs to this user or to the owner
    of the folder. Systems have this rule of their own, but not everywhere is it turned on, and it doesn't hold where a program
    asks for itself what a link leads to.

    In a folder that everybody may write to without such protection of names nobody is safe, whatever a program does. Any thread. */
namespace ZEP::Core::SharedFolder
{

/** Whether this is such a folder. */
[[nodiscard]] inline bool isOne (const std::filesystem::path& folder)
{
    constexpr mode_t shared = S_ISVTX | S_IWOTH;
    struct stat status
    {
    };
    return ::stat (folder.empty() ? "." : folder.c_str(), &status) == 0
           && (status.st_mode & shared) == shared;
}

/** Whether a path stands in such a folder and what it names itself, a link for example, was put there by somebody else. */
[[nodiscard]] inline bool holdsAStrangers (const std::filesystem::path& path)
{
    const auto parent = path.parent_path();
    struct stat found
    {
    };
    struct stat folder
    {
    };

    if (! isOne (parent) || ::lstat (path.c_str(), &found) != 0
        || ::stat (parent.empty() ? "." : parent.c_str(), &folder) != 0)
        return false;

    return found.st_uid != ::geteuid() && found.st_uid != folder.st_uid;
}

/** What a path leads to in the end, also where nothing stands yet. Throws std::system_error: for a stranger's link, and where links
    lead in a circle. */
[[nodiscard]] inline std::filesystem::path placeBehindLinks (std::filesystem::path path)
{
    constexpr int mostLinks = 40; // as many as the system follows

    for (int i = 0; i < mostLinks; ++i)
    {
        std::error_code error;
        const auto next = std::filesystem::read_symlink (path, error);

        if (error)
            return path;

        if (holdsAStrangers (path))
            throw std::system_error (EACCES, std::generic_category());

        path = path.parent_path() / next;
    }

    throw std::system_error (ELOOP, std::generic_category());
}

} // namespace ZEP::Core::SharedFolder
