// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/ImportSupport.h"
#include "import/PTSessionInfoFileImporter.h"
#include "import/protools/SessionSupport.h"
#include "support/CollectedLog.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace SessionSupport
{

using namespace ImportSupport;

inline constexpr auto noSessionInfo =
    "The file doesn't contain valid Pro Tools session info data. If you're trying to import comma-separated "
    "values, please use the file extension '.csv'";
inline constexpr auto noTimecode =
    "The file's time format is not set to timecode.This is required for Orvelle to parse the content "
    "properly.Please make sure to select 'Timecode' as time format in the Pro Tools Export Session Info "
    "dialog";

/** Imports for a user who takes all tracks and has named two reasons. */
class SessionImport : public ZEP::Overmarks::Testing::OvermarksTest
{
protected:
    /** Imports a file that comes with the tests. */
    TextTable importFile (const std::string& name) { return importPath (dataFile ("protools/" + name)); }

    /** Imports a file with these bytes. */
    TextTable import (const std::string& bytes) { return importPath (folder.file ("session.txt", bytes)); }

    /** Imports a track listing. */
    TextTable importTracks (const std::string& tracks) { return import (heading + tracks); }

    TextTable importPath (const std::string& path)
    {
        message.clear();
        importer = std::make_unique<PTSessionInfoFileImporter> (path, message, reasonNames);
        return textsOf (importer->rows);
    }

    /** Reads the same file once more. */
    TextTable readAgain (int encoding)
    {
        message.clear();
        importer->parse (message, static_cast<ZEP::Core::TextEncoding> (encoding));
        return textsOf (importer->rows);
    }

    /** The reason that a clip's code becomes. */
    std::string reasonOf (const std::string& code)
    {
        return importTracks (track ("ANNA", clip ("x [" + code + "]", "01:00:00:00", ""))).at (0).at (8);
    }

    ZEP::Overmarks::Testing::CollectedLog log;
    TemporaryFolder folder;
    Chooser user { allOf };
    std::vector<juce::String> reasonNames { "Director's wish", "Legal" };
    juce::String message;
    std::unique_ptr<PTSessionInfoFileImporter> importer;
};

inline const std::map<juce::String, int> nineColumns {
    { "Start TC", 0 },    { "End TC", 1 }, { "Cue Number", 2 }, { "Text", 3 },  { "Character", 4 },
    { "Char Prefix", 5 }, { "Actor", 6 },  { "Notes", 7 },      { "Reason", 8 }
};

inline const TextTable harbour {
    { "01:00:02:00", "01:00:04:00", "A0001", "The harbour is closed.", "ANNA", "A", "B. Miller", "tired",
      "Clarity (AR4)" },
    { "01:00:04:05", "01:00:05:10", "C0001", "Who says so?", "CAPTAIN", "C", "C. Berg", "wind, keep the tail",
      "Wind on Mic (SR4)" },
    { "01:00:05:12", "01:00:07:00", "A0002", "Go home, captain.", "ANNA", "A", "B. Miller", "", "" },
    { "01:00:09:00", "01:00:11:00", "C0002", "I have seen worse.", "CAPTAIN", "C", "C. Berg", "smile",
      "Director's wish (UR1)" },
    { "01:00:12:00", "01:00:13:00", "A0002", "Captain?", "ANNA", "A", "B. Miller", "", "SUP" },
    { "01:00:14:00", "01:00:14:20", "C0003", "Hm.", "CAPTAIN", "C", "C. Berg", "", "XY7" },
};

} // namespace SessionSupport
