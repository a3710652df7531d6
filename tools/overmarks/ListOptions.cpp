// SPDX-License-Identifier: GPL-3.0-only
#include "ListOptions.h"

#include "OptionValues.h"
#include "OutputFile.h"
#include "ProjectForm.h"
#include "Session.h"
#include "Suggestion.h"

#include "core/system/MissingFile.h"
#include "core/system/SystemUtility.h"
#include "core/system/UserDefaults.h"
#include "core/text/StringUtil.h"
#include "core/timecode/TCToolbox.h"
#include "import/frame/EventFileImporterFactory.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;

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

/** What a list on standard input may be, by the extensions without their dots. */
std::vector<std::string> inputFormats()
{
    std::vector<std::string> names;

    for (const auto& format : ZEP::Overmarks::EventFileImporterFactory::formats())
        for (const auto& extension : format.extensions)
            names.push_back (extension.substring (1).toStdString());

    const auto& forms = projectFormNames();
    names.insert (names.end(), forms.begin(), forms.end());
    return names;
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

bool isOneOf (const std::vector<std::string>& words, const std::string& word)
{
    return std::find (words.begin(), words.end(), word) != words.end();
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
    const auto name = [this] (const char* option) { return "--" + whose + option; };
    takesOneOf (
        command.add_option (name ("fps"), rate, "Frame rate, such as 25 or 29.97df (the project's, else 25)"),
        texts (TCToolbox::rateNames()))
        ->type_name ("RATE");
    command.add_option (name ("origin"), origin, "Timecode of frame 0 (the project's, else 00:00:00:00)")
        ->type_name ("TC");
    command
        .add_option (name ("first-frame-of-action"), firstFrameOfAction,
                     "Timecode of the first frame of action (the origin)")
        ->type_name ("TC");
}

void ListOptions::addImportOptions (CLI::App& command)
{
    const auto name = [this] (const char* option) { return "--" + whose + option; };
    auto* encodingOption =
        command.add_option (name ("encoding"), encodingName, "Encoding of the text (detected)");
    takesOneOf (encodingOption, namesOfTable (encodings()))->type_name ("NAME");

    auto* map = command.add_option (name ("map"), mappings,
                                    "Use a column for a title; #3 is the third column; repeatable");
    map->allow_extra_args (false)->type_name ("HEADER=TITLE");

    auto* tracksOption = command.add_option (
        name ("tracks"), trackNames,
        "Tracks of a Pro Tools text: all, cue or names joined by commas (cue); \\, is a comma of a name");
    takesOneOf (tracksOption->allow_extra_args (false), { "all", "cue" })->type_name ("all|cue|NAME,...");

    auto* sheet = command.add_option (name ("sheet"), sheetName, "Sheet of a workbook (the one in front)");
    sheet->type_name ("NAME");

    auto* breaks = command.add_flag (name ("line-breaks"), lineBreaks,
                                     "Turn \"**\" of the imported text into line breaks");
    importOptions = { encodingOption, map, tracksOption, sheet, breaks };
}

void ListOptions::addMappingOptions (CLI::App& command)
{
    auto* mapping = command.add_option ("--mapping", mappingName,
                                        "Use columns as --save-mapping has kept them in --settings");
    mapping->type_name ("NAME");

    auto* saving = command.add_option ("--save-mapping", newMappingName,
                                       "Keep what --map assigns in --settings, under this name");
    saving->type_name ("NAME");
    importOptions.insert (importOptions.end(), { mapping, saving });
}

void ListOptions::addForOneOfTwoTo (CLI::App& command, const std::string& list)
{
    whose = list + "-";
    addTimeOptions (command);
    addImportOptions (command);

    for (auto* option : command.get_options())
        if (option->get_single_name().starts_with (whose))
            option->group ("Only for " + juce::String (list).toUpperCase().toStdString());
}

std::string ListOptions::optionName (const std::string& name) const
{
    return "--" + (ownOptions.count (name) > 0 ? whose : std::string()) + name;
}

ListOptions ListOptions::over (const ListOptions& common) const
{
    auto both = common;

    both.whose = whose;

    for (const auto& [name, member] :
         { std::pair ("fps", &ListOptions::rate), std::pair ("origin", &ListOptions::origin),
           std::pair ("first-frame-of-action", &ListOptions::firstFrameOfAction),
           std::pair ("encoding", &ListOptions::encodingName), std::pair ("sheet", &ListOptions::sheetName) })
        if (! (this->*member).empty())
        {
            both.*member = this->*member;
            both.ownOptions.insert (name);
        }

    if (! origin.empty() && firstFrameOfAction.empty())
        both.firstFrameOfAction.clear();

    for (const auto& [name, member] :
         { std::pair ("map", &ListOptions::mappings), std::pair ("tracks", &ListOptions::trackNames) })
        if (! (this->*member).empty())
        {
            both.*member = this->*member;
            both.ownOptions.insert (name);
        }

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
        ->allow_extra_args (false)
        ->type_name ("NAME,...");
    takesOneOf (command.add_option ("--application", application, "orvelle or dublane (dublane)"),
                { "orvelle", "dublane" });
    command.add_option ("--settings", settingsFile, "Preferences file")->type_name ("FILE");
    command.add_option ("--resources", resourceFolder, "Folder of the icons and tools")->type_name ("FOLDER");
}

void ListOptions::addTo (CLI::App& command, const std::string& nameOfInputFormat)
{
    owner = &command;
    addTimeOptions (command);
    addImportOptions (command);
    addMappingOptions (command);
    addProcessOptionsTo (command);
    inputFormatOption = nameOfInputFormat;
    takesOneOf (command.add_option (inputFormatOption, inputFormat,
                                    "Format of the list on standard input, such as csv"),
                inputFormats())
        ->type_name ("NAME");
}

juce::File ListOptions::getSettingsFile() const { return fileFromPath (settingsFile); }

void ListOptions::check() const
{
    if (! rate.empty() && ! TCToolbox::tcDefForRateName (rate).has_value())
        refuseValue (optionName ("fps"), rate, texts (TCToolbox::rateNames()));
    if (! inputFormat.empty() && ! isOneOf (inputFormats(), plainInputFormat().toStdString()))
        refuseValue (inputFormatOption, inputFormat, inputFormats());

    checkMappings();
    static_cast<void> (encoding());
    static_cast<void> (reasons());
    static_cast<void> (tracks());
}

void ListOptions::sayWhetherSettingsAreMissing (const Session& session, SettingsUse use) const
{
    const bool isEdited = use == SettingsUse::edited || ! newMappingName.empty();

    if (hasSettingsFile() && ! isEdited && isMissing (getSettingsFile()))
        session.say ("There is no file " + juce::String (settingsFile)
                     + "; the registered defaults are used");
}

void ListOptions::applyToProcess (const Session& session, SettingsUse use) const
{
    check();
    ZEP::Overmarks::UserDefaultsRegistrar::registerUserDefaults();

    if (hasSettingsFile())
        if (const auto result = UserDefaults::setSettingsFile (getSettingsFile()); result.failed())
            throw CommandFailure (result.getErrorMessage());

    sayWhetherSettingsAreMissing (session, use);

    if (! mappingName.empty())
        static_cast<void> (keptMapping (mappingName, getSettingsFile()));

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
    check();

    if (project == nullptr)
        project = assumed.get();

    auto info = project != nullptr
                    ? timeInfoOfProject (*project)
                    : std::make_shared<TimeInfo> (*TCToolbox::tcDefForRateName (rate.empty() ? "25" : rate));

    if (! origin.empty()) // the first frame of action goes along
        info =
            std::make_shared<TimeInfo> (info->tcDef, timecode (optionName ("origin"), origin, info->tcDef));

    if (! firstFrameOfAction.empty())
        info->setFirstFrameOfAction (
            timecode (optionName ("first-frame-of-action"), firstFrameOfAction, info->tcDef));

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
            throw WrongUsage (juce::String (optionName ("fps")) + ": the project's " + name + " "
                              + TCToolbox::stringFromTCTime (time, project.tcDef.dropFrame)
                              + " doesn't exist at " + rate + " frames per second; --" + whose + option
                              + " names another");
    };

    if (origin.empty())
        check ("time origin", "origin", project.timeOrigin);
    if (origin.empty() && firstFrameOfAction.empty())
        check ("first frame of action", "first-frame-of-action", project.getFirstFrameOfAction());

    return info;
}

