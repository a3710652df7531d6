// SPDX-License-Identifier: GPL-3.0-only
#include "ReportFiles.h"

#include "StagingFolder.h"

#include "export/frame/CSVCells.h"

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

void checkTarget (const std::string& option, const std::string& path, const std::vector<std::string>& sources,
                  const OutputPolicy& policy)
{
    if (path == "-")
        throw WrongUsage (option + " names a file; standard output is for the table and for --json");

    const auto file = fileFromPath (path);

    if (file.getFileName().isEmpty())
        throw WrongUsage (option + ": there is no name of a file");

    for (const auto& source : sources)
        if (isTheList (file, source))
            throw CommandFailure (path + " is the list itself");

    refuseFolderOf (file);
    refuseToReplace (file, policy);
}

void appendRow (std::string& text, const std::vector<juce::String>& cells)
{
    const CSVTextRule quotesDoubled { CSVQuotes::doubled, CSVBreaks::kept, false };
    CSVCells writer (text, ",");

    for (const auto& cell : cells)
        writer.quoted (utf8 (cell), quotesDoubled);

    if (! cells.empty())
        text.pop_back(); // the comma behind the last cell

    text += "\r\n";
}

} // namespace

void ReportFiles::addTo (CLI::App& command, const std::string& contents)
{
    const auto hasName = [] (const std::string& path)
    { return path.empty() ? std::string ("there is no name of a file") : std::string(); };
    command.add_option ("--html", htmlPath, "Also write " + contents + " as a page to read, print or send")
        ->check (hasName, {})
        ->type_name ("FILE");
    command.add_option ("--csv", csvPath, "Also write " + contents + " as comma-separated text")
        ->check (hasName, {})
        ->type_name ("FILE");
    command.add_flag ("--force", policy.force, "Replace existing files");
    command.add_flag ("--dry-run", policy.dryRun, "Only say which files would be written");
}

std::vector<std::string> ReportFiles::paths() const
{
    std::vector<std::string> wanted;

    for (const auto& path : { htmlPath, csvPath })
        if (! path.empty())
            wanted.push_back (path);

    return wanted;
}

void ReportFiles::check (const std::vector<std::string>& sources) const
{
    if (wantsHTML())
        checkTarget ("--html", htmlPath, sources, policy);
    if (wantsCSV())
        checkTarget ("--csv", csvPath, sources, policy);

    if (wantsHTML() && wantsCSV() && isSameFile (fileFromPath (htmlPath), fileFromPath (csvPath))
        && ! isDeviceOrPipe (fileFromPath (htmlPath)))
        throw WrongUsage ("--html and --csv name the same file");
}

void ReportFiles::write (const Session& session, const std::function<HTMLPage()>& makePage,
                         const std::function<std::string()>& makeCSV) const
{
    if (! policy.dryRun && wantsHTML())
        makePage().write (fileFromPath (htmlPath));
    if (! policy.dryRun && wantsCSV())
        writeWholeFile (fileFromPath (csvPath), makeCSV());

    for (const auto& path : paths())
        session.say ((policy.dryRun ? "Would write " : "Wrote ") + fileFromPath (path).getFullPathName());
}

json ReportFiles::pathsAsJSON() const
{
    auto list = json::array();

    for (const auto& path : paths())
        list.push_back (fileFromPath (path).getFullPathName().toStdString());

    return list;
}

json ReportFiles::asMembers() const
{
    auto members = json::object();

    if (! paths().empty())
        members["files"] = pathsAsJSON();
    if (policy.dryRun)
        members["dryRun"] = true;

    return members;
}

std::string csvText (const std::vector<juce::String>& columns,
                     const std::vector<std::vector<juce::String>>& rows)
{
    std::string text ("\xef\xbb\xbf");
    appendRow (text, columns);

    for (const auto& row : rows)
        appendRow (text, row);

    return text;
}

} // namespace overmarks
