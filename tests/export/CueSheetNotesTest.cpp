// SPDX-License-Identifier: GPL-3.0-only
#include "export/CueSheetNotes.h"

#include "export/ExportSupport.h"

using namespace ExportSupport;

namespace
{

constexpr int director = 1, actor = 2, engineer = 3;
constexpr int clarity = 4; ///< as an event stores it: one less than its code

const std::string reasonText = "Clarity (AR4)";

std::string label (const std::string& words)
{
    return "    <div class=\"cueNotesSectionHeaderItem\">        <p style=\"font-size: 10px;\"><b>" + words
           + "</b></p>    </div>";
}

std::string content (const std::string& words, const std::string& style = {})
{
    return "    <div class=\"cueNotesSectionContentItem\"" + style + ">        <p style=\"font-size: 10px;\">"
           + words + "</p>    </div>";
}

std::string row (const std::string& name, const std::string& words)
{
    return "<div class=\"cueNotesSectionItemContainer\">" + label (name) + content (words) + "</div>";
}

std::string sharedRow (const std::string& name, const std::string& words, const std::string& otherName,
                       const std::string& otherWords)
{
    return "<div class=\"cueNotesSectionItemContainer\">" + label (name)
           + content (words, " style=\"width:35%; flex-grow:0\"") + label (otherName) + content (otherWords)
           + "</div>";
}

struct Filled
{
    bool engineeringNotes;
    bool reason;
    bool region;
    std::string expected;
};

class CueSheetNotesTest : public ExportTest
{
protected:
    std::string notesOf (const std::shared_ptr<Event>& cue, int layout) const
    {
        std::string page;
        appendCueSheetNotes (page, cue, static_cast<EventExportLayout> (layout));
        return page;
    }

    std::shared_ptr<Event> fullCue() const
    {
        auto cue = event ({ .notes = "Whisper" });
        cue->setEngineeringNotes (text ("Boom"));
        cue->setReason (clarity);
        cue->setIsForcedNarrative (true);
        return cue;
    }
};

class EngineersRow : public CueSheetNotesTest, public testing::WithParamInterface<Filled>
{
};

} // namespace

TEST_F (CueSheetNotesTest, anActorSeesTheNotesAlone)
{
    EXPECT_EQ (notesOf (fullCue(), actor), row ("NOTES", "Whisper"));
}

TEST_F (CueSheetNotesTest, aDirectorSeesNotesAndReason)
{
    EXPECT_EQ (notesOf (fullCue(), director), row ("NOTES", "Whisper") + row ("REASON", reasonText));
}

TEST_F (CueSheetNotesTest, aReasonNoneInDirectorLayoutWritesNoReasonRow)
{
    const auto cue = event ({});
    cue->setReason (0);
    EXPECT_EQ (notesOf (cue, director), "");
}

TEST_F (CueSheetNotesTest, anEmptyCueHasNoRowInAnyLayout)
{
    for (const int layout : { director, actor, engineer, 0, 99 })
        EXPECT_EQ (notesOf (event ({}), layout), "") << layout;
}

TEST_F (CueSheetNotesTest, anEngineerWithAllThreeSeesNoneOfThem)
{
    EXPECT_EQ (notesOf (fullCue(), engineer), row ("NOTES", "Whisper"));
}

TEST_F (CueSheetNotesTest, everyOtherLayoutIsTheEngineers)
{
    const auto cue = fullCue();
    cue->setIsForcedNarrative (false);

    for (const int layout : { 0, 4, -1 })
        EXPECT_EQ (notesOf (cue, layout),
                   row ("NOTES", "Whisper") + sharedRow ("ENG. NOTES", "Boom", "REASON", reasonText));
}

TEST_P (EngineersRow, holdsWhatIsFilled)
{
    const auto cue = event ({});
    cue->setEngineeringNotes (text (GetParam().engineeringNotes ? "Boom" : ""));
    cue->setReason (GetParam().reason ? clarity : 0);
    cue->setIsForcedNarrative (GetParam().region);
    cue->setForcedNarrativeRegion (ForcedNarrativeRegionTop);
    EXPECT_EQ (notesOf (cue, engineer), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P (
    CueSheetNotes, EngineersRow,
    testing::Values (Filled { false, false, false, "" },
                     Filled { false, false, true, row ("FN REGION", "Top") },
                     Filled { false, true, false, row ("REASON", reasonText) },
                     Filled { false, true, true, sharedRow ("REASON", reasonText, "FN REGION", "Top") },
                     Filled { true, false, false, row ("ENG. NOTES", "Boom") },
                     Filled { true, false, true, sharedRow ("ENG. NOTES", "Boom", "FN REGION", "Top") },
                     Filled { true, true, false, sharedRow ("ENG. NOTES", "Boom", "REASON", reasonText) },
                     Filled { true, true, true, "" }));

TEST_F (CueSheetNotesTest, theFourRegionsHaveTheirNamesAndAnyOtherIsRight)
{
    const std::vector<std::pair<int, std::string>> regions {
        { 0, "Bottom" }, { 1, "Top" }, { 2, "Left" }, { 3, "Right" }, { 4, "Right" }, { -1, "Right" }
    };

    for (const auto& [region, name] : regions)
    {
        const auto cue = event ({});
        cue->setIsForcedNarrative (true);
        cue->setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (region));
        EXPECT_EQ (notesOf (cue, engineer), row ("FN REGION", name)) << region;
    }
}

TEST_F (CueSheetNotesTest, notesKeepTheirLooksAndTheirBreaks)
{
    juce::AttributedString notes;
    notes.append (text ("Quiet"), ZEP::Core::RichTextString::defaultFont().boldened(), juce::Colours::black);
    notes.append (text ("\nplease"), ZEP::Core::RichTextString::defaultFont(), juce::Colours::black);
    const auto cue = event ({});
    cue->setNotes (ZEP::Core::RichTextString (notes));
    EXPECT_EQ (
        notesOf (cue, actor),
        row ("NOTES", "<span style=\"font-weight: bold;color: rgb(0,0,0);\">Quiet</span><br />please"));
}
