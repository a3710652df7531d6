// SPDX-License-Identifier: GPL-3.0-only
#include "import/TTALEventFileImporter.h"

#include "core/text/StringUtil.h"
#include "core/text/TextDecoding.h"
#include "core/text/WideObject.h"
#include "core/timecode/TCToolbox.h"
#include "import/frame/ImportedBytes.h"
#include "import/frame/JSONReader.h"
#include "list/TTALFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

using Core::WideObject;

constexpr auto kCantBeOpened = "The file could not be opened.";
constexpr auto kCantBeParsed = "The file content could not be parsed properly.";
constexpr auto kMissingBlocks = "The TTAL file does not contain all mandatory objects. Missing: ";
constexpr auto kMetaIsNoObject = "Couldn't parse meta object.";
constexpr auto kEventsAreNoObject = "Couldn't parse events object.";
constexpr auto kCharactersAreNoObject = "Couldn't parse characters object.";
constexpr auto kInvalidRate = "FPS value in metadata block is either not present or set to an invalid value.";
constexpr auto kOtherTimeFormat =
    "Unsupported value for 'timeFormat'. Currently, only 'FRAMES' is supported.";
constexpr auto kMissingInMeta = "Block 'meta' does not contain all mandatory fields. Missing: ";
constexpr auto kMissingFields = " does not contain all mandatory fields. Missing: ";

/** The columns of a row, in their order. */
enum Column : std::size_t
{
    startColumn,
    endColumn,
    textColumn,
    characterColumn,
    cueNumberColumn,
    notesColumn,
    forcedNarrativeColumn,
    regionColumn
};

constexpr std::array columnNames { "Start TC", "End TC",           "Text",     "Character", "Cue Number",
                                   "Notes",    "Forced Narrative", "FN Region" };

bool isNamed (const juce::String& name, const char* wanted)
{
    return std::strcmp (name.toRawUTF8(), wanted) == 0;
}

/** What a part of the file must have and has not shown yet. */
class MissingNames final
{
public:
    MissingNames (std::initializer_list<const char*> mandatory) : names (mandatory) {}

    void strike (const juce::String& name)
    {
        std::erase_if (names, [&name] (const char* missing) { return isNamed (name, missing); });
    }

    [[nodiscard]] bool any() const { return ! names.empty(); }

    /** Each name with a blank behind it. */
    [[nodiscard]] juce::String list() const
    {
        juce::String text;

        for (const auto* const name : names)
            text << name << " ";

        return text;
    }

private:
    std::vector<const char*> names;
};

/** A whole number, as the framework converts it, but for one that is too large: it stops at the end of the range. */
int wholeNumber (const juce::var& value)
{
    constexpr auto lowest = std::numeric_limits<int>::min();
    constexpr auto highest = std::numeric_limits<int>::max();

    if (value.isInt64())
        return static_cast<int> (
            std::clamp (static_cast<juce::int64> (value), juce::int64 { lowest }, juce::int64 { highest }));

    if (value.isDouble())
    {
        const auto number = static_cast<double> (value);
        return std::isnan (number)
                   ? 0
                   : static_cast<int> (std::clamp (number, double { lowest }, double { highest }));
    }

    return static_cast<int> (value);
}

/** The bytes of a text up to its first NUL, where a text stream ends. A mark shows how long the characters are. */
std::string_view upToNUL (std::string_view bytes)
{
    if (! bytes.starts_with (Core::markOfLittleEndianUTF16)
        && ! bytes.starts_with (Core::markOfBigEndianUTF16))
        return bytes.substr (0, bytes.find ('\0'));

    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        if (bytes[i] == 0 && bytes[i + 1] == 0)
            return bytes.substr (0, i);

    return bytes;
}

/** Whether a value has members; the framework counts a list as an object too. */
bool isObject (const juce::var& value) { return value.getDynamicObject() != nullptr; }

/** Visits the members of a value that is an object, until the visitor returns false. False for any other value too. */
bool forEachMember (const juce::var& value, const WideObject::Visitor& visit)
{
    auto* const object = value.getDynamicObject();
    return object != nullptr && WideObject::forEachMember (*object, visit);
}

/** The names that are asked for in every event: the framework looks each new one up in its pool. */
struct PooledNames
{
    const juce::Identifier text { TTAL::kText };
    const juce::Identifier from { TTAL::kFrom };
    const juce::Identifier to { TTAL::kTo };
    const juce::Identifier type { TTAL::kType };
};

const PooledNames& pooledNames()
{
    static const PooledNames names;
    return names;
}

