// SPDX-License-Identifier: GPL-3.0-only
#include "ListOptions.h"

#include "OutputFile.h"
#include "Session.h"
#include "Suggestion.h"

#include "core/system/SystemUtility.h"
#include "core/system/UserDefaults.h"
#include "core/timecode/TCToolbox.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using ZEP::Overmarks::EventFileImporter;

namespace
{

constexpr std::size_t mostUserReasons = 8;

const std::vector<std::pair<std::string, TextEncoding>>& encodings()
{
    static const std::vector<std::pair<std::string, TextEncoding>> names {
        { "ascii", TextEncodingASCII },
        { "utf-8", TextEncodingUTF8 },
        { "utf-16", TextEncodingUTF16 },
        { "mac-roman", TextEncodingMacOSRoman },
        { "windows-1252", TextEncodingWindows1252 },
        { "latin-1", TextEncodingLatin1 },
    };
    return names;
}

[[noreturn]] void refuse (const std::string& option, const std::string& value,
                          const std::vector<std::string>& known)
{
    std::string choices;

    for (const auto& choice : known)
        choices += (choices.empty() ? "" : ", ") + choice;

    throw WrongUsage (option + ": \"" + value + "\" is none of " + choices + "." + didYouMean (value, known));
}

std::vector<std::string> texts (const std::vector<juce::String>& strings)
{
    std::vector<std::string> result;

    for (const auto& string : strings)
        result.push_back (string.toStdString());

    return result;
}

_TCTime timecode (const std::string& option, const std::string& text, const _TCDef& def)
{
    const auto time = TCToolbox::tcTimeFromString (text);

    if (time.invalid)
        throw WrongUsage (option + ": \"" + text + "\" is no timecode such as 01:00:00:00");

    if (! TCToolbox::existsUnder (time, def))
        throw WrongUsage (option + ": there is no " + text + " at "
                          + TCToolbox::rateNameForTCDef (def).toStdString() + " frames per second");

    return time;
}

/** Index of the column that is meant by a header, or by #3 counted from 1. */
int columnIndex (const EventFileImporter& importer, const std::string& header)
{
    const int columns = importer.rows.empty() ? 0 : static_cast<int> (importer.rows.front().size());

    if (header.size() > 1 && header.front() == '#'
        && juce::String (header.substr (1)).containsOnly ("0123456789"))
    {
        const int number = juce::String (header.substr (1)).getIntValue();

        if (number < 1 || number > columns)
            throw WrongUsage ("--map: there is no column " + header + "; the file has "
                              + std::to_string (columns));

        return number - 1;
    }

    std::vector<std::string> headers;

    for (int i = 0; i < columns; ++i)
    {
        headers.push_back (importer.rows.front()[static_cast<std::size_t> (i)].getText().toStdString());

        if (juce::String (headers.back()).trim().equalsIgnoreCase (juce::String (header).trim()))
            return i;
    }

    throw WrongUsage ("--map: the file has no column \"" + header + "\"." + didYouMean (header, headers));
}

juce::String columnTitle (const std::string& title)
{
    // The first title stands for a column that isn't used.
    const auto all = texts (EventFileImporter::columnTitles());
    const std::vector<std::string> known (all.begin() + 1, all.end());

    for (const auto& candidate : known)
        if (juce::String (candidate).equalsIgnoreCase (juce::String (title).trim()))
            return candidate;

    refuse ("--map", title, known);
}

} // namespace

std::string encodingName (TextEncoding encoding)
{
    for (const auto& [name, value] : encodings())
        if (value == encoding)
            return name;

    return {};
}

void ListOptions::addTimeOptions (CLI::App& command)
{
    command.add_option ("--fps", rate, "Frame rate, such as 25 or 29.97df (the project's, else 25)");
    command.add_option ("--origin", origin, "Timecode of frame 0 (the project's, else 00:00:00:00)");
    command.add_option ("--first-frame-of-action", firstFrameOfAction,
                        "Timecode of the first frame of action (the origin)");
}

