// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/WideObject.h"

#include <cstring>
#include <map>
#include <utility>
#include <vector>

namespace ZEP::Core
{

namespace
{

constexpr int indentOfMember = 2; // blanks, as the framework writes
constexpr int mostUnindexed = 16; // so few members are found faster without a table

const juce::var& noValue()
{
    static const juce::var value;
    return value;
}

void writeValue (juce::OutputStream& stream, const juce::var& value, int indentLevel, bool allOnOneLine,
                 int maximumDecimalPlaces)
{
    if (auto* const object = value.getDynamicObject())
        object->writeAsJSON (stream, indentLevel, allOnOneLine, maximumDecimalPlaces);
    else
        juce::JSON::writeToStream (stream, value, allOnOneLine, maximumDecimalPlaces);
}

} // namespace

struct WideObject::Further
{
    /** Any order will do, and that of the bytes is the quickest. */
    struct ByBytes
    {
        bool operator() (const juce::String& one, const juce::String& other) const
        {
            return std::strcmp (one.toRawUTF8(), other.toRawUTF8()) < 0;
        }
    };

    std::vector<std::pair<juce::String, juce::var>> members;
    std::map<juce::String, int, ByBytes>
        places; ///< of all members, the plain ones included; empty while they are few
};

WideObject::WideObject() = default;
WideObject::~WideObject() = default;

juce::NamedValueSet& WideObject::plain() const { return const_cast<WideObject*> (this)->getProperties(); }

int WideObject::size() const noexcept
{
    return plain().size() + (further != nullptr ? static_cast<int> (further->members.size()) : 0);
}

void WideObject::setMember (const juce::String& name, const juce::var& value)
{
    if (further == nullptr && plain().size() < plainMembers)
        plain().set (name, value);
    else
        setMemberApart (name, value);
}

void WideObject::setMemberApart (const juce::String& name, const juce::var& value)
{
    if (further == nullptr)
        further = std::make_unique<Further>();

    const auto newPlace = size();
    const auto place = placeForMember (name);

    if (place == newPlace)
        further->members.emplace_back (name, value);
    else if (place < plain().size())
        *plain().getVarPointerAt (place) = value;
    else
        further->members[static_cast<std::size_t> (place - plain().size())].second = value;
}

/** The place of a member, or the one behind the last for a new one, which is entered there. Names that a stranger has chosen are
    sorted, not hashed: texts of one and the same hash are easily made. */
int WideObject::placeForMember (const juce::String& name)
{
    auto& places = further->places;
    const auto newPlace = size();

    if (newPlace < mostUnindexed)
    {
        const auto place = placeOf (name);
        return place < 0 ? newPlace : place;
    }

    if (places.empty())
    {
        for (int i = 0; i < plain().size(); ++i)
            places.emplace (plain().getName (i).toString(), i);

        for (const auto& member : further->members)
            places.emplace (member.first, static_cast<int> (places.size()));
    }

    return places.try_emplace (name, newPlace).first->second;
}

/** -1 if there is no such member. */
int WideObject::placeOf (const juce::String& name) const
{
    if (! further->places.empty())
    {
        const auto known = further->places.find (name);
        return known != further->places.end() ? known->second : -1;
    }

    for (int i = 0; i < plain().size(); ++i)
        if (plain().getName (i).toString() == name)
            return i;

    for (std::size_t i = 0; i < further->members.size(); ++i)
        if (further->members[i].first == name)
            return plain().size() + static_cast<int> (i);

    return -1;
}

juce::var WideObject::valueOf (const juce::var& object, const juce::Identifier& name,
                               const juce::var& otherwise)
{
    const auto* const members = object.getDynamicObject();
    return members != nullptr && members->hasProperty (name) ? members->getProperty (name) : otherwise;
}

bool WideObject::forEachMember (juce::DynamicObject& object, const Visitor& visit)
{
    for (const auto& member : object.getProperties())
        if (! visit (member.name.toString(), member.value))
            return false;

    const auto* const wide = dynamic_cast<WideObject*> (&object);

    if (wide != nullptr && wide->further != nullptr)
        for (const auto& [name, value] : wide->further->members)
            if (! visit (name, value))
                return false;

    return true;
}

const juce::var* WideObject::find (const juce::Identifier& name) const
{
    if (further == nullptr)
        return plain().getVarPointer (name);

    const auto place = placeOf (name.toString());

    if (place < 0)
        return nullptr;

    return place < plain().size()
               ? plain().getVarPointerAt (place)
               : &further->members[static_cast<std::size_t> (place - plain().size())].second;
}

bool WideObject::hasProperty (const juce::Identifier& name) const { return find (name) != nullptr; }

const juce::var& WideObject::getProperty (const juce::Identifier& name) const
{
    const auto* const value = find (name);
    return value != nullptr ? *value : noValue();
}

void WideObject::setProperty (const juce::Identifier& name, const juce::var& value)
{
    if (further == nullptr && plain().size() < plainMembers)
        plain().set (name, value);
    else
        setMemberApart (name.toString(), value);
}

void WideObject::removeProperty (const juce::Identifier& name)
{
    std::vector<std::pair<juce::String, juce::var>> kept;
    forEachMember (*this,
                   [&] (const juce::String& memberName, const juce::var& value)
                   {
                       if (memberName != name.toString())
                           kept.emplace_back (memberName, value);
                       return true;
                   });

    clear();
    further.reset();

    for (const auto& [memberName, value] : kept)
        setMember (memberName, value);
}

juce::DynamicObject::Ptr WideObject::clone()
{
    juce::ReferenceCountedObjectPtr<WideObject> copy (new WideObject());
    forEachMember (*this,
                   [&copy] (const juce::String& name, const juce::var& value)
                   {
                       copy->setMember (name, value.clone());
                       return true;
                   });
    return copy.get();
}

void WideObject::writeAsJSON (juce::OutputStream& stream, int indentLevel, bool allOnOneLine,
                              int maximumDecimalPlaces)
{
    if (further == nullptr)
    {
        DynamicObject::writeAsJSON (stream, indentLevel, allOnOneLine, maximumDecimalPlaces);
        return;
    }

    const auto indent = indentLevel + indentOfMember;
    bool isFirst = true;
    stream << '{';

    forEachMember (*this,
                   [&] (const juce::String& name, const juce::var& value)
                   {
                       if (! isFirst)
                           stream << (allOnOneLine ? ", " : ",");

                       if (! allOnOneLine)
                       {
                           stream << juce::newLine;
                           stream.writeRepeatedByte (' ', static_cast<std::size_t> (indent));
                       }

                       stream << '"' << juce::JSON::escapeString (name) << "\": ";
                       writeValue (stream, value, indent, allOnOneLine, maximumDecimalPlaces);
                       isFirst = false;
                       return true;
                   });

    if (! allOnOneLine)
    {
        stream << juce::newLine;
        stream.writeRepeatedByte (' ', static_cast<std::size_t> (indentLevel));
    }

    stream << '}';
}

} // namespace ZEP::Core
