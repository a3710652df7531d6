// SPDX-License-Identifier: GPL-3.0-only
#include "WordContent.h"

#include "CharacterText.h"
#include "Failure.h"
#include "WordStyles.h"

#include <algorithm>
#include <charconv>

namespace DocxHandler
{

namespace
{

/* The elements that only stand around others, and those whose content was taken out again. */
bool isWrapper (std::string_view name)
{
    return name == "ins" || name == "moveTo" || name == "smartTag" || name == "customXml"
           || name == "sdtContent" || name == "hyperlink" || name == "fldSimple" || name == "dir"
           || name == "bdo" || name == "rubyBase";
}

bool isTimeOfBlock (const Paragraph& paragraph)
{
    return ! paragraph.isNested && (paragraph.field == Field::inPoint || paragraph.field == Field::outPoint);
}

/* Whether there is a cell with both of a cue's times. */
bool holdsCueBlock (const Table& table)
{
    for (const auto& row : table.rows)
        for (const auto& cell : row.cells)
            if (std::count_if (cell.paragraphs.begin(), cell.paragraphs.end(), isTimeOfBlock) >= 2)
                return true;

    return false;
}

/* Whether a content control shows what it shows while it is empty. */
bool showsPlaceholder (const pugi::xml_node& control)
{
    return isOn (childNamed (childNamed (control, "sdtPr"), "showingPlcHdr"));
}

bool holdsRowOrCell (const pugi::xml_node& control)
{
    const auto content = childNamed (control, "sdtContent");
    return childNamed (content, "tr") || childNamed (content, "tc");
}

/* A cell in a control of its own stays, empty: others stand behind it. */
bool isPlaceholderCell (const pugi::xml_node& cell)
{
    return localName (cell.parent()) == "sdtContent" && showsPlaceholder (cell.parent().parent());
}

/* Walks a document whose depth is bounded already. */
class ContentReader final
{
public:
    ContentReader (const WordStyles& documentStyles, std::string_view prefixOfWord)
        : styles (documentStyles),
          prefix (prefixOfWord)
    {
    }

    [[nodiscard]] WordContent read (const pugi::xml_node& body)
    {
        forEachBlock (body, [this] (const pugi::xml_node& element) { addBlock (element); });
        return std::move (content);
    }

private:
    /* Elements of other vocabularies are drawings, formulas and the like; none of them holds cues. */
    [[nodiscard]] bool isOfWord (const pugi::xml_node& element) const
    {
        const std::string_view name = element.name();
        return element.type() == pugi::node_element && name.size() > prefix.size()
               && name.starts_with (prefix) && name.find (':', prefix.size()) == std::string_view::npos;
    }

    /* Calls `visit` for each element of Word's, without what only stands around others. */
    template <typename Visit>
    void unwrapped (const pugi::xml_node& parent, const Visit& visit) const
    {
        for (const auto& child : parent.children())
        {
            const auto name = localName (child);

            if (name == "AlternateContent") // the same thing in several vocabularies: the first is meant
                unwrapped (childNamed (child, "Choice") ? childNamed (child, "Choice")
                                                        : childNamed (child, "Fallback"),
                           visit);
            else if (! isOfWord (child))
                continue;
            else if (name == "sdt" && showsPlaceholder (child) && ! holdsRowOrCell (child))
                continue;
            else if (name == "sdt")
                unwrapped (childNamed (child, "sdtContent"), visit);
            else if (name == "ruby")
                unwrapped (childNamed (child, "rubyBase"), visit);
            else if (isWrapper (name))
                unwrapped (child, visit);
            else
                visit (child);
        }
    }

    template <typename Visit>
    void forEachBlock (const pugi::xml_node& parent, const Visit& visit) const
    {
        unwrapped (parent,
                   [&visit] (const pugi::xml_node& element)
                   {
                       if (localName (element) == "p" || localName (element) == "tbl")
                           visit (element);
                   });
    }

    void addBlock (const pugi::xml_node& element)
    {
        if (localName (element) == "p")
            content.blocks.emplace_back (readParagraph (element));
        else
            addTable (element);
    }

    void addTable (const pugi::xml_node& element)
    {
        const auto place = content.blocks.size();
        content.blocks.emplace_back (Table());
        auto table = readTable (element);
        content.blocks[place] = std::move (table);
    }

    [[nodiscard]] Table readTable (const pugi::xml_node& element)
    {
        Table table;
        unwrapped (element,
                   [this, &table] (const pugi::xml_node& row)
                   {
                       const auto properties = childNamed (row, "trPr");

                       if (localName (row) == "tr" && ! childNamed (properties, "del"))
                           table.rows.push_back (readRow (row));
                   });
        return table;
    }

