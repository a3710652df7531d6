// SPDX-License-Identifier: GPL-3.0-only
#include "PlacedFiles.h"

#include "OutputFile.h"
#include "Session.h"
#include "StagingFolder.h"
#include "core/system/Logger.h"
#include "core/system/WholeFile.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace overmarks
{

namespace
{

/** For the same people, even if it is a file of somebody else's. */
bool isCopied (const juce::File& file, const juce::File& copy)
{
    return file.copyFileTo (copy) && StagingFolder::takeRightsOf (file, copy);
}

/** What stands there has the old one's rights already, and is replaced only when the old one is whole again. */
void writeBack (const juce::File& old, const juce::File& place)
{
    juce::MemoryBlock bytes;

    if (! old.loadFileAsData (bytes)
        || ZEP::Core::WholeFile::write (place, std::string_view (bytes.begin(), bytes.getSize())).failed())
        ZEP::Core::Logger::error ("Can't bring back " + place.getFullPathName());
}

} // namespace

PlacedFiles::PlacedFiles (const juce::File& stagingFolder) : stage (stagingFolder) {}

PlacedFiles::~PlacedFiles()
{
    for (auto place = places.rbegin(); place != places.rend(); ++place)
    {
        const auto path = place->file.getFullPathName();

        if (place->old == juce::File())
            place->file.deleteFile();
        else if (std::rename (place->old.getFullPathName().toRawUTF8(), path.toRawUTF8()) != 0)
            writeBack (place->old, place->file); // it stands on another disk
    }
}

juce::File PlacedFiles::keepOld (const juce::File& place) const
{
    if (! place.exists())
        return {};

    const auto old = stage.getChildFile ("old " + juce::String (static_cast<int> (places.size())));

    if (link (place.getFullPathName().toRawUTF8(), old.getFullPathName().toRawUTF8()) != 0
        && ! isCopied (place, old))
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
