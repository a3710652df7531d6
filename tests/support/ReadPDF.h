// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <poppler-document.h>
#include <poppler-page.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** What stands on one page of a PDF. Points from the bottom left corner, y growing upwards. */
struct PDFPage
{
    /** A word; its box reaches from the lower to the upper end of the font's letters. */
    struct Word
    {
        std::string text;
        float x, bottom, right, top;
    };

    struct Line
    {
        float x1, y1, x2, y2, width;
        bool isRound;
        juce::Colour colour;
    };

    struct Box
    {
        float x, y, w, h, lineWidth; ///< 0 for a filled box
        bool isRounded;
        juce::Colour colour;
    };

    float width = 0, height = 0;
    std::string text; ///< as it is copied, line by line
    std::vector<Word> words;
    std::vector<Line> lines;
    std::vector<Box> outlines;
    std::vector<Box> fills;
    std::vector<juce::Rectangle<float>> pictures; ///< what is seen of each
    std::vector<juce::Colour> textColours;        ///< of each piece of text, in the order of drawing
    int replacedTexts = 0;                        ///< pieces that are copied as other letters than are seen
    int clips = 0;
    std::vector<juce::Rectangle<float>> clipBoxes; ///< in the order of drawing; from their lower left corners

    /** The first word that reads so, or one far away from everything. */
    Word word (const std::string& wanted, int occurrence = 0) const
    {
        for (const auto& each : words)
            if (each.text == wanted && occurrence-- == 0)
                return each;

        return { "", -999, -999, -999, -999 };
    }

    int count (const std::string& wanted) const
    {
        return static_cast<int> (std::count_if (words.begin(), words.end(),
                                                [&] (const Word& each) { return each.text == wanted; }));
    }

    bool hasLine (float x1, float y1, float x2, float y2, float lineWidth, juce::Colour colour) const
    {
        const auto near = [] (float a, float b) { return std::abs (a - b) < 0.5f; };
        return std::any_of (lines.begin(), lines.end(),
                            [&] (const Line& line)
                            {
                                return near (line.x1, x1) && near (line.y1, y1) && near (line.x2, x2)
                                       && near (line.y2, y2) && std::abs (line.width - lineWidth) < 0.01f
                                       && line.colour == colour;
                            });
    }

    static bool has (const std::vector<Box>& boxes, juce::Rectangle<float> place, float lineWidth,
                     juce::Colour colour)
    {
        const auto near = [] (float a, float b) { return std::abs (a - b) < 0.5f; };
        return std::any_of (boxes.begin(), boxes.end(),
                            [&] (const Box& box)
                            {
                                return near (box.x, place.getX()) && near (box.y, place.getY())
                                       && near (box.w, place.getWidth()) && near (box.h, place.getHeight())
                                       && std::abs (box.lineWidth - lineWidth) < 0.01f
                                       && box.colour == colour;
                            });
    }

    bool hasFill (juce::Rectangle<float> place, juce::Colour colour) const
    {
        return has (fills, place, 0.0f, colour);
    }

    bool hasOutline (juce::Rectangle<float> place, float lineWidth, juce::Colour colour) const
    {
        return has (outlines, place, lineWidth, colour);
    }

    bool hasPicture (juce::Rectangle<float> place) const
    {
        return std::any_of (pictures.begin(), pictures.end(),
                            [&] (const juce::Rectangle<float>& each)
                            {
                                return std::abs (each.getX() - place.getX()) < 0.5f
                                       && std::abs (each.getY() - place.getY()) < 0.5f
                                       && std::abs (each.getWidth() - place.getWidth()) < 0.5f
                                       && std::abs (each.getHeight() - place.getHeight()) < 0.5f;
                            });
    }
};

/** Follows what a page's description draws: lines, boxes, pictures and their colours. Texts are found by the library that reads PDFs. */
class PDFContentReader final
{
public:
    /** A description of its own that comes on the page again and again. Nothing is seen of it outside its box. */
    struct Form
    {
        std::string content;
        juce::Rectangle<float> box;
    };

    /** What a name of the page stands for, if it is a form. */
    using Forms = std::function<std::optional<Form> (const std::string& name)>;

