// SPDX-License-Identifier: GPL-3.0-only
#include "Arguments.h"

#include <algorithm>
#include <map>
#include <utility>

namespace DocxHandler
{

namespace
{

using Paths = std::vector<std::filesystem::path>;

std::vector<std::string> splitAtCommas (const std::string& list)
{
    std::vector<std::string> pieces (1);

    for (const auto c : list)
    {
        if (c == ',')
            pieces.emplace_back();
        else
            pieces.back() += c;
    }

    return pieces;
}

bool endsInOne (const std::string& path, const std::vector<std::string>& extensions)
{
    return std::any_of (extensions.begin(), extensions.end(),
                        [&path] (const std::string& extension) { return path.ends_with (extension); });
}

/* The value of each named part, "json" to what stands behind "json=". */
class NamedParts final
{
public:
    NamedParts (const std::vector<std::string>& words, const std::vector<std::string>& allowed)
    {
        for (std::size_t i = 1; i < words.size(); ++i)
            if (! words[i].empty()) // stands for a part with nothing in it
                add (words[i], allowed);
    }

    [[nodiscard]] bool has (const std::string& name) const { return values.contains (name); }

    [[nodiscard]] std::string value (const std::string& name) const
    {
        const auto found = values.find (name);
        return found == values.end() ? std::string() : found->second;
    }

private:
    void add (const std::string& word, const std::vector<std::string>& allowed)
    {
        const auto name = word.substr (0, word.find ('='));

        if (name.size() == word.size() || std::find (allowed.begin(), allowed.end(), name) == allowed.end())
            throw UsageError ("Not understood: " + word);

        if (! values.emplace (name, word.substr (name.size() + 1)).second)
            throw UsageError (name + "= is given twice");
    }

