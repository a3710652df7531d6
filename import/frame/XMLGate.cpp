// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/XMLGate.h"

#include "core/text/StringUtil.h"

#include <expat.h>

#include <limits>
#include <optional>
#include <string>
#include <type_traits>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::size_t longestDocument = std::numeric_limits<int>::max();

// Each element takes some hundred bytes of memory, and a hostile document asks for one with four.
constexpr std::size_t bytesPerElement = 8;
constexpr std::size_t spareElements = 1 << 16;

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
        XML_SetEntityDeclHandler (parser.get(), entityDeclaration);
        XML_SetSkippedEntityHandler (parser.get(), skippedEntity);
    }

    /** The text of the root element; nothing if the document doesn't pass. */
    std::optional<std::string> root()
    {
        if (document.size() > longestDocument)
            return std::nullopt;

        const auto status =
            XML_Parse (parser.get(), document.data(), static_cast<int> (document.size()), XML_TRUE);

        if (status != XML_STATUS_OK)
            return std::nullopt;

        return kept;
    }

private:
    static StrictWalk& self (void* walk) { return *static_cast<StrictWalk*> (walk); }

    static void XMLCALL startOfElement (void* walk, const XML_Char*, const XML_Char**)
    {
        if (self (walk).depth == 0)
            self (walk).keptUpTo = self (walk).here();

        if (++self (walk).depth > XMLGate::deepestNesting
            || ++self (walk).elements > self (walk).mostElements())
            self (walk).refuse();
    }

    static void XMLCALL endOfElement (void* walk, const XML_Char*)
    {
        if (--self (walk).depth == 0)
            self (walk).keepUpTo (self (walk).here() + self (walk).length());
    }

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

    static void XMLCALL skippedEntity (void* walk, const XML_Char*, int) { self (walk).refuse(); }

    /** Where what the parser is telling of begins, and how long it is, in bytes. An empty element is told of twice: its end
        has no length. */
    std::size_t here() const { return static_cast<std::size_t> (XML_GetCurrentByteIndex (parser.get())); }
    std::size_t length() const { return static_cast<std::size_t> (XML_GetCurrentByteCount (parser.get())); }

    std::size_t mostElements() const { return spareElements + document.size() / bytesPerElement; }

    void refuse() { XML_StopParser (parser.get(), XML_FALSE); }

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

    std::string_view document;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser;
    std::string kept;
    std::size_t keptUpTo = 0;
    std::size_t elements = 0;
    int depth = 0;
};

} // namespace

std::unique_ptr<juce::XmlElement> XMLGate::rootOf (std::string_view document)
{
    const auto root = StrictWalk (document).root();
    return root.has_value() ? juce::XmlDocument::parse (Core::StringUtil::fromUTF8 (*root)) : nullptr;
}

} // namespace ZEP::Overmarks
