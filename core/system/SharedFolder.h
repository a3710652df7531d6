// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/Descriptor.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

/** Folders in which everybody may make files and nobody may remove those of others, such as /tmp.

    Whoever knows the name that a file is going to have can put something under it before: a link to a file of the user's, which
    would be replaced, or a pipe at whose other end he sits. So a link counts there only if it belongs to this user or to the owner
    of the folder. Systems have this rule of their own, but not everywhere is it turned on, and it doesn't hold where a program
    asks for itself what a link leads to.

    In any other folder whoever may put files there is trusted, whoever they belong to: there are disks that give all files one owner.
    In a folder that everybody may write to without such protection of names nobody is safe, whatever a program does. Any thread. */
namespace ZEP::Core::SharedFolder
{

/** Whether something in such a folder belongs to somebody else than this user or the owner of the folder, who may do there what he
    likes in any case. @param found  what stands under the path, or behind its name once it is open */
[[nodiscard]] inline bool isAStrangers (const std::filesystem::path& path, const struct stat& found)
{
    constexpr mode_t shared = S_ISVTX | S_IWOTH;
    const auto parent = path.parent_path();
    struct stat folder
    {
    };
    return found.st_uid != ::geteuid() && ::stat (parent.empty() ? "." : parent.c_str(), &folder) == 0
           && (folder.st_mode & shared) == shared && found.st_uid != folder.st_uid;
}

/** Whether what stands under a path itself, a link for example, was put there by somebody else. */
[[nodiscard]] inline bool holdsAStrangers (const std::filesystem::path& path)
{
    struct stat found
    {
    };
    return ::lstat (path.c_str(), &found) == 0 && isAStrangers (path, found);
}

/** The path that stays right when somebody takes ".." for the folder before it: links among its folders are gone. One that leads
    through a folder which isn't there stays as it is unless it climbs out of that again. */
[[nodiscard]] inline std::filesystem::path withRealFolder (const std::filesystem::path& path)
{
    const auto parent = path.parent_path();
    std::error_code error;
    const auto folder = std::filesystem::canonical (parent.empty() ? "." : parent, error);

    if (! error)
        return folder / path.filename();

    if (std::find (parent.begin(), parent.end(), "..") != parent.end())
        throw std::system_error (error);

    return path;
}

/** What a path leads to in the end, also where nothing stands yet. Throws std::system_error: for a stranger's link, and where links
    lead in a circle or out of a folder that isn't there. */
[[nodiscard]] inline std::filesystem::path placeBehindLinks (const std::filesystem::path& path)
{
    constexpr int mostLinks = 40; // as many as the system follows
    auto place = path;

    for (int links = 0; links <= mostLinks; ++links)
    {
        struct stat found
        {
        };

        // First who has put it there, then where it leads: nobody else can replace a link that isn't his.
        if (::lstat (place.c_str(), &found) != 0 || ! S_ISLNK (found.st_mode))
            return links > 0 ? withRealFolder (place) : place;

        if (isAStrangers (place, found))
            throw std::system_error (EACCES, std::generic_category());

        place = place.parent_path() / std::filesystem::read_symlink (place);
    }

    throw std::system_error (ELOOP, std::generic_category());
}

/** Whether an open file is an ordinary one and nobody else's: anything else could mean to wait for ever, or to believe a stranger. */
[[nodiscard]] inline bool isTrusted (const Descriptor& file, const std::filesystem::path& path)
{
    const auto status = file.status();
    return status.has_value() && S_ISREG (status->st_mode) && ! isAStrangers (path, *status);
}

/** Opens such a file for reading, behind the user's own links. It isn't open if there is none. */
[[nodiscard]] inline Descriptor openTrusted (const std::filesystem::path& path)
{
    try
    {
        const auto place = placeBehindLinks (path);
        Descriptor file (place, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
        return isTrusted (file, place) ? std::move (file) : Descriptor();
    }
    catch (const std::system_error&)
    {
        return {};
    }
}

} // namespace ZEP::Core::SharedFolder
