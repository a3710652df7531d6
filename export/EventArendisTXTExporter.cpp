// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventArendisTXTExporter.h"

#include "export/frame/FixedWidthText.h"
#include "export/frame/OutputFile.h"
#include "export/frame/SingleByteText.h"

#include <string>
#include <tuple>

/*  The file begins with its title, in UTF-8, and six CR LF. Every line ends in CR LF:

        offset   length   line
             0       56   blanks                                          of a cue number that is another than the last one
            56       16   cue number, 16 bytes of it at most
             0        9   (1. Band)                                       of every event
             0       16   character's name and ":", or blanks             of 39 bytes of dialogue, at least one for each event;
            16       39   dialogue, not filled up                         the name stands in the first

    A name of 16 bytes or more is its first 7, "~", its last 7 and ":". */

namespace ZEP::Overmarks
{
namespace
{

constexpr int kLinesBehindTitle = 6;
constexpr std::size_t kCueNumberIndent = 56;
constexpr std::size_t kCueNumberMost = 16;
constexpr auto kBand = "(1. Band)";
constexpr std::size_t kLabelWidth = 16;
constexpr std::size_t kLabelEnd = 7; // of a shortened name, on either side
constexpr std::size_t kTextMost = 39;

std::string textOf (const Event& event)
{
    return latin1Text (without (without (event.getText().getText().toStdString(), "\n"), "\r"));
}

std::string labelOf (const Event& event)
{
    const auto character = event.character();

    if (character == nullptr)
        return {};

    auto label = latin1Text (character->name.toStdString());

    if (label.size() >= kLabelWidth)
        label.replace (kLabelEnd, label.size() - 2 * kLabelEnd, "~");

    label += ':';
    return label;
}

void writeCueNumber (FixedWidthText& lines, const juce::String& cueNumber)
{
    lines.blanks (kCueNumberIndent);
    lines.text (latin1Text (cueNumber.toStdString()).substr (0, kCueNumberMost));
    lines.endLine();
}

void writeDialogue (FixedWidthText& lines, const Event& event)
{
    const auto text = textOf (event);
    const auto pieces = piecesOf (text, kTextMost);

    lines.column (labelOf (event), kLabelWidth, kLabelWidth);

    for (std::size_t i = 0; i < pieces.size(); ++i)
    {
        if (i > 0)
        {
            lines.endLine();
            lines.blanks (kLabelWidth);
        }

        lines.text (pieces[i]);
    }

    lines.endLine();
}

} // namespace

juce::String EventArendisTXTExporter::exportEvents (const std::vector<std::shared_ptr<Event>>& events,
                                                    const juce::String& path, const juce::String& title)
{
    FixedWidthText lines;
    juce::String lastCueNumber;
    lines.text (title.toStdString());

    for (int i = 0; i < kLinesBehindTitle; ++i)
        lines.endLine();

    for (const auto& event : events)
    {
        if (event->getCueNumber() != lastCueNumber)
            writeCueNumber (lines, event->getCueNumber());

        lastCueNumber = event->getCueNumber();
        lines.text (kBand);
        lines.endLine();
        writeDialogue (lines, *event);
    }

    OutputFile file (juce::File (path), OutputFile::OnFailure::nothingStaysThere);
    file.write (lines.bytes().data(), lines.bytes().size());
    std::ignore = file.finish(); // whoever wants to know looks for the file
    return {};
}

} // namespace ZEP::Overmarks
