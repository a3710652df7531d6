// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/XMLGate.h"

#include "core/system/CappedNumbers.h"
#include "core/system/Logger.h"
#include "core/text/StringUtil.h"
#include "import/frame/ImportLimits.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <type_traits>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::size_t longestDocument = std::numeric_limits<int>::max();

// Each element, attribute and piece of text takes some hundred bytes of memory, and a hostile document asks for one with
// two or four.
constexpr std::size_t bytesPerNode = 8;

constexpr std::string_view space = " \t\r\n";
constexpr std::string_view startOfLiteralText = "<![CDATA[";
constexpr std::string_view endOfLiteralText = "]]>";
constexpr std::array<std::string_view, 5> entitiesOfXML { "amp", "lt", "gt", "quot", "apos" };

/** Goes over a document in UTF-8 and keeps what the framework's reader may see. */
class StrictWalk final
{
public:
    explicit StrictWalk (std::string_view documentInUTF8)
        : document (documentInUTF8),
          parser (XML_ParserCreate ("UTF-8"))
    {
        XML_SetUserData (parser.get(), this);
        XML_SetElementHandler (parser.get(), startOfElement, endOfElement);
        XML_SetProcessingInstructionHandler (parser.get(), processingInstruction);
        XML_SetCommentHandler (parser.get(), comment);
        XML_SetCharacterDataHandler (parser.get(), text);
        XML_SetCdataSectionHandler (parser.get(), startOfCDATA, endOfCDATA);
        XML_SetEntityDeclHandler (parser.get(), entityDeclaration);
        XML_SetAttlistDeclHandler (parser.get(), attributeDeclaration);
        XML_SetSkippedEntityHandler (parser.get(), skippedEntity);
    }

    /** The text of the root element; nothing if the document doesn't pass. */
    std::optional<std::string> root()
    {
        if (document.size() > longestDocument)
        {
            refuse ("bytes", longestDocument);
            return std::nullopt;
        }

        const auto status =
            XML_Parse (parser.get(), document.data(), static_cast<int> (document.size()), XML_TRUE);

        if (status != XML_STATUS_OK)
            return std::nullopt;

        return kept;
    }

private:
    static StrictWalk& self (void* walk) { return *static_cast<StrictWalk*> (walk); }

    static void XMLCALL startOfElement (void* walk, const XML_Char* name, const XML_Char** attributes)
    {
        if (self (walk).depth == 0)
            self (walk).keptUpTo = self (walk).here();

        if (++self (walk).depth > self (walk).limits.nestingOfXML)
            self (walk).refuse ("elements within each other", self (walk).limits.nestingOfXML);

        self (walk).isInText = false;
        self (walk).countNode();
        self (walk).countName (name);
        self (walk).countAttributes (attributes);
    }

    static void XMLCALL endOfElement (void* walk, const XML_Char*)
    {
        self (walk).isInText = false;

        if (--self (walk).depth == 0)
            self (walk).keepUpTo (self (walk).here() + self (walk).length());
    }

    /** Text comes in several pieces. Blanks alone between two tags are nothing to the framework's reader. */
    static void XMLCALL text (void* walk, const XML_Char* characters, int length)
    {
        const std::string_view piece (characters, static_cast<std::size_t> (length));

        if (! self (walk).isInText && piece.find_first_not_of (space) != std::string_view::npos)
        {
            self (walk).isInText = true;
            self (walk).countNode();
        }
    }

    static void XMLCALL startOfCDATA (void* walk)
    {
        self (walk).isInText = true;
        self (walk).countNode();
    }

    static void XMLCALL endOfCDATA (void* walk) { self (walk).isInText = false; }

    static void XMLCALL processingInstruction (void* walk, const XML_Char*, const XML_Char*)
    {
        self (walk).leaveOut();
    }

    static void XMLCALL comment (void* walk, const XML_Char*) { self (walk).leaveOut(); }

    static void XMLCALL entityDeclaration (void* walk, const XML_Char*, int, const XML_Char*, int,
                                           const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*)
    {
        self (walk).refuse();
    }

    static void XMLCALL attributeDeclaration (void* walk, const XML_Char*, const XML_Char*, const XML_Char*,
                                              const XML_Char*, int)
    {
        self (walk).refuse();
    }

    static void XMLCALL skippedEntity (void* walk, const XML_Char*, int) { self (walk).refuse(); }

    /** Where what the parser is telling of begins, and how long it is, in bytes. An empty element is told of twice: its end
        has no length. */
    std::size_t here() const { return static_cast<std::size_t> (XML_GetCurrentByteIndex (parser.get())); }
    std::size_t length() const { return static_cast<std::size_t> (XML_GetCurrentByteCount (parser.get())); }

