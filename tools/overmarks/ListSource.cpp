// SPDX-License-Identifier: GPL-3.0-only
#include "ListSource.h"

#include "ListMerger.h"
#include "OutputFile.h"
#include "PrivateFolder.h"
#include "Progress.h"
#include "ProjectForm.h"
#include "StopSignals.h"
#include "ToolRun.h"
#include "columns/ColumnHeaders.h"

#include "core/system/Uninterrupted.h"
#include "core/text/StringUtil.h"
#include "export/word/DocxHandlerProtocol.h"
#include "import/DublaneDocxEventFileImporter.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "import/frame/ReadingFailure.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <iterator>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

constexpr auto standardInput = "-";

// Formats by their importers' number.
constexpr int proToolsText = 0;
constexpr int dBaseTable = 1;
constexpr int workbook = 6;
constexpr int ttal = 7;
constexpr int wordCueSheet = 8;

/** A list from standard input as a file that importers can read and nobody else; gone again at the end of the scope. */
class SpooledInput final
{
public:
    explicit SpooledInput (const juce::String& extension)
        : folder (usualTemporaryFolder(), "overmarks."),
          file (folder.get().getChildFile ("standard input" + extension))
    {
        juce::FileOutputStream stream (file);
        chmod (file.getFullPathName().toRawUTF8(), S_IRUSR | S_IWUSR);
        copyTo (stream);

        // A disk that takes only a part of it gives no reason.
        if (stream.getStatus().failed() || file.getSize() != length)
            throw CommandFailure (
                "Can't keep standard input in " + folder.get().getParentDirectory().getFullPathName() + ": "
                + (stream.getStatus().failed() ? stream.getStatus().getErrorMessage()
                                               : juce::String ("it didn't take everything")));
    }

    juce::File getFile() const { return file; }

private:
    void copyTo (juce::FileOutputStream& stream)
    {
        char buffer[65536];

        while (stream.getStatus().wasOk())
        {
            const auto read =
                uninterrupted ([&buffer] { return ::read (STDIN_FILENO, buffer, sizeof (buffer)); });

            if (read < 0)
                throw CommandFailure ("Can't read standard input: "
                                      + juce::String::fromUTF8 (std::strerror (errno)));
            if (read == 0)
                break;

            stream.write (buffer, static_cast<std::size_t> (read));
            length += read;
        }

        stream.flush();
    }

    PrivateFolder folder;
    juce::File file;
    juce::int64 length = 0;
};

/** With --json, whoever stops the reading gets an answer as for any other failure. */
class AnsweredStop final
{
public:
    explicit AnsweredStop (const Session& session)
    {
        if (! session.wantsJSON)
            return;

        const json document { { "error", "Stopped while the list was read" } };
        signals.emplace();
        answer.emplace (*signals, document.dump (1) + "\n");
    }

private:
    std::optional<StopSignals> signals;
    std::optional<StopSignals::Answer> answer;
};

juce::File existingFile (const std::string& path)
{
    const auto file = fileFromPath (path);

    if (! file.exists())
        throw CommandFailure ("There is no file " + file.getFullPathName());
    if (file.isDirectory())
        throw CommandFailure (file.getFullPathName() + " is a folder");

    return file;
}

/** Calls use (file, shown path) with the file of a path, or with standard input as a file. */
template <typename Use>
auto withFile (const std::string& path, const ListOptions& options, Use use)
{
    if (path != standardInput)
        return use (existingFile (path), juce::String (path));

    const SpooledInput input (options.extensionOfStandardInput());
    return use (input.getFile(), juce::String (standardInput));
}

/** Says which options make no difference to this list: a document that isn't what was asked for is noticed too late. */
void sayWhatIsUnused (const std::vector<std::string>& options, const juce::String& list,
                      const Session& session)
{
    for (const auto& option : options)
        session.say (list + ": " + juce::String (option) + " makes no difference to this list");
}

void sayWhatAFileDoesNotNeed (const std::string& path, const ListOptions& options, const Session& session)
{
    if (path != standardInput && options.hasInputFormat())
        sayWhatIsUnused ({ options.nameOfInputFormatOption() }, juce::String (path), session);
}

/** False for archives, whose text can be of one encoding only. */
bool hasTextOfAnyEncoding (EventFileImporter& importer)
{
    return importer.type() != workbook && importer.type() != wordCueSheet;
}