/** A style's font; texts of one style share it. */
const juce::Font& fontOf (const juce::String& look)
{
    static const auto bold = Core::RichTextString::defaultFont().boldened();
    static const auto italic = Core::RichTextString::defaultFont().italicised();

    if (isNamed (look, TTAL::kBold))
        return bold;

    return isNamed (look, TTAL::kItalic) ? italic : Core::RichTextString::defaultFont();
}

} // namespace

TTALEventFileImporter::TTALEventFileImporter (const juce::String& path, juce::String& errorMessage,
                                              std::shared_ptr<Core::TimeInfo> projectTime)
    : EventFileImporter (path, errorMessage, std::move (projectTime))
{
    parse (errorMessage, Core::TextEncodingUnknown);
}

TTALEventFileImporter::~TTALEventFileImporter() = default;

bool TTALEventFileImporter::userMappingEnabled() const { return false; }

int TTALEventFileImporter::type() { return 7; }

juce::String TTALEventFileImporter::languageCode() { return language; }

void TTALEventFileImporter::parse (juce::String& errorMessage, Core::TextEncoding /*textEncoding*/)
{
    const auto firstRow = rows.size();
    assignColumns();

    if (readFile (errorMessage) && parseBlocks (errorMessage))
        resolveCharacters (firstRow, errorMessage);
}

void TTALEventFileImporter::assignColumns()
{
    for (std::size_t i = 0; i < columnNames.size(); ++i)
        columnMap[columnNames[i]] = static_cast<int> (i);
}

bool TTALEventFileImporter::readFile (juce::String& errorMessage)
{
    const auto bytes = contentOfFile (filePath);

    if (! bytes.has_value())
    {
        errorMessage += kCantBeOpened;
        return false;
    }

    const auto text = upToNUL (*bytes);
    auto shown = Core::TextEncodingUnknown;
    auto root = JSONReader::read (Core::StringUtil::stringWithTextEncoding (text.data(), text.size(), shown));
    encoding = shown != Core::TextEncodingUnknown ? shown : Core::TextEncodingUTF8;

    if (! root.has_value() || ! isObject (*root))
    {
        errorMessage += kCantBeParsed;
        return false;
    }

    jsonRoot = std::move (*root);
    return true;
}

/** False if a block ends the whole import. */
bool TTALEventFileImporter::parseBlocks (juce::String& errorMessage)
{
    MissingNames missing { TTAL::kMeta, TTAL::kEvents, TTAL::kCharacters };

    const bool usable = forEachMember (jsonRoot,
                                       [&] (const juce::String& name, juce::var block)
                                       {
                                           missing.strike (name);

                                           if (name == TTAL::kMeta)
                                               return parseMetaObject (block, errorMessage);
                                           if (name == TTAL::kEvents)
                                               return parseEventsArray (block, errorMessage);
                                           if (name == TTAL::kCharacters)
                                               return parseCharactersArray (block, errorMessage);

                                           return true;
                                       });

    if (usable && missing.any())
        errorMessage += kMissingBlocks + missing.list();

    return usable;
}

bool TTALEventFileImporter::parseMetaObject (juce::var& meta, juce::String& errorMessage)
{
    if (! isObject (meta))
    {
        errorMessage += kMetaIsNoObject;
        return false;
    }

    MissingNames missing { TTAL::kFps, TTAL::kLang, TTAL::kTimeFormat };

    const auto parseMember = [&] (const juce::String& name, const juce::var& value)
    {
        missing.strike (name);

        if (name == TTAL::kFps)
        {
            const auto rate = TTAL::rateNamed (JSONReader::textOf (value));

            if (! rate.has_value())
            {
                errorMessage += kInvalidRate;
                return false;
            }

            fps = *rate;
        }
        else if (name == TTAL::kLang)
        {
            language = JSONReader::textOf (value);
        }
        else if (name == TTAL::kTimeFormat && JSONReader::textOf (value) != TTAL::kFrames)
        {
            errorMessage += kOtherTimeFormat;
            return false;
        }

        return true;
    };

    if (! forEachMember (meta, parseMember))
        return false;

    if (missing.any())
        errorMessage += kMissingInMeta + missing.list();

    return ! missing.any();
}

bool TTALEventFileImporter::parseEventsArray (juce::var& events, juce::String& errorMessage)
{
    if (! isObject (events))
    {
        errorMessage += kEventsAreNoObject;
        return false;
    }

    return forEachMember (events, [&] (const juce::String& id, const juce::var& event)
                          { return parseEvent (id, event, errorMessage); });
}

