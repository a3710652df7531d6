// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCueReasonsManager.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventFields.h"
#include "list/JSONBudget.h"
#include "list/JSONMember.h"
#include "list/JSONTreeBuilder.h"
#include "list/ProjectJSON.h"
#include "list/RichTextJSON.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{

using json = nlohmann::ordered_json;
using ZEP::Core::ADRCharacter;
using ZEP::Core::ADRCharacterMap;
using ZEP::Core::ADRCueReasonsManager;
using ZEP::Core::RichTextString;
using ZEP::Core::TCToolbox;
using ZEP::Core::TimeInfo;

namespace
{

constexpr std::size_t mostUserReasons = 8;

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

    member.forEachElement ([&reasons] (const JSONMember& reason) { reasons.push_back (reason.text()); });

    if (reasons.size() > mostUserReasons)
        member.fail ("there are at most eight user reasons");

    return reasons;
}

// ---- events --------------------------------------------------------------------------------------------------------------

/** The names of an event's members, in the order of its table. */
const std::vector<std::string>& fieldNames()
{
    static const auto names = []
    {
        std::vector<std::string> found;
        const Event anyEvent;
        EventFields::visit (anyEvent,
                            [&found] (const char* name, const auto&) { found.emplace_back (name); });
        return found;
    }();
    return names;
}

/** The values that the object of an event has, each found by its place in the event's table. */
class EventMembers final
{
public:
    explicit EventMembers (const JSONMember& objectToRead)
        : object (objectToRead),
          values (fieldNames().size())
    {
        const auto& names = fieldNames();
        std::size_t expected = 0; // members mostly stand in the order of the table

        object.forEachMember (
            [&] (const std::string& name, const JSONMember& member)
            {
                if (expected == names.size() || names[expected] != name)
                    expected = placeOf (name);
                if (expected == names.size())
                    member.failUnknown();

                values[expected++] = &member.element();
            });
    }

    /** The value of a field; what it would be otherwise where the object has none. */
    template <typename Value>
    Value valueOf (const char* name, Value whenMissing) const
    {
        readField (placeOf (name), name, whenMissing);
        return whenMissing;
    }

    /** Writes all fields that the object has. */
    void readInto (Event& event) const
    {
        EventFields::visit (event, [this, place = std::size_t { 0 }] (const char* name, auto& field) mutable
                            { readField (place++, name, field); });
    }

private:
    static std::size_t placeOf (std::string_view name)
    {
        const auto& names = fieldNames();
        return static_cast<std::size_t> (std::find (names.begin(), names.end(), name) - names.begin());
    }

    template <typename Value>
    void readField (std::size_t place, const char* name, Value& value) const
    {
        if (values[place] == nullptr)
            return;

        const JSONMember member (*values[place], object, name);

        if constexpr (std::is_same_v<Value, int>)
            if (static const auto placeOfReason = placeOf ("reason"); place == placeOfReason)
            {
                value = readReason (member);
                return;
            }

        if constexpr (std::is_same_v<Value, juce::String>)
            if (static const auto placeOfIdentity = placeOf ("uuid"); place == placeOfIdentity)
            {
                readIdentity (member, value);
                return;
            }

        read (member, value);
    }

    /** An event keeps the identity that it was made with where the text has none for it: no two may share the empty one. */
    static void readIdentity (const JSONMember& member, juce::String& value)
    {
        if (auto identity = member.text(); identity.isNotEmpty())
            value = std::move (identity);
    }

    /** A code that no table has would read "None" and be lost with the next saving. -1 is that of an event made by hand. */
    static int readReason (const JSONMember& member)
    {
        constexpr int unset = -1, lastReason = ADRCueReasonsManager::lastCode - 1;
        return member.integer (unset, lastReason);
    }

    static void read (const JSONMember& member, juce::String& value) { value = member.text(); }
    static void read (const JSONMember& member, RichTextString& value)
    {
        value = RichTextJSON::read (member);
    }
    static void read (const JSONMember& member, bool& value) { value = member.flag(); }
    static void read (const JSONMember& member, float& value) { value = member.number(); }
    static void read (const JSONMember& member, int& value) { value = member.integer(); }

    template <typename Enumeration>
    requires std::is_enum_v<Enumeration>
    static void read (const JSONMember& member, Enumeration& value)
    {
        value = static_cast<Enumeration> (member.integer());
    }

    const JSONMember& object;
    std::vector<const json*> values;
};

std::shared_ptr<Event> readEvent (const JSONMember& object, const std::shared_ptr<TimeInfo>& timeInfo)
{
    // What is missing is what a new event of this type at this time would have.
    const EventMembers members (object);
    auto event =
        Event::create (members.valueOf ("type", EventTypeADRCue), timeInfo,
                       members.valueOf ("inPointFrameIndex", -1), members.valueOf ("endFrameIndex", -1),
                       members.valueOf ("beatsPerMinute", -1.0f), members.valueOf ("streamerDuration", -1));
    members.readInto (*event);
    return event;
}

