// SPDX-License-Identifier: GPL-3.0-only
// A document on its way to docxHandler, on a disk that fails: the tool gets it whole, or cut, so that it sees what has happened.
#include "export/ExportSupport.h"
#include "export/word/DocxHandlerProtocol.h"
#include "export/word/EventWordExporter.h"
#include "faults/FailingFiles.h"
#include "support/ChildProcess.h"
#include "support/FullDisk.h"

#include <cerrno>

using namespace ExportSupport;
using Testing::FailingFiles;
using Testing::FileFault;
using Testing::FullDisk;
using Testing::inChildProcess;

namespace
{

using Call = FileFault::Call;

class FaultyWordDocument : public ExportTest
{
protected:
    FaultyWordDocument()
    {
        DocxHandlerProtocol::setFolder (folder.file (""));
        exporter.wordDocument = std::make_unique<WordDocument>();

        settings->options[EventExportAppVersionKey] = "1.2.3";
        const auto cue = event ({ .cueNumber = "A1" });

        for (int i = 0; i < 300; ++i)
            exporter.addOneCueContent (cue);

        whole = written ({});
    }

    ~FaultyWordDocument() override { DocxHandlerProtocol::setFolder ({}); }

    std::string written (const std::vector<FileFault>& faults)
    {
        const FailingFiles failing (folder.path.string() + "/", faults);
        exporter.writeAndRegisterJSONFile ("timecode");
        EXPECT_GE (failing.struck(), static_cast<int> (faults.size()));
        return folder.bytes ("WordDocumentJSON_timecode.txt");
    }

    EventWordExporter exporter { settings };
    std::string whole;
};

TEST_F (FaultyWordDocument, isCutWhereTheDiskFailsAndNeverLosesItsMiddle)
{
    constexpr long firstPiece = 16384;
    ASSERT_GT (whole.size(), 4u * firstPiece);
    EXPECT_EQ (written ({ { .call = Call::write, .most = firstPiece },
                          { .call = Call::write, .error = EIO, .first = 2 } }),
               whole.substr (0, firstPiece));
}

TEST_F (FaultyWordDocument, isWholeHoweverFewBytesTheDiskTakesAtATime)
{
    EXPECT_TRUE (written ({ { .call = Call::write, .times = 40, .most = 7 } }) == whole);
}

TEST_F (FaultyWordDocument, isWholeAfterInterruptedCalls)
{
    EXPECT_TRUE (written ({ { .call = Call::write, .error = EINTR, .times = 3 },
                            { .call = Call::open, .error = EINTR } })
                 == whole);
}

TEST_F (FaultyWordDocument, isCutByALimitOfFilesWhichIsNotTheEndOfTheProcess)
{
    EXPECT_EQ (inChildProcess (
                   [this]
                   {
                       const FullDisk disk (1000, SIG_DFL);
                       return written ({});
                   }),
               whole.substr (0, 1000));
}

} // namespace
