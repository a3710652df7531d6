// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TimeInfo.h"
#include "list/EventArray.h"
#include "list/Project.h"

#include <memory>
#include <string>

namespace bench
{

/** A folder that is gone again with this object. */
class SampleFolder final
{
public:
    SampleFolder() : folder (juce::File::createTempFile ("bench")) { folder.createDirectory(); }
    ~SampleFolder() { folder.deleteRecursively(); }

    SampleFolder (const SampleFolder&) = delete;
    SampleFolder& operator= (const SampleFolder&) = delete;

    const juce::File folder;
};

/** A season's list as a studio would have it: cues of forty characters in the order of time, every tenth event a streamer or a
    marker, some without a time. The same for the same number. The project is the current one afterwards. */
ZEP::Overmarks::Project sampleProject (int numberOfEvents);

/** The same cues as a table of eleven text columns with the trade's titles, about 170 bytes a row. */
std::string sampleCSV (int numberOfRows);

/** The same cues as subtitles, in the formats' own forms. EBU files count their blocks in five digits: 99 999 at most. */
std::string sampleSRT (int numberOfRows);
std::string sampleTextSTL (int numberOfRows);
std::string sampleEBUSTL (int numberOfRows);

/** The same cues as the session text of Pro Tools: eight cue tracks of as many actors. */
std::string sampleSession (int numberOfClips);

/** The same cues as a dBase table of six fields, 132 bytes a record. */
std::string sampleDBF (int numberOfRows);

/** The same cues as a TTAL file. */
std::string sampleTTAL (int numberOfEvents);

/** The same cues as a property list of ADR Studio. */
std::string sampleADRStudio (int numberOfCues);

} // namespace bench
