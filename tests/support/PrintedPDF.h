// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-image.h>
#include <poppler/cpp/poppler-page-renderer.h>
#include <poppler/cpp/poppler-page.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** A PDF file, read back by another library than the one that has made it. Points from the left and top of the page. */
class PrintedPDF final
{
public:
    struct Word
    {
        std::string text;
        double left, top, right, bottom;
    };

    explicit PrintedPDF (const std::string& path) : document (poppler::document::load_from_file (path)) {}

    [[nodiscard]] bool isValid() const { return document != nullptr && ! document->is_locked(); }

    [[nodiscard]] int pages() const { return isValid() ? document->pages() : 0; }

    [[nodiscard]] double width (int page = 0) const { return pageAt (page)->page_rect().width(); }
    [[nodiscard]] double height (int page = 0) const { return pageAt (page)->page_rect().height(); }

    /** Counted from 0. */
    [[nodiscard]] std::vector<Word> words (int page) const
    {
        const auto opened = pageAt (page);
        std::vector<Word> found;

        for (const auto& box : opened->text_list())
        {
            const auto bytes = box.text().to_utf8();
            const auto place = box.bbox();
            found.push_back (
                { { bytes.begin(), bytes.end() }, place.left(), place.top(), place.right(), place.bottom() });
        }

        return found;
    }

    /** The first word of a page that reads so; an empty one if there is none. */
    [[nodiscard]] Word word (int page, const std::string& text) const
    {
        const auto all = words (page);
        const auto found =
            std::find_if (all.begin(), all.end(), [&text] (const Word& word) { return word.text == text; });
        return found != all.end() ? *found : Word {};
    }

    /** All words of all pages, with a blank behind each. */
    [[nodiscard]] std::string text() const
    {
        std::string all;

        for (int page = 0; page < pages(); ++page)
            for (const auto& word : words (page))
                all += word.text + " ";

        return all;
    }

    /** Red, green and blue of a point of the page as it looks. */
    [[nodiscard]] unsigned int colourAt (int page, double x, double y) const
    {
        const auto picture = pictureOf (page);
        const auto pixel = [] (double points) { return static_cast<int> (points * pixelsAPoint); };
        return colour (picture, pixel (x), pixel (y));
    }

    /** Whether any point of the page has this colour, as far as an eye can tell. */
    [[nodiscard]] bool hasColour (int page, unsigned int sought) const
    {
        const auto picture = pictureOf (page);

        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (areAlike (colour (picture, x, y), sought))
                    return true;

        return false;
    }

    /** The darkest point of a part of the page as it looks. @returns 0 for black, 255 for white */
    [[nodiscard]] unsigned int darkest (int page, double left, double top, double right, double bottom) const
    {
        const auto picture = pictureOf (page);
        const auto pixel = [] (double points) { return static_cast<int> (points * pixelsAPoint); };
        unsigned int least = 255;

        for (int y = pixel (top); y < pixel (bottom); ++y)
            for (int x = pixel (left); x < pixel (right); ++x)
                least = std::min (least, colour (picture, x, y) >> 8 & 255);

        return least;
    }

private:
    static constexpr int pixelsAPoint = 4;

    [[nodiscard]] poppler::image pictureOf (int page) const
    {
        constexpr double dotsAnInch = 72.0 * pixelsAPoint;
        const auto opened = pageAt (page);
        return poppler::page_renderer().render_page (opened.get(), dotsAnInch, dotsAnInch);
    }

    static bool areAlike (unsigned int a, unsigned int b)
    {
        constexpr int eye = 6;

        for (const unsigned int place : { 0u, 8u, 16u })
            if (std::abs (static_cast<int> (a >> place & 255) - static_cast<int> (b >> place & 255)) > eye)
                return false;

        return true;
    }

    static unsigned int colour (const poppler::image& picture, int x, int y)
    {
        std::uint32_t pixel = 0;
        std::memcpy (&pixel, picture.const_data() + y * picture.bytes_per_row() + x * 4, sizeof (pixel));
        return pixel & 0xffffff;
    }

    [[nodiscard]] std::unique_ptr<poppler::page> pageAt (int number) const
    {
        return std::unique_ptr<poppler::page> (document->create_page (number));
    }

    std::unique_ptr<poppler::document> document;
};

} // namespace ZEP::Overmarks::Testing
