// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

/** An open file of this process, closed with this object and not handed on to any program that is started. */
class FileDescriptor final
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor (int openNumber) noexcept : number (openNumber) {} ///< Takes it over; -1: none.
    FileDescriptor (FileDescriptor&& other) noexcept;            ///< Leaves the other one empty.
    FileDescriptor& operator= (FileDescriptor&& other) noexcept; ///< Exchanges the two.
    ~FileDescriptor() { close(); }

    [[nodiscard]] int get() const noexcept { return number; } ///< -1 when there is none.
    void close() noexcept; ///< Earlier than the end; a second time does nothing.

private:
    int number = -1;
};

/** A browser that was started to print one document, with the channel to it. It lives no longer than this object: with it go
    all processes of its group.

    Messages go both ways over its descriptors 3 and 4, each ended by a zero byte. One thread. */
class OVERMARKS_API BrowserProcess final
{
public:
    using Clock = std::chrono::steady_clock; ///< what deadlines count by

    /** @param privateFolder  for its temporary files
        Throws PrintError if it can't be started. */
    BrowserProcess (const std::filesystem::path& program, const std::vector<std::string>& arguments,
                    const std::filesystem::path& privateFolder);
    ~BrowserProcess();

    BrowserProcess (const BrowserProcess&) = delete;
    BrowserProcess& operator= (const BrowserProcess&) = delete;

    /** Throws PrintError when the browser has gone, and BrowserHangs when it takes nothing until then. */
    void send (std::string_view message, Clock::time_point until);

    /** The next message. Throws PrintError when the browser has gone or says endlessly much, and BrowserHangs when it says nothing
        whole until then. */
    [[nodiscard]] std::string receive (Clock::time_point until);

    /** The end of what it has written to its standard error. */
    [[nodiscard]] const std::string& lastWords() const noexcept { return errorText; }

private:
    void start (const std::filesystem::path& program, const std::vector<std::string>& arguments,
                const std::filesystem::path& privateFolder, int channelOfChild, int errorsOfChild);
    void wait (short events, Clock::time_point until);
    bool readErrors();
    void readErrorsToTheEnd();
    void readErrorsSoFar();
    [[noreturn]] void fail (const std::string& reason);

    pid_t process = -1;
    FileDescriptor channel;
    FileDescriptor errors;
    std::string received;
    std::size_t searched = 0; ///< so much of `received` holds no end of a message
    std::string errorText;
};

} // namespace ZEP::Overmarks
