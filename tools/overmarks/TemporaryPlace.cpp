// SPDX-License-Identifier: GPL-3.0-only
#include "TemporaryPlace.h"

#include <cstdlib>

namespace overmarks
{

namespace
{

constexpr auto nameOfVariable = "TMPDIR";

} // namespace

TemporaryPlace::TemporaryPlace() : folder (usualTemporaryFolder(), "overmarks.")
{
    if (const char* given = std::getenv (nameOfVariable))
        before = given;

    setenv (nameOfVariable, folder.get().getFullPathName().toRawUTF8(), 1);
}

TemporaryPlace::~TemporaryPlace()
{
    if (before.has_value())
        setenv (nameOfVariable, before->c_str(), 1);
    else
        unsetenv (nameOfVariable);
}

juce::String TemporaryPlace::withoutItself (const juce::String& words) const
{
    return words.replace (get().getFullPathName(), get().getParentDirectory().getFullPathName());
}

} // namespace overmarks
