// SPDX-License-Identifier: GPL-3.0-only
#include "core/timecode/TCToolbox.h"
#include "event/EventFields.h"
#include "list/JSONText.h"
#include "list/ProjectJSON.h"
#include "list/RichTextJSON.h"
#include "list/TextInParts.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>

namespace ZEP::Overmarks
{

using json = nlohmann::ordered_json;
using ZEP::Core::RichTextString;
using ZEP::Core::TCToolbox;

namespace
{

constexpr int indentation = 1;

std::string utf8 (const juce::String& text) { return text.toStdString(); }

/** What no UTF-8 text can hold, such as half of a surrogate pair, becomes U+FFFD. */
std::string textOf (const json& value)
{
    return value.dump (indentation, ' ', false, json::error_handler_t::replace);
}

/** One event as an object on one line. */
class EventLine final
{
public:
    explicit EventLine (std::string& textToFill) : text (textToFill) {}

    EventLine (const EventLine&) = delete;
    EventLine& operator= (const EventLine&) = delete;
    ~EventLine() { text += '}'; }

    template <typename Value>
    void operator() (const char* name, const Value& value)
    {
        text.append (1, separator).append (1, '"').append (name).append ("\":");
        separator = ',';
        append (value);
    }

private:
    void append (const RichTextString& value) { RichTextJSON::append (text, value); }
    void append (const juce::String& value) { JSONText::append (text, value); }
    void append (bool value) { JSONText::append (text, value); }
    void append (float value) { JSONText::append (text, value); }
    void append (int value) { JSONText::append (text, value); }

    std::string& text;
    char separator = '{';
};

void appendEvent (std::string& text, const Event& event)
{
    EventLine line (text);
    EventFields::visit (event, line);
}

void appendShownEvent (std::string& text, const Event& event)
{
    const auto character = event.character();
    EventLine line (text);
    EventFields::visit (event, line);
    line ("startTC", event.getStartTCString());
    line ("endTC", event.getEndTCString());
    line ("character", character != nullptr ? character->name : juce::String());
    line ("actor", character != nullptr ? character->actor : juce::String());
    line ("isHiddenByFilter", event.isHiddenByFilter());
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

/** Only what somebody has chosen. */
json documentsObject (const DocumentSettings& documents)
{
    auto object = json::object();
    const auto add = [&object] (const char* name, const auto& value)
    {
        using Value = std::decay_t<decltype (value)>;

        if (value == Value {})
            return;

        if constexpr (std::is_same_v<Value, juce::String>)
            object[name] = utf8 (value);
        else
            object[name] = value;
    };
    DocumentSettings::visit (documents, add);
    return object;
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

/** One event a line, written one at a time. */
void appendEvents (TextInParts& parts, const EventArray::Events& events,
                   void (*appendOne) (std::string&, const Event&))
{
    auto& text = parts.text;
    text += " \"events\": [";
    const char* separator = "\n  ";

    for (const auto& event : events)
    {
        text += separator;
        appendOne (text, *event);
        separator = ",\n  ";
        parts.passOn();
    }

    text += events.empty() ? "]" : "\n ]";
    text += "\n}\n";
    parts.passOn (1);
}

std::string wholeText (const std::function<void (const ProjectJSON::Sink&)>& write)
{
    std::string text;
    write ([&text] (const std::string& part) { text += part; });
    return text;
}

} // namespace

std::string ProjectJSON::toText (const Project& project)
{
    return wholeText ([&project] (const Sink& sink) { write (project, sink); });
}

void ProjectJSON::write (const Project& project, const Sink& sink)
{
    auto reasons = json::array();

    for (const auto& reason : project.userReasons)
        reasons.push_back (utf8 (reason));

    json head { { "overmarks", formatVersion },
                { "name", utf8 (project.name) },
                { "timeInfo", timeInfoObject (*project.timeInfo) },
                { "sortKey", utf8 (project.list->sortKey) },
                { "sortDescending", project.list->sortDescending },
                { "userReasons", reasons },
                { "characters", characterArray (*project.characters) } };

    if (auto documents = documentsObject (project.documents); ! documents.empty())
        head["documents"] = std::move (documents);

    TextInParts parts (sink);
    parts.text = textOf (head);
    parts.text.erase (parts.text.rfind ('\n')); // the closing brace comes behind the events
    parts.text += ",\n";
    appendEvents (parts, project.list->events, appendEvent);
}

std::string ProjectJSON::shownEvents (const EventArray::Events& events)
{
    return wholeText ([&events] (const Sink& sink) { writeShownEvents (events, sink); });
}

void ProjectJSON::writeShownEvents (const EventArray::Events& events, const Sink& sink)
{
    TextInParts parts (sink);
    parts.text += "{\n";
    appendEvents (parts, events, appendShownEvent);
}

} // namespace ZEP::Overmarks
