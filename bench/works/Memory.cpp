// SPDX-License-Identifier: GPL-3.0-only
// What a table and a list take, and where it goes.
#include "SeasonLists.h"
#include "Works.h"

#include "import/CSVEventFileImporter.h"
#include "list/ProjectFile.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <malloc.h>

#include <cmath>
#include <optional>

namespace bench
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

/** What is handed out at the moment, with what the heap itself adds to each block. */
double bytesInUse() { return static_cast<double> (::mallinfo2().uordblks + ::mallinfo2().hblkhd); }

double residentBytes()
{
    constexpr double kilobyte = 1024.0;
    return kilobyte * static_cast<double> (memoryInKiB ("VmRSS"));
}

/** How much more there is than when this was made. */
class Growth final
{
public:
    double inUse() const { return bytesInUse() - bytes; }
    double resident() const { return residentBytes() - pages; }

private:
    double bytes = bytesInUse();
    double pages = residentBytes();
};

double rounded (double value)
{
    constexpr double tenth = 10.0;
    return std::round (value * tenth) / tenth;
}

/** Figures in the order in which they are told. */
class Details final
{
public:
    void add (const char* name, double value) { object->setProperty (name, rounded (value)); }
    juce::var get() const { return object.get(); }

private:
    juce::DynamicObject::Ptr object { new juce::DynamicObject };
};

double bytesOfText (const RichTextString& text)
{
    return static_cast<double> (text.getText().getNumBytesAsUTF8());
}

WorkDone table (const WorkOrder& order)
{
    UserDefaultsRegistrar::registerUserDefaults();
    std::optional<CSVEventFileImporter> importer;
    juce::String error;
    const Growth growth;
    const auto seconds = secondsOf ([&] { importer.emplace (order.list ("list.csv"), error); });
    ::malloc_trim (0);
    const auto inUse = growth.inUse();
    const auto resident = growth.resident();
    double cells = 0;
    double text = 0;
    double runs = 0;

    for (const auto& row : importer->rows)
        for (const auto& cell : row)
        {
            ++cells;
            text += bytesOfText (cell);
            runs += cell.getNumAttributes();
        }

    Details details;
    details.add ("bytes of a cell, resident", resident / cells);
    details.add ("bytes of a cell, on the heap", inUse / cells);
    details.add ("  its text alone", text / cells);
    details.add ("  the cell itself, sizeof (RichTextString)", sizeof (RichTextString));
    details.add ("  runs of attributes of a cell", runs / cells);
    details.add ("  sizeof (RichTextString::Attribute)", sizeof (RichTextString::Attribute));
    details.add ("times the text, resident", resident / text);
    details.add ("times the text, on the heap", inUse / text);
    return { seconds, static_cast<long long> (importer->rows.size()) - 1, details.get() };
}

double bytesOfEvent (const Event& event)
{
    double bytes = bytesOfText (event.getText()) + bytesOfText (event.getNotes())
                   + bytesOfText (event.getEngineeringNotes());

    for (const auto* text : { &event.getCueNumber(), &event.getCharacterID(), &event.getUuid() })
        bytes += static_cast<double> (text->getNumBytesAsUTF8());

    return bytes;
}

/** What a list takes that has just been made, and is shown. */
template <typename Make>
WorkDone list (Make make)
{
    Project project;
    const Growth growth;
    const auto seconds = secondsOf (
        [&]
        {
            project = make();
            project.list->sortContentAndUpdateFilteredEvents();
        });
    ::malloc_trim (0);
    const auto inUse = growth.inUse();
    const auto resident = growth.resident();
    const auto& events = project.list->events;
    const auto number = static_cast<double> (events.size());
    double text = 0;
    double runs = 0;

    for (const auto& event : events)
    {
        text += bytesOfEvent (*event);
        runs += event->getText().getNumAttributes() + event->getNotes().getNumAttributes()
                + event->getEngineeringNotes().getNumAttributes();
    }

    Details details;
    details.add ("bytes of an event, resident", resident / number);
    details.add ("bytes of an event, on the heap", inUse / number);
    details.add ("  its texts and identifiers alone", text / number);
    details.add ("  the event itself, sizeof (Event)", sizeof (Event));
    details.add ("  of which three sizeof (RichTextString)", 3.0 * sizeof (RichTextString));
    details.add ("  runs of attributes of an event", runs / number);
    details.add ("  sizeof (RichTextString::Attribute)", sizeof (RichTextString::Attribute));
    details.add ("times the text, resident", resident / text);
    details.add ("times the text, on the heap", inUse / text);
    return { seconds, static_cast<long long> (events.size()) - 2, details.get() };
}

/** Its texts share the memory of the table's cells, so that what the table leaves is in pieces. */
WorkDone importedList (const WorkOrder& order)
{
    return list ([&] { return projectOfTable (order.list ("list.csv")); });
}

WorkDone openedList (const WorkOrder& order)
{
    UserDefaultsRegistrar::registerUserDefaults();
    return list (
        [&]
        {
            Project project;

            if (const auto error = ProjectFile::load (juce::File (order.list ("list.overmarks")), project);
                error.isNotEmpty())
                giveUp (error.toStdString());

            project.makeCurrent();
            return project;
        });
}

constexpr Work works[] = { { "memory.table", table },
                           { "memory.list", importedList },
                           { "memory.project", openedList } };

} // namespace

std::span<const Work> worksOfMemory() { return works; }

} // namespace bench
