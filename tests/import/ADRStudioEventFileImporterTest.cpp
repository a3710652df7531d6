// SPDX-License-Identifier: GPL-3.0-only
#include "import/ADRStudioEventFileImporter.h"

#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using namespace ImportSupport;

namespace
{

using Texts = std::vector<std::string>;

constexpr auto otherXML = "Only ADR Studio XML files are supported at the moment";

const TextTable threeCues {
    { "01:00:02:00", "01:00:04:12", "ANNA", "Mary Miller",
      "Good evening & welcome.**Have you seen the harbour?", "AN101", "breath before" },
    { "01:00:06:00", "01:00:06:00", "PAUL", "", "Well <sighs> ...", "PA102", "" },
    { "", "", "", "", "(crowd)", "", "" },
};

class ADRStudioImport : public ZEP::Overmarks::Testing::OvermarksTest
{
protected:
    ADRStudioEventFileImporter& importPath (const std::string& path)
    {
        message.clear();
        importer = std::make_unique<ADRStudioEventFileImporter> (path, message);
        return *importer;
    }

    /** Imports a file that comes with the tests. */
    ADRStudioEventFileImporter& importFile (const std::string& name)
    {
        return importPath (dataFile ("adrstudio/" + name));
    }

    /** Imports a file with these bytes. */
    ADRStudioEventFileImporter& import (const std::string& bytes)
    {
        return importPath (folder.file ("list.xml", bytes));
    }

    ADRStudioEventFileImporter& importCues (const std::string& cues)
    {
        return import ("<plist><dict><array>" + cues + "</array></dict></plist>");
    }

    /** The row of a cue with these keys and values. */
    Texts row (const std::string& content)
    {
        importCues ("<dict>" + content + "</dict>");
        return importer->rows.size() == 1 ? textsOf (importer->rows)[0] : Texts { message.toStdString() };
    }

    /** A value as it comes out of a cell. */
    std::string value (const std::string& written)
    {
        return row ("<key>Notes</key><string>" + written + "</string>").back();
    }

    std::string dialog (const std::string& written)
    {
        return row ("<key>Dialog</key><string>" + written + "</string>").at (4);
    }

    TemporaryFolder folder;
    juce::String message;
    std::unique_ptr<ADRStudioEventFileImporter> importer;
};

const std::string times =
    "<key>In Time</key><string>01:00:00:00</string><key>Out Time</key><string>01:00:02:00</string>";

} // namespace

TEST_F (ADRStudioImport, isFormatFiveAndLeavesTheColumnsToTheUser)
{
    importFile ("three_cues.xml");
    EXPECT_EQ (importer->type(), 5);
    EXPECT_TRUE (importer->userMappingEnabled());
    EXPECT_EQ (importer->languageCode(), "");
    EXPECT_EQ (importer->timeInfo, nullptr);
    EXPECT_EQ (importer->characterMap, nullptr);
    EXPECT_EQ (importer->columnMap, (std::map<juce::String, int> { { "Start TC", 0 },
                                                                   { "End TC", 1 },
                                                                   { "Character", 2 },
                                                                   { "Actor", 3 },
                                                                   { "Text", 4 },
                                                                   { "Cue Number", 5 },
                                                                   { "Notes", 6 } }));
}

TEST_F (ADRStudioImport, everyCueIsARowTheFirstOneToo)
{
    importFile ("three_cues.xml");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
    EXPECT_EQ (textsOf (importer->rows), threeCues);
    EXPECT_TRUE (importer->rows[0][4].isPlain());
}

TEST_F (ADRStudioImport, theFactoryTakesItForXML)
{
    const auto made = EventFileImporterFactory::fileImporterWithFilepath (
        dataFile ("adrstudio/three_cues.xml"), message, {}, {});
    ASSERT_NE (dynamic_cast<ADRStudioEventFileImporter*> (made.get()), nullptr);
    EXPECT_EQ (made->rows.size(), 3u);
}

TEST_F (ADRStudioImport, rowsBecomeEventsTheFirstOneToo)
{
    importFile ("three_cues.xml");
    const auto time = ZEP::Overmarks::Testing::timeInfoAt ("25", "01:00:00:00");
    const auto result = EventRowReader (time, std::make_shared<ADRCharacterMap>()).read (*importer);
    ASSERT_EQ (result.events.size(), 3u);
    EXPECT_EQ (result.events[0]->getCueNumber(), "AN101");
    EXPECT_EQ (result.events[0]->getInPointFrameIndex(), 50);
    EXPECT_EQ (result.events[0]->getEndFrameIndex(), 112);
}

