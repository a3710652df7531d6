// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "support/TemporaryFolder.h"

#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** As long as this lives the process takes itself for another user: its own files look like those of somebody else. So nobody has
    to be the system's administrator to run these tests. */
class PretendedUser final
{
public:
    PretendedUser();
    ~PretendedUser();

    PretendedUser (const PretendedUser&) = delete;
    PretendedUser& operator= (const PretendedUser&) = delete;
};

/** A folder in which everybody may make files, such as /tmp, and which isn't the stranger's. The administrator gives files away for it;
    for anybody else it is a folder of the system, and the files look like a stranger's. */
class SharedByAll final
{
public:
    SharedByAll()
    {
        if (isAdministrator)
        {
            std::filesystem::permissions (own.path, static_cast<std::filesystem::perms> (01777));
            folder = own.path;
        }
        else
        {
            folder = folderOfTheSystem();
        }
    }

    SharedByAll (const SharedByAll&) = delete;
    SharedByAll& operator= (const SharedByAll&) = delete;

    ~SharedByAll()
    {
        std::error_code error;

        for (const auto& path : given)
            std::filesystem::remove (path, error);
    }

    /** The path for a name, which nobody else uses. */
    std::filesystem::path path (const std::string& name) const
    {
        return isAdministrator ? folder / name : folder / (own.path.filename().string() + "-" + name);
    }

    juce::File file (const std::string& name) const
    {
        return juce::File (juce::String (path (name).string()));
    }

    /** From now on it belongs to somebody else. */
    void giveToStranger (const std::string& name)
    {
        given.push_back (path (name));

        if (! isAdministrator)
            pretended.emplace();
        else if (::lchown (path (name).c_str(), stranger, stranger) != 0)
            throw std::runtime_error ("It can't be given away");
    }

    /** From now on what this thread makes is somebody else's. */
    void makeThreadAStrangers()
    {
        if (isAdministrator)
            ::setfsuid (stranger);
        else
            pretended.emplace();
    }

    static constexpr uid_t stranger = 12345;

    const TemporaryFolder own; ///< nobody else's
    const bool isAdministrator = ::getuid() == 0;

private:
    static std::filesystem::path folderOfTheSystem()
    {
        for (const auto* path : { "/tmp", "/var/tmp", "/dev/shm" })
        {
            struct stat status
            {
            };

            if (::stat (path, &status) == 0 && (status.st_mode & 01002) == 01002
                && status.st_uid != ::getuid())
                return path;
        }

        throw std::runtime_error ("The system has no folder for everybody");
    }

    std::filesystem::path folder;
    std::vector<std::filesystem::path> given;
    std::optional<PretendedUser> pretended;
};

} // namespace ZEP::Overmarks::Testing
