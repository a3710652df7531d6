// SPDX-License-Identifier: GPL-3.0-only
// Whatever has become of a file, loading it gives a project or a message.
#include "list/ProjectFile.h"

#include "list/ProjectFileSupport.h"
#include "list/RecordRepair.h"

#include <random>

namespace ZEP::Overmarks::Testing
{
namespace
{

class ProjectFileDamage : public OvermarksTest
{
protected:
    /** A project with runs of text, so that every record stands in it. */
    static Project project()
    {
        auto made = smallProject();
        RandomProjects random (3);
        for (const auto& event : made.list->events)
            setField (*event, "notes", random.richText());
        return made;
    }

    /** Looks at everything of a project that could be loaded, as a table and a save would. */
    static void use (Project& project)
    {
        project.makeCurrent();
        project.list->sortContentAndUpdateFilteredEvents();
        for (const auto& event : project.list->events)
            EXPECT_FALSE (lineOf (*event).empty());
        EXPECT_EQ (differenceOf (loaded (bytesOf (project)), project), "");
    }

    /** Loads a record under a sound header: what the records do by themselves. */
    static void loadRecord (const std::string& record)
    {
        Project project;
        if (ProjectFile::fromBytes (fileAround (record), "x", project).isEmpty())
            use (project);
    }
};

TEST_F (ProjectFileDamage, aFileThatIsCutAnywhereGivesAMessage)
{
    const auto bytes = bytesOf (project());
    for (std::size_t length = 0; length < bytes.size(); ++length)
    {
        const auto message = messageOf (bytes.substr (0, length));
        EXPECT_EQ (message, length == 0 ? "The project file x is empty"
                            : length < headerLength
                                ? "The project file x is cut off"
                                : "The project file x is cut off: " + std::to_string (length) + " of its "
                                      + std::to_string (bytes.size()) + " bytes are there");
    }
}

TEST_F (ProjectFileDamage, everyWrongBitGivesAMessage)
{
    const auto bytes = bytesOf (project());
    for (std::size_t place = 0; place < bytes.size(); ++place)
        for (int bit = 0; bit < 8; ++bit)
        {
            auto damaged = bytes;
            damaged[place] = static_cast<char> (damaged[place] ^ (1 << bit));
            EXPECT_NE (messageOf (damaged), "") << "bit " << bit << " of byte " << place;
        }
}

TEST_F (ProjectFileDamage, manyWrongBytesGiveAMessage)
{
    const auto bytes = bytesOf (project());
    std::mt19937 random (1);
    for (int i = 0; i < 5000; ++i)
    {
        auto damaged = bytes;
        for (auto n = 1 + random() % 20; n > 0; --n)
            damaged[random() % damaged.size()] = static_cast<char> (random());
        EXPECT_EQ (messageOf (damaged).empty(), damaged == bytes) << "round " << i;
    }
}

TEST_F (ProjectFileDamage, aRecordThatIsCutAnywhereIsSurvived)
{
    const auto record = bytesOf (project()).substr (headerLength);
    for (std::size_t length = 0; length < record.size(); ++length)
        loadRecord (record.substr (0, length));
}

TEST_F (ProjectFileDamage, wrongBytesInARecordAreSurvived)
{
    const auto record = bytesOf (project()).substr (headerLength);
    std::mt19937 random (2);
    int survivors = 0;
    for (int i = 0; i < 5000; ++i)
    {
        auto damaged = record;
        for (auto n = 1 + random() % 3; n > 0; --n)
            damaged[random() % damaged.size()] = static_cast<char> (random());
        Project project;
        if (ProjectFile::fromBytes (fileAround (damaged), "x", project).isNotEmpty())
            continue;
        use (project);
        ++survivors;
    }
    EXPECT_GT (survivors, 100) << "else nothing was looked at";
}

TEST_F (ProjectFileDamage, randomBytesAreSurvived)
{
    std::mt19937 random (3);
    for (int i = 0; i < 5000; ++i)
    {
        std::string noise (random() % 200, '\0');
        for (auto& byte : noise)
            byte = static_cast<char> (random());
        EXPECT_NE (messageOf (noise), "");
        loadRecord (noise);
    }
}

// ---- texts that are no UTF-8 ---------------------------------------------------------------------------------------

TEST_F (ProjectFileDamage, aTextThatIsNoUTF8IsMended)
{
    for (const std::string wrong : { "\xff\xfe", "cut \xe2\x82", "\xc0\x80", "\xed\xa0\x80" })
    {
        auto bytes = bytesOf (project());
        const std::string replaced = "Listen";
        auto record = bytes.substr (headerLength);
        const auto place = record.find (replaced);
        ASSERT_NE (place, std::string::npos);
        record.replace (place, wrong.size(), wrong);

        const auto back = loaded (fileAround (record));

        const auto text = back.list->events[2]->getText().getText();
        EXPECT_TRUE (text.containsChar (0xfffd));
        EXPECT_TRUE (text.endsWith (juce::String (replaced.substr (wrong.size())) + " to the water."));
        EXPECT_EQ (back.list->events[3]->getText().getText(), juce::String ("Listen to the water."));
        EXPECT_EQ (differenceOf (loaded (bytesOf (back)), back), "");
    }
}

TEST_F (ProjectFileDamage, mendingReachesEveryTextOfAProject)
{
    const std::string wrong = "wrong \xff!", right = "wrong \xef\xbf\xbd!";
    tessera1::ProtoProject record;
    record.set_name ("name");
    record.add_userreasons ("name");
    record.add_userreasons ("name");
    record.add_characters()->set_actor ("name");
    record.mutable_documentsettings()->set_title ("name");
    record.mutable_list()->set_sortkey ("name");
    record.mutable_list()->add_events()->set_notes ("name");
    record.mutable_list()->mutable_events (0)->add_textattributes()->set_typefacename ("name");
    // As a program does that knows nothing of UTF-8.
    tessera1::ProtoProject expected;
    const auto replaceAll = [] (tessera1::ProtoProject& in, const std::string& text)
    {
        in.set_name (text);
        in.set_userreasons (0, text);
        in.set_userreasons (1, text);
        in.mutable_characters (0)->set_actor (text);
        in.mutable_documentsettings()->set_title (text);
        in.mutable_list()->set_sortkey (text);
        in.mutable_list()->mutable_events (0)->set_notes (text);
        in.mutable_list()->mutable_events (0)->mutable_textattributes (0)->set_typefacename (text);
    };
    expected = record;
    replaceAll (expected, right);
    replaceAll (record, wrong);
    ::testing::internal::CaptureStderr(); // the library of the records says that it doesn't like this
    const auto bytes = record.SerializeAsString();
    ::testing::internal::GetCapturedStderr();

    EXPECT_EQ (RecordRepair::withValidText (*tessera1::ProtoProject::descriptor(), bytes),
               expected.SerializeAsString());
}

TEST_F (ProjectFileDamage, mendingKeepsWhatNobodyKnows)
{
    const std::string newer = "\xc0\x3e\x07";
    EXPECT_EQ (RecordRepair::withValidText (*tessera1::ProtoProject::descriptor(), newer), newer);
}

TEST_F (ProjectFileDamage, nothingIsSaidOnStandardError)
{
    ::testing::internal::CaptureStderr();
    auto record = bytesOf (project()).substr (headerLength);
    record[record.find ("Listen")] = '\xff';
    EXPECT_EQ (messageOf (fileAround (record)), "");
    EXPECT_NE (messageOf (fileAround ("\x0a\x7f")), "");
    EXPECT_EQ (::testing::internal::GetCapturedStderr(), "");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