// ---- open ended ----------------------------------------------------------------------------------------------------------

TEST_F (ADRStudioImport, anOpenEndedCueEndsWhereItStarts)
{
    const auto cells = row (times + "<key>Open Ended</key><string>TRUE</string>");
    EXPECT_EQ (cells[0], "01:00:00:00");
    EXPECT_EQ (cells[1], "01:00:00:00");
}

TEST_F (ADRStudioImport, withThePreferenceAnOpenEndedCueKeepsItsEnd)
{
    prefer (EventImportIgnoreOpenEndedPrefKey, 1);
    EXPECT_EQ (row (times + "<key>Open Ended</key><string>TRUE</string>")[1], "01:00:02:00");
    EXPECT_EQ (row (times)[1], "01:00:02:00");
}

TEST_F (ADRStudioImport, onlyTheExactWordIsOpenEnded)
{
    for (const auto* word : { "true", "True", "FALSE", "", " TRUE", "1", "YES" })
        EXPECT_EQ (row (times + "<key>Open Ended</key><string>" + word + "</string>")[1], "01:00:02:00")
            << word;
    EXPECT_EQ (row (times + "<key>Open Ended</key><true/>")[1], "01:00:02:00");
    EXPECT_EQ (row (times)[1], "01:00:02:00");
}

// ---- values --------------------------------------------------------------------------------------------------------------

TEST_F (ADRStudioImport, anyElementIsAValueWithAllItsText)
{
    EXPECT_EQ (row ("<key>Notes</key><integer>7</integer>").back(), "7");
    EXPECT_EQ (row ("<key>Notes</key><x>a<y>b</y>c</x>").back(), "abc");
    EXPECT_EQ (row ("<key>No<b>te</b>s</key><string>x</string>").back(), "x");
    EXPECT_EQ (row ("<key>Notes</key><array><dict>x</dict></array>").back(), "x");
}

TEST_F (ADRStudioImport, aLaterValueReplacesAnEarlierOne)
{
    EXPECT_EQ (row ("<key>Notes</key><string>a</string><string>b</string>").back(), "b");
    EXPECT_EQ (row ("<key>Notes</key><string>a</string><key>Notes</key><string>c</string>").back(), "c");
}

TEST_F (ADRStudioImport, keysWithoutValuesAndValuesWithoutKeysAreHarmless)
{
    EXPECT_EQ (
        row ("<string>first</string><key>Actor</key><key>Notes</key><string>x</string><key>Dialog</key>"),
        (Texts { "", "", "", "", "", "", "x" }));
    EXPECT_EQ (row (""), (Texts { "", "", "", "", "", "", "" }));
    EXPECT_EQ (message, "");
}

TEST_F (ADRStudioImport, otherKeysAreSkippedAndCaseAndBlanksMatter)
{
    EXPECT_EQ (
        row (
            "<key>notes</key><string>a</string><key> Notes </key><string>b</string><key>Reel</key><string>c</string>"),
        (Texts { "", "", "", "", "", "", "" }));
}

TEST_F (ADRStudioImport, looseTextIsNoValue)
{
    EXPECT_EQ (row ("x<key>Notes</key>y<string>a</string>z").back(), "a");
}

TEST_F (ADRStudioImport, aCueWithoutATimeIsACueWithoutATime)
{
    EXPECT_EQ (row ("<key>Dialog</key><string>x</string>"), (Texts { "", "", "", "", "x", "", "" }));
    EXPECT_EQ (message, "");
}

TEST_F (ADRStudioImport, lineBreaksOfTheDialogueAreTwoAsterisks)
{
    EXPECT_EQ (dialog ("a\r\nb"), "a**b");
    EXPECT_EQ (dialog ("a&#13;&#10;b"), "a**b");
    EXPECT_EQ (dialog ("a\nb\n\nc"), "a**b****c");
    EXPECT_EQ (dialog ("a&#13;b"), "a\rb");
    EXPECT_EQ (value ("a\nb"), "a\nb");
}

TEST_F (ADRStudioImport, aTextLosesAByteForEachContinuationByte)
{
    EXPECT_EQ (value ("Grün!!"), "Grün!");
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (value ("ä"), "\xef\xbf\xbd");
    EXPECT_EQ (value ("🎬12345"), "🎬12");
    EXPECT_EQ (value ("äöü..."), "äöü");
}