void ListOptions::addTo (CLI::App& command, const std::string& inputFormatOption)
{
    addTimeOptions (command);
    command.add_option ("--encoding", encodingName, "Encoding of the text (detected)");
    command
        .add_option ("--map", mappings,
                     "\"HEADER=TITLE\" uses a column for a title; #3 is the third column; repeatable")
        ->allow_extra_args (false);
    command.add_option ("--reasons", reasonNames, "Up to eight user reasons, joined by commas")
        ->allow_extra_args (false)
        ->delimiter (',');
    command.add_option ("--application", application, "orvelle or dublane (dublane)");
    command.add_flag ("--line-breaks", lineBreaks, "Turn \"**\" of the imported text into line breaks");
    command.add_option ("--settings", settingsFile, "Preferences file");
    command.add_option ("--resources", resourceFolder, "Folder of the icons and tools");
    command.add_option (inputFormatOption, inputFormat, "Format of the list on standard input, such as csv");
}

void ListOptions::applyToProcess() const
{
    ZEP::Overmarks::UserDefaultsRegistrar::registerUserDefaults();

    if (! settingsFile.empty())
    {
        const auto file = fileFromPath (settingsFile);

        if (const auto result = UserDefaults::setSettingsFile (file); result.failed())
            throw CommandFailure (result.getErrorMessage());
    }

    SystemUtility::Configuration configuration;

    if (application == "orvelle")
        configuration.applicationType = 0;
    else if (application != "dublane")
        refuse ("--application", application, { "orvelle", "dublane" });

    if (! resourceFolder.empty())
        configuration.resourcePath = fileFromPath (resourceFolder).getFullPathName();

    SystemUtility::configure (configuration);
}

std::shared_ptr<TimeInfo> ListOptions::timeInfo (const TimeInfo* project) const
{
    const auto given = TCToolbox::tcDefForRateName (rate.empty() ? "25" : rate);

    if (! given.has_value())
        refuse ("--fps", rate, texts (TCToolbox::rateNames()));

    const auto def = rate.empty() && project != nullptr ? project->tcDef : *given;
    auto info = std::make_shared<TimeInfo> (def, ! origin.empty()     ? timecode ("--origin", origin, def)
                                                 : project != nullptr ? project->timeOrigin
                                                                      : _TCTime());

    if (! firstFrameOfAction.empty())
        info->setFirstFrameOfAction (timecode ("--first-frame-of-action", firstFrameOfAction, def));
    else if (project != nullptr && origin.empty())
        info->setFirstFrameOfAction (project->getFirstFrameOfAction());

    return info;
}

TextEncoding ListOptions::encoding() const
{
    if (encodingName.empty())
        return TextEncodingUnknown;

    std::vector<std::string> known;

    for (const auto& [name, value] : encodings())
    {
        known.push_back (name);

        if (juce::String (name).equalsIgnoreCase (juce::String (encodingName)))
            return value;
    }

    refuse ("--encoding", encodingName, known);
}

std::vector<juce::String> ListOptions::reasons() const
{
    if (reasonNames.size() > mostUserReasons)
        throw WrongUsage ("--reasons: there are at most eight user reasons");

    return { reasonNames.begin(), reasonNames.end() };
}

void ListOptions::mapColumns (EventFileImporter& importer) const
{
    if (mappings.empty())
        return;

    if (! importer.userMappingEnabled())
        throw WrongUsage ("--map: the columns of this format are fixed");

    for (const auto& mapping : mappings)
    {
        // A header may hold the sign itself, a title never does.
        const auto sign = mapping.rfind ('=');

        if (sign == std::string::npos || sign == 0)
            throw WrongUsage ("--map: \"" + mapping + "\" is not of the form HEADER=TITLE");

        importer.columnMap[columnTitle (mapping.substr (sign + 1))] =
            columnIndex (importer, mapping.substr (0, sign));
    }
}

juce::String ListOptions::extensionOfStandardInput() const
{
    if (inputFormat.empty())
        throw WrongUsage ("A list on standard input needs its format, such as --format csv");

    return "." + juce::String (inputFormat).trimCharactersAtStart (".").toLowerCase();
}

} // namespace overmarks
