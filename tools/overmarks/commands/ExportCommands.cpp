// SPDX-License-Identifier: GPL-3.0-only
// overmarks export and convert: documents of a list.
#include "DocumentOrder.h"
#include "FilterOptions.h"
#include "ListSource.h"
#include "commands/Commands.h"
#include "commands/ProjectOutput.h"

#include "list/ProjectJSON.h"

#include <algorithm>
#include <memory>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

struct ExportOptions
{
    std::string list;
    std::string folder;
    std::vector<std::string> formats;
    std::string baseName;
    ListOptions listOptions;
    FilterOptions filter;
    DocumentOrder documents;
};

struct ConvertOptions
{
    std::string list;
    std::string out;
    std::string format;
    ListOptions listOptions;
    DocumentOrder documents;
};

void tellOfFiles (const std::vector<juce::File>& files, bool isDryRun, Session& session)
{
    auto paths = json::array();

    for (const auto& file : files)
    {
        // An exporter may end well without a file, when a question was answered with no.
        if (! isDryRun && ! file.exists())
        {
            session.report ({ {}, 0, {}, file.getFullPathName() + " was not written" });
            continue;
        }

        session.say ((isDryRun ? "Would write " : "Wrote ") + file.getFullPathName());
        paths.push_back (file.getFullPathName().toStdString());
    }

    if (session.wantsJSON)
        session.data (json { { "files", std::move (paths) },
                             { "messages", json::array() },
                             { "problems", session.problemsAsJSON() } });
}

/** The documents that are asked for; those that share an extension get their format's name into theirs. */
struct Order
{
    const DocumentFormat* format;
    juce::String fileName;
};

std::vector<Order> ordersOf (const std::vector<std::string>& names, const juce::String& baseName)
{
    std::vector<Order> orders;

    for (const auto& name : names)
    {
        const auto& format = documentFormat (name);
        const bool isRepeated = std::any_of (orders.begin(), orders.end(),
                                             [&] (const Order& order) { return order.format == &format; });

        if (! isRepeated)
            orders.push_back ({ &format, baseName });
    }

    for (auto& order : orders)
    {
        const auto sharesExtension = std::count_if (
            orders.begin(), orders.end(),
            [&order] (const Order& other) { return other.format->extension == order.format->extension; });

        if (sharesExtension > 1)
            order.fileName = baseName + " - " + juce::String (order.format->name);
    }

    return orders;
}

void exportDocuments (const ExportOptions& options, Session& session)
{
    options.listOptions.applyToProcess();
    const auto orders =
        ordersOf (options.formats,
                  options.baseName.empty() ? nameOfList (options.list) : juce::String (options.baseName));
    const auto project = loadList (options.list, options.listOptions, session);
    options.filter.applyTo (*project.list);
    std::vector<juce::File> files;

    for (const auto& order : orders)
    {
        const auto written = options.documents.write (project, options.list, *order.format,
                                                      fileFromPath (options.folder), order.fileName);
        files.insert (files.end(), written.begin(), written.end());
    }

    tellOfFiles (files, options.documents.isDryRun(), session);
}

void convertToProject (const Project& project, const juce::File& out, const ConvertOptions& options,
                       Session& session)
{
    refuseToReplace (out, options.documents.outputPolicy());

    if (! options.documents.isDryRun())
        writeWholeFile (out, ProjectJSON::toText (project));

    tellOfFiles ({ out }, options.documents.isDryRun(), session);
}

void convertList (const ConvertOptions& options, Session& session)
{
    options.listOptions.applyToProcess();
    const auto out = fileFromPath (options.out);
    const auto format = options.format.empty()
                            ? out.getFileExtension().toLowerCase().substring (1).toStdString()
                            : options.format;

    if (format.empty())
        throw WrongUsage (options.out + " has no extension that tells its format; --format does");

    if (format == "overmarks")
        throw CommandFailure (options.out
                              + ": project files (.overmarks) can't be written yet; name the project .json");

    const auto* document = format == "json" ? nullptr : &documentFormat (format);

    if (document != nullptr && ! out.hasFileExtension (document->extension.c_str()))
        throw WrongUsage (options.out + ": a " + document->name + " document has the extension "
                          + document->extension);

    if (options.list != "-" && fileFromPath (options.list).getLinkedTarget() == out.getLinkedTarget())
        throw CommandFailure (options.out + " is the list itself");

    auto project = loadList (options.list, options.listOptions, session);

    if (document == nullptr)
        convertToProject (project, out, options, session);
    else
        tellOfFiles (options.documents.write (project, options.list, *document, out.getParentDirectory(),
                                              out.getFileNameWithoutExtension()),
                     options.documents.isDryRun(), session);
}

} // namespace

void addExportCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ExportOptions>();
    auto* command = program.add_subcommand ("export", "Write documents of a list into a folder");
    command->footer ("Example:\n  overmarks export film.json -o documents --format csv --by-character");
    command->add_option ("LIST", options->list, "Project in JSON or cue list")->required();
    command->add_option ("-o,--output", options->folder, "Folder of the documents")->required();
    command
        ->add_option ("--format", options->formats, "Documents to write, such as csv; see overmarks formats")
        ->required()
        ->delimiter (',');
    command->add_option ("--name", options->baseName,
                         "Name of the files without extension (the list's name)");
    options->filter.addTo (*command);
    options->documents.addTo (*command);
    options->listOptions.addTo (*command, "--input-format");
    session.addOutputOptions (*command);
    command->callback ([options, &session] { exportDocuments (*options, session); });
}

void addConvertCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ConvertOptions>();
    auto* command = program.add_subcommand ("convert", "Read a list and write it as another format");
    command->footer ("Example:\n  overmarks convert reel-2.csv reel-2.json --origin 02:00:00:00");
    command->add_option ("LIST", options->list, "Project in JSON or cue list")->required();
    command->add_option ("OUT", options->out, "File to write; its extension tells the format")->required();
    command->add_option ("--format", options->format, "Format of OUT, where its extension doesn't tell");
    options->documents.addTo (*command);
    options->listOptions.addTo (*command, "--input-format");
    session.addOutputOptions (*command);
    command->callback ([options, &session] { convertList (*options, session); });
}

} // namespace overmarks
