// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <vector>

namespace overmarks
{

/** Finished files on their way to their places, all of them or none: unless keep() is called in the end, the folder gets back
    what stood there before. Not for devices and pipes: what went into those is gone. */
class PlacedFiles final
{
public:
    /** @param stagingFolder  where the old files are kept meanwhile */
    explicit PlacedFiles (const juce::File& stagingFolder);

    PlacedFiles (const PlacedFiles&) = delete;
    PlacedFiles& operator= (const PlacedFiles&) = delete;
    ~PlacedFiles();

    /** Moves a file to its place as StagingFolder::moveIntoPlace() does. Throws CommandFailure. */
    void add (const juce::File& finished, const juce::File& target);

    void keep() noexcept { places.clear(); }

private:
    struct Place
    {
        juce::File file;
        juce::File old; ///< what stood there; no file if nothing did
    };

    juce::File keepOld (const juce::File& place) const;

    juce::File stage;
    std::vector<Place> places;
};

} // namespace overmarks