juce::String nameInSentence (const ReadFile& read)
{
    return read.shownPath == standardInput ? juce::String ("Standard input") : read.shownPath;
}

/** Puts the tool's message into words that name the list as the user does, and no file that is gone by then. */
void clarify (ReadFile& read, ToolRun& tool)
{
    const juce::File file (read.importer->filePath);
    tool.leaveOut (read.error);

    if (const auto name = file.getFileName() + " "; read.error.startsWith (name))
        read.error = nameInSentence (read) + " " + read.error.substring (name.length());

    if (read.shownPath == standardInput)
        read.error = read.error.replace (file.getFullPathName(), "standard input");

    read.error = tool.withoutOwnFolder (read.error);
}

/** A broken list of cues has no message of its own, and would pass for an empty one. */
void refuseBrokenCues (const ReadFile& read)
{
    const auto* sheet = dynamic_cast<const DublaneDocxEventFileImporter*> (read.importer.get());

    if (sheet == nullptr || read.error.isNotEmpty())
        return;

    switch (sheet->outcome)
    {
        case DocxCueList::Outcome::whole: return;
        case DocxCueList::Outcome::noCueList:
            throw CommandFailure (read.shownPath + ": What docxHandler has found in it is no list of cues");
        case DocxCueList::Outcome::cutOff:
            throw CommandFailure (read.shownPath + ": " + sheet->refusal.substring (0, 1).toUpperCase()
                                  + sheet->refusal.substring (1));
    }
}

/** Reads a Word document with the help of docxHandler. Throws CommandFailure where the importer has no more to say than that it
    could not be read. */
void readWithTool (ReadFile& read, const std::function<void()>& load)
{
    ToolRun tool;
    tool.whileItWorks ([] { DocxHandlerProtocol::writeCancel (DocxHandlerProtocol::cancelFilePath()); },
                       load);
    tool.throwIfStopped (read.shownPath + " was not read");

    const bool gaveNoAnswer = read.error == "Error reading " + read.importer->filePath;
    clarify (read, tool);

    if (gaveNoAnswer)
        throw CommandFailure (
            read.shownPath + ": " + read.error + ": "
            + (tool.hasRoom() ? juce::String ("docxHandler broke off")
                              : "the temporary folder "
                                    + tool.getFolder().getParentDirectory().getFullPathName() + " is full"));

    tool.leaveOut (read.importer->filePath + ": what docxHandler has found in it is no list of cues");

    if (const auto* sheet = dynamic_cast<const DublaneDocxEventFileImporter*> (read.importer.get()))
        tool.leaveOut (read.importer->filePath + ": " + sheet->refusal + sheet->restIsLeftOut);

    refuseBrokenCues (read);
}

/** Not every importer has words for a file that can't be read, and an empty list would take a project's place. */
void refuseUnreadable (const ReadFile& read)
{
    const auto* unread = dynamic_cast<const ReadingFailure*> (read.importer.get());

    if (read.error.isEmpty() && unread != nullptr && unread->readingFailure.isNotEmpty())
        throw CommandFailure (read.shownPath + ": " + unread->readingFailure);
}

ReadFile readFile (const juce::File& file, const juce::String& shownPath, const ListOptions& options)
{
    ReadFile read;
    read.shownPath = shownPath;
    const TrackChoice tracks (options.tracks());
    const auto load = [&]
    {
        read.importer = EventFileImporterFactory::fileImporterWithFilepath (
            file.getFullPathName(), read.error, options.reasons(), options.timeInfo (nullptr));
    };

    if (file.hasFileExtension ("docx"))
        readWithTool (read, load);
    else
        load();

    if (read.importer == nullptr)
        throw CommandFailure (
            read.error.isNotEmpty()
                ? shownPath + ": " + read.error
                : shownPath + ": no cue list format has the extension \"" + file.getFileExtension() + "\""
                      + (projectFormNamed (file.getFileExtension().substring (1)).has_value()
                             ? "; overmarks load reads a project"
                             : ""));

    refuseUnreadable (read);
    read.tracks = tracks.report();
    if (read.tracks.has_value())
        read.tracks->list = shownPath;

    read.sheets = readWantedSheet (*read.importer, options.optionName ("sheet"), options.sheet(), read.error);

    if (const auto encoding = options.encoding();
        encoding != TextEncodingUnknown && hasTextOfAnyEncoding (*read.importer))
    {
        read.error.clear();
        read.importer->rows.clear(); // an importer may add to them
        read.importer->parse (read.error, encoding);
        refuseUnreadable (read);
    }

    if (read.error.isEmpty())
    {
        read.missing = options.mapColumns (*read.importer);

        if (! options.hasMapping())
            EventRowReader::adoptOwnTableColumns (read.importer->rows, read.importer->columnMap);
    }

    return read;
}

