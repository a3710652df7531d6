// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/Project.h"
#include "support/RandomEvents.h"

#include <limits>
#include <memory>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** Projects by chance, with everything in them that a project can hold: extreme numbers, texts of all writing systems, runs
    of any look, fades anywhere. The same for the same seed. */
class RandomProjects final
{
public:
    explicit RandomProjects (unsigned int seed) : random (seed) {}

    Project make()
    {
        auto project = Project::createEmpty (timeInfo());
        project.name = text();
        project.list->sortKey = random.oneOf<juce::String> ({ "StartTCString", "CueNumber", "", "Nonsense" });
        project.list->sortDescending = random.oneIn (2);
        if (random.oneIn (2))
            DocumentSettings::visit (project.documents, [this] (const char*, auto& field) { fill (field); });
        for (int i = random.below (9); i > 0; --i)
            project.userReasons.push_back (text());
        for (int i = random.below (6); i > 0; --i)
            addCharacterTo (*project.characters);
        addEventsTo (project);
        return project;
    }

    juce::String text() { return random.oneOf (texts()) + random.oneOf (texts()); }

    ZEP::Core::RichTextString richText()
    {
        ZEP::Core::RichTextString made (text() + text());
        for (int i = random.below (5); i > 0 && made.length() > 0; --i)
        {
            const int start = random.below (made.length());
            const juce::Range<int> range (start, random.between (start + 1, made.length()));
            if (! random.oneIn (3))
                made.setFont (range, font());
            if (! random.oneIn (3))
                made.setColour (range, juce::Colour (static_cast<juce::uint32> (random.engine())));
        }
        return made;
    }

private:
    static const std::vector<juce::String>& texts()
    {
        static const auto made = []
        {
            std::vector<juce::String> all;
            for (const auto* text : { "",
                                      "",
                                      "Hello",
                                      " ",
                                      "Zoë",
                                      "日本語",
                                      "😀",
                                      "👩‍👩‍👧",
                                      "e\xcc\x81",
                                      "שלום",
                                      "\xe2\x80\xae"
                                      "reversed",
                                      "\"quoted\"",
                                      "back\\slash",
                                      "two\nlines",
                                      "tab\t",
                                      "\r\n",
                                      "\x01\x1f\x7f",
                                      "\xef\xbb\xbf",
                                      "\xef\xbf\xbf",
                                      "\xf4\x8f\xbf\xbf",
                                      "\xe2\x80\xa8",
                                      "</script>",
                                      "\xc2\xa0",
                                      "%s%n",
                                      "{}[]:,",
                                      "--" })
                all.emplace_back (juce::CharPointer_UTF8 (text));
            return all;
        }();
        return made;
    }

    juce::Font font()
    {
        juce::Font made (random.oneOf<float> ({ 0.1f, 7.4f, 12.0f, 14.0f, 96.0f, 9999.9f }));
        if (random.oneIn (3))
            made.setTypefaceName (random.oneOf<juce::String> ({ "Courier New", "<Serif>", "Nöt there" }));
        if (random.oneIn (5))
            made.setTypefaceStyle (
                random.oneOf<juce::String> ({ "Light", "Bold Oblique", "Condensed Strikethrough" }));
        else
        {
            made.setBold (random.oneIn (2));
            made.setItalic (random.oneIn (2));
        }
        made.setUnderline (random.oneIn (2));
        if (random.oneIn (6))
            made.setHorizontalScale (random.oneOf<float> ({ 0.7f, 1.3f }));
        if (random.oneIn (6))
            made.setExtraKerningFactor (random.oneOf<float> ({ -0.05f, 0.1f }));
        return ZEP::Core::RichTextString::withStrikethrough (made, random.oneIn (4));
    }

    void fill (juce::String& field) { field = text(); }
    void fill (int& field) { field = anyInt(); }
    void fill (bool& field) { field = random.oneIn (2); }

    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo()
    {
        const auto rate = random.oneOf (ZEP::Core::TCToolbox::rateNames()).toStdString();
        auto made =
            timeInfoAt (rate, random.oneOf<std::string> ({ "00:00:00:00", "09:59:50:00", "99:59:59:23" }));
        if (random.oneIn (2))
            made->setFirstFrameOfAction (ZEP::Core::TCToolbox::tcTimeFromString ("10:00:00:12"));
        return made;
    }

    void addCharacterTo (ZEP::Core::ADRCharacterMap& characters)
    {
        auto made = std::make_shared<ZEP::Core::ADRCharacter> (text());
        made->actor = text();
        made->prefix = text();
        random.identifiers.push_back (characters.addCharacter (
            made, random.oneIn (2), "id " + juce::String (random.identifiers.size()) + text()));
    }

    int anyInt()
    {
        return random.oneOf<int> ({ -1, 0, 1, 100, -75, random.below (100000),
                                    std::numeric_limits<int>::max(), std::numeric_limits<int>::min() });
    }

    void addEventsTo (Project& project)
    {
        auto& events = project.list->events;
        for (int i = random.below (12); i > 0; --i)
            events.push_back (filled (random.untimed(), project));
        if (random.oneIn (2))
            filled (events[0], project);
        if (random.oneIn (3))
            events.push_back (event (EventTypeFadeOut, "a second one", 5, 5, 5));
        random.shuffle (events);
    }

    /** The event with anything in every stored field but its type and identity. */
    std::shared_ptr<Event> filled (std::shared_ptr<Event> made, const Project& project)
    {
        made->setTimeInfo (project.timeInfo);
        setTimes (*made, anyInt(), anyInt(), anyInt());
        setField (*made, "cueNumber", text());
        for (const auto* field : { "text", "notes", "engineeringNotes" })
            setField (*made, field, richText());
        for (const auto* field :
             { "streamerDuration", "recTrackIndex", "numRecordedTakes", "selectedTake", "altTake" })
            setField (*made, field, anyInt());
        setField (*made, "reason", random.between (-1, 40));
        for (const auto* field : { "enabled", "done", "storedFlag", "isForcedNarrative" })
            setField (*made, field, random.oneIn (2));
        setField (*made, "forcedNarrativeRegion", static_cast<ForcedNarrativeRegion> (anyInt()));
        setField (*made, "beatsPerMinute", random.oneOf<float> ({ -1.0f, 0.1f, 63.7f, 1e30f, -1e-30f }));
        if (random.oneIn (4))
            setField (*made, "uuid", text() + juce::String (random.below (100000)));
        return made;
    }

    RandomEvents random;
};

} // namespace ZEP::Overmarks::Testing