    PDFContentReader (const std::string& content, PDFPage& pageToFill, Forms formsOfFile)
        : page (pageToFill),
          forms (std::move (formsOfFile))
    {
        read (content);
    }

private:
    void read (const std::string& content)
    {
        for (const auto& token : tokensOf (content))
            if (isOperator (token))
            {
                run (token);
                numbers.clear();
            }
            else
            {
                name = token.front() == '/' ? token : name;
                numbers.push_back (std::strtof (token.c_str(), nullptr));
            }
    }

    struct State
    {
        std::array<float, 6> matrix { 1, 0, 0, 1, 0, 0 };
        juce::Colour fill { 0xff000000 }, stroke { 0xff000000 };
        float lineWidth = 1;
        bool isRound = false;
        std::optional<juce::Rectangle<float>>
            seen; ///< nothing outside it is, where something limits what is drawn
    };

    using Point = juce::Point<float>;

    struct Path
    {
        std::vector<Point> points;
        bool isCurved = false, isRectangle = false;
    };

    static std::vector<std::string> tokensOf (const std::string& content)
    {
        // Strings of letters, in either form, count as one; what they hold doesn't matter here.
        static const std::regex form (R"(\((?:\\[\s\S]|[^\\()])*\)|<[0-9A-Fa-f\s]*>|[\[\]]|[^\s\[\]()<>]+)");
        std::vector<std::string> tokens;

        for (auto match = std::sregex_iterator (content.begin(), content.end(), form);
             match != std::sregex_iterator(); ++match)
            tokens.push_back (match->str());

        return tokens;
    }

    static bool isOperator (const std::string& token)
    {
        const auto first = token.front();
        return (std::isalpha (static_cast<unsigned char> (first)) != 0) || first == '\'' || first == '"';
    }

    float number (std::size_t index) const { return numbers.at (index); }

