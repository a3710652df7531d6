// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ListSource.h"

#include "import/frame/EventRowReader.h"
#include "list/Project.h"

#include <vector>

namespace overmarks
{

/** Puts cue lists' events into a project. A fade of a file takes the place of the project's own. */
class ListMerger final
{
public:
    /** Both must outlive this. @param problemsToFill  gets what can't be taken over, in the order of the files */
    ListMerger (ZEP::Overmarks::Project& projectToFill, std::vector<CellProblem>& problemsToFill);

    /** Empties the rows of the file: what needs their cells comes before. */
    void add (ReadFile& read, const ListOptions& options);

private:
    void addProblem (const ReadFile& read, const juce::String& message);
    void addProblems (const ReadFile& read, const ZEP::Overmarks::EventRowResult& result);
    void addProblemsOfFile (const ReadFile& read);
    void addEvent (const std::shared_ptr<ZEP::Overmarks::Event>& event, Problem place);

    ZEP::Overmarks::Project& project;
    std::vector<CellProblem>& problems;
    bool hasFadeIn = false;
    bool hasFadeOut = false;
};

/** Whether the importer has rows of cues, or at least could have. */
bool hasDataRows (ZEP::Overmarks::EventFileImporter& importer);

} // namespace overmarks
