// SPDX-License-Identifier: GPL-3.0-only
#include "Arguments.h"

#include <gmock/gmock.h>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Words = std::vector<std::string>;

std::string complaintAbout (const Words& words)
{
    try
    {
        static_cast<void> (parseArguments (words));
        return {};
    }
    catch (const UsageError& error)
    {
        return error.what();
    }
}

} // namespace

TEST (Arguments, exportTakesListsOfTheSameLength)
{
    const auto arguments = parseArguments (
        { "export", "json=/t/a.txt,/t/b.txt", "output=/o/a.docx,/o/b.docx", "com=/t/p.txt,/t/c.txt" });
    EXPECT_EQ (arguments.mode, Mode::exportDocuments);
    EXPECT_THAT (arguments.json, ElementsAre ("/t/a.txt", "/t/b.txt"));
    EXPECT_THAT (arguments.output, ElementsAre ("/o/a.docx", "/o/b.docx"));
    EXPECT_EQ (arguments.progressFile, "/t/p.txt");
    EXPECT_EQ (arguments.cancelFile, "/t/c.txt");
}

TEST (Arguments, importTakesOneDocumentAndOneJSONFile)
{
    const auto arguments =
        parseArguments ({ "import", "input=/d/a, b.docx", "json=/t/x,y.txt", "com=/t/p.txt,/t/c.txt" });
    EXPECT_EQ (arguments.mode, Mode::importDocument);
    EXPECT_EQ (arguments.input, "/d/a, b.docx");
    EXPECT_THAT (arguments.json, ElementsAre ("/t/x,y.txt"));
}

TEST (Arguments, anEmptyListHasNoPaths)
{
    for (const auto& words : { Words { "export", "json=", "output=", "com=p.txt,c.txt" },
                               Words { "export", "", "", "com=p.txt,c.txt" } })
    {
        EXPECT_THAT (parseArguments (words).json, IsEmpty());
        EXPECT_THAT (parseArguments (words).output, IsEmpty());
    }
}

TEST (Arguments, aCommaInAFolderSeparatesNothing)
{
    const auto arguments =
        parseArguments ({ "export", "json=/a,b/1.txt,/a,b/2.txt",
                          "output=/Reel 1, 2/1.docx,/Reel 1, 2/2.docx", "com=/a,b/p.txt,/a,b/c.txt" });
    EXPECT_THAT (arguments.json, ElementsAre ("/a,b/1.txt", "/a,b/2.txt"));
    EXPECT_THAT (arguments.output, ElementsAre ("/Reel 1, 2/1.docx", "/Reel 1, 2/2.docx"));
    EXPECT_EQ (arguments.cancelFile, "/a,b/c.txt");
}

TEST (Arguments, pathsWithOtherExtensionsAreSeparatedAtEachComma)
{
    EXPECT_THAT (splitPaths ("a,b.docx,c", { ".docx" }), ElementsAre ("a", "b.docx", "c"));
    EXPECT_THAT (splitPaths ("a", { ".docx" }), ElementsAre ("a"));
}

TEST (Arguments, aFolderWhoseNameLooksLikeAFileSeparatesNothing)
{
    const auto relative =
        parseArguments ({ "export", "json=1.txt,2.txt", "output=m.docx,n/1.docx,m.docx,n/2.docx",
                          "com=x.txt,y/p.txt,x.txt,y/c.txt" });
    EXPECT_THAT (relative.output, ElementsAre ("m.docx,n/1.docx", "m.docx,n/2.docx"));
    EXPECT_EQ (relative.progressFile, "x.txt,y/p.txt");
    EXPECT_EQ (relative.cancelFile, "x.txt,y/c.txt");

    const auto absolute = parseArguments (
        { "export", "json=/x.txt,y/1.txt,/x.txt,y/2.txt", "output=/m.docx,n/1, 2.docx,/o.docx" });
    EXPECT_THAT (absolute.json, ElementsAre ("/x.txt,y/1.txt", "/x.txt,y/2.txt"));
    EXPECT_THAT (absolute.output, ElementsAre ("/m.docx,n/1, 2.docx", "/o.docx"));
}

TEST (Arguments, oneJSONFileHasOneOutputWhateverItsName)
{
    EXPECT_THAT (parseArguments ({ "export", "json=a.txt", "output=a,b" }).output, ElementsAre ("a,b"));
}

TEST (Arguments, theCommunicationFilesMayBeMissing)
{
    EXPECT_TRUE (parseArguments ({ "import", "input=a", "json=b" }).progressFile.empty());
    EXPECT_TRUE (parseArguments ({ "import", "input=a", "json=b", "com=" }).progressFile.empty());
}

TEST (Arguments, whatIsWrongIsNamed)
{
    EXPECT_EQ (complaintAbout ({}), "Neither export nor import");
    EXPECT_EQ (complaintAbout ({ "convert" }), "Neither export nor import: convert");
    EXPECT_EQ (complaintAbout ({ "export" }), "export needs json= and output=");
    EXPECT_EQ (complaintAbout ({ "import", "json=a" }), "import needs input= and json=");
    EXPECT_EQ (complaintAbout ({ "import", "input=a" }), "import needs input= and json=");
    EXPECT_EQ (complaintAbout ({ "import", "output=a" }), "Not understood: output=a");
    EXPECT_EQ (complaintAbout ({ "export", "a.txt" }), "Not understood: a.txt");
    EXPECT_EQ (complaintAbout ({ "export", "json=a", "json=b" }), "json= is given twice");
    EXPECT_EQ (complaintAbout ({ "export", "json=a.txt,b.txt", "output=a.docx" }),
               "json= names 2 files, output= 1");
    EXPECT_EQ (complaintAbout ({ "import", "input=a", "json=b", "com=p" }),
               "com= needs two files: the one that tells the progress and the one that cancels");
}

TEST (Arguments, helpAndVersionAreModes)
{
    EXPECT_EQ (parseArguments ({ "--help" }).mode, Mode::help);
    EXPECT_EQ (parseArguments ({ "-h" }).mode, Mode::help);
    EXPECT_EQ (parseArguments ({ "--version" }).mode, Mode::version);
}

} // namespace DocxHandler::Testing
