// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>

namespace DocxHandler
{

/** Ends the program when its caller cancels it or a signal asks it to stop, whatever it is busy with: a thread looks every
    50 ms, deletes what is half-written and ends the process. So nothing else in the program has to ask.

    Cancelled, the status is 3; after a signal it is that signal's. Made first of all in main(), since every other thread has to
    leave the signals to it. */
class StopWatch final
{
public:
    static constexpr int cancelledStatus = 3;

    /** What a word "cancel" that stands in the file at the start means. An export's caller may be quick to cancel; an import's
        caller never clears the file, so that the word may be left from an earlier export. */
    enum class EarlierWord
    {
        counts,
        isStale
    };

    StopWatch();
    StopWatch (const StopWatch&) = delete;
    StopWatch& operator= (const StopWatch&) = delete;
    ~StopWatch();

    /** @param cancelFile  may be empty: only signals stop the program */
    void watch (const std::filesystem::path& cancelFile, EarlierWord earlierWord);

    /** What is known of a file of words, of which nobody says how long it is. */
    struct Words
    {
        std::string beginning;
        std::uintmax_t size = 0; ///< of the whole file

        bool operator== (const Words&) const = default;
    };

private:
    void run() const;
    [[nodiscard]] bool isCancelled() const;

    std::filesystem::path file;
    Words stale;
    std::thread thread;
};

} // namespace DocxHandler
