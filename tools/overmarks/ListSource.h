// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ListOptions.h"
#include "Session.h"
#include "SheetChoice.h"
#include "TrackChoice.h"

#include "import/frame/EventFileImporter.h"
#include "import/frame/EventRowProblem.h"
#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace overmarks
{

/** A file that an importer has read, with what it had to say. */
struct ReadFile
{
    std::shared_ptr<ZEP::Overmarks::EventFileImporter> importer;
    juce::String error;
    juce::String shownPath; ///< "-" for standard input
    std::optional<TrackReport>
        tracks {}; ///< of a Pro Tools session; nothing if its tracks were not asked for
    std::optional<SheetReport> sheets {}; ///< of a workbook
    std::vector<juce::String> missing {}; ///< what there is to say of columns that it doesn't have
};

/** What the importer said of its failure, with the list's name, once. */
juce::String failureInWords (const ReadFile& read);

/** Lets the importer of the file read it, in the encoding and with the columns that the options name.
    Throws CommandFailure if there is no such file or no importer for it; an importer's own failure is in `error`. */
ReadFile readCueList (const std::string& path, const ListOptions& options, const Session& session);

/** What a list can tell of its events: a project everything, a cue list what it has columns for. */
struct ListScope
{
    bool isProject = true;
    std::set<juce::String> columns {}; ///< titles of the columns that were read; of a cue list only

    bool has (const juce::String& columnTitle) const { return isProject || columns.count (columnTitle) > 0; }
};

/** Whether LIST is a project in one of its forms, and no cue list of another program. */
bool isProjectFile (const std::string& path, const ListOptions& options);

/** The project of LIST: a project in JSON, or any readable cue list. It is the current one afterwards, and sorted.
    Cells that can't be understood are reported. Throws CommandFailure.
    @param scope  unless null, set to what the list could tell */
ZEP::Overmarks::Project loadList (const std::string& path, const ListOptions& options, Session& session,
                                  ListScope* scope = nullptr);

/** A cell of a cue list that could not be taken over. */
struct CellProblem
{
    Problem problem;
    ZEP::Overmarks::EventRowProblemKind kind = ZEP::Overmarks::EventRowProblemKind::other;
    std::shared_ptr<ZEP::Overmarks::Event> event {}; ///< what the row has become; null for a whole file
};

/** The same, for a command with words of its own for cells that can't be understood: nothing is reported.
    @param cells  gets them, in the order of the file */
ZEP::Overmarks::Project loadList (const std::string& path, const ListOptions& options, Session& session,
                                  std::vector<CellProblem>& cells, ListScope* scope = nullptr);

/** Several cue lists as one project, in the order of time.
    @param scope  unless null, gets the columns that were read */
ZEP::Overmarks::Project loadCueLists (const std::vector<std::string>& paths, const ListOptions& options,
                                      Session& session, std::vector<Problem>& problems,
                                      ListScope* scope = nullptr);

/** Says which columns of a table nobody reads, and which ones a mapping wants in vain. */
void sayWhichColumns (const ReadFile& read, const Session& session);

/** Says which tracks of a Pro Tools session were read. */
void sayWhichTracks (const ReadFile& read, const Session& session);

/** The name of a list: that of its file, without folder and extension. */
juce::String nameOfList (const std::string& path);

} // namespace overmarks
