// SPDX-License-Identifier: GPL-3.0-only
#include "core/timecode/TCToolbox.h"
#include "event/EventFields.h"
#include "list/JSONNumber.h"
#include "list/ProjectJSON.h"
#include "list/RichTextJSON.h"

#include <nlohmann/json.hpp>

#include <string>

namespace ZEP::Overmarks
{

using json = nlohmann::ordered_json;
using ZEP::Core::RichTextString;
using ZEP::Core::TCToolbox;

namespace
{

constexpr int indentation = 1;
constexpr int onOneLine = -1;

std::string utf8 (const juce::String& text) { return text.toStdString(); }

/** What no UTF-8 text can hold, such as half of a surrogate pair, becomes U+FFFD. */
std::string textOf (const json& value, int indent)
{
    return value.dump (indent, ' ', false, json::error_handler_t::replace);
}

/** Writes one stored field of an event after the other. */
struct FieldWriter
{
    json& object;

    void operator() (const char* name, const juce::String& value) { object[name] = utf8 (value); }
    void operator() (const char* name, const RichTextString& value)
    {
        object[name] = RichTextJSON::write (value);
    }
    void operator() (const char* name, bool value) { object[name] = value; }
    void operator() (const char* name, float value) { object[name] = shortestJSONNumber (value); }
    void operator() (const char* name, int value) { object[name] = value; }
};

json eventObject (const Event& event)
{
    json object = json::object();
    EventFields::visit (event, FieldWriter { object });
    return object;
}

json shownEventObject (const Event& event)
{
    const auto character = event.character();
    auto object = eventObject (event);
    object["startTC"] = utf8 (event.getStartTCString());
    object["endTC"] = utf8 (event.getEndTCString());
    object["character"] = character != nullptr ? utf8 (character->name) : std::string();
    object["actor"] = character != nullptr ? utf8 (character->actor) : std::string();
    object["isHiddenByFilter"] = event.isHiddenByFilter();
    return object;
}

json timeInfoObject (const ZEP::Core::TimeInfo& info)
{
    const auto& def = info.tcDef;
    return { { "timeOrigin", utf8 (TCToolbox::stringFromTCTime (info.timeOrigin, def.dropFrame)) },
             { "firstFrameOfAction",
               utf8 (TCToolbox::stringFromTCTime (info.getFirstFrameOfAction(), def.dropFrame)) },
             { "frameRateNumerator", def.frameRateNumerator },
             { "frameRateDenominator", def.frameRateDenominator },
             { "framesPerSecond", int { def.framesPerSecond } },
             { "dropFrame", def.dropFrame } };
}

json characterArray (const ZEP::Core::ADRCharacterMap& characters)
{
    auto array = json::array();

    for (const auto& id : characters.characterIDs())
    {
        const auto character = characters.characterForID (id);
        array.push_back ({ { "id", utf8 (id) },
                           { "name", utf8 (character->name) },
                           { "prefix", utf8 (character->prefix) },
                           { "actor", utf8 (character->actor) } });
    }

    return array;
}

/** One event a line, written one at a time, so that a season's list never stands in memory twice. */
template <typename ObjectOf>
void appendEvents (std::string& text, const EventArray::Events& events, ObjectOf objectOf)
{
    text += " \"events\": [";
    const char* separator = "\n  ";

    for (const auto& event : events)
    {
        text += separator;
        text += textOf (objectOf (*event), onOneLine);
        separator = ",\n  ";
    }

    text += events.empty() ? "]" : "\n ]";
}

} // namespace

std::string ProjectJSON::toText (const Project& project)
{
    auto reasons = json::array();

    for (const auto& reason : project.userReasons)
        reasons.push_back (utf8 (reason));

    const json head { { "overmarks", formatVersion },
                      { "name", utf8 (project.name) },
                      { "timeInfo", timeInfoObject (*project.timeInfo) },
                      { "sortKey", utf8 (project.list->sortKey) },
                      { "sortDescending", project.list->sortDescending },
                      { "userReasons", reasons },
                      { "characters", characterArray (*project.characters) } };

    auto text = textOf (head, indentation);
    text.erase (text.rfind ('\n')); // the closing brace comes behind the events
    text += ",\n";
    appendEvents (text, project.list->events, eventObject);
    return text + "\n}\n";
}

std::string ProjectJSON::shownEvents (const EventArray::Events& events)
{
    std::string text = "{\n";
    appendEvents (text, events, shownEventObject);
    return text + "\n}\n";
}

} // namespace ZEP::Overmarks
