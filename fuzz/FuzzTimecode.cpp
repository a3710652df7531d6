// SPDX-License-Identifier: GPL-3.0-only
// A time as somebody has typed it: what is read as one is that time and no other, through all the arithmetic and back to a text.
#include "Application.h"

#include "TimecodeText.h"
#include "core/text/StringUtil.h"
#include "core/timecode/TCToolbox.h"
#include "event/Event.h"
#include "event/EventAttribute.h"
#include "import/frame/EventRowReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

constexpr int placeOfSeparator = 8;
constexpr int indexOfNoTime = -1;

bool isSameLabel (const _TCTime& a, const _TCTime& b)
{
    return a.hours == b.hours && a.minutes == b.minutes && a.seconds == b.seconds && a.frames == b.frames
           && a.invalid == b.invalid;
}

/** A number of frames of any size that the bytes stand for. */
int indexOf (std::string_view bytes)
{
    std::uint32_t number = 0;

    for (const char byte : bytes)
        number = number * 257 + static_cast<unsigned char> (byte);

    return static_cast<int> (number);
}

void checkIndex (int index, const std::shared_ptr<TimeInfo>& info)
{
    const auto time = TCToolbox::tcTimeForFrameIndex (index, *info);
    law (TCToolbox::frameIndexForTCTime (time, info) == index, "an index becomes a time and the same index");
    law (TCToolbox::existsUnder (time, info->tcDef), "an index becomes a label that exists");

    const auto& def = info->tcDef;
    const auto text = TCToolbox::stringFromTCTime (time, def.dropFrame);
    const auto read = TCToolbox::tcTimeFromString (text);

    if (time.hours >= 0 && time.hours < 100)
        law (isSameLabel (read, time), "a time that is written is read as the same time");
}

/** A label of a picture's timecode. */
void checkLabel (_TCTime time, const std::shared_ptr<TimeInfo>& info)
{
    const auto& def = info->tcDef;
    const auto index = TCToolbox::frameIndexForTCTime (time, info);
    const auto there = TCToolbox::tcTimeForFrameIndex (index, *info);
    law (isSameLabel (there, time) == TCToolbox::existsUnder (time, def),
         "labels that exist come back, and no others");

    bool isEarlier = false;
    const auto span = TCToolbox::subtractTCTimes (info->timeOrigin, time, def, &isEarlier);
    law (TCToolbox::convertToAbsoluteFrames (span, def) == index, "a span has as many frames as its index");
    law (isEarlier == (index < 0), "a span is told to be negative when it is");
    law (isSameLabel (TCToolbox::addFramesAndTCTimes (index, info->timeOrigin, def), there),
         "a span that is added again ends where it ended");
}

/** A cell of a cue list, and what is typed into the field of a time. */
void checkCell (const juce::String& text, _TCTime time, const std::shared_ptr<TimeInfo>& info)
{
    const EventRowReader reader (info, std::make_shared<ADRCharacterMap>());
    const std::vector<std::vector<RichTextString>> rows { { text, juce::String ("line") } };
    const auto result = reader.read (rows, { { "Start TC", 0 }, { "Text", 1 } }, 0);
    law (result.events.size() == 1, "a row with a text is an event");
    const auto& event = *result.events[0];
    const auto isTimed = event.getInPointFrameIndex() != indexOfNoTime;
    law (! (isTimed && ! result.problems.empty()), "a cell is a time or a problem");
    law (isTimed != event.getStartTCString().startsWith ("--"), "an event shows its time if it has one");

    if (TCToolbox::existsUnder (time, info->tcDef)
        && TCToolbox::frameIndexForTCTime (time, info) != indexOfNoTime)
        law (event.getStartTCString() == TCToolbox::stringFromTCTime (time, info->tcDef.dropFrame),
             "a label in a cell is the time of the event");

    const auto typed = timecodeInProjectsSpelling (event, text);
    law (timecodeInProjectsSpelling (event, typed) == typed, "a project's spelling is its own spelling");
    law (typed.startsWith ("--") || ! TCToolbox::tcTimeFromString (typed).invalid,
         "a project's spelling is a timecode or none");

    const auto other = Event::create (EventTypeADRCue, info, 0, -1, -1.0f, -1);
    other->setUndoBypass (true);
    other->setEndTCString (text);
    law (other->getEndFrameIndex() >= other->getInPointFrameIndex(), "no end lies before its in point");
    other->setStartTCString (text);
    checkText (other->getStartTCString() + other->getEndTCString());
}

void checkRateName (const juce::String& text)
{
    const auto def = TCToolbox::tcDefForRateName (text);

    if (! def.has_value())
        return;

    const auto name = TCToolbox::rateNameForTCDef (*def);
    law (name == text.trim().toLowerCase(), "a rate has the name that it was found by");
}

/** The timecodes that the tool finds in a document. */
void checkFound (std::string_view bytes)
{
    std::size_t end = 0;

    for (const auto& found : DocxHandler::findTimecodes (bytes))
    {
        law (found.start >= end && found.end > found.start && found.end <= bytes.size(),
             "timecodes are found from left to right");
        end = found.end;
        law (DocxHandler::isTimecode (bytes.substr (found.start, found.end - found.start)),
             "what was found is a timecode");
    }

    for (const auto& alone : DocxHandler::timecodesAlone (bytes))
        law (DocxHandler::isTimecode (alone), "what stands alone is a timecode");

    const auto ofSeconds = DocxHandler::timecodeOfSeconds (bytes);
    law (ofSeconds.empty() || DocxHandler::isTimecode (ofSeconds), "a time of seconds becomes a timecode");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    const auto bytes = bytesOfInput (data, size);
    const auto text = StringUtil::fromUTF8 (bytes);
    const auto time = TCToolbox::tcTimeFromString (text);

    if (! time.invalid)
    {
        const auto label = text.trim();
        law (TCToolbox::stringFromTCTime (time, label[placeOfSeparator] == ';') == label,
             "a timecode becomes a time and the same text");
    }

    for (const auto& name : TCToolbox::rateNames())
    {
        const auto info = timeInfoAt (name.toRawUTF8(), "01:00:00:00");
        checkIndex (indexOf (bytes), info);
        checkIndex (indexOf (bytes) / 1000, info);

        if (! time.invalid)
            checkLabel (time, info);
    }

    checkCell (text, time, timeInfoAt ("25", "00:00:00:00"));
    checkCell (text, time, timeInfoAt ("29.97df", "10:00:00;00"));
    checkRateName (text);
    checkFound (bytes);
    return 0;
}