    Point at (float x, float y) const
    {
        const auto& m = state.matrix;
        return { m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5] };
    }

    juce::Colour colour() const
    {
        const auto byte = [] (float part) { return static_cast<juce::uint8> (std::lround (part * 255.0f)); };
        return juce::Colour (byte (number (0)), byte (number (1)), byte (number (2)));
    }

    void concatenate()
    {
        const auto& m = state.matrix;
        std::array<float, 6> product {};

        for (std::size_t i = 0; i < 6; i += 2)
        {
            const auto x = number (i), y = number (i + 1);
            product[i] = m[0] * x + m[2] * y + (i == 4 ? m[4] : 0);
            product[i + 1] = m[1] * x + m[3] * y + (i == 4 ? m[5] : 0);
        }

        state.matrix = product;
    }

    void run (const std::string& op)
    {
        if (op == "q")
            saved.push_back (state);
        else if (op == "Q" && ! saved.empty())
        {
            state = saved.back();
            saved.pop_back();
        }
        else if (op == "cm")
            concatenate();
        else if (op == "rg")
            state.fill = colour();
        else if (op == "RG")
            state.stroke = colour();
        else if (op == "w")
            state.lineWidth = number (0);
        else if (op == "J")
            state.isRound = number (0) == 1.0f;
        else if (op == "Tj" || op == "TJ")
            page.textColours.push_back (state.fill);
        else if (op == "BDC")
            ++page.replacedTexts;
        else if (op == "Do")
            addNamed();
        else
            runPath (op);
    }

    void runPath (const std::string& op)
    {
        if (op == "m")
            paths.push_back ({ { at (number (0), number (1)) }, false, false });
        else if (op == "l")
            paths.back().points.push_back (at (number (0), number (1)));
        else if (op == "c")
        {
            paths.back().points.push_back (at (number (4), number (5)));
            paths.back().isCurved = true;
        }
        else if (op == "re")
            paths.push_back (
                { { at (number (0), number (1)), at (number (0) + number (2), number (1) + number (3)) },
                  false,
                  true });
        else if (op == "S")
            stroke();
        else if (op == "f" || op == "f*")
        {
            fill();
            paths.clear();
        }
        else if (op == "B" || op == "B*")
        {
            fill();
            stroke();
        }
        else if (op == "n")
        {
            page.clips += paths.empty() ? 0 : 1;

            for (const auto& path : paths)
            {
                page.clipBoxes.push_back (areaOf (path.points));
                limitTo (page.clipBoxes.back());
            }

            paths.clear();
        }
    }

    static juce::Rectangle<float> areaOf (const std::vector<Point>& points)
    {
        return juce::Rectangle<float>::findAreaContainingPoints (points.data(),
                                                                 static_cast<int> (points.size()));
    }

    void limitTo (const juce::Rectangle<float>& area)
    {
        state.seen = state.seen.has_value() ? state.seen->getIntersection (area) : area;
    }

    /** Whether something of a shape is. */
    bool isSeen (const Path& path, float lineWidth) const
    {
        return ! state.seen.has_value()
               || state.seen->intersects (areaOf (path.points).expanded (std::max (lineWidth, 0.01f) / 2.0f));
    }

    static PDFPage::Box boxOf (const Path& path, float lineWidth, juce::Colour colour)
    {
        const auto box = areaOf (path.points);
        return { box.getX(), box.getY(), box.getWidth(), box.getHeight(), lineWidth, path.isCurved, colour };
    }

    void fill()
    {
        for (const auto& path : paths)
            if (isSeen (path, 0.0f))
                page.fills.push_back (boxOf (path, 0.0f, state.fill));
    }

    void stroke()
    {
        for (const auto& path : paths)
            if (! isSeen (path, state.lineWidth))
                continue;
            else if (path.points.size() == 2 && ! path.isRectangle)
                page.lines.push_back ({ path.points[0].x, path.points[0].y, path.points[1].x,
                                        path.points[1].y, state.lineWidth, state.isRound, state.stroke });
            else if (path.points.size() > 1)
                page.outlines.push_back (boxOf (path, state.lineWidth, state.stroke));

        paths.clear();
    }

    void addNamed()
    {
        const auto form = forms (name);

        if (! form.has_value())
            return addPicture();

        const auto outside = state;
        const auto& box = form->box;
        limitTo (areaOf ({ at (box.getX(), box.getY()), at (box.getRight(), box.getBottom()) }));
        read (form->content);
        state = outside;
    }

    void addPicture()
    {
        auto place = areaOf ({ at (0, 0), at (1, 1) });

        if (state.seen.has_value())
            place = place.getIntersection (*state.seen);

        if (! place.isEmpty())
            page.pictures.push_back (place);
    }

    PDFPage& page;
    Forms forms;
    std::string name; ///< the last one
    State state;
    std::vector<State> saved;
    std::vector<float> numbers;
    std::vector<Path> paths;
};

/** A PDF as a reader sees it. */
class ReadPDF final
{
public:
    explicit ReadPDF (const juce::File& file)
    {
        juce::MemoryBlock block;
        file.loadFileAsData (block);
        bytes.assign (block.begin(), block.end());
        document.reset (
            poppler::document::load_from_raw_data (bytes.data(), static_cast<int> (bytes.size())));

        if (document == nullptr)
            throw std::runtime_error ("no PDF: " + file.getFullPathName().toStdString());

        findObjects();
        const auto contents = pageContents();

        for (int i = 0; i < document->pages(); ++i)
            addPage (i, contents.at (static_cast<std::size_t> (i)));
    }

    const PDFPage& page (std::size_t index = 0) const { return pages.at (index); }

    std::string title() const { return utf8 (document->get_title()); }
    std::string creator() const { return utf8 (document->get_creator()); }
    juce::int64 creationTime() const { return static_cast<juce::int64> (document->get_creation_date_t()); }

    /** How many images the file holds, not counting where they are drawn nor their transparency. */
    int numberOfImages() const
    {
        return static_cast<int> (
            std::count_if (objects.begin(), objects.end(),
                           [] (const auto& object)
                           {
                               return object.second.find ("/Subtype /Image") != std::string::npos
                                      && object.second.find ("/SMask") != std::string::npos;
                           }));
    }

    /** How many descriptions the file holds that come on its pages again and again. */
    int numberOfForms() const
    {
        return static_cast<int> (std::count_if (objects.begin(), objects.end(),
                                                [] (const auto& object) { return isForm (object.second); }));
    }