/** What an event and the runs of its texts take in memory. */
std::uint64_t weightOf (const json& event)
{
    auto weight = RecordWeight::weightOfEvent;

    for (const auto& value : event)
        if (value.is_object() && value.contains ("runs"))
            weight += value["runs"].size() * RecordWeight::weightOfRun;

    return weight;
}

/** The first event of a fade's type; a list without one gets one. */
std::shared_ptr<Event> fadeOf (const Project& project, EventType type)
{
    if (const auto fades = project.list->eventsWithTypeMask (type); ! fades.empty())
        return fades.front();

    auto fade = project.createFade (type);
    project.list->events.push_back (fade);
    return fade;
}

// ---- documents -----------------------------------------------------------------------------------------------------------

void readDocuments (const JSONMember& object, DocumentSettings& documents)
{
    object.forEachMember (
        [&documents] (const std::string& name, const JSONMember& member)
        {
            bool isKnown = false;
            const auto read = [&] (const char* field, auto& value)
            {
                using Value = std::decay_t<decltype (value)>;

                if (name != field)
                    return;

                isKnown = true;

                if constexpr (std::is_same_v<Value, juce::String>)
                    value = member.text();
                else if constexpr (std::is_same_v<Value, bool>)
                    value = member.flag();
                else
                    value = member.integer();
            };
            DocumentSettings::visit (documents, read);

            if (! isKnown)
                member.failUnknown();
        });
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
        member.forEachElement ([&project] (const JSONMember& character)
                               { readCharacter (character, *project.characters); });
    else if (name == "documents")
        readDocuments (member, project.documents);
    else if (name != "timeInfo" && name != "events")
        member.failUnknown();
}

/** The project of a text, whose events are read while the text is: a list of a season never stands in memory as JSON. */
class Reader final
{
public:
    explicit Reader (const std::string& textToRead) : text (textToRead), memory (textToRead.size()) {}

    Project read()
    {
        JSONTreeBuilder builder ("events", memory,
                                 [this] (const json& document, const json& event)
                                 { return takeEvent (document, event); });
        json::sax_parse (text, &builder);
        const auto& document = builder.tree();

        if (! hasBegun)
            begin (document);

        const JSONMember root (document, {});
        root.forEachMember (
            [this] (const std::string& name, const JSONMember& member)
            {
                if (name == "characters")
                    memory.take (member.element().size() * RecordWeight::weightOfCharacter);

                readMember (name, member, project);
            });

        // Where the time reference stands behind the events, they have waited for it.
        if (const auto events = document.find ("events"); events != document.end())
            JSONMember (*events, "events")
                .forEachElement ([this] (const JSONMember& event) { addEvent (event); });

        project.list->fadeInEvent = fadeOf (project, EventTypeFadeIn);
        project.list->fadeOutEvent = fadeOf (project, EventTypeFadeOut);
        return std::move (project);
    }

private:
    bool takeEvent (const json& document, const json& event)
    {
        if (! hasBegun && ! (document.contains ("overmarks") && document.contains ("timeInfo")))
            return false;
        if (! hasBegun)
            begin (document);

        const json unread;
        const JSONMember list (unread, "events");
        addEvent (JSONMember (event, list, numberOfEvents));
        return true;
    }

    void begin (const json& document)
    {
        if (! document.is_object() || ! document.contains ("overmarks"))
            JSONMember (document, "The text")
                .fail ("an Overmarks project in JSON begins with the member \"overmarks\"");

        const auto defaults = json::object();
        const auto timeInfo = document.find ("timeInfo");
        project = Project::createEmpty (
            readTimeInfo (JSONMember (timeInfo != document.end() ? *timeInfo : defaults, "timeInfo")));

        if (document.contains ("events"))
            project.list->events.clear();

        hasBegun = true;
    }

    void addEvent (const JSONMember& event)
    {
        memory.take (weightOf (event.element()));
        project.list->events.push_back (readEvent (event, project.timeInfo));
        ++numberOfEvents;
    }

    const std::string& text;
    JSONBudget memory;
    Project project;
    bool hasBegun = false;
    std::size_t numberOfEvents = 0;
};

} // namespace

ProjectJSON::Limits& ProjectJSON::limits()
{
    static Limits current;
    return current;
}

juce::String ProjectJSON::fromText (const std::string& text, Project& project)
{
    if (const auto most = limits().bytes; text.size() > most)
        return "The text is too large for a project: it has more than " + juce::String (most) + " bytes";

    try
    {
        project = Reader (text).read();
        return {};
    }
    catch (const std::invalid_argument& error) // with the place of the mistake
    {
        return juce::String::fromUTF8 (error.what());
    }
    catch (const std::bad_alloc&)
    {
        return "The text can't be loaded: there is not enough memory";
    }
}

} // namespace ZEP::Overmarks
