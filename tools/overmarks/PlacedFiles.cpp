// SPDX-License-Identifier: GPL-3.0-only
#include "PlacedFiles.h"

#include "OutputFile.h"
#include "Session.h"
#include "StagingFolder.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace overmarks
{

PlacedFiles::PlacedFiles (const juce::File& stagingFolder) : stage (stagingFolder) {}

PlacedFiles::~PlacedFiles()
{
    for (auto place = places.rbegin(); place != places.rend(); ++place)
    {
        const auto path = place->file.getFullPathName();

        if (place->old == juce::File())
            place->file.deleteFile();
        else if (std::rename (place->old.getFullPathName().toRawUTF8(), path.toRawUTF8()) != 0)
            place->old.copyFileTo (place->file); // it stands on another disk
    }
}

juce::File PlacedFiles::keepOld (const juce::File& place) const
{
    if (! place.exists())
        return {};

    const auto old = stage.getChildFile ("old " + juce::String (static_cast<int> (places.size())));

    if (link (place.getFullPathName().toRawUTF8(), old.getFullPathName().toRawUTF8()) != 0
        && ! place.copyFileTo (old))
        throw CommandFailure ("Can't keep " + place.getFullPathName()
                              + " until all documents are in their places");

    return old;
}

void PlacedFiles::add (const juce::File& finished, const juce::File& target)
{
    const auto place = placeOf (target);
    const auto old = keepOld (place);
    StagingFolder::moveIntoPlace (finished, target);
    places.push_back ({ place, old });
}

} // namespace overmarks
