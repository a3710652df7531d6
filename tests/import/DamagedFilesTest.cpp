// SPDX-License-Identifier: GPL-3.0-only
// What comes over lines and disks: files of every format with bytes changed, lost, doubled and strewn in.
#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "import/protools/SessionSupport.h"
#include "support/CollectedLog.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace ImportSupport;

namespace
{

constexpr unsigned numberOfSeeds = 300;

/** A copy with one to eight faults, the same for the same seed. */
std::string damaged (std::string bytes, unsigned seed)
{
    std::mt19937 random (seed);
    const auto below = [&random] (std::size_t limit) { return random() % std::max<std::size_t> (limit, 1); };
    const std::string pieces[] = { "\n",
                                   "\r\n",
                                   "\n\n",
                                   std::string (1, '\0'),
                                   "\x8f",
                                   "\x0d",
                                   "*",
                                   "\xff\xfe",
                                   "\xef\xbb\xbf",
                                   "\xc0\x80",
                                   " --> ",
                                   ",",
                                   "|",
                                   "99999",
                                   "STL",
                                   "\t",
                                   "CHANNEL",
                                   "TRACK NAME:\t[",
                                   std::string (200, ' '),
                                   "a:b:c:d",
                                   "{\"events\": ",
                                   "[-",
                                   "\\ud83c",
                                   "1e999",
                                   "&#x4",
                                   "<![CDATA[",
                                   "<?x?>",
                                   "</dict>",
                                   "\xff\xff\xff\xff" };

    for (auto faults = 1 + below (8); faults > 0; --faults)
    {
        const auto place = below (bytes.size());
        const auto length = below (std::min<std::size_t> (bytes.size() - place, 64));

        switch (below (6))
        {
            case 0: bytes.insert (place, pieces[below (std::size (pieces))]); break;
            case 1: bytes.insert (place, bytes.substr (place, length)); break;
            case 2: bytes.erase (place, length); break;
            case 3: bytes.resize (below (8) == 0 ? place : bytes.size()); break;
            default:
                if (! bytes.empty())
                    bytes[place] = static_cast<char> (below (256));
                break;
        }
    }

    return bytes;
}

class DamagedFiles : public Testing::OvermarksTest, public testing::WithParamInterface<std::string>
{
protected:
    void import (const std::string& path, TextEncoding encoding)
    {
        juce::String message;
        const auto importer =
            EventFileImporterFactory::fileImporterWithFilepath (juce::String (path), message, {}, {});
        ASSERT_NE (importer, nullptr);
        checkTable (*importer);

        importer->parse (message, encoding);
        checkTable (*importer);
    }

    /** Every cell is sound text, and rows become cues or problems. */
    void checkTable (EventFileImporter& importer)
    {
        for (const auto& row : importer.rows)
            for (const auto& cell : row)
            {
                const auto* bytes = cell.getText().toRawUTF8();
                ASSERT_TRUE (juce::CharPointer_UTF8::isValidString (
                    bytes, static_cast<int> (cell.getText().getNumBytesAsUTF8())));
            }

        const auto first = static_cast<std::size_t> (EventRowReader::firstDataRow (importer));
        const auto result = EventRowReader (Testing::timeInfoAt ("25", "01:00:00:00"), {}).read (importer);
        EXPECT_LE (result.events.size(), std::max (importer.rows.size(), first) - first);
    }

    Testing::CollectedLog log;
    SessionSupport::Chooser user { SessionSupport::allOf };
    TemporaryFolder folder;
};

/** Names of all files of a format that come with the tests: "srt/harbour.srt". */
std::vector<std::string> filesIn (const std::string& format)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator (dataFile (format)))
        if (entry.path().extension() != ".dtd") // what a document type names is no list
            names.push_back (format + "/" + entry.path().filename().string());
    std::sort (names.begin(), names.end());
    return names;
}

} // namespace

TEST_P (DamagedFiles, giveSoundTextAndNoCrash)
{
    const auto name = GetParam();
    const auto extension = std::filesystem::path (name).extension().string();
    const auto bytes = bytesOfFile (dataFile (name));
    std::cout << name << ": seeds 1 to " << numberOfSeeds << "\n";

    for (unsigned seed = 1; seed <= numberOfSeeds && ! HasFailure(); ++seed)
    {
        SCOPED_TRACE (name + ", seed " + std::to_string (seed));
        import (folder.file ("list" + extension, damaged (bytes, seed)),
                static_cast<TextEncoding> (1 + seed % 6));
    }
}

const auto nameOfCase = [] (const auto& info)
{
    auto name = info.param;
    std::replace_if (
        name.begin(), name.end(), [] (char c) { return std::isalnum (c) == 0; }, '_');
    return name;
};

INSTANTIATE_TEST_SUITE_P (DelimitedText, DamagedFiles, testing::ValuesIn (filesIn ("csv")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (Taker, DamagedFiles, testing::ValuesIn (filesIn ("taker")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (SubRip, DamagedFiles, testing::ValuesIn (filesIn ("srt")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (EBU, DamagedFiles, testing::ValuesIn (filesIn ("stl")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (TextSTL, DamagedFiles, testing::ValuesIn (filesIn ("textstl")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (DBase, DamagedFiles, testing::ValuesIn (filesIn ("dbf")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (Excel, DamagedFiles, testing::ValuesIn (filesIn ("xlsx")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (TTAL, DamagedFiles, testing::ValuesIn (filesIn ("ttal")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (ADRStudio, DamagedFiles, testing::ValuesIn (filesIn ("adrstudio")), nameOfCase);
INSTANTIATE_TEST_SUITE_P (ProTools, DamagedFiles, testing::ValuesIn (filesIn ("protools")), nameOfCase);
