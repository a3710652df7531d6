// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "StopSignals.h"

#include <juce_core/juce_core.h>

namespace overmarks
{

/** A folder of this run's own that nobody else may enter. Gone again, with all that is in it, at the end of the scope, or when
    a signal ends the program before. */
class PrivateFolder final
{
public:
    /** @param parent  where it lies
        @param start   of its name
        Throws CommandFailure if the parent can't be written to. */
    PrivateFolder (const juce::File& parent, const juce::String& start);

    PrivateFolder (const PrivateFolder&) = delete;
    PrivateFolder& operator= (const PrivateFolder&) = delete;
    ~PrivateFolder();

    const juce::File& get() const noexcept { return folder; }
    const StopSignals& getSignals() const noexcept { return signals; }

private:
    StopSignals signals; ///< made before the folder and gone after it
    juce::File folder;
};

/** Where this system's temporary files go. A folder with a comma, of which docxHandler can't be told, is passed over. */
juce::File usualTemporaryFolder();

} // namespace overmarks
