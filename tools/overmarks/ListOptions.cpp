// SPDX-License-Identifier: GPL-3.0-only
#include "ListOptions.h"

#include "OutputFile.h"
#include "Session.h"
#include "Suggestion.h"

#include "core/system/SystemUtility.h"
#include "core/system/UserDefaults.h"
#include "core/text/StringUtil.h"
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

    refuseValue ("--map", title, known);
}

/** Header and title of "HEADER=TITLE". */
std::pair<std::string, juce::String> assignment (const std::string& mapping)
{
    // A header may hold the sign itself, a title never does.
    const auto sign = mapping.rfind ('=');

    if (sign == std::string::npos || sign == 0)
        throw WrongUsage ("--map: \"" + mapping + "\" is not of the form HEADER=TITLE");

    return { mapping.substr (0, sign), columnTitle (mapping.substr (sign + 1)) };
}

/** What an option lists, without the blanks around each name. "\\," is a comma that belongs to a name. */
std::vector<juce::String> namesIn (const std::vector<std::string>& lists)
{
    std::vector<juce::String> names;

    for (const auto& list : lists)
    {
        std::string name;

        for (std::size_t i = 0; i <= list.size(); ++i)
        {
            if (i == list.size() || list[i] == ',')
            {
                names.push_back (StringUtil::fromUTF8 (name).trim());
                name.clear();
                continue;
            }

            if (list[i] == '\\' && i + 1 < list.size() && list[i + 1] == ',')
                ++i;

            name += list[i];
        }
    }

    return names;
}

} // namespace

std::string encodingName (TextEncoding encoding)
{
    for (const auto& [name, value] : encodings())
        if (value == encoding)
            return name;

    return {};
}

void ListOptions::addTimeOptions (CLI::App& command, const std::string& whose)
{
    command.add_option ("--" + whose + "fps", rate,
                        "Frame rate, such as 25 or 29.97df (the project's, else 25)");
    command.add_option ("--" + whose + "origin", origin,
                        "Timecode of frame 0 (the project's, else 00:00:00:00)");
    command.add_option ("--" + whose + "first-frame-of-action", firstFrameOfAction,
                        "Timecode of the first frame of action (the origin)");
}

void ListOptions::addImportOptions (CLI::App& command, const std::string& whose)
{
    const auto name = [&whose] (const char* option) { return "--" + whose + option; };
    importOptions.push_back (
        command.add_option (name ("encoding"), encodingName, "Encoding of the text (detected)"));
    importOptions.push_back (
        command
            .add_option (name ("map"), mappings,
                         "\"HEADER=TITLE\" uses a column for a title; #3 is the third column; repeatable")
            ->allow_extra_args (false));
    importOptions.push_back (
        command
            .add_option (
                name ("tracks"), trackNames,
                "Tracks of a Pro Tools text: all, cue or names joined by commas (cue); \\, is a comma of a name")
            ->allow_extra_args (false));
    importOptions.push_back (
        command.add_option (name ("sheet"), sheetName, "Sheet of a workbook (the one in front)"));
    importOptions.push_back (command.add_flag (name ("line-breaks"), lineBreaks,
                                               "Turn \"**\" of the imported text into line breaks"));
}

void ListOptions::addForOneOfTwoTo (CLI::App& command, const std::string& whose)
{
    addTimeOptions (command, whose + "-");
    addImportOptions (command, whose + "-");

    for (auto* option : command.get_options())
        if (option->get_single_name().starts_with (whose + "-"))
            option->group ("Only for " + juce::String (whose).toUpperCase().toStdString());
}

ListOptions ListOptions::over (const ListOptions& common) const
{
    auto both = common;

    for (const auto member : { &ListOptions::rate, &ListOptions::origin, &ListOptions::firstFrameOfAction,
                               &ListOptions::encodingName, &ListOptions::sheetName })
        if (! (this->*member).empty())
            both.*member = this->*member;

    if (! origin.empty() && firstFrameOfAction.empty())
        both.firstFrameOfAction.clear();

    for (const auto member : { &ListOptions::mappings, &ListOptions::trackNames })
        if (! (this->*member).empty())
            both.*member = this->*member;

    both.lineBreaks = both.lineBreaks || lineBreaks;
    both.importOptions.insert (both.importOptions.end(), importOptions.begin(), importOptions.end());
    return both;
}

void ListOptions::forgetImportOptions() { importOptions.clear(); }

void ListOptions::addProcessOptionsTo (CLI::App& command)
{
    command
        .add_option ("--reasons", reasonNames,
                     "Up to eight user reasons, joined by commas; an empty place has no name")
        ->allow_extra_args (false);
    command.add_option ("--application", application, "orvelle or dublane (dublane)");
    command.add_option ("--settings", settingsFile, "Preferences file");
    command.add_option ("--resources", resourceFolder, "Folder of the icons and tools");
}

void ListOptions::addTo (CLI::App& command, const std::string& nameOfInputFormat)
{
    addTimeOptions (command);
    addImportOptions (command);
    addProcessOptionsTo (command);
    inputFormatOption = nameOfInputFormat;
    command.add_option (inputFormatOption, inputFormat, "Format of the list on standard input, such as csv");
}

