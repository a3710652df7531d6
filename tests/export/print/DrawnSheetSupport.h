// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/print/DrawnCueSheetExporter.h"
#include "export/print/DrawnCueSupport.h"

#include <string>
#include <utility>
#include <vector>

namespace ExportSupport
{

constexpr float left = 30, width = 535, divider = 450;

/** A list of cues on sheets for actors. */
class DrawnSheetTest : public ExportTest
{
protected:
    DrawnSheetTest()
    {
        settings->exportType = EventExportTypePDF;
        settings->layout = EventExportLayoutActor;
        settings->projectSettings.projectName = "Harbour";
        addCharacter ("c1", "ANNA", "A", "Miller");
        addCharacter ("c2", "TOM");
    }

    std::shared_ptr<Event> cue (int number, const std::string& character = "c1",
                                const std::string& words = "Hello?") const
    {
        return event ({ "A" + std::to_string (number), number * 100, number * 100 + 80, character, words });
    }

    Events cues (int count, const std::string& character = "c1") const
    {
        Events made;

        for (int i = 1; i <= count; ++i)
            made.push_back (cue (i, character));

        return made;
    }

    ReadPDF byTimecode (const Events& events, PaperSize paper = PaperSize::a4())
    {
        settings->events = events;
        DrawnCueSheetExporter exporter (settings, paper);
        exporter.delegate = &progress;
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        return ReadPDF (folder.file ("Reel 2.pdf"));
    }

    juce::String byCharacter()
    {
        DrawnCueSheetExporter exporter (settings, PaperSize::a4());
        exporter.delegate = &progress;
        return exporter.exportEventsByCharacter();
    }

    /** The boxes of the cues on a page: their upper and lower ends, from the top. */
    static std::vector<std::pair<float, float>> boxesOn (const PDFPage& page)
    {
        std::vector<std::pair<float, float>> boxes;

        for (const auto& box : page.outlines)
            if (box.isRounded)
                boxes.emplace_back (box.y + box.h, box.y);

        return boxes;
    }
};

} // namespace ExportSupport
