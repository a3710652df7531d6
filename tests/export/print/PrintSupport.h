// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/EventPDFExporter.h"
#include "export/ExportSupport.h"
#include "export/print/ZEP_EventPDFExporter.h"
#include "support/CollectedLog.h"
#include "support/PrintedPDF.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <cctype>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

/** What tests of printing share: a folder of the test's own for temporary files, where nothing may stay behind, neither a file
    nor a process that was told of it. */
namespace ExportSupport
{

using ZEP::Overmarks::Testing::CollectedLog;
using ZEP::Overmarks::Testing::PrintedPDF;

class PrintTest : public ExportTest
{
protected:
    PrintTest()
    {
        if (const char* before = ::getenv ("TMPDIR"))
            formerTemporaryFolder = before;

        ::setenv ("TMPDIR", temporaryFiles.path.c_str(), 1);
        settings->exportType = EventExportTypePDF;
        settings->projectSettings.projectName = "Film";
        settings->options[EventExportPaperKey] = "a4";
    }

    ~PrintTest() override
    {
        if (formerTemporaryFolder.empty())
            ::unsetenv ("TMPDIR");
        else
            ::setenv ("TMPDIR", formerTemporaryFolder.c_str(), 1);

        EXPECT_EQ (temporaryFiles.names(), std::vector<std::string>());

        // The system may still be busy taking killed ones away.
        for (int i = 0; i < 200 && ! browserProcesses().empty(); ++i)
            std::this_thread::sleep_for (std::chrono::milliseconds (10));

        EXPECT_EQ (browserProcesses(), std::vector<pid_t>());
    }

    /** The processes that were started with files in the test's temporary folder. */
    std::vector<pid_t> browserProcesses() const
    {
        std::vector<pid_t> found;
        std::error_code error;

        for (const auto& entry : std::filesystem::directory_iterator ("/proc", error))
        {
            const auto name = entry.path().filename().string();

            if (std::isdigit (static_cast<unsigned char> (name[0])) == 0)
                continue;

            std::ifstream stream (entry.path() / "cmdline", std::ios::binary);
            const std::string words (std::istreambuf_iterator<char> (stream), {});

            if (words.find (temporaryFiles.path.string()) != std::string::npos)
                found.push_back (std::stoi (name));
        }

        return found;
    }

    /** Prints the settings' events. @returns why that failed, or the empty string */
    std::string print()
    {
        const CollectedLog log;
        EventPDFExporter exporter (settings);

        if (patience.count() > 0)
            exporter.makePrintAdapter = [this]
            {
                auto adapter = std::make_unique<ZEP_EventPDFExporter>();
                adapter->patience = patience;
                return adapter;
            };

        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        return exporter.printFailures.empty() ? std::string()
                                              : exporter.printFailures[0].reason.toStdString();
    }

    /** Prints a cue of these words. */
    std::string printText (const std::string& words)
    {
        settings->events =
            events ({ { .cueNumber = "A1", .in = oneHour, .end = oneHour + 50, .words = words } });
        return print();
    }

    std::string path() const { return (folder.path / "Reel 2.pdf").string(); }
    bool wasPrinted() const { return std::filesystem::exists (path()); }

    /** Writes a program that stands in for the browser, and asks for it. */
    void useBrowser (const std::string& script)
    {
        folder.write ("browser", "#!/bin/bash\n" + script);
        ::chmod ((folder.path / "browser").c_str(), 0755);
        settings->options[EventExportBrowserKey] = folder.file ("browser").getFullPathName();
    }

    ZEP::Overmarks::Testing::TemporaryFolder temporaryFiles;
    std::chrono::milliseconds patience { 0 }; ///< 0 for the usual one

private:
    std::string formerTemporaryFolder;
};

} // namespace ExportSupport