// ---- documents -----------------------------------------------------------------------------------------------------------

TEST_F (ADRStudioImport, anEmptyArrayIsAListWithoutCues)
{
    importCues ("");
    EXPECT_EQ (message, "");
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (importer->columnMap.size(), 7u);
}

TEST_F (ADRStudioImport, onlyTheFirstDictAndTheFirstArrayCount)
{
    import (
        "<x><y/><dict><array><dict/></array><array><dict/><dict/></array></dict><dict><array/></dict></x>");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 1u);
}

TEST_F (ADRStudioImport, aDocumentWithoutAListIsRefused)
{
    for (const auto* document :
         { "<plist/>", "<plist><array><dict/></array></plist>", "<dict><array><dict/></array></dict>",
           "<plist><dict/></plist>", "<plist><dict><dict><array/></dict></dict></plist>",
           "<html><body/></html>" })
    {
        import (document);
        EXPECT_EQ (message, otherXML) << document;
        EXPECT_TRUE (importer->rows.empty()) << document;
        EXPECT_TRUE (importer->columnMap.empty()) << document;
    }
}

TEST_F (ADRStudioImport, aChildThatIsNoCueEndsTheListWithTheCuesBeforeIt)
{
    for (const auto* child : { "<string>x</string>", "<cue/>", "loose text" })
    {
        importCues (std::string ("<dict><key>Notes</key><string>first</string></dict>") + child + "<dict/>");
        EXPECT_EQ (message, otherXML) << child;
        ASSERT_EQ (importer->rows.size(), 1u) << child;
        EXPECT_EQ (importer->rows[0][6].getText(), "first") << child;
        EXPECT_TRUE (importer->columnMap.empty()) << child;
    }
}

TEST_F (ADRStudioImport, damagedAndHarmfulFilesAreRefused)
{
    for (const auto* name : { "empty.xml", "truncated.xml", "garbage.xml", "entity_bomb.xml",
                              "external_entity.xml", "external_type.xml" })
    {
        importFile (name);
        EXPECT_EQ (message, otherXML) << name;
        EXPECT_TRUE (importer->rows.empty()) << name;
        EXPECT_TRUE (importer->columnMap.empty()) << name;
    }
}

TEST_F (ADRStudioImport, aFileThatBreaksOffAnywhereIsRefused)
{
    const auto whole = bytesOfFile (dataFile ("adrstudio/utf8.xml"));
    for (std::size_t length = 0; length < whole.rfind ('>'); length += 7)
    {
        import (whole.substr (0, length));
        ASSERT_EQ (message, otherXML) << length;
    }
}

TEST_F (ADRStudioImport, aFileThatIsNotThereIsRefused)
{
    importPath ((folder.path / "missing.xml").string());
    EXPECT_EQ (message, otherXML);
    EXPECT_EQ (importer->encoding, TextEncodingUnknown);
    importPath (folder.path.string());
    EXPECT_EQ (message, otherXML);
}

TEST_F (ADRStudioImport, processingInstructionsPlayNoPart)
{
    importFile ("instructions.xml");
    EXPECT_EQ (message, "");
    ASSERT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (importer->rows[0][0].getText(), "01:00:00:00");
}

TEST_F (ADRStudioImport, endlessNestingIsRefused)
{
    std::string deep;
    for (int i = 0; i < 300000; ++i)
        deep += "<dict>";
    import (deep);
    EXPECT_EQ (message, otherXML);
}

TEST_F (ADRStudioImport, aListOfEmptyCuesWithoutEndIsRefused)
{
    std::string cues;
    for (int i = 0; i < 100000; ++i)
        cues += "<dict/>";
    importCues (cues);
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 100000u);

    cues.clear();
    for (int i = 0; i < 500000; ++i)
        cues += "<dict/>";
    importCues (cues);
    EXPECT_EQ (message, otherXML);
    EXPECT_LT (importer->rows.size(), 500000u);
}

TEST_F (ADRStudioImport, aHugeValueIsAValueLikeAnyOther)
{
    const std::string huge (5000000, 'x');
    EXPECT_EQ (value (huge), huge);
}

TEST_F (ADRStudioImport, aLongLineComesWhole)
{
    importFile ("huge_field.xml");
    EXPECT_EQ (message, "");
    ASSERT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (importer->rows[0][4].getText().toStdString(), std::string (30000, 'x'));
}