TextEncoding ListOptions::encoding() const
{
    if (encodingName.empty())
        return TextEncodingUnknown;

    for (const auto& [name, value] : encodings())
        if (juce::String (name).equalsIgnoreCase (juce::String (encodingName)))
            return value;

    refuseValue (optionName ("encoding"), encodingName, namesOfTable (encodings()));
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

std::optional<std::vector<juce::String>> ListOptions::tracks() const
{
    auto names = namesIn (trackNames);

    if (names.empty() || names == std::vector<juce::String> { "cue" })
        return std::nullopt;

    const bool isMixed = std::any_of (names.begin(), names.end(),
                                      [] (const juce::String& name)
                                      { return name.isEmpty() || name == "all" || name == "cue"; });

    if (isMixed && (names.size() > 1 || names.front().isEmpty()))
        throw WrongUsage (optionName ("tracks") + ": it is either all or cue, or the names of tracks");

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

juce::String ListOptions::plainInputFormat() const
{
    return juce::String (inputFormat).trimCharactersAtStart (".").toLowerCase();
}

juce::String ListOptions::extensionOfStandardInput() const
{
    if (inputFormat.empty())
        throw WrongUsage ("A list on standard input needs its format, such as " + inputFormatOption + " csv");

    return "." + plainInputFormat();
}

} // namespace overmarks
