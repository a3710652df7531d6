// SPDX-License-Identifier: GPL-3.0-only
// overmarks export and convert: documents of a list.
#include "DocumentBatch.h"
#include "DocumentOptions.h"
#include "FilterOptions.h"
#include "FormatLosses.h"
#include "ListSource.h"
#include "OptionValues.h"
#include "ProjectForm.h"
#include "StagingFolder.h"
#include "Suggestion.h"
#include "WrittenFiles.h"
#include "commands/Commands.h"

#include <algorithm>
#include <memory>
#include <utility>

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
    DocumentOptions documents;
};

struct ConvertOptions
{
    std::string list;
    std::string out;
    std::string format;
    ListOptions listOptions;
    DocumentOptions documents;
};

std::vector<const DocumentFormat*> formatsNamed (const std::vector<std::string>& names,
                                                 const DocumentOptions& documents)
{
    std::vector<const DocumentFormat*> formats;

    for (const auto& name : names)
        if (const auto* format = &documents.madeAs (documentFormat (name));
            std::find (formats.begin(), formats.end(), format) == formats.end())
            formats.push_back (format);

    return formats;
}

/** Documents that share an extension get their format's name into theirs. */
juce::String nameFor (const DocumentFormat& format, const std::vector<const DocumentFormat*>& all,
                      const juce::String& baseName)
{
    const auto sharing = std::count_if (all.begin(), all.end(),
                                        [&format] (const DocumentFormat* other)
                                        { return other->extension == format.extension; });
    return sharing > 1 ? baseName + " - " + juce::String (format.name) : baseName;
}

juce::String baseNameOf (const ExportOptions& options)
{
    if (options.baseName.find ('/') != std::string::npos || options.baseName.find ("..") != std::string::npos)
        throw WrongUsage (
            "--name: \"" + options.baseName
            + "\" would leave the folder; a name holds no \"/\" and no \"..\", -o names the folder");

    return options.baseName.empty() ? nameOfList (options.list) : juce::String (options.baseName);
}

void exportDocuments (const ExportOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    options.documents.check();
    const auto formats = formatsNamed (options.formats, options.documents);
    DocumentBatch batch (options.documents, fileFromPath (options.folder), options.list);

    for (const auto* format : formats)
        batch.add (*format, nameFor (*format, formats, baseNameOf (options)));

    options.documents.sayWhatIsUnused (formats, joined (options.formats), session);
    refuseFolderOf (fileFromPath (options.folder).getChildFile ("document"));
    const auto project = loadList (options.list, options.listOptions, session);
    options.filter.applyTo (project, session);
    sayWhatIsLost (formats, project, options.documents, session);
    tellOfFiles (batch.write (project, session), options.documents.policy.dryRun, session);
}

void convertToProject (const ConvertOptions& options, ProjectForm form, const juce::File& out,
                       Session& session)
{
    const bool isDryRun = options.documents.policy.dryRun;
    const auto project = loadList (options.list, options.listOptions, session);

    if (! isDryRun)
        writeProject (project, out, form);

    tellOfFiles ({ out }, isDryRun, session);
}

void convertToDocument (const ConvertOptions& options, const DocumentFormat& format, const juce::File& out,
                        Session& session)
{
    DocumentBatch batch (options.documents, out.getParentDirectory(), options.list);
    batch.add (format, out.getFileNameWithoutExtension(), out.getFileExtension());
    const auto project = loadList (options.list, options.listOptions, session);
    sayWhatIsLost ({ &format }, project, options.documents, session);
    tellOfFiles (batch.write (project, session), options.documents.policy.dryRun, session);
}

/** The format that --format or else the extension of OUT names. */
std::string formatNameOf (const ConvertOptions& options)
{
    if (options.out == "-")
        throw WrongUsage ("convert writes a file; overmarks dump writes JSON to standard output");

    const auto extension = fileFromPath (options.out).getFileExtension().toLowerCase().substring (1);

    if (options.format.empty() && extension.isEmpty())
        throw WrongUsage (options.out + " has no extension that tells its format; --format does");

    if (! options.format.empty())
        return options.format;

    for (const auto& format : documentFormats())
        if (juce::String (format.extension) == "." + extension && juce::String (format.name) == extension)
            return format.name;

    for (const auto& format : documentFormats())
        if (juce::String (format.extension) == "." + extension)
            throw WrongUsage (
                juce::String (options.out)
                + ": a file of this extension may be of any content; --format tells which (--format "
                + juce::String (format.name) + ")");

    return extension.toStdString();
}

void convertList (const ConvertOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    options.documents.check();
    const auto out = fileFromPath (options.out);
    const auto name = formatNameOf (options);

    const auto project = projectFormNamed (name);
    const auto* document =
        project.has_value() ? nullptr : &options.documents.madeAs (documentFormat (name, projectFormNames()));
    const auto formats =
        document == nullptr ? std::vector<const DocumentFormat*>() : std::vector { document };

    if (isTheList (out, options.list))
        throw CommandFailure (options.out + " is the list itself");

    if (! options.documents.byCharacter || document == nullptr || ! document->canBeByCharacter())
        refuseToReplace (out, options.documents.policy);

    refuseFolderOf (out);
    options.documents.sayWhatIsUnused (formats, name, session);

    if (project.has_value())
        convertToProject (options, *project, out, session);
    else
        convertToDocument (options, *document, out, session);
}

} // namespace

void addExportCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ExportOptions>();
    auto* command = program.add_subcommand ("export", "Write documents of a list into a folder");
    command->footer ("Example:\n  overmarks export film.overmarks -o . --format csv --by-character");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    command->add_option ("-o,--output", options->folder, "Folder of the documents")
        ->required()
        ->type_name ("FOLDER");
    takesSomeOf (command
                     ->add_option ("--format", options->formats,
                                   "Documents to write, such as csv; see overmarks formats")
                     ->required()
                     ->delimiter (','),
                 documentFormatNames(), "FORMAT");
    command->add_option ("--name", options->baseName, "Name of the files without extension (the list's name)")
        ->type_name ("BASE");
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
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    command->add_option ("OUT", options->out, "File to write; its extension tells the format")->required();
    auto formats = documentFormatNames();
    formats.insert (formats.end(), projectFormNames().begin(), projectFormNames().end());
    takesOneOf (
        command->add_option ("--format", options->format, "Format of OUT, where its extension doesn't tell"),
        formats)
        ->type_name ("FORMAT");
    options->documents.addTo (*command);
    options->listOptions.addTo (*command, "--input-format");
    session.addOutputOptions (*command);
    command->callback ([options, &session] { convertList (*options, session); });
}

} // namespace overmarks
