// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "event/EventFields.h"

#include <map>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace ZEP::Core
{

/** Text and formatted runs, such as: Hello [0-5 Bold 12 ffff0000]. For the messages of failed tests. */
inline std::ostream& operator<< (std::ostream& out, const RichTextString& text)
{
    out << text.getText();
    for (const auto& run : text.formattedRuns())
        out << " [" << run.range.getStart() << "-" << run.range.getEnd() << " " << run.font.getTypefaceStyle()
            << " " << run.font.getHeight() << (run.font.isUnderlined() ? " underlined " : " ")
            << run.colour.toString() << "]";
    return out;
}

} // namespace ZEP::Core

namespace ZEP::Overmarks::Testing
{

template <typename Value>
std::string inWords (const Value& value)
{
    std::ostringstream out;
    out << std::boolalpha << value;
    return out.str();
}

inline std::string inWords (EventType type) { return std::to_string (static_cast<int> (type)); }

inline std::string inWords (ForcedNarrativeRegion region)
{
    return std::to_string (static_cast<int> (region));
}

/** What an event keeps when it is stored, as text, by the names of the stored records. */
inline std::map<std::string, std::string> storedFieldsOf (const Event& event)
{
    std::map<std::string, std::string> fields;
    EventFields::visit (event, [&] (const auto& name, const auto& value)
                        { fields[std::string (name)] = inWords (value); });
    return fields;
}

/** All fields of an event as text, also those that are never stored. */
inline std::map<std::string, std::string> fieldsOf (const Event& event)
{
    auto fields = storedFieldsOf (event);
    fields["timeInfo"] = inWords (event.getTimeInfo().get());
    fields["timeReference"] = inWords (event.getTimeReference());
    fields["notificationsSuppressed"] = inWords (event.areNotificationsSuppressed());
    fields["undoBypass"] = inWords (event.isUndoBypassed());
    fields["applicationFlagA"] = inWords (event.getApplicationFlagA());
    fields["applicationFlagB"] = inWords (event.getApplicationFlagB());
    fields["isHiddenByFilter"] = inWords (event.isHiddenByFilter());
    fields["displayColour"] = inWords (event.getDisplayColour().toString());
    return fields;
}

/** The times of an event as one draws them: where the streamer starts, the in point, the end. "75|100..150" */
inline std::string timesOf (const Event& event)
{
    return inWords (event.getStartFrameIndex()) + "|" + inWords (event.getInPointFrameIndex()) + ".."
           + inWords (event.getEndFrameIndex());
}

/** One event on one line: ADR Cue 12A 75|100..150 "Hello". */
inline std::string lineOf (const Event& event)
{
    return event.typeString().toStdString() + " " + event.getCueNumber().toStdString() + " " + timesOf (event)
           + " \"" + inWords (event.getText()) + "\"";
}

/** A list, one event a line. */
inline std::string linesOf (const std::vector<std::shared_ptr<Event>>& events)
{
    std::string lines;
    for (const auto& event : events)
        lines += lineOf (*event) + "\n";
    return lines;
}

} // namespace ZEP::Overmarks::Testing
