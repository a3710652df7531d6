// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>

namespace ZEP::Core
{

/** A JSON object that may have as many members as a season has cues.

    The framework's own object compares a new member's name with those of all others and keeps every name in one
    sorted pool of the process, so that filling it takes a time that grows with the square of their number. This
    one is an ordinary object up to `plainMembers`; what comes later stands in a table of its own. A reader that
    has met very many names already puts the others apart from the start.

    The rule that is easily missed: getProperties() knows only the plain members, and so does the getProperty() of
    a juce::var. Whoever walks an object that may be wide calls forEachMember(), and whoever seeks a member valueOf().

    Reference-counted like its base. One thread at a time. */
class ZEP_CORE_API WideObject final : public juce::DynamicObject
{
public:
    static constexpr int plainMembers = 256; ///< how many the framework's object is given

    WideObject();
    ~WideObject() override;

    /** Adds a member at the end, or gives the one of this name a new value in its place.
        @param name  not empty */
    void setMember (const juce::String& name, const juce::var& value);

    /** The same, but the name of a new member is kept out of the pool, and so are those of all that follow. */
    void setMemberApart (const juce::String& name, const juce::var& value);

    /** A member of any object.
        @returns `otherwise` for what has no such member or is no object */
    [[nodiscard]] static juce::var valueOf (const juce::var& object, const juce::Identifier& name,
                                            const juce::var& otherwise = {});

    [[nodiscard]] int size() const noexcept; ///< All members, plain or not.
    /** returns whether to go on */
    using Visitor = std::function<bool (const juce::String& name, const juce::var& value)>;

    /** Visits the members of any object in their order, until the visitor returns false.
        @returns whether all were visited */
    static bool forEachMember (juce::DynamicObject& object, const Visitor& visit);

    bool hasProperty (const juce::Identifier& name) const override;                   ///< Finds all members.
    const juce::var& getProperty (const juce::Identifier& name) const override;       ///< Void for none.
    void setProperty (const juce::Identifier& name, const juce::var& value) override; ///< As setMember().
    void removeProperty (const juce::Identifier& name) override;                      ///< From either place.
    Ptr clone() override;                                                             ///< A deep copy.

    /** The form in which the framework writes an object, a member a line. */
    void writeAsJSON (juce::OutputStream& stream, int indentLevel, bool allOnOneLine,
                      int maximumDecimalPlaces) override;

private:
    struct Further;

    [[nodiscard]] juce::NamedValueSet& plain() const;
    [[nodiscard]] int placeOf (const juce::String& name) const;
    [[nodiscard]] const juce::var* find (const juce::Identifier& name) const;
    [[nodiscard]] int placeForMember (const juce::String& name);

    std::unique_ptr<Further> further; ///< the members behind the first ones
};

} // namespace ZEP::Core
