// SPDX-License-Identifier: GPL-3.0-only
// Text with looks from a stranger, as the JSON of a project tells it: its runs lie within it through all that is done with it, and
// every document shows it. An input is the text of one event.
#include "CheckProject.h"

#include "core/text/RichTextString.h"
#include "export/EventPDFExporter.h"
#include "export/frame/EventExportSettingsSet.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size);

namespace
{

/** Pieces of a text keep their looks, and an edit leaves sound runs. */
void checkPieces (const RichTextString& text)
{
    const auto length = text.length();
    checkText (text);
    law (text.substring (0) == text, "the whole of a text is the text");

    for (const auto place : { 0, 1, length / 3, length / 2, length - 1, length, length + 1 })
    {
        const auto head = text.substring (0, place);
        const auto tail = text.substring (place);
        checkText (head);
        checkText (tail);
        law (head.getText() + tail.getText() == text.getText() || place < 0, "two pieces are the whole");
        law (head.formattedRuns().size() <= text.formattedRuns().size(), "a piece has no run of its own");
    }

    const auto letter = text.getText().substring (length / 2, length / 2 + 1);

    if (letter.isNotEmpty())
    {
        law (text.replace (letter, letter) == text, "what is replaced by itself stays");
        checkText (text.replace (letter, "two words", true));
        checkText (text.replace (letter, {}));
    }

    checkText (text.replaceIllegalASCIICharacters());
}

void checkDocuments (const RichTextString& text)
{
    EventPDFExporter sheet (std::make_shared<EventExportSettingsSet>());
    const auto page = sheet.htmlStringFromRichText (text);
    checkText (page);
    law (! text.isPlain() || page == text.getText().replace ("\n", "<br />"),
         "plain text stays plain on the page");

    const juce::var json (text.toJSONDynamicObject().get());
    law (json["text"] == juce::var (text.getText()), "the JSON of a text holds its characters");
    law (json["runs"].size() == static_cast<int> (text.formattedRuns().size()),
         "the JSON of a text has its runs");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    startApplication();
    const auto text = R"({"overmarks":1,"events":[{"uuid":"u","type":8,"text":)"
                      + std::string (bytesOfInput (data, size)) + "}]}";
    Project project;
    const auto complaint = ProjectJSON::fromText (text, project);
    checkText (complaint);

    if (complaint.isNotEmpty())
        return 0;

    for (const auto& event : project.list->events)
    {
        checkPieces (event->getText());
        checkDocuments (event->getText());
    }

    checkProject (project);
    return 0;
}
