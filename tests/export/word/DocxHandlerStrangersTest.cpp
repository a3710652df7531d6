// SPDX-License-Identifier: GPL-3.0-only
// The files of the talk have names that everybody knows, in a folder that may be everybody's.
#include "export/word/DocxHandlerProtocol.h"

#include "export/word/WordExportSupport.h"
#include "support/CollectedLog.h"
#include "support/Stranger.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>

using namespace WordExportSupport;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using ZEP::Overmarks::Testing::CollectedLog;
using ZEP::Overmarks::Testing::PretendedUser;
using ZEP::Overmarks::Testing::SharedByAll;
namespace Protocol = ZEP::Overmarks::DocxHandlerProtocol;
namespace fs = std::filesystem;

namespace
{

constexpr auto progressFile = "P2CcomWordExporter.txt";
constexpr auto cancelFile = "C2PcomWordExporter.txt";
constexpr auto documentFile = "WordDocumentJSON_timecode.txt";
constexpr auto stolen = "#!/bin/sh\n"; ///< what the user's own file has to go on saying

unsigned int permissionsOf (const fs::path& path)
{
    struct stat status
    {
    };
    EXPECT_EQ (::lstat (path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

/** A file in a folder of everybody's. */
juce::File sharedFile (const SharedByAll& shared, const std::string& name, const std::string& bytes)
{
    std::ofstream (shared.path (name), std::ios::binary) << bytes;
    return shared.file (name);
}

/** Each kind of thing that somebody may have put under a name. */
enum class Trap
{
    link,
    linkToNothing,
    linkToFolder,
    hardLink,
    pipe
};

void PrintTo (Trap trap, std::ostream* stream)
{
    const char* names[] = { "link", "linkToNothing", "linkToFolder", "hardLink", "pipe" };
    *stream << names[static_cast<int> (trap)];
}

class SetTrap : public WordExportTest, public testing::WithParamInterface<Trap>
{
protected:
    SetTrap() { folder.write ("mine", stolen); }

    void setAt (const std::string& name) const
    {
        const auto path = tool.temporary / name;

        switch (GetParam())
        {
            case Trap::link: fs::create_symlink (folder.path / "mine", path); break;
            case Trap::linkToNothing: fs::create_symlink (folder.path / "new", path); break;
            case Trap::linkToFolder: fs::create_directory_symlink (folder.path, path); break;
            case Trap::hardLink: fs::create_hard_link (folder.path / "mine", path); break;
            case Trap::pipe: ASSERT_EQ (::mkfifo (path.c_str(), 0666), 0); break;
        }
    }

    void expectNothingHappened() const
    {
        EXPECT_EQ (folder.bytes ("mine"), stolen);
        EXPECT_THAT (folder.names(), Not (Contains ("new")));
    }
};

} // namespace

// ---- what lies in wait under a name ----------------------------------------------------------------------------------------

TEST_P (SetTrap, ofADocumentGivesWayAndIsNeverWrittenInto)
{
    setAt (documentFile);
    exporter.exportEventsByTimecode();
    expectNothingHappened();
    EXPECT_TRUE (kept ("timecode").contains ("footer")) << "the document, and nothing else";
}

TEST_P (SetTrap, ofTheWordToStopIsNeverWrittenInto)
{
    setAt (cancelFile);
    EXPECT_FALSE (Protocol::writeCancel (Protocol::cancelFilePath()));
    expectNothingHappened();
}

TEST_P (SetTrap, ofWhatTheToolTellsHoldsNothingUp)
{
    folder.write ("mine", "Error message = mine\n");
    setAt (progressFile);

    if (GetParam() == Trap::hardLink
        || GetParam() == Trap::link) // the user's own, whatever else it is called
        EXPECT_EQ (Protocol::errorIn (juce::File (Protocol::progressFilePath())), juce::String ("mine"));
    else
        EXPECT_EQ (Protocol::errorIn (juce::File (Protocol::progressFilePath())), std::nullopt);
}

TEST_P (SetTrap, ofAFileThatIsToBeReplacedGivesWay)
{
    setAt (documentFile);
    const juce::File file (text ((tool.temporary / documentFile).string()));
    EXPECT_TRUE (Protocol::replaceFile (file, {}));
    expectNothingHappened();
    EXPECT_EQ (permissionsOf (tool.temporary / documentFile), 0600u);
    EXPECT_EQ (tool.bytes (documentFile), "");
}

INSTANTIATE_TEST_SUITE_P (DocxHandlerStrangers, SetTrap,
                          testing::Values (Trap::link, Trap::linkToNothing, Trap::linkToFolder,
                                           Trap::hardLink, Trap::pipe));

// ---- files of another user -------------------------------------------------------------------------------------------------

TEST (DocxHandlerStrangers, whatAnotherUserTellsIsNotBelieved)
{
    SharedByAll shared;
    const auto file = sharedFile (shared, progressFile, "completionLevel=50\nError message = theirs\n");
    EXPECT_EQ (Protocol::firstLineOf (file), juce::String ("completionLevel=50"));
    EXPECT_EQ (Protocol::errorIn (file), juce::String ("theirs"));
    EXPECT_TRUE (Protocol::contentOf (file).has_value());
    EXPECT_FALSE (Protocol::isAStrangers (file));

    shared.giveToStranger (progressFile);
    EXPECT_EQ (Protocol::firstLineOf (file), std::nullopt);
    EXPECT_EQ (Protocol::errorIn (file), std::nullopt);
    EXPECT_EQ (Protocol::contentOf (file), std::nullopt);
    EXPECT_TRUE (Protocol::isAStrangers (file));
}

TEST (DocxHandlerStrangers, whoeverMayWriteToAFolderThatIsNotEverybodysIsTrusted)
{
    const TemporaryFolder folder;
    folder.write (progressFile, "theirs");
    const PretendedUser somebodyElse;
    EXPECT_TRUE (Protocol::contentOf (folder.file (progressFile)).has_value());
    EXPECT_FALSE (Protocol::isAStrangers (folder.file (progressFile)));
}

TEST (DocxHandlerStrangers, aLinkOfAnotherUserToAFileOfTheUsersIsNotFollowed)
{
    SharedByAll shared;
    shared.own.write ("mine", "Error message = mine\n");
    fs::create_symlink (shared.own.path / "mine", shared.path (progressFile));
    EXPECT_EQ (Protocol::errorIn (shared.file (progressFile)), juce::String ("mine"))
        << "it is the user's own";
    shared.giveToStranger (progressFile);
    EXPECT_EQ (Protocol::errorIn (shared.file (progressFile)), std::nullopt);
    EXPECT_EQ (Protocol::contentOf (shared.file (progressFile)), std::nullopt);
}

TEST (DocxHandlerStrangers, aFileOfAnotherUserGetsNoWordToStop)
{
    SharedByAll shared;
    const auto file = sharedFile (shared, cancelFile, "theirs");
    shared.giveToStranger (cancelFile);
    EXPECT_FALSE (Protocol::writeCancel (file.getFullPathName()));
    EXPECT_EQ (file.loadFileAsString(), "theirs");
}

TEST_F (WordExportTest, aDocumentInAnotherUsersFileIsNotMade)
{
    // What can't be removed stays: a folder stands for the file that somebody else has in a folder of everybody's.
    fs::create_directories (tool.temporary / documentFile / "x");
    fs::permissions (tool.temporary, static_cast<fs::perms> (01777));

    // Only the administrator gives a file away; for anybody else it stays the user's own.
    const bool isAnothers =
        ::lchown ((tool.temporary / documentFile).c_str(), SharedByAll::stranger, SharedByAll::stranger) == 0;
    const CollectedLog log;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (tool.runs(), 0);
    EXPECT_THAT (log.lines(), ElementsAre (tool.inTemporary (documentFile)
                                           + (isAnothers ? " belongs to another user"
                                                         : " can't be replaced (Directory not empty)")
                                           + ", so docxHandler isn't started"));
    EXPECT_THAT (folder.names(), IsEmpty());
}

TEST_F (WordExportTest, anOlderListThatCannotBeReplacedMakesNoDocument)
{
    fs::create_directories (tool.temporary / documentFile
                            / "x"); // as a file in a folder that may not be changed
    const CollectedLog log;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (tool.runs(), 0);
    EXPECT_THAT (log.lines(),
                 ElementsAre (tool.inTemporary (documentFile)
                              + " can't be replaced (Directory not empty), so docxHandler isn't started"));
}

TEST_F (WordExportTest, aPathIsRegisteredAlsoWhereNoFileCanBeMade)
{
    fs::create_directories (tool.temporary / documentFile / "x");
    exporter.wordDocument = std::make_unique<WordDocument>();
    const auto path = exporter.writeAndRegisterJSONFile ("timecode");
    EXPECT_THAT (exporter.getTmpJSONFilePaths(), ElementsAre (path));
}

TEST_F (WordExportTest, anErrorBehindALinkOfTheUsersOwnIsTold)
{
    fs::create_symlink (folder.path / "elsewhere", tool.temporary / progressFile);
    EXPECT_EQ (Protocol::errorIn (juce::File (Protocol::progressFilePath())), std::nullopt)
        << "nothing is there";
    folder.write ("elsewhere", "Error message = broken\n");
    EXPECT_EQ (Protocol::errorIn (juce::File (Protocol::progressFilePath())), juce::String ("broken"));
}

TEST_F (WordExportTest, nobodyElseReadsTheDocumentWhileItIsMade)
{
    tool.install ("stat -c %a \"$json\" > \"$here/rights\"");
    exporter.exportEventsByTimecode();
    EXPECT_EQ (tool.note ("rights"), "600\n");
    exporter.cancel();
    EXPECT_EQ (permissionsOf (tool.temporary / cancelFile), 0600u);
}

// ---- a folder of one's own -------------------------------------------------------------------------------------------------

TEST_F (WordExportTest, aNamedFolderHoldsAllFilesUntilItIsNamedNoMore)
{
    EXPECT_EQ (Protocol::folder().getFullPathName().toStdString(), tool.temporary.string());
    Protocol::setFolder (folder.file ("talk"));
    EXPECT_EQ (Protocol::progressFilePath(), folder.directory() + "/talk/" + progressFile);
    EXPECT_EQ (Protocol::cancelFilePath(), folder.directory() + "/talk/" + cancelFile);
    EXPECT_EQ (Protocol::exportJSONFilePath ("timecode"), folder.directory() + "/talk/" + documentFile);
    EXPECT_EQ (Protocol::importJSONFilePath(), folder.directory() + "/talk/WordDocumentJSONImport.txt");
    Protocol::setFolder ({});
    EXPECT_EQ (Protocol::progressFilePath().toStdString(), tool.inTemporary (progressFile));
}

TEST_F (WordExportTest, aPrivateFolderIsNobodyElsesAndGoneAtTheEnd)
{
    {
        const Protocol::PrivateFolder privateFolder;
        ASSERT_TRUE (privateFolder.result().wasOk());
        const auto path = fs::path (Protocol::folder().getFullPathName().toStdString());
        EXPECT_EQ (path.parent_path(), tool.temporary);
        EXPECT_EQ (permissionsOf (path), 0700u);

        tool.plant (documentFile, "theirs");
        tool.plant (progressFile, "Error message = theirs");
        tool.install (keepJSONAndWrite);
        EventWordExporter own (settings);
        own.exportEventsByTimecode();
        EXPECT_THAT (tool.words().at (2), HasSubstr ("json=" + path.string() + "/" + documentFile));
        EXPECT_THAT (tool.words().at (4), HasSubstr ("com=" + path.string() + "/" + progressFile));
        EXPECT_EQ (folder.names().size(), 1u);
    }

    EXPECT_EQ (Protocol::folder().getFullPathName().toStdString(), tool.temporary.string());
    EXPECT_THAT (tool.temporaryFiles(), ElementsAre (progressFile, documentFile));
    EXPECT_EQ (tool.bytes (documentFile), "theirs");
    ::setenv ("TMPDIR", folder.path.c_str(), 1);
    EXPECT_EQ (Protocol::folder().getFullPathName(), folder.directory())
        << "wherever the temporary folder is by now";
}

TEST_F (WordExportTest, withoutAPlaceForAPrivateFolderTheReasonIsSaid)
{
    fs::remove_all (tool.temporary);
    const Protocol::PrivateFolder privateFolder;
    EXPECT_EQ (privateFolder.result().getErrorMessage().toStdString(),
               "There is no place for temporary files in " + tool.temporary.string()
                   + ": No such file or directory");
    EXPECT_EQ (Protocol::folder().getFullPathName().toStdString(), tool.temporary.string());
}

// ---- names and the shell ---------------------------------------------------------------------------------------------------

TEST_F (WordExportTest, namesOfAnySignsRunNothingAndArriveWhole)
{
    const std::string signs = R"(a"b$(touch hacked)`touch hacked`\!;|&<>%'*?)"
                              "\n-rf";
    const auto before = fs::current_path();
    fs::current_path (folder.path);
    settings->fileName = text (signs);
    settings->outputDirectory = folder.directory() + text ("/-out " + signs);
    settings->projectSettings.projectName = text (signs);
    fs::create_directory (folder.path / ("-out " + signs));
    tool.install (keepJSONAndWrite);
    exporter.exportEventsByTimecode();
    fs::current_path (before);

    EXPECT_EQ (tool.words().at (3),
               "output=" + folder.path.string() + "/-out " + signs + "/" + signs + ".docx");
    EXPECT_THAT (folder.names(), ElementsAre ("-out " + signs)) << "nothing else may have run";
    EXPECT_TRUE (fs::exists (folder.path / ("-out " + signs) / (signs + ".docx")));
}
