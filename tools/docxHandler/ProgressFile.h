// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace DocxHandler
{

/** The file that tells the caller how far the work is: "completionLevel=NN" on its first line, and behind it a line
    "Error message = ..." for each thing that went wrong. It is replaced as a whole at every change, so that whoever reads it
    never sees half a line; what an earlier run has left in it is gone at once. Nothing is told if it can't be written. */
class ProgressFile final
{
public:
    /** @param path  may be empty: nobody listens */
    explicit ProgressFile (std::filesystem::path path);

    /** @param newLevel  percent; a level that is no higher than the last changes nothing */
    void setLevel (int newLevel);

    void addError (const std::string& message);

    /** Why the file still holds what an earlier run has left in it; empty if all is well, or if there is no file. */
    [[nodiscard]] const std::string& problem() const noexcept { return trouble; }

private:
    void write();

    std::filesystem::path file;
    int level = 0;
    std::vector<std::string> errors;
    std::string trouble;
};

} // namespace DocxHandler
