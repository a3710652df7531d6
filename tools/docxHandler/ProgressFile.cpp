// SPDX-License-Identifier: GPL-3.0-only
#include "ProgressFile.h"

#include "CharacterText.h"
#include "Failure.h"
#include "FileBytes.h"

namespace DocxHandler
{

ProgressFile::ProgressFile (std::filesystem::path path) : file (std::move (path)) { write(); }

void ProgressFile::setLevel (int newLevel)
{
    if (newLevel <= level)
        return;

    level = newLevel;
    write();
}

void ProgressFile::addError (const std::string& message)
{
    errors.push_back (onOneLine (message));
    write();
}

void ProgressFile::write()
{
    if (file.empty())
        return;

    auto text = "completionLevel=" + std::to_string (level) + "\n";

    for (const auto& error : errors)
        text += "Error message = " + error + "\n";

    try
    {
        placeFile (file, text, Readers::thisUser);
        trouble.clear();
    }
    catch (const Failure& failure) // the documents matter, not the bar; but what it shows must not be wrong
    {
        std::error_code error;
        trouble = std::filesystem::exists (file, error) ? failure.what() : "";
    }
}

} // namespace DocxHandler
