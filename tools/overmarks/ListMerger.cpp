// SPDX-License-Identifier: GPL-3.0-only
#include "ListMerger.h"

#include "import/CSVEventFileImporter.h"
#include "import/PTSessionInfoFileImporter.h"
#include "import/SRTEventFileImporter.h"

#include <cstddef>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

// Formats by their importers' number.
constexpr int delimitedText = 2;
constexpr int workbook = 6;

/** Delimited text and SubRip subtitles are cut at single bytes, which spoils text of two bytes a character. */
bool mayHaveLostRows (const EventFileImporter& importer)
{
    return importer.encoding == TextEncodingUTF16
           && (dynamic_cast<const CSVEventFileImporter*> (&importer) != nullptr
               || dynamic_cast<const SRTEventFileImporter*> (&importer) != nullptr);
}

std::size_t numberOfLostTracks (const EventFileImporter& importer)
{
    const auto* session = dynamic_cast<const PTSessionInfoFileImporter*> (&importer);
    return session != nullptr ? session->numberOfLostTracks() : 0;
}

} // namespace

bool hasDataRows (EventFileImporter& importer)
{
    return importer.rows.size() > static_cast<std::size_t> (EventRowReader::firstDataRow (importer));
}

ListMerger::ListMerger (Project& projectToFill, std::vector<CellProblem>& problemsToFill)
    : project (projectToFill),
      problems (problemsToFill)
{
}

void ListMerger::add (ReadFile& read, const ListOptions& options)
{
    EventRowReader::Options readerOptions;
    readerOptions.starsToLineBreaks = options.turnsStarsIntoLineBreaks();
    const auto result =
        EventRowReader (project.timeInfo, project.characters, readerOptions).readAndEmpty (*read.importer);
    addProblemsOfFile (read);
    addProblems (read, result);

    for (std::size_t i = 0; i < result.events.size(); ++i)
        addEvent (result.events[i], { read.shownPath, result.eventRows[i] + 1, {}, {} });
}

void ListMerger::addProblem (const ReadFile& read, const juce::String& message)
{
    problems.push_back ({ { read.shownPath, 0, {}, message } });
}

void ListMerger::addProblemsOfFile (const ReadFile& read)
{
    // Not every importer has words for a file that it can make nothing of. A table may have its titles alone.
    const bool mayHaveTitlesAlone =
        read.importer->type() == delimitedText || read.importer->type() == workbook;
    const bool mayBeEmpty = mayHaveTitlesAlone && ! read.importer->rows.empty();

    if (! hasDataRows (*read.importer) && ! mayBeEmpty)
        addProblem (read, "no cues were found in it");

    if (mayHaveLostRows (*read.importer))
        addProblem (read, "rows of a file in UTF-16 may be lost; save it as UTF-8");

    if (const auto number = numberOfLostTracks (*read.importer); number > 0)
        addProblem (read, number == 1 ? juce::String ("a track without two empty lines behind it is left out")
                                      : juce::String (number)
                                            + " tracks without two empty lines behind them are left out");
}

void ListMerger::addProblems (const ReadFile& read, const EventRowResult& result)
{
    std::size_t place = 0; // events stand in the order of their rows, and so do the problems

    for (const auto& problem : result.problems)
    {
        while (place < result.events.size() && result.eventRows[place] < problem.row)
            ++place;

        const bool isOfEvent = place < result.events.size() && result.eventRows[place] == problem.row;
        problems.push_back ({ { read.shownPath, problem.row + 1, problem.column, problem.message },
                              problem.kind,
                              isOfEvent ? result.events[place] : nullptr });
    }
}

void ListMerger::addEvent (const std::shared_ptr<Event>& event, Problem place)
{
    const bool isFadeIn = event->getType() == EventTypeFadeIn;

    if (! isFadeIn && event->getType() != EventTypeFadeOut)
    {
        project.list->addEvent (event, false);
        return;
    }

    auto& hasFade = isFadeIn ? hasFadeIn : hasFadeOut;

    if (hasFade)
    {
        place.message = "a list has only one " + event->typeString() + "; this one is left out";
        problems.push_back ({ place });
        return;
    }

    auto& fade = isFadeIn ? project.list->fadeInEvent : project.list->fadeOutEvent;
    project.list->removeEvent (fade, false);
    project.list->addEvent (event, false);
    fade = event;
    hasFade = true;
}

} // namespace overmarks