    std::map<std::string, std::string> values;
};

/* Whether a piece goes on with a path whose folder looks like the end of one. */
bool goesOn (const std::string& path, const std::string& piece, const std::vector<std::string>& extensions)
{
    return ! endsInOne (path, extensions) || piece.find ('/') != std::string::npos;
}

/* Each path of a list begins at the root, as those do that programs hand over. */
Paths splitAtRoots (const std::string& list, const std::vector<std::string>& extensions)
{
    Paths paths;
    std::string path;

    for (const auto& piece : splitAtCommas (list))
    {
        if (piece.starts_with ('/') && endsInOne (path, extensions))
            paths.emplace_back (std::exchange (path, {}));
        else if (! goesOn (path, piece, extensions))
            return {};

        path += (path.empty() ? "" : ",") + piece;
    }

    paths.emplace_back (path);
    return paths;
}

/* As many paths as wanted with as many commas in each, as files of one folder have them. Empty if that can't be. */
Paths splitEvenly (const std::string& list, const std::vector<std::string>& extensions, std::size_t wanted)
{
    const auto pieces = splitAtCommas (list);

    if (wanted == 0 || pieces.size() % wanted != 0)
        return {};

    Paths paths;

    for (std::size_t first = 0; first < pieces.size(); first += pieces.size() / wanted)
    {
        auto path = pieces[first];

        for (std::size_t i = 1; i < pieces.size() / wanted; ++i)
        {
            if (! goesOn (path, pieces[first + i], extensions))
                return {};

            path += "," + pieces[first + i];
        }

        if (! endsInOne (path, extensions))
            return {};

        paths.emplace_back (path);
    }

    return paths;
}

/* The paths that a list may mean, the likeliest first. A folder's name may look like the end of a path. */
std::vector<Paths> waysToSplit (const std::string& list, const std::vector<std::string>& extensions,
                                std::size_t wanted)
{
    std::vector<Paths> ways { splitPaths (list, extensions) };

    if (! list.empty())
    {
        ways.push_back (splitAtRoots (list, extensions));
        ways.push_back (splitEvenly (list, extensions, wanted));
    }

    return ways;
}

/* Sheets and their documents: there are as many of these as of those. */
void readPairs (Arguments& arguments, const std::string& json, const std::string& output)
{
    const std::vector<std::string> jsonExtensions { ".txt", ".json" };
    const std::vector<std::string> outputExtensions { ".docx" };
    arguments.json = splitPaths (json, jsonExtensions);
    arguments.output = splitPaths (output, outputExtensions);

    if (arguments.json.size() == 1 && arguments.output.size() > 1)
        arguments.output = { output };

    if (arguments.json.size() == arguments.output.size())
        return;

    for (const auto& sheets : waysToSplit (json, jsonExtensions, arguments.output.size()))
        for (const auto& documents : waysToSplit (output, outputExtensions, sheets.size()))
            if (! sheets.empty() && sheets.size() == documents.size())
            {
                arguments.json = sheets;
                arguments.output = documents;
                return;
            }
}

void readCommunicationFiles (Arguments& arguments, const NamedParts& parts)
{
    if (parts.value ("com").empty())
        return;

    const auto splits = waysToSplit (parts.value ("com"), { ".txt" }, 2);
    const auto pair =
        std::find_if (splits.begin(), splits.end(), [] (const Paths& paths) { return paths.size() == 2; });
    const auto files = pair == splits.end() ? Paths() : *pair;

    if (files.size() != 2)
        throw UsageError ("com= needs two files: the one that tells the progress and the one that cancels");

    arguments.progressFile = files[0];
    arguments.cancelFile = files[1];
}

Arguments exportArguments (const std::vector<std::string>& words)
{
    const NamedParts parts (words, { "json", "output", "com" });

    if (words.size() == 1)
        throw UsageError ("export needs json= and output=");

    Arguments arguments;
    arguments.mode = Mode::exportDocuments;
    readPairs (arguments, parts.value ("json"), parts.value ("output"));
    readCommunicationFiles (arguments, parts);

    if (arguments.json.size() != arguments.output.size())
        throw UsageError ("json= names " + std::to_string (arguments.json.size())
                          + " files, output= " + std::to_string (arguments.output.size()));

    return arguments;
}

Arguments importArguments (const std::vector<std::string>& words)
{
    const NamedParts parts (words, { "input", "json", "com" });

    Arguments arguments;
    arguments.mode = Mode::importDocument;
    arguments.input = parts.value ("input");
    readCommunicationFiles (arguments, parts);

    if (arguments.input.empty() || parts.value ("json").empty())
        throw UsageError ("import needs input= and json=");

    arguments.json = { parts.value ("json") };
    return arguments;
}

} // namespace

Paths splitPaths (const std::string& list, const std::vector<std::string>& extensions)
{
    if (list.empty())
        return {};

    const auto pieces = splitAtCommas (list);

    if (! endsInOne (pieces.back(), extensions))
        return { pieces.begin(), pieces.end() };

    Paths paths;
    std::string path;

    for (const auto& piece : pieces)
    {
        path += piece;

        if (endsInOne (piece, extensions))
            paths.emplace_back (std::exchange (path, {}));
        else
            path += ',';
    }

    return paths;
}

Arguments parseArguments (const std::vector<std::string>& words)
{
    const auto first = words.empty() ? std::string() : words.front();

    if (first == "--help" || first == "-h")
        return {};

    if (first == "--version")
        return { Mode::version, {}, {}, {}, {}, {} };

    if (first == "export")
        return exportArguments (words);

    if (first == "import")
        return importArguments (words);

    throw UsageError (first.empty() ? "Neither export nor import" : "Neither export nor import: " + first);
}

std::string helpText()
{
    return R"(docxHandler makes Word documents of cue sheets and reads them back.

    docxHandler export json=A.txt,B.txt output=A.docx,B.docx [com=PROGRESS.txt,CANCEL.txt]
    docxHandler import input=A.docx json=A.json [com=PROGRESS.txt,CANCEL.txt]
    docxHandler --help
    docxHandler --version

export reads each JSON file and writes its document in the place of the output with the same number.
import reads a document and writes its cues as JSON, on one line.

The first line of PROGRESS.txt is completionLevel=NN, 0 to 100; what went wrong stands behind "Error message = ".
As soon as CANCEL.txt holds the word "cancel" the program stops; documents that are finished by then stay.
The paper is A4 or Letter, as the locale (LC_PAPER) has it.

Exit status: 0 done, 1 failed, 2 wrong usage, 3 cancelled.
)";
}

} // namespace DocxHandler
