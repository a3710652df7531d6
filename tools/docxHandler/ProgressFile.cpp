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

void ProgressFile::write() const
{
    if (file.empty())
        return;

    auto text = "completionLevel=" + std::to_string (level) + "\n";

    for (const auto& error : errors)
        text += "Error message = " + error + "\n";

    try
    {
        placeFile (file, text);
    }
    catch (const Failure&) // the documents matter, not the bar
    {
        return;
    }
}

} // namespace DocxHandler
