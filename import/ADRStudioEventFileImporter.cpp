// SPDX-License-Identifier: GPL-3.0-only
#include "import/ADRStudioEventFileImporter.h"

#include "core/system/Logger.h"
#include "core/system/UserDefaults.h"
#include "core/text/StringUtil.h"
#include "import/frame/ImportedBytes.h"
#include "import/frame/TableBudget.h"
#include "import/frame/XMLGate.h"
#include "preferences/PreferenceKeys.h"

#include <array>
#include <map>
#include <string>

/*  The root of the document has an element dict, and that has an element array, whose children are the cues:

        dict    key      name of the value behind it
                string   the value; any other element will do
                ...

    Names of values that are read; a missing one is empty, and others are passed over:

        In Time, Out Time    timecodes
        Character, Actor, Notes
        Dialog               the line
        Clip Name            cue number
        Open Ended           TRUE if the cue has no real end */

namespace ZEP::Overmarks
{
namespace
{

constexpr auto kOtherXML = "Only ADR Studio XML files are supported at the moment";

constexpr auto kDict = "dict";
constexpr auto kArray = "array";
constexpr auto kKey = "key";

constexpr auto kInTime = "In Time";
constexpr auto kOutTime = "Out Time";
constexpr auto kCharacter = "Character";
constexpr auto kActor = "Actor";
constexpr auto kDialog = "Dialog";
constexpr auto kClipName = "Clip Name";
constexpr auto kNotes = "Notes";
constexpr auto kOpenEnded = "Open Ended";
constexpr auto kTrue = "TRUE";

constexpr auto kLineBreak = "**";

/** The columns of a row, in their order. */
constexpr std::array columnNames {
    "Start TC", "End TC", "Character", "Actor", "Text", "Cue Number", "Notes"
};

/** A document as characters, and how they came about. */
struct Document
{
    std::string utf8;
    bool charactersAreBytes; ///< it is no Unicode: each of its bytes is the character of that number
};

Document documentOf (const std::string& bytes)
{
    auto shown = Core::TextEncodingUnknown;
    auto text = Core::StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), shown);

    if (shown != Core::TextEncodingWindows1252)
        return { text.toStdString(), false };

    auto bytewise = Core::TextEncodingLatin1;
    return { Core::StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), bytewise).toStdString(),
             true };
}

/** Characters that stand for bytes as these bytes. */
std::string bytesOf (const juce::String& text)
{
    std::string bytes;

    for (auto place = text.getCharPointer(); ! place.isEmpty(); ++place)
        bytes += *place < 256 ? static_cast<char> (*place) : '?';

    return bytes;
}

} // namespace

ADRStudioEventFileImporter::ADRStudioEventFileImporter (const juce::String& path, juce::String& errorMessage)
    : EventFileImporter (path, errorMessage, {})
{
    parse (errorMessage, Core::TextEncodingUnknown);
}

ADRStudioEventFileImporter::~ADRStudioEventFileImporter() = default;

bool ADRStudioEventFileImporter::userMappingEnabled() const { return true; }

int ADRStudioEventFileImporter::type() { return 5; }

void ADRStudioEventFileImporter::parse (juce::String& errorMessage, Core::TextEncoding textEncoding)
{
    rows.clear();
    columnMap.clear();

    const auto bytes = bytesOfFile (filePath);
    auto examined = bytes;
    encoding = textEncoding != Core::TextEncodingUnknown ? textEncoding : detectEncoding (examined);

    const auto document = documentOf (bytes);
    const auto root = XMLGate::rootOf (document.utf8);
    const auto* const list = root != nullptr ? root->getChildByName (kDict) : nullptr;
    const auto* const cues = list != nullptr ? list->getChildByName (kArray) : nullptr;

    if (cues == nullptr || ! readCues (*cues, bytes.size(), document.charactersAreBytes))
    {
        errorMessage += kOtherXML;
        return;
    }

    for (std::size_t i = 0; i < columnNames.size(); ++i)
        columnMap[columnNames[i]] = static_cast<int> (i);
}

/** Makes a row of each cue, up to the first element that is none. A table that grows without end has no more either. */
bool ADRStudioEventFileImporter::readCues (const juce::XmlElement& cues, std::size_t fileBytes,
                                           bool charactersAreBytes)
{
    TableBudget budget (fileBytes);
    const auto ignoreOpenEnded = Core::UserDefaults::getBoolForKey (EventImportIgnoreOpenEndedPrefKey);

    for (const auto* cue = cues.getFirstChildElement(); cue != nullptr; cue = cue->getNextElement())
    {
        if (! cue->hasTagName (kDict))
            return false;

        if (! budget.takeRow (columnNames.size()))
        {
            Core::Logger::error (filePath + ": " + budget.wordsOfRefusal());
            return false;
        }

        rows.push_back (rowOf (*cue, ignoreOpenEnded, charactersAreBytes));
    }

    return true;
}

std::vector<Core::RichTextString> ADRStudioEventFileImporter::rowOf (const juce::XmlElement& cue,
                                                                     bool ignoreOpenEnded,
                                                                     bool charactersAreBytes)
{
    std::map<juce::String, juce::String> values;
    juce::String key;

    for (const auto* child = cue.getFirstChildElement(); child != nullptr; child = child->getNextElement())
    {
        if (child->hasTagName (kKey))
            key = child->getAllSubText();
        else if (! child->isTextElement())
            values[key] = decodedValue (*child, charactersAreBytes);
    }

    const auto text = values[kDialog].replace ("\r\n", kLineBreak).replace ("\n", kLineBreak);
    const bool hasNoEnd = values[kOpenEnded] == kTrue && ! ignoreOpenEnded;

    return { values[kInTime],
             values[hasNoEnd ? kInTime : kOutTime],
             values[kCharacter],
             values[kActor],
             text,
             values[kClipName],
             values[kNotes] };
}

juce::String ADRStudioEventFileImporter::decodedValue (const juce::XmlElement& value, bool charactersAreBytes)
{
    const auto text = value.getAllSubText();
    const auto bytes = charactersAreBytes ? bytesOf (text) : text.toStdString();

    // As many bytes as there are characters.
    return Core::StringUtil::stringWithTextEncoding (bytes.data(), static_cast<unsigned long> (text.length()),
                                                     encoding);
}

} // namespace ZEP::Overmarks