juce::File ListOptions::getSettingsFile() const { return fileFromPath (settingsFile); }

void ListOptions::checkNames() const
{
    if (! rate.empty() && ! TCToolbox::tcDefForRateName (rate).has_value())
        refuseValue ("--fps", rate, texts (TCToolbox::rateNames()));

    for (const auto& mapping : mappings)
        assignment (mapping);

    static_cast<void> (encoding());
    static_cast<void> (reasons());
    static_cast<void> (tracks());
}

void ListOptions::applyToProcess() const
{
    checkNames();
    ZEP::Overmarks::UserDefaultsRegistrar::registerUserDefaults();

    if (hasSettingsFile())
        if (const auto result = UserDefaults::setSettingsFile (getSettingsFile()); result.failed())
            throw CommandFailure (result.getErrorMessage());

    SystemUtility::Configuration configuration;

    if (application == "orvelle")
        configuration.applicationType = 0;
    else if (application != "dublane")
        refuseValue ("--application", application, { "orvelle", "dublane" });

    if (! resourceFolder.empty())
    {
        const auto folder = fileFromPath (resourceFolder);

        if (! folder.isDirectory())
            throw CommandFailure ("--resources: there is no folder " + folder.getFullPathName());

        configuration.resourcePath = folder.getFullPathName();
    }

    SystemUtility::configure (configuration);
}

std::shared_ptr<TimeInfo> ListOptions::timeInfo (const TimeInfo* project) const
{
    checkNames();

    if (project == nullptr)
        project = assumed.get();

    auto info = project != nullptr
                    ? timeInfoOfProject (*project)
                    : std::make_shared<TimeInfo> (*TCToolbox::tcDefForRateName (rate.empty() ? "25" : rate));

    if (! origin.empty()) // the first frame of action goes along
        info = std::make_shared<TimeInfo> (info->tcDef, timecode ("--origin", origin, info->tcDef));

    if (! firstFrameOfAction.empty())
        info->setFirstFrameOfAction (timecode ("--first-frame-of-action", firstFrameOfAction, info->tcDef));

    return info;
}

std::shared_ptr<TimeInfo> ListOptions::timeInfoOfProject (const TimeInfo& project) const
{
    auto info = std::make_shared<TimeInfo> (project);

    if (rate.empty())
        return info;

    info->tcDef = *TCToolbox::tcDefForRateName (rate);
    const auto check = [&] (const char* name, const char* option, const _TCTime& time)
    {
        if (! TCToolbox::existsUnder (time, info->tcDef))
            throw WrongUsage ("--fps: the project's " + juce::String (name) + " "
                              + TCToolbox::stringFromTCTime (time, project.tcDef.dropFrame)
                              + " doesn't exist at " + rate + " frames per second; " + option
                              + " names another");
    };

    if (origin.empty())
        check ("time origin", "--origin", project.timeOrigin);
    if (origin.empty() && firstFrameOfAction.empty())
        check ("first frame of action", "--first-frame-of-action", project.getFirstFrameOfAction());

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

    refuseValue ("--encoding", encodingName, known);
}

std::vector<juce::String> ListOptions::reasons() const
{
    auto names = namesIn (reasonNames);

    while (! names.empty() && names.back().isEmpty())
        names.pop_back();

    if (names.size() > mostUserReasons)
        throw WrongUsage ("--reasons: there are at most eight user reasons");

    return names;
}

void ListOptions::mapColumns (EventFileImporter& importer) const
{
    if (mappings.empty())
        return;

    if (! importer.userMappingEnabled())
        throw WrongUsage ("--map: the columns of this format are fixed");

    for (const auto& mapping : mappings)
    {
        const auto [header, title] = assignment (mapping);
        importer.columnMap[title] = columnIndex (importer, header);
    }
}

std::optional<std::vector<juce::String>> ListOptions::tracks() const
{
    auto names = namesIn (trackNames);

    if (names.empty() || names == std::vector<juce::String> { "cue" })
        return std::nullopt;

    const bool isMixed = std::any_of (names.begin(), names.end(),
                                      [] (const juce::String& name)
                                      { return name.isEmpty() || name == "all" || name == "cue"; });

    if (isMixed && (names.size() > 1 || names.front().isEmpty()))
        throw WrongUsage ("--tracks: it is either all or cue, or the names of tracks");

    if (isMixed)
        return std::vector<juce::String>();

    return names;
}

std::vector<std::string> ListOptions::givenImportOptions() const
{
    std::vector<std::string> given;

    for (const auto* option : importOptions)
        if (option->count() > 0)
            given.push_back (option->get_name());

    return given;
}

juce::String ListOptions::extensionOfStandardInput() const
{
    if (inputFormat.empty())
        throw WrongUsage ("A list on standard input needs its format, such as " + inputFormatOption + " csv");

    return "." + juce::String (inputFormat).trimCharactersAtStart (".").toLowerCase();
}

} // namespace overmarks
