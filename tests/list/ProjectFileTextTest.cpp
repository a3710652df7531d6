// SPDX-License-Identifier: GPL-3.0-only
// Texts with characters that no file can hold: what is formatted stays with its characters.
#include "list/ProjectFile.h"

#include "list/ProjectFileSupport.h"

#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ZEP::Core::RichTextString;

const juce::Colour red { 0xffff0000 };

/** Where the text is red, and what stands there: "3-7 wave". */
std::string redIn (const RichTextString& text)
{
    std::string found;
    for (const auto& run : text.formattedRuns())
        found += (found.empty() ? "" : ", ") + std::to_string (run.range.getStart()) + "-"
                 + std::to_string (run.range.getEnd()) + " "
                 + text.getText().substring (run.range.getStart(), run.range.getEnd()).toStdString();
    return found;
}

class ProjectFileTextTest : public ProjectFileTest
{
protected:
    static RichTextString throughAFile (const RichTextString& text)
    {
        auto project = smallProject();
        setField (*project.list->events[2], "notes", text);
        return loaded (bytesOf (project)).list->events[2]->getNotes();
    }

    /** What is read where these bytes are stored, and these ranges in red. */
    static RichTextString read (const std::string& stored, const std::vector<std::pair<int, int>>& ranges)
    {
        auto record = recordIn (bytesOf (smallProject()));
        auto& event = *record.mutable_list()->mutable_events (2);
        event.set_notes (stored);
        for (const auto& [start, end] : ranges)
            RichTextString::applyStringAttributeToProtoObject (
                { { start, end }, RichTextString::defaultFont(), red }, event.add_notesattributes());
        return loaded (fileAround (record.SerializeAsString())).list->events[2]->getNotes();
    }
};

TEST_F (ProjectFileTextTest, halfASurrogatePairMovesNoFormatting)
{
    const auto half = juce::String::charToString (0xd83d);
    RichTextString text ("a" + half + half + " wave " + half + "b");
    text.setColour ({ 4, 8 }, red);
    text.setColour ({ 9, 11 }, red);

    const auto back = throughAFile (text);

    EXPECT_EQ (back.length(), text.length());
    EXPECT_EQ (redIn (back), "4-8 wave, 9-11 \xef\xbf\xbd"
                             "b");
    EXPECT_EQ (redIn (throughAFile (back)), redIn (back)) << "and it stays so";
}

TEST_F (ProjectFileTextTest, aZeroThatIsLeftOutTakesTheFormattingWithIt)
{
    const std::string stored ("\0a\0\xc3\xa4 wave\0\xf0\x9f\x98\x80!\0", 17);
    const auto text = read (stored, { { 5, 9 }, { 11, 12 } });
    EXPECT_EQ (text.getText(), juce::String (juce::CharPointer_UTF8 ("a\xc3\xa4 wave\xf0\x9f\x98\x80!")));
    EXPECT_EQ (redIn (text), "3-7 wave, 8-9 !");
}

TEST_F (ProjectFileTextTest, aRangeOfZerosAloneIsNothing)
{
    EXPECT_EQ (redIn (read (std::string ("ab\0\0cd", 6), { { 2, 4 } })), "");
    EXPECT_EQ (redIn (read (std::string ("ab\0\0cd", 6), { { 3, 5 } })), "2-3 c");
    EXPECT_EQ (redIn (read (std::string ("ab\0\0cd", 6), { { 0, 3 } })), "0-2 ab");
    EXPECT_EQ (redIn (read (std::string ("\0\0", 2), { { 0, 2 } })), "");
}

TEST_F (ProjectFileTextTest, aRangeBehindATextWithZerosIsNothing)
{
    EXPECT_EQ (redIn (read (std::string ("a\0b", 3), { { 3, 90 } })), "");
    EXPECT_EQ (redIn (read (std::string ("a\0b", 3), { { 2, 2147483647 } })), "1-2 b");
}

TEST_F (ProjectFileTextTest, aTextWithoutZerosKeepsItsRanges)
{
    EXPECT_EQ (redIn (read ("\xc3\xa4 wave", { { 2, 6 } })), "2-6 wave");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