    [[nodiscard]] Row readRow (const pugi::xml_node& element)
    {
        constexpr std::size_t mostCells = 256; // Word itself stops at 63
        Row row;
        int column = numberIn (childNamed (element, "trPr"), "gridBefore", 0);
        unwrapped (element,
                   [this, &row, &column] (const pugi::xml_node& cell)
                   {
                       if (localName (cell) != "tc" || row.cells.size() == mostCells)
                           return;

                       row.cells.push_back (readCell (cell, column));
                       column += row.cells.back().span;
                   });
        return row;
    }

    [[nodiscard]] static int numberIn (const pugi::xml_node& properties, std::string_view name, int otherwise)
    {
        constexpr int mostColumns = 1000;
        const auto* value = valueOf (childNamed (properties, name));
        return value == nullptr ? otherwise : std::clamp (std::atoi (value), 0, mostColumns);
    }

    [[nodiscard]] Cell readCell (const pugi::xml_node& element, int column)
    {
        const auto merge = childNamed (childNamed (element, "tcPr"), "vMerge");
        const auto* value = valueOf (merge);

        Cell cell;
        cell.column = column;
        cell.span = std::max (1, numberIn (childNamed (element, "tcPr"), "gridSpan", 1));
        cell.continuesAbove = merge && (value == nullptr || std::string_view (value) != "restart");

        if (isPlaceholderCell (element))
            return cell;

        forEachBlock (element,
                      [this, &cell] (const pugi::xml_node& block)
                      {
                          if (localName (block) == "p")
                              cell.paragraphs.push_back (readParagraph (block));
                          else
                              addNestedTable (block, cell);
                      });
        return cell;
    }

    void addNestedTable (const pugi::xml_node& element, Cell& cell)
    {
        const auto place = content.blocks.size();
        addTable (element);
        auto& table = std::get<Table> (content.blocks[place]);

        if (holdsCueBlock (table))
            return;

        table.isPartOfCell = true;

        for (const auto& row : table.rows)
            for (const auto& nested : row.cells)
                for (auto paragraph : nested.paragraphs)
                {
                    countCopy (paragraph);
                    paragraph.isNested = true;
                    cell.paragraphs.push_back (std::move (paragraph));
                }
    }

    /* Tables in tables in tables: each holds the text of all within it. */
    void countCopy (const Paragraph& paragraph)
    {
        constexpr std::size_t mostCopied = std::size_t { 128 } << 20U;
        copied += sizeof (Paragraph) + paragraph.text.text.size() + paragraph.text.runs.size() * sizeof (Run);

        if (copied > mostCopied)
            throw Failure ("is nested too deeply");
    }

    [[nodiscard]] Paragraph readParagraph (const pugi::xml_node& element) const
    {
        const auto properties = childNamed (element, "pPr");
        const auto* style = valueOf (childNamed (properties, "pStyle"));
        RichTextBuilder text;

        unwrapped (element,
                   [this, &text] (const pugi::xml_node& run)
                   {
                       if (localName (run) == "r")
                           readRun (run, text);
                   });

        Paragraph paragraph;
        paragraph.field = style == nullptr ? Field::none : styles.fieldOf (style);
        paragraph.text = text.take();
        paragraph.joinsNext = static_cast<bool> (childNamed (childNamed (properties, "rPr"), "del"));
        return paragraph;
    }

    void readRun (const pugi::xml_node& run, RichTextBuilder& text) const
    {
        Look look;

        if (! styles.applyRunProperties (childNamed (run, "rPr"), look))
            return;

        unwrapped (run,
                   [this, &text, &look] (const pugi::xml_node& element)
                   {
                       if (localName (element) == "r") // of a text with a reading beside it
                           readRun (element, text);
                       else
                           text.append (charactersOf (element), look);
                   });
    }

    [[nodiscard]] static std::string charactersOf (const pugi::xml_node& element)
    {
        const auto name = localName (element);

        if (name == "t")
            return textOf (element);

        if (name == "sym")
            return symbolOf (element);

        if (name == "br")
            return attributeOf (element, "type") == "page" ? "" : "\n";

        if (name == "cr")
            return "\n";

        if (name == "tab" || name == "ptab")
            return "\t";

        if (name == "noBreakHyphen")
            return "\xe2\x80\x91";

        return name == "softHyphen" ? "\xc2\xad" : "";
    }

    [[nodiscard]] static std::string_view attributeOf (const pugi::xml_node& element, std::string_view wanted)
    {
        for (const auto& attribute : element.attributes())
        {
            const std::string_view name = attribute.name();

            if (name.substr (name.find (':') + 1) == wanted)
                return attribute.value();
        }

        return {};
    }