/** The importer of dBase tables knows two columns of every table: one of its own, and one for the cue number. */
void refuseUnknownFields (const ReadFile& read)
{
    const auto& columns = read.importer->columnMap;
    const bool isKnown = std::any_of (columns.begin(), columns.end(),
                                      [] (const auto& column) {
                                          return column.second >= 0 && column.first != "Event Type"
                                                 && column.first != "Cue Number";
                                      });

    if (hasDataRows (*read.importer) && ! isKnown)
        throw CommandFailure (read.shownPath
                              + ": no field has a name that is known for a time or a text; --map "
                                "\"HEADER=TITLE\" tells what a field holds");
}

/** A table of which nothing is known would become an empty list without a word. */
void refuseUnknownTable (const ReadFile& read, const ListOptions& options)
{
    if (read.importer->type() == dBaseTable && ! options.hasMapping())
        refuseUnknownFields (read);

    const auto& columns = read.importer->columnMap;
    const bool isKnown =
        std::any_of (columns.begin(), columns.end(), [] (const auto& column) { return column.second >= 0; });

    if (read.importer->userMappingEnabled() && ! read.importer->rows.empty() && ! isKnown)
        throw CommandFailure (
            read.shownPath
            + ": no column has a title that is known; --map \"HEADER=TITLE\" tells what a column holds");
}

/** Says how the file was read, and which columns nobody reads. */
void sayHowItWasRead (const ReadFile& read, const Session& session)
{
    if (read.sheets.has_value())
        session.say (read.shownPath + ": " + read.sheets->words());
    else if (const auto name = encodingName (read.importer->encoding);
             ! name.empty() && read.importer->type() != wordCueSheet)
        session.say (read.shownPath + ": read as " + name);

    sayWhichTracks (read, session);
    sayWhichColumns (read, session);
}

Project loadProject (const juce::File& file, const juce::String& shownPath, ProjectForm form,
                     const ListOptions& options)
{
    auto project = readProject (file, shownPath, form);
    project.timeInfo = options.timeInfo (project.timeInfo.get());
    project.list->setTimeInfoForAllEvents (project.timeInfo);

    if (const auto reasons = options.reasons(); ! reasons.empty())
        project.userReasons = reasons;

    return project;
}

/** A name of --tracks has to be found in one of the files. */
void checkTrackNames (const std::vector<TrackReport>& sessions, const ListOptions& options,
                      const Session& session)
{
    refuseMissingTracks (options.optionName ("tracks"), sessions);

    for (const auto& report : sessions)
        for (const auto& name : report.missing)
            session.say (report.list + ": there is no track \"" + name + "\" in it");
}

void noteColumns (const EventFileImporter& importer, ListScope& scope)
{
    scope.isProject = false;

    for (const auto& [title, column] : importer.columnMap)
        if (column >= 0)
            scope.columns.insert (title);
}

Project mergedLists (const std::vector<std::string>& paths, const ListOptions& options, Session& session,
                     std::vector<CellProblem>& problems, ListScope* scope)
{
    if (std::count (paths.begin(), paths.end(), standardInput) > 1)
        throw WrongUsage ("Standard input can be read only once");

    auto project = Project::createEmpty (options.timeInfo (nullptr));
    project.name = nameOfList (paths.front());
    project.userReasons = options.reasons();
    project.makeCurrent();
    ListMerger merger (project, problems);
    std::vector<TrackReport> sessions;
    constexpr int stepsOfAFile = 2;
    Progress progress (session, "Reading", stepsOfAFile * static_cast<int> (paths.size()),
                       { "files", stepsOfAFile });

    for (std::size_t i = 0; i < paths.size(); ++i)
    {
        auto read = readCueList (paths[i], options, session);

        if (read.error.isNotEmpty())
            throw CommandFailure (failureInWords (read));

        if (read.tracks.has_value())
            sessions.push_back (*read.tracks);

        refuseUnknownTable (read, options);

        if (scope != nullptr)
            noteColumns (*read.importer, *scope);

        // What needs the cells comes before they become events.
        progress.hide();
        sayHowItWasRead (read, session);
        progress.reached (stepsOfAFile * static_cast<int> (i) + 1);
        merger.add (read, options);
        progress.reached (stepsOfAFile * static_cast<int> (i + 1));
    }

    Session::keep (project.list);
    checkTrackNames (sessions, options, session);
    options.saveMapping (session);
    project.list->sortContentAndUpdateFilteredEvents();
    return project;
}

