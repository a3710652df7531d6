// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/EventPDFExporter.h"
#include "export/ExportSupport.h"
#include "export/print/ZEP_EventPDFExporter.h"
#include "support/CollectedLog.h"
#include "support/PrintedPDF.h"

#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <map>
#include <string>
#include <thread>
#include <vector>

/** What tests of printing share: a folder of the test's own for temporary files, where nothing may stay behind; nor may any
    process that was started while it lasted, by whomever. */
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

        // Processes whose parent ends are this one's children then, and can be found.
        ::prctl (PR_SET_CHILD_SUBREAPER, 1);
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

        while (::waitpid (-1, nullptr, WNOHANG) > 0)
            ;
    }

    /** The processes that come from this one, over any number of steps, and still run. */
    static std::vector<pid_t> browserProcesses()
    {
        const auto all = parentsOfProcesses();
        std::vector<pid_t> found;

        for (const auto& [process, parent] : all)
        {
            auto ancestor = parent;

            while (ancestor != ::getpid() && all.count (ancestor) != 0)
                ancestor = all.at (ancestor);

            if (ancestor == ::getpid())
                found.push_back (process);
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

    /** That no cue is on two pages. Their numbers, which begin with N, stand at the top and their ends at the bottom. */
    static void expectWholeCues (const PrintedPDF& sheet)
    {
        for (int page = 0; page < sheet.pages(); ++page)
        {
            int numbers = 0, times = 0;

            for (const auto& word : sheet.words (page))
            {
                numbers += word.text[0] == 'N' ? 1 : 0;
                times += word.text.starts_with ("01:") && word.text.size() == 11 ? 1 : 0; // no time of day
            }

            EXPECT_EQ (times, 2 * numbers) << page;
        }
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
    /** Of all processes that run and haven't only been left to be waited for. */
    static std::map<pid_t, pid_t> parentsOfProcesses()
    {
        std::map<pid_t, pid_t> parents;
        std::error_code error;

        for (const auto& entry : std::filesystem::directory_iterator ("/proc", error))
        {
            const auto name = entry.path().filename().string();

            if (std::isdigit (static_cast<unsigned char> (name[0])) == 0)
                continue;

            // "12 (name of the program) S 11 ..."
            std::ifstream stream (entry.path() / "stat");
            std::string line;
            std::getline (stream, line);
            const auto behindName = line.rfind (')');

            if (behindName == std::string::npos || line[behindName + 2] == 'Z')
                continue;

            parents[std::stoi (name)] = std::stoi (line.substr (behindName + 4));
        }

        return parents;
    }

    std::string formerTemporaryFolder;
};

} // namespace ExportSupport