    /* A character of a font. What fonts of symbols keep in places of their own can't be told. */
    [[nodiscard]] static std::string symbolOf (const pugi::xml_node& element)
    {
        constexpr std::uint32_t firstPrivate = 0xe000;
        constexpr std::uint32_t lastPrivate = 0xf8ff;
        const auto digits = attributeOf (element, "char");
        std::uint32_t value = 0;
        const auto [stop, error] = std::from_chars (digits.data(), digits.data() + digits.size(), value, 16);
        const auto isPrivate = value >= firstPrivate && value <= lastPrivate;
        std::string text;

        if (error == std::errc() && stop == digits.data() + digits.size() && ! isPrivate
            && isAllowedInXML (value))
            appendCharacter (text, value);

        return text;
    }

    [[nodiscard]] static std::string textOf (const pugi::xml_node& element)
    {
        auto text = cleaned (characterDataOf (element));
        std::replace (text.begin(), text.end(), '\n', ' ');
        std::replace (text.begin(), text.end(), '\r', ' ');
        const auto keepsBlanks = std::string_view (element.attribute ("xml:space").value()) == "preserve";
        return keepsBlanks ? text : withoutBlanksAround (text);
    }

    /* Comments and literal sections cut a text in pieces. */
    [[nodiscard]] static std::string characterDataOf (const pugi::xml_node& element)
    {
        std::string text;

        for (const auto& piece : element.children())
            if (piece.type() == pugi::node_pcdata || piece.type() == pugi::node_cdata)
                text += piece.value();

        return text;
    }

    /* A no-break space is none of the blanks that stand around a text for the sake of the XML: somebody has typed it. */
    [[nodiscard]] static std::string withoutBlanksAround (const std::string& text)
    {
        constexpr auto blanks = " \t\n\r";
        const auto start = text.find_first_not_of (blanks);
        return start == std::string::npos ? std::string()
                                          : text.substr (start, text.find_last_not_of (blanks) + 1 - start);
    }

    const WordStyles& styles;
    std::string_view prefix;
    WordContent content;
    std::size_t copied = 0; ///< bytes
};

/* "w:" for a root called "w:document", nothing for one without prefix. */
std::string_view prefixOf (const pugi::xml_node& root)
{
    const std::string_view name = root.name();
    const auto colon = name.find (':');
    return colon == std::string_view::npos ? std::string_view() : name.substr (0, colon + 1);
}

} // namespace

void RichTextBuilder::append (std::string_view text, const Look& look)
{
    if (text.empty())
        return;

    const auto start = length;
    result.text += text;
    length += countCharacters (text);

    if (look == Look())
        return;

    if (! result.runs.empty() && result.runs.back().end == start && result.runs.back().look == look)
        result.runs.back().end = length;
    else
        result.runs.push_back ({ start, length, look });
}

void RichTextBuilder::append (const RichText& text)
{
    const auto start = length;
    result.text += text.text;
    length += countCharacters (text.text);

    for (const auto& run : text.runs)
        result.runs.push_back ({ start + run.start, start + run.end, run.look });
}

void RichTextBuilder::appendLine (const RichText& text)
{
    if (! isEmpty() && ! text.text.empty())
        append ("\n", {});

    append (text);
}

bool Paragraph::isBlank() const { return trimmed (text.text).empty(); }

bool Cell::isBlank() const
{
    return std::all_of (paragraphs.begin(), paragraphs.end(),
                        [] (const Paragraph& paragraph) { return paragraph.isBlank(); });
}

RichText joinedText (const std::vector<Paragraph>& paragraphs)
{
    const auto isFilled = [] (const Paragraph& paragraph) { return ! paragraph.isBlank(); };
    const auto first = std::find_if (paragraphs.begin(), paragraphs.end(), isFilled);
    const auto last = std::find_if (paragraphs.rbegin(), paragraphs.rend(), isFilled).base();
    RichTextBuilder text;

    for (auto paragraph = first; paragraph < last; ++paragraph)
    {
        text.append (paragraph->text);

        if (paragraph + 1 < last && ! paragraph->joinsNext)
            text.append ("\n", {});
    }

    return text.take();
}

WordContent readWordContent (std::string document, std::string styles)
{
    pugi::xml_document styleDocument;
    pugi::xml_document mainDocument;

    if (! styles.empty())
        parseXMLPart (styleDocument, styles);

    parseXMLPart (mainDocument, document);
    const auto root = mainDocument.document_element();

    if (localName (root) != "document" || ! childNamed (root, "body"))
        throw Failure ("is no Word document");

    const WordStyles wordStyles (styleDocument);
    return ContentReader (wordStyles, prefixOf (root)).read (childNamed (root, "body"));
}

} // namespace DocxHandler