TEST_F (ADRStudioImport, aSecondReadingThatFailsLeavesNoColumns)
{
    for (const auto* document : { "<plist/>", "<p><dict><array><dict/><x/></array></dict></p>" })
    {
        importPath (folder.file ("list.xml", bytesOfFile (dataFile ("adrstudio/three_cues.xml"))));
        EXPECT_EQ (importer->columnMap.size(), 7u);
        std::ignore = folder.file ("list.xml", document);
        importer->parse (message, TextEncodingUTF8);
        EXPECT_EQ (message, otherXML) << document;
        EXPECT_TRUE (importer->columnMap.empty()) << document;
        EXPECT_LE (importer->rows.size(), 1u) << document;
    }
}

TEST_F (ADRStudioImport, aSecondReadingProposesTheColumnsAnew)
{
    importFile ("three_cues.xml");
    importer->columnMap = { { "Text", 6 }, { "Reason", 5 } };
    importer->parse (message, TextEncodingUTF8);
    EXPECT_EQ (importer->columnMap.size(), 7u);
    EXPECT_EQ (importer->columnMap.at ("Text"), 4);
}

TEST_F (ADRStudioImport, elementsMayHaveNamesInAnyScript)
{
    EXPECT_EQ (row ("<key>Notes</key><größe ключ='夜'>x</größe>").back(), "x");
    import ("<словарь><dict><夜/><array><dict/></array></dict></словарь>");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 1u);
}

TEST_F (ADRStudioImport, aDocumentOfEverNewNamesIsRefused)
{
    std::string values;
    for (int i = 0; i < 100000; ++i)
        values += "<n" + std::to_string (i) + "/>";
    importCues ("<dict>" + values + "</dict>");
    EXPECT_EQ (message, otherXML);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_TRUE (importer->columnMap.empty());
}

TEST_F (ADRStudioImport, anyNumberOfKeysIsFine)
{
    std::string values;
    for (int i = 0; i < 20000; ++i)
        values += "<key>k" + std::to_string (i) + "</key><string>v</string>";
    EXPECT_EQ (row (values + "<key>Notes</key><string>x</string>").back(), "x");
}

TEST_F (ADRStudioImport, whatTheMessageHeldBeforeStays)
{
    message = "Before. ";
    const ADRStudioEventFileImporter failed (juce::String (dataFile ("adrstudio/empty.xml")), message);
    EXPECT_EQ (message, juce::String ("Before. ") + otherXML);
}

// ---- encodings -----------------------------------------------------------------------------------------------------------

TEST_F (ADRStudioImport, aMarkPlaysNoPart)
{
    importFile ("bom.xml");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (textsOf (importer->rows), threeCues);
}

TEST_F (ADRStudioImport, textOfOneByteALetterIsTakenForMacOSRoman)
{
    importFile ("mac_roman.xml");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (importer->rows[0][2].getText().toStdString(), "MÜLLER");
    EXPECT_EQ (importer->rows[0][4].getText().toStdString(),
               "Schönen Abend, Frau Weiß …**Have you seen the harbour?");
}

TEST_F (ADRStudioImport, aListInTheWrongEncodingIsReadAnewInTheRightOne)
{
    importFile ("wrong_encoding.xml");
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_NE (importer->rows[0][2].getText().toStdString(), "MÜLLER");

    importer->parse (message, TextEncodingWindows1252);
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);
    EXPECT_EQ (importer->rows.size(), 3u);
    EXPECT_EQ (importer->rows[0][2].getText().toStdString(), "MÜLLER");
    EXPECT_EQ (importer->rows[0][4].getText().toStdString(),
               "Schönen Abend, Frau Weiß …**Have you seen the harbour?");
}

TEST_F (ADRStudioImport, theValuesOfAUTF16FileAreBytesInUTF8)
{
    importFile ("utf16.xml");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingUTF16);
    ASSERT_EQ (importer->rows.size(), 3u);
    EXPECT_NE (importer->rows[0][2].getText(), "ANNA");

    importer->parse (message, TextEncodingUTF8);
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows), threeCues);
}

TEST_F (ADRStudioImport, referencesBeyondOneByteAreQuestionMarksInATextOfOneByteALetter)
{
    EXPECT_EQ (value ("\xe4&#x20ac;"), "‰?");
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
}
