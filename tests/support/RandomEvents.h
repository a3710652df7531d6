// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "support/CueLists.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** Events by chance, the same for the same seed on every machine. Values are few, so that many of them are equal. */
class RandomEvents final
{
public:
    explicit RandomEvents (unsigned int seed) : engine (seed) {}

    /** From 0 up to, not including, `end`. */
    int below (int end) { return static_cast<int> (engine() % static_cast<std::uint_fast32_t> (end)); }
    int between (int first, int last) { return first + below (last - first + 1); }
    bool oneIn (int chances) { return below (chances) == 0; }

    template <typename Value>
    Value oneOf (const std::vector<Value>& values)
    {
        return values[static_cast<std::size_t> (below (static_cast<int> (values.size())))];
    }

    template <typename Value>
    void shuffle (std::vector<Value>& values)
    {
        for (auto i = values.size(); i > 1; --i)
            std::swap (values[i - 1], values[static_cast<std::size_t> (below (static_cast<int> (i)))]);
    }

    /** A cast of five, two with the same name, two with the same actor; identifiers for events come from it. */
    void castCharacters()
    {
        identifiers = { addCharacter ("ANNA", "B. Miller", "A"), addCharacter ("BEN", "C. Adams", "B"),
                        addCharacter ("ANNA", "", "AA"), addCharacter ("", "B. Miller", ""),
                        addCharacter ("Zoë of the Hills", "d. young", "z") };
    }

    /** An event with every sort column filled, start, in point and end all set. */
    std::shared_ptr<Event> timed()
    {
        auto made = untimed();
        const int inPoint = between (0, 80) * 5;
        const int start = inPoint - oneOf<int> ({ 0, 25, 50, 75 });
        setTimes (*made, start == -1 ? 0 : start, inPoint, inPoint + below (60));
        return made;
    }

    /** The same without a time. */
    std::shared_ptr<Event> untimed()
    {
        auto made = untimedCue (oneOf (cueNumbers));
        setField (*made, "type",
                  oneOf<EventType> ({ EventTypeADRCue, EventTypeADRCue, EventTypeStreamer, EventTypeMarker,
                                      EventTypeFlutter, eventTypeUnset }));
        setField (*made, "text", ZEP::Core::RichTextString (oneOf (texts)));
        setField (*made, "notes", ZEP::Core::RichTextString (oneOf (texts)));
        setField (*made, "engineeringNotes", ZEP::Core::RichTextString (oneOf (texts)));
        setField (*made, "enabled", oneIn (2));
        setField (*made, "done", oneIn (2));
        setField (*made, "streamerDuration", between (-1, 3));
        setField (*made, "beatsPerMinute", oneOf<float> ({ -1.0f, 0.0f, 63.5f, 64.0f, 120.0f }));
        setField (*made, "recTrackIndex", between (-1, 4));
        setField (*made, "numRecordedTakes", between (-1, 12));
        setField (*made, "reason", between (-1, 40));
        if (! identifiers.empty() && ! oneIn (3))
            setField (*made, "characterID", oneOf (identifiers));
        return made;
    }

    /** An event of which each time is set or not by itself, as a damaged file has it. */
    std::shared_ptr<Event> oddlyTimed()
    {
        auto made = timed();
        const auto unsetSome = [this] (int index) { return oneIn (3) ? -1 : index; };
        setTimes (*made, unsetSome (made->getStartFrameIndex()), unsetSome (made->getInPointFrameIndex()),
                  unsetSome (made->getEndFrameIndex()));
        return made;
    }

    std::mt19937 engine;
    std::vector<juce::String> identifiers;

private:
    static juce::String utf8 (const char* text) { return juce::String (juce::CharPointer_UTF8 (text)); }

    const std::vector<juce::String> cueNumbers { "",   "--", "A1",  "A2",   "A10",   "a10",
                                                 "a2", "1",  "9",   "10",   "09",    "12A",
                                                 "B",  "b1", "B01", "R1-2", "R1-10", utf8 ("Ä1") };
    const std::vector<juce::String> texts { "",       "Go!",         "go!",         "A2",
                                            "A10",    utf8 ("Élan"), utf8 ("日本"), utf8 ("😀"),
                                            "Go! Now" };
};

} // namespace ZEP::Overmarks::Testing