    std::vector<PDFPage> pages;
    std::string bytes;

private:
    static bool isForm (const std::string& object)
    {
        return object.find ("/Subtype /Form") != std::string::npos;
    }

    static std::string utf8 (const poppler::ustring& text)
    {
        const auto array = text.to_utf8();
        return { array.begin(), array.end() };
    }

    void addPage (int index, const std::string& content)
    {
        const std::unique_ptr<poppler::page> source (document->create_page (index));
        const auto size = source->page_rect();
        PDFPage page;
        page.width = static_cast<float> (size.width());
        page.height = static_cast<float> (size.height());
        page.text = utf8 (source->text (poppler::rectf(), poppler::page::physical_layout));

        for (const auto& box : source->text_list())
        {
            const auto place = box.bbox();
            page.words.push_back ({ utf8 (box.text()), static_cast<float> (place.left()),
                                    page.height - static_cast<float> (place.bottom()),
                                    static_cast<float> (place.right()),
                                    page.height - static_cast<float> (place.top()) });
        }

        const PDFContentReader reader (content, page, [this] (const auto& name) { return formNamed (name); });
        pages.push_back (std::move (page));
    }

    void findObjects()
    {
        const std::string start = " 0 obj\n", end = "endobj";

        for (auto place = bytes.find (start); place != std::string::npos;
             place = bytes.find (start, place + 1))
        {
            auto digits = place;

            while (digits > 0 && std::isdigit (static_cast<unsigned char> (bytes[digits - 1])) != 0)
                --digits;

            const auto first = place + start.size();
            objects[std::stoi (bytes.substr (digits, place - digits))] =
                bytes.substr (first, bytes.find (end, first) - first);
        }
    }

    static std::string inflated (const std::string& object)
    {
        const std::string mark = "stream\n";
        const auto first = object.find (mark) + mark.size();
        juce::MemoryInputStream compressed (object.data() + first, object.size() - first, false);
        juce::GZIPDecompressorInputStream stream (&compressed, false,
                                                  juce::GZIPDecompressorInputStream::zlibFormat);
        juce::MemoryBlock block;
        stream.readIntoMemoryBlock (block);
        return { block.begin(), block.end() };
    }

    /** The library that writes the pages names a thing "x" and the number of its object. */
    std::optional<PDFContentReader::Form> formNamed (const std::string& name) const
    {
        const auto found =
            name.starts_with ("/x") ? objects.find (std::stoi (name.substr (2))) : objects.end();

        if (found == objects.end() || ! isForm (found->second))
            return std::nullopt;

        static const std::regex boxOfForm (R"(/BBox \[ (\S+) (\S+) (\S+) (\S+) \])");
        std::smatch sides;

        if (found->second.find ("/Matrix") != std::string::npos
            || ! std::regex_search (found->second, sides, boxOfForm))
            throw std::runtime_error ("a form that isn't read: " + found->second.substr (0, 400));

        const auto side = [&sides] (std::size_t index) { return std::stof (sides.str (index)); };
        return PDFContentReader::Form { inflated (found->second),
                                        juce::Rectangle<float>::leftTopRightBottom (side (1), side (2),
                                                                                    side (3), side (4)) };
    }

    std::vector<std::string> pageContents() const
    {
        std::vector<std::string> contents;
        std::smatch kids, content;
        const std::regex reference (R"((\d+) 0 R)"), contentsOf (R"(/Contents (\d+) 0 R)");

        for (const auto& [number, object] : objects)
            if (std::regex_search (object, kids, std::regex (R"(/Kids \[([^\]]*)\])")))
            {
                const auto list = kids.str (1);

                for (auto kid = std::sregex_iterator (list.begin(), list.end(), reference);
                     kid != std::sregex_iterator(); ++kid)
                    if (const auto& page = objects.at (std::stoi (kid->str (1)));
                        std::regex_search (page, content, contentsOf))
                        contents.push_back (inflated (objects.at (std::stoi (content.str (1)))));
            }

        return contents;
    }

    std::unique_ptr<poppler::document> document;
    std::map<int, std::string> objects;
};

} // namespace ZEP::Overmarks::Testing
