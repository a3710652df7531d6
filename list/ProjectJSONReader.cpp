// SPDX-License-Identifier: GPL-3.0-only
#include "core/timecode/TCToolbox.h"
#include "event/EventFields.h"
#include "list/JSONMember.h"
#include "list/JSONStructureCheck.h"
#include "list/ProjectJSON.h"
#include "list/RichTextJSON.h"

#include <nlohmann/json.hpp>

#include <limits>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace ZEP::Overmarks
{

using json = nlohmann::ordered_json;
using ZEP::Core::ADRCharacter;
using ZEP::Core::ADRCharacterMap;
using ZEP::Core::RichTextString;
using ZEP::Core::TCToolbox;
using ZEP::Core::TimeInfo;

namespace
{

constexpr std::size_t mostUserReasons = 8;

json parse (const std::string& text)
{
    JSONStructureCheck check;
    json::sax_parse (text, &check); // what is no JSON is told by the parser, with its place
    return json::parse (text);
}

// ---- time ----------------------------------------------------------------------------------------------------------------

ZEP::Core::_TCTime readTimecode (const JSONMember& member)
{
    const auto time = TCToolbox::tcTimeFromString (member.text());

    if (time.invalid)
        member.fail ("a timecode such as 01:00:00:00 is expected");

    return time;
}

/** What a text says about the time reference; a fraction, whole frames, or both. */
struct TimeInfoMembers
{
    std::optional<unsigned int> numerator, denominator, framesPerSecond;
    bool dropFrame = false;
    ZEP::Core::_TCTime origin;
    std::optional<ZEP::Core::_TCTime> firstFrameOfAction;

    void read (const std::string& name, const JSONMember& member)
    {
        constexpr auto most = std::numeric_limits<unsigned int>::max();

        if (name == "timeOrigin")
            origin = readTimecode (member);
        else if (name == "firstFrameOfAction")
            firstFrameOfAction = readTimecode (member);
        else if (name == "frameRateNumerator")
            numerator = member.unsignedInteger (1, most);
        else if (name == "frameRateDenominator")
            denominator = member.unsignedInteger (1, most);
        else if (name == "framesPerSecond")
            framesPerSecond = member.unsignedInteger (1, 255);
        else if (name == "dropFrame")
            dropFrame = member.flag();
        else
            member.failUnknown();
    }
};

/** A timecode second has as many frames as the rate, rounded up, and a timecode two digits for them. */
ZEP::Core::_TCDef rateOf (const TimeInfoMembers& members, const JSONMember& object)
{
    constexpr unsigned int mostFrames = 100;
    const ZEP::Core::_TCDef usual;
    ZEP::Core::_TCDef def { members.dropFrame, usual.frameRateNumerator, members.denominator.value_or (1), 0,
                            false };
    def.frameRateNumerator =
        members.numerator.value_or (members.framesPerSecond.value_or (usual.framesPerSecond));
    const auto whole =
        (std::uint64_t { def.frameRateNumerator } + def.frameRateDenominator - 1) / def.frameRateDenominator;
    const auto counted = members.framesPerSecond.value_or (static_cast<unsigned int> (whole));

    if (whole != counted || whole > mostFrames)
        object.fail ("there is no frame rate of " + std::to_string (def.frameRateNumerator) + "/"
                     + std::to_string (def.frameRateDenominator) + " with " + std::to_string (counted)
                     + " frames per timecode second");

    def.framesPerSecond = static_cast<std::uint8_t> (counted);
    return def;
}

std::shared_ptr<TimeInfo> readTimeInfo (const JSONMember& object)
{
    TimeInfoMembers members;
    object.forEachMember ([&members] (const std::string& name, const JSONMember& member)
                          { members.read (name, member); });
    const auto def = rateOf (members, object);
    const auto check = [&] (const char* name, const ZEP::Core::_TCTime& time)
    {
        if (! TCToolbox::existsUnder (time, def))
            object.fail ("the " + std::string (name) + " "
                         + TCToolbox::stringFromTCTime (time, def.dropFrame).toStdString()
                         + " doesn't exist at this frame rate");
    };
    auto info = std::make_shared<TimeInfo> (def, members.origin);
    check ("timeOrigin", members.origin);

    // Writing tells the origin for one that isn't set, which has to stay so: it follows the origin.
    if (const auto first = members.firstFrameOfAction; first.has_value() && *first != members.origin)
    {
        check ("firstFrameOfAction", *first);
        info->setFirstFrameOfAction (*first);
    }

    return info;
}

// ---- cast and reasons ----------------------------------------------------------------------------------------------------

void readCharacter (const JSONMember& object, ADRCharacterMap& characters)
{
    juce::String id;
    auto character = std::make_shared<ADRCharacter> (juce::String());

    object.forEachMember (
        [&] (const std::string& name, const JSONMember& member)
        {
            if (name == "id")
                id = member.text();
            else if (name == "name")
                character->name = member.text();
            else if (name == "prefix")
                character->prefix = member.text();
            else if (name == "actor")
                character->actor = member.text();
            else
                member.failUnknown();
        });

    if (id.isNotEmpty() && characters.contains (id))
        object.fail ("a second character with the id " + JSONMember::quoted (id.toStdString()));

    characters.addCharacter (character, id.isNotEmpty(), id);
}

std::vector<juce::String> readReasons (const JSONMember& member)
{
    std::vector<juce::String> reasons;

    for (const auto& reason : member.elements())
        reasons.push_back (reason.text());

    if (reasons.size() > mostUserReasons)
        member.fail ("there are at most eight user reasons");

    return reasons;
}

// ---- events --------------------------------------------------------------------------------------------------------------

/** Writes one stored field of an event after the other, where the object has a member for it. */
struct FieldReader
{
    const json& object;
    const std::string& place;

    template <typename Value>
    void operator() (const char* name, Value& value)
    {
        const auto found = object.find (name);

        if (found != object.end())
            read (JSONMember (*found, place + "." + name), value);
    }

private:
    void read (const JSONMember& member, juce::String& value) { value = member.text(); }
    void read (const JSONMember& member, RichTextString& value)
    {
        value = RichTextJSON::read (member.element(), member.where());
    }
    void read (const JSONMember& member, bool& value) { value = member.flag(); }
    void read (const JSONMember& member, float& value) { value = member.number(); }
    void read (const JSONMember& member, int& value) { value = member.integer(); }

    template <typename Enumeration>
    requires std::is_enum_v<Enumeration>
    void read (const JSONMember& member, Enumeration& value)
    {
        value = static_cast<Enumeration> (member.integer());
    }
};

const std::set<std::string>& fieldNames()
{
    static const auto names = []
    {
        std::set<std::string> found;
        const Event anyEvent;
        EventFields::visit (anyEvent, [&found] (const char* name, const auto&) { found.insert (name); });
        return found;
    }();
    return names;
}

std::shared_ptr<Event> readEvent (const JSONMember& object, const std::shared_ptr<TimeInfo>& timeInfo)
{
    object.forEachMember (
        [] (const std::string& name, const JSONMember& member)
        {
            if (! fieldNames().contains (name))
                member.failUnknown();
        });

    // What is missing is what a new event of this type at this time would have.
    const auto given = [&object] (const char* name, auto whenMissing)
    {
        FieldReader { object.element(), object.where() }(name, whenMissing);
        return whenMissing;
    };
    auto event = Event::create (given ("type", EventTypeADRCue), timeInfo, given ("inPointFrameIndex", -1),
                                given ("endFrameIndex", -1), given ("beatsPerMinute", -1.0f),
                                given ("streamerDuration", -1));
    EventFields::visit (*event, FieldReader { object.element(), object.where() });
    return event;
}

/** The first event of a fade's type; a list without one gets one. */
std::shared_ptr<Event> fadeOf (const Project& project, EventType type)
{
    for (const auto& event : project.list->events)
        if (event->getType() == type)
            return event;

    auto fade = project.createFade (type);
    project.list->events.push_back (fade);
    return fade;
}

void readEvents (const JSONMember& array, Project& project)
{
    auto& events = project.list->events;
    events.clear();

    for (const auto& object : array.elements())
        events.push_back (readEvent (object, project.timeInfo));
}

// ---- the project ---------------------------------------------------------------------------------------------------------

void readVersion (const JSONMember& member)
{
    const auto version = member.integer();

    if (version != ProjectJSON::formatVersion)
        member.fail ("this is version " + std::to_string (version) + " of the form, and only version "
                     + std::to_string (ProjectJSON::formatVersion) + " can be read");
}

void readMember (const std::string& name, const JSONMember& member, Project& project)
{
    if (name == "overmarks")
        readVersion (member);
    else if (name == "name")
        project.name = member.text();
    else if (name == "sortKey")
        project.list->sortKey = member.text();
    else if (name == "sortDescending")
        project.list->sortDescending = member.flag();
    else if (name == "userReasons")
        project.userReasons = readReasons (member);
    else if (name == "characters")
        for (const auto& character : member.elements())
            readCharacter (character, *project.characters);
    else if (name != "timeInfo" && name != "events")
        member.failUnknown();
}

Project readProject (const json& document)
{
    const JSONMember root (document, {});
    const JSONMember wholeText (document, "The text");

    if (! document.is_object() || ! document.contains ("overmarks"))
        wholeText.fail ("an Overmarks project in JSON begins with the member \"overmarks\"");

    const auto defaults = json::object();
    const auto timeInfo = document.find ("timeInfo");
    auto project = Project::createEmpty (
        readTimeInfo (JSONMember (timeInfo != document.end() ? *timeInfo : defaults, "timeInfo")));

    root.forEachMember ([&project] (const std::string& name, const JSONMember& member)
                        { readMember (name, member, project); });

    if (const auto events = document.find ("events"); events != document.end())
        readEvents (JSONMember (*events, "events"), project);

    project.list->fadeInEvent = fadeOf (project, EventTypeFadeIn);
    project.list->fadeOutEvent = fadeOf (project, EventTypeFadeOut);
    return project;
}

} // namespace

juce::String ProjectJSON::fromText (const std::string& text, Project& project)
{
    try
    {
        project = readProject (parse (text));
        return {};
    }
    catch (const json::parse_error& error)
    {
        return "The text is no JSON: it breaks off or has a mistake at byte " + juce::String (error.byte);
    }
    catch (const json::out_of_range&)
    {
        return "The text holds a number that is too large";
    }
    catch (const std::invalid_argument& error) // with the place of the mistake
    {
        return juce::String::fromUTF8 (error.what());
    }
}

} // namespace ZEP::Overmarks