/** Makes the row of one event. What is no object lacks everything. */
bool TTALEventFileImporter::parseEvent (const juce::String& id, const juce::var& event,
                                        juce::String& errorMessage)
{
    MissingNames missing { TTAL::kStart, TTAL::kEnd, TTAL::kTxt, TTAL::kCharacterId };
    std::vector<Core::RichTextString> row (columnNames.size());
    std::vector<juce::AttributedString::Attribute> styles;
    bool stylesAreUsable = true;
    row[forcedNarrativeColumn] = juce::String ("no");

    forEachMember (
        event,
        [&] (const juce::String& name, const juce::var& value)
        {
            missing.strike (name);

            if (isNamed (name, TTAL::kStart))
                row[startColumn] = timecode (wholeNumber (value));
            else if (isNamed (name, TTAL::kEnd))
                row[endColumn] = timecode (long { wholeNumber (value) } - 1);
            else if (isNamed (name, TTAL::kTxt))
                row[textColumn] = JSONReader::textOf (value);
            else if (isNamed (name, TTAL::kCharacterId))
                row[characterColumn] = JSONReader::textOf (value);
            else if (isNamed (name, TTAL::kCue))
                row[cueNumberColumn] = JSONReader::textOf (value);
            else if (isNamed (name, TTAL::kDubAnnotations))
                row[notesColumn] = JSONReader::textOf (WideObject::valueOf (value, pooledNames().text));
            else if (isNamed (name, TTAL::kType) && JSONReader::textOf (value) == TTAL::kForcedNarrative)
                row[forcedNarrativeColumn] = juce::String ("yes");
            else if (isNamed (name, TTAL::kRgn))
                row[regionColumn] = JSONReader::textOf (value);
            else if (isNamed (name, TTAL::kStyles) && ! value.isArray())
                stylesAreUsable = false;
            else if (isNamed (name, TTAL::kStyles))
                styles = richTextAttributesFromStylesObject (value);

            return true;
        });

    if (missing.any())
        errorMessage += "Event with ID: " + id + kMissingFields + missing.list();
    else if (! stylesAreUsable)
        errorMessage += "Couldn't parse styles of event with ID: " + id;

    if (missing.any() || ! stylesAreUsable)
        return false;

    row[textColumn].applyAttributes (styles);
    rows.push_back (std::move (row));
    return true;
}

std::vector<juce::AttributedString::Attribute> TTALEventFileImporter::richTextAttributesFromStylesObject (
    juce::var styles)
{
    std::vector<juce::AttributedString::Attribute> attributes;

    if (! styles.isArray())
        return attributes;

    for (const auto& style : *styles.getArray())
    {
        const auto& names = pooledNames();
        const auto from = wholeNumber (WideObject::valueOf (style, names.from, -1));
        const auto to = wholeNumber (WideObject::valueOf (style, names.to, -1));
        const auto look = JSONReader::textOf (WideObject::valueOf (style, names.type));

        if (from == -1 || to == -1 || look.isEmpty())
            continue;

        attributes.push_back ({ { from, std::max (from, to) }, fontOf (look), juce::Colour (0xff000000) });
    }

    return attributes;
}

bool TTALEventFileImporter::parseCharactersArray (juce::var& characters, juce::String& errorMessage)
{
    characterMap = std::make_shared<Core::ADRCharacterMap>();

    if (! isObject (characters))
    {
        errorMessage += kCharactersAreNoObject;
        return false;
    }

    const auto parseCharacter = [&] (const juce::String& id, const juce::var& character)
    {
        if (! character.hasProperty (TTAL::kName))
        {
            errorMessage += "Character with ID: " + id + kMissingFields + TTAL::kName + " ";
            return false;
        }

        const auto name = JSONReader::textOf (WideObject::valueOf (character, TTAL::kName));
        characterMap->addCharacter (std::make_shared<Core::ADRCharacter> (name), true, id);
        return true;
    };

    return forEachMember (characters, parseCharacter);
}

/** Puts names in the place of the characters' identifiers, since the cast may stand behind the events. Without a cast nobody
    is known. */
void TTALEventFileImporter::resolveCharacters (std::size_t firstRow, juce::String& errorMessage)
{
    for (auto i = firstRow; i < rows.size(); ++i)
    {
        auto& cell = rows[i][characterColumn];
        const auto id = cell.getText();
        juce::String name;

        if (id != TTAL::kNullCharacter)
        {
            const auto character = characterMap != nullptr ? characterMap->characterForID (id) : nullptr;

            if (character == nullptr)
            {
                errorMessage +=
                    "An event uses a character with ID " + id + " but no character with this ID exists";
                return;
            }

            name = character->name;
        }

        cell = Core::RichTextString (name);
    }
}

juce::String TTALEventFileImporter::timecode (long frame) const
{
    static const Core::TimeInfo fromZero;
    const auto& time = timeInfo != nullptr ? *timeInfo : fromZero;
    return Core::TCToolbox::stringFromTCTime (
        Core::TCToolbox::addFramesAndTCTimes (frame, time.timeOrigin, time.tcDef), false);
}

} // namespace ZEP::Overmarks
