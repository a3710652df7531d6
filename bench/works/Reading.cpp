// SPDX-License-Identifier: GPL-3.0-only
// From the file of a cue list to rows.
#include "SeasonLists.h"
#include "Works.h"

#include "core/timecode/TCToolbox.h"
#include "import/CSVEventFileImporter.h"
#include "import/DBFEventFileImporter.h"
#include "import/ExcelEventFileImporter.h"
#include "import/SRTEventFileImporter.h"
#include "import/STLEventFileImporter.h"
#include "import/TTALEventFileImporter.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <memory>
#include <optional>

namespace bench
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

/** @param titleRows  rows of the importer's table beside the cues */
template <typename Importer, typename... More>
WorkDone readWith (const juce::String& path, int titleRows, More... more)
{
    UserDefaultsRegistrar::registerUserDefaults();
    juce::String error;
    std::optional<Importer> importer;
    const auto seconds = secondsOf ([&] { importer.emplace (path, error, more...); });

    if (error.isNotEmpty())
        giveUp (path.toStdString() + " can't be read: " + error.toStdString());

    return { seconds, static_cast<long long> (importer->rows.size()) - titleRows };
}

WorkDone readCSV (const WorkOrder& order)
{
    return readWith<CSVEventFileImporter> (order.list ("list.csv"), 1);
}

WorkDone readSRT (const WorkOrder& order)
{
    return readWith<SRTEventFileImporter> (order.list ("list.srt"), 0);
}

WorkDone readEBU (const WorkOrder& order)
{
    return readWith<STLEventFileImporter> (order.list ("list.stl"), 0);
}

WorkDone readDBF (const WorkOrder& order)
{
    return readWith<DBFEventFileImporter> (order.list ("list.dbf"), 1);
}

WorkDone readXLSX (const WorkOrder& order)
{
    return readWith<ExcelEventFileImporter> (order.list ("list.xlsx"), 1);
}

WorkDone readTTAL (const WorkOrder& order)
{
    const auto time = std::make_shared<TimeInfo> (*TCToolbox::tcDefForRateName ("25"),
                                                  TCToolbox::tcTimeFromString ("00:00:00:00"));
    return readWith<TTALEventFileImporter> (order.list ("list.ttal"), 0, time);
}

constexpr Work works[] = { { "csv-in", readCSV }, { "srt-in", readSRT },   { "ebu-in", readEBU },
                           { "dbf-in", readDBF }, { "xlsx-in", readXLSX }, { "ttal-in", readTTAL } };

} // namespace

std::span<const Work> worksOfReading() { return works; }

} // namespace bench
