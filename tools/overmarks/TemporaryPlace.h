// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "PrivateFolder.h"

#include <optional>
#include <string>

namespace overmarks
{

/** A folder of this run's own that is the temporary folder, of this program and of those that it starts, as long as it exists.
    Signals are met with patience meanwhile (StopSignals.h). On the main thread, before threads begin that look for temporary files. */
class TemporaryPlace final
{
public:
    /** Throws CommandFailure if there is no place for temporary files. */
    TemporaryPlace();

    TemporaryPlace (const TemporaryPlace&) = delete;
    TemporaryPlace& operator= (const TemporaryPlace&) = delete;
    ~TemporaryPlace();

    const juce::File& get() const noexcept { return folder.get(); }
    /** Words in which the usual folder of temporary files is named instead of this one, which goes before anybody can look. */
    juce::String withoutItself (const juce::String& words) const;

    const StopSignals& getSignals() const noexcept { return folder.getSignals(); }

private:
    const PrivateFolder folder;
    const StopSignals::Patience patience { folder.getSignals() };
    std::optional<std::string> before;
};

} // namespace overmarks