    void countNode()
    {
        if (const auto most = Core::cappedSum (limits.sparePartsOfXML, document.size() / bytesPerNode);
            ++nodes > most)
            refuse ("elements, attributes and texts", most);
    }

    void countName (std::string_view name)
    {
        if (names.find (name) == names.end())
            names.emplace (name);

        if (names.size() > limits.namesOfXML)
            refuse ("different names", limits.namesOfXML);
    }

    /** @param attributes  name and value by turns, and a null */
    void countAttributes (const XML_Char** attributes)
    {
        for (std::size_t i = 0; attributes[2 * i] != nullptr; ++i)
        {
            if (i == limits.attributesOfXML)
            {
                refuse ("attributes in one element", limits.attributesOfXML);
                return;
            }

            countNode();
            countName (attributes[2 * i]);
        }
    }

    void refuse() { XML_StopParser (parser.get(), XML_FALSE); }

    /** Stopping ends the parsing, but not at once. */
    template <typename Number>
    void refuse (const char* things, Number most)
    {
        if (! isRefused)
            Core::Logger::error ("An XML document has more than " + juce::String (most) + " " + things
                                 + "; it is not read");

        isRefused = true;
        refuse();
    }

    void keepUpTo (std::size_t end)
    {
        kept += document.substr (keptUpTo, end - keptUpTo);
        keptUpTo = end;
    }

    void leaveOut()
    {
        if (depth == 0)
            return;

        keepUpTo (here());
        keptUpTo += length();
    }

    struct Free
    {
        void operator() (XML_Parser parserToFree) const { XML_ParserFree (parserToFree); }
    };

    const ImportLimits limits = ImportLimits::limits();
    std::string_view document;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser;
    std::string kept;
    std::size_t keptUpTo = 0;
    std::size_t nodes = 0;
    std::set<std::string, std::less<>> names;
    bool isInText = false;
    bool isRefused = false;
    int depth = 0;
};

/** Writes a well-formed element without comments and processing instructions in words that the framework's reader
    understands. */
class PlainWords final
{
public:
    explicit PlainWords (std::string_view element) : rest (element) {}

    /** Nothing if a reference doesn't name an entity of XML itself. */
    std::optional<std::string> written()
    {
        while (! rest.empty())
        {
            take (std::min (rest.find_first_of ("<&"), rest.size()));

            if (rest.starts_with (startOfLiteralText))
                take (std::min (rest.find (endOfLiteralText), rest.size()));
            else if (rest.starts_with ('<'))
                takeTag();
            else if (! rest.empty() && ! takeReference())
                isSound = false;

            if (! isSound)
                return std::nullopt;
        }

        return std::move (result);
    }

private:
    void take (std::size_t length)
    {
        result += rest.substr (0, length);
        rest.remove_prefix (length);
    }

    void takeTag()
    {
        while (! rest.empty() && isSound)
        {
            const char byte = rest.front();

            if (byte == '"' || byte == '\'')
            {
                takeValue (byte);
                continue;
            }

            result += static_cast<unsigned char> (byte) < 128 ? byte : '_';
            rest.remove_prefix (1);

            if (byte == '>')
                return;
        }
    }

    void takeValue (char quote)
    {
        const char stops[] = { quote, '&' };
        take (1);

        while (! rest.empty() && isSound)
        {
            take (std::min (rest.find_first_of (std::string_view (stops, std::size (stops))), rest.size()));

            if (rest.starts_with (quote))
                return take (1);

            isSound = takeReference();
        }
    }

    bool takeReference()
    {
        const auto end = rest.find (';');

        if (end == std::string_view::npos)
            return false;

        auto name = rest.substr (1, end - 1);
        rest.remove_prefix (end + 1);
        result += '&';

        if (name.starts_with ('#'))
        {
            const std::size_t beforeNumber = name.starts_with ("#x") ? 2 : 1;
            result += name.substr (0, beforeNumber);
            name.remove_prefix (std::min (name.find_first_not_of ('0', beforeNumber), name.size()));
        }
        else if (std::find (entitiesOfXML.begin(), entitiesOfXML.end(), name) == entitiesOfXML.end())
        {
            return false;
        }

        result += name;
        result += ';';
        return true;
    }

    std::string_view rest;
    std::string result;
    bool isSound = true;
};

} // namespace

std::unique_ptr<juce::XmlElement> XMLGate::rootOf (std::string_view document)
{
    const auto root = StrictWalk (document).root();

    if (! root.has_value())
        return nullptr;

    const auto plain = PlainWords (*root).written();
    return plain.has_value() ? juce::XmlDocument::parse (Core::StringUtil::fromUTF8 (*plain)) : nullptr;
}

} // namespace ZEP::Overmarks
