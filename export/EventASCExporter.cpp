// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventASCExporter.h"

#include "export/frame/FixedWidthText.h"
#include "export/frame/OutputFile.h"
#include "export/frame/SingleByteText.h"

#include <string>
#include <tuple>

/*  A cue is one line or more, each ended by CR LF, with a blank line behind it unless nothing follows in the list:

        offset   length   first line                                      further lines
             0       24   character's name, 22 bytes of it at most        blanks
            24       37   line of dialogue, its first 35 bytes            its next 35 bytes, not filled up
            61        -   cue number, whole                               nothing

    No character is an empty name. */

namespace ZEP::Overmarks
{
namespace
{

constexpr std::size_t kNameMost = 22;
constexpr std::size_t kNameWidth = 24;
constexpr std::size_t kTextMost = 35;
constexpr std::size_t kTextWidth = 37;

constexpr auto kLineFeed = "\n";
constexpr auto kPageBreak = "\r\f";
constexpr auto kTwoBlanks = "  ";
constexpr auto kTab = "\t";

/** The line of dialogue as it goes into the file. The order of the removals matters. */
std::string textOf (const Event& event)
{
    auto text = event.getText().getText().toStdString();

    for (const auto* removed : { kLineFeed, kPageBreak, kTwoBlanks, kTab })
        text = without (text, removed);

    return latin1Text (text);
}

std::string nameOf (const Event& event)
{
    const auto character = event.character();

    if (character == nullptr)
        return {};

    return latin1Text (without (without (character->name.toStdString(), kLineFeed), kPageBreak));
}

void writeCue (FixedWidthText& lines, const Event& event)
{
    const auto text = textOf (event);
    lines.column (nameOf (event), kNameMost, kNameWidth);
    lines.column (text, kTextMost, kTextWidth);
    lines.text (latin1Text (event.getCueNumber().toStdString()));
    lines.endLine();

    if (text.size() <= kTextMost)
        return;

    for (const auto piece : piecesOf (std::string_view (text).substr (kTextMost), kTextMost))
    {
        lines.blanks (kNameWidth);
        lines.text (piece);
        lines.endLine();
    }
}

} // namespace

juce::String EventASCExporter::exportEvents (const std::vector<std::shared_ptr<Event>>& events,
                                             const juce::String& path)
{
    FixedWidthText lines;

    for (std::size_t i = 0; i < events.size(); ++i)
    {
        if (events[i]->getType() != EventTypeADRCue)
            continue;

        writeCue (lines, *events[i]);

        if (i + 1 < events.size())
            lines.endLine();
    }

    OutputFile file (juce::File (path), OutputFile::OnFailure::nothingStaysThere);
    file.write (lines.bytes().data(), lines.bytes().size());
    std::ignore = file.finish(); // whoever wants to know looks for the file
    return {};
}

} // namespace ZEP::Overmarks
