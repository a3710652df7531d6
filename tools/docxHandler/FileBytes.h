// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace DocxHandler
{

/** All bytes of a file. Throws a Failure if it can't be read, is no regular file or is larger than `largest`. */
[[nodiscard]] std::string readFile (const std::filesystem::path& file, std::uintmax_t largest);

/** Who may read a file. */
enum class Readers
{
    asUsual, ///< those of the file that it replaces, or whoever may read new files here
    thisUser ///< nobody else, since everybody looks into the folder of temporary files
};

/** Puts `bytes` in the place of a file: written beside it and moved there when whole, so that nobody ever sees half of it,
    and a file that was there stays as it is until then. What a link leads to is replaced, not the link. Throws a Failure, also where
    something else than a file stands, and for a link that somebody else has put into a folder of everybody's. */
void placeFile (const std::filesystem::path& file, std::string_view bytes,
                Readers readers = Readers::asUsual);

/** Deletes what placeFile() is writing in another thread and lets it move nothing any more: the program is about to end. */
void abandonPlacing() noexcept;

} // namespace DocxHandler
