// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/WideObject.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEP::Core
{

namespace
{

constexpr int indentOfMember = 2; // blanks, as the framework writes

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
    std::vector<std::pair<juce::String, juce::var>> members;
    std::unordered_map<juce::String, int> places; ///< of all members, the plain ones included
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
    {
        plain().set (name, value);
        return;
    }

    if (further == nullptr)
    {
        further = std::make_unique<Further>();

        for (int i = 0; i < plain().size(); ++i)
            further->places.emplace (plain().getName (i).toString(), i);
    }

    const auto [known, isNew] = further->places.try_emplace (name, size());

    if (isNew)
        further->members.emplace_back (name, value);
    else if (known->second < plain().size())
        *plain().getVarPointerAt (known->second) = value;
    else
        further->members[static_cast<std::size_t> (known->second - plain().size())].second = value;
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

const juce::var* WideObject::find (const juce::String& name) const
{
    if (further == nullptr)
        return plain().getVarPointer (name);

    const auto known = further->places.find (name);

    if (known == further->places.end())
        return nullptr;

    return known->second < plain().size()
               ? plain().getVarPointerAt (known->second)
               : &further->members[static_cast<std::size_t> (known->second - plain().size())].second;
}

bool WideObject::hasProperty (const juce::Identifier& name) const
{
    return find (name.toString()) != nullptr;
}

const juce::var& WideObject::getProperty (const juce::Identifier& name) const
{
    const auto* const value = find (name.toString());
    return value != nullptr ? *value : noValue();
}

void WideObject::setProperty (const juce::Identifier& name, const juce::var& value)
{
    setMember (name.toString(), value);
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