juce::String extensionOf (const std::string& path, const ListOptions& options)
{
    return (path == standardInput ? options.extensionOfStandardInput()
                                  : fileFromPath (path).getFileExtension())
        .toLowerCase();
}

} // namespace

juce::String failureInWords (const ReadFile& read)
{
    return read.error.startsWith (nameInSentence (read) + " ") ? read.error
                                                               : read.shownPath + ": " + read.error;
}

juce::String nameOfList (const std::string& path)
{
    return path == standardInput ? juce::String ("Untitled")
                                 : fileFromPath (path).getFileNameWithoutExtension();
}

void sayWhichTracks (const ReadFile& read, const Session& session)
{
    if (read.tracks.has_value())
        session.say (read.tracks->list + ": " + read.tracks->inWords());
}

void sayWhichColumns (const ReadFile& read, const Session& session)
{
    for (const auto& line : read.missing)
        session.say (read.shownPath + ": " + line);

    for (const auto& line : unusedColumns (*read.importer))
        session.say (read.shownPath + ": " + line);
}

ReadFile readCueList (const std::string& path, const ListOptions& options, const Session& session)
{
    const AnsweredStop stop (session);
    sayWhatAFileDoesNotNeed (path, options, session);
    auto read = withFile (path, options,
                          [&options] (const juce::File& file, const juce::String& shownPath)
                          { return readFile (file, shownPath, options); });

    if (options.hasTracks() && read.importer->type() != proToolsText)
        sayWhatIsUnused ({ options.optionName ("tracks") }, read.shownPath, session);

    if (! options.sheet().empty() && read.importer->type() != workbook)
        sayWhatIsUnused ({ options.optionName ("sheet") }, read.shownPath, session);

    if (options.encoding() != TextEncodingUnknown
        && (read.importer->type() == ttal || ! hasTextOfAnyEncoding (*read.importer)))
        sayWhatIsUnused ({ options.optionName ("encoding") }, read.shownPath, session);

    return read;
}

bool isProjectFile (const std::string& path, const ListOptions& options)
{
    return projectFormNamed (extensionOf (path, options).substring (1)).has_value();
}

Project loadCueLists (const std::vector<std::string>& paths, const ListOptions& options, Session& session,
                      std::vector<Problem>& problems, ListScope* scope)
{
    const AnsweredStop stop (session);
    std::vector<CellProblem> cells;
    auto project = mergedLists (paths, options, session, cells, scope);

    for (const auto& cell : cells)
        problems.push_back (cell.problem);

    return project;
}

Project loadList (const std::string& path, const ListOptions& options, Session& session, ListScope* scope)
{
    std::vector<CellProblem> cells;
    auto project = loadList (path, options, session, cells, scope);

    for (const auto& cell : cells)
        session.report (cell.problem);

    return project;
}

Project loadList (const std::string& path, const ListOptions& options, Session& session,
                  std::vector<CellProblem>& cells, ListScope* scope)
{
    const AnsweredStop stop (session);
    const auto form = projectFormNamed (extensionOf (path, options).substring (1));

    if (! form.has_value())
        return mergedLists ({ path }, options, session, cells, scope);

    sayWhatAFileDoesNotNeed (path, options, session);
    sayWhatIsUnused (options.givenImportOptions(), juce::String (path), session);
    auto project = withFile (path, options,
                             [&] (const juce::File& file, const juce::String& shownPath)
                             { return loadProject (file, shownPath, *form, options); });
    Session::keep (project.list);
    project.makeCurrent();
    project.list->sortContentAndUpdateFilteredEvents();
    return project;
}

} // namespace overmarks
