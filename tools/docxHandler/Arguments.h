// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace DocxHandler
{

enum class Mode
{
    help,
    version,
    exportDocuments,
    importDocument
};

/** What the command line asks for. */
struct Arguments
{
    Mode mode = Mode::help;
    std::vector<std::filesystem::path> json;   ///< export: to read; import: the one to write
    std::vector<std::filesystem::path> output; ///< export: as many as there are JSON files
    std::filesystem::path input;               ///< import
    std::filesystem::path progressFile;        ///< ours to write; may be empty
    std::filesystem::path cancelFile;          ///< the caller's to write; may be empty
};

/** A command line that can't be understood. */
class UsageError final : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/** @param words  the command line without the program's name. Throws a UsageError. */
[[nodiscard]] Arguments parseArguments (const std::vector<std::string>& words);

/** The paths of a list that are separated by commas. The callers have no means to escape a comma, so a comma separates only
    where the path before it ends in one of the extensions, if all paths of the list do. Where lists that belong together then differ in length, the command line is read in
    the way in which they don't. */
[[nodiscard]] std::vector<std::filesystem::path> splitPaths (const std::string& list,
                                                             const std::vector<std::string>& extensions);

[[nodiscard]] std::string helpText();

} // namespace DocxHandler
