// SPDX-License-Identifier: GPL-3.0-only
// A cue sheet with the boxes of the takes as a plain program would draw it, text by text: with cairo and pango, and, where it is
// installed, with libharu and the fonts that every reader has, which needs no shaping at all.
#include "SeasonLists.h"
#include "Works.h"

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include <string>

#if __has_include(<hpdf.h>)
#include <hpdf.h>
#define OVERMARKS_HAS_LIBHARU 1
#endif

namespace bench
{

namespace
{

constexpr double paperWidth = 595;
constexpr double paperHeight = 842;
constexpr double margin = 30;
constexpr double cueHeight = 98;
constexpr double gap = 8;
constexpr double rightSection = 100;
constexpr int takes = 25;

/** What draws a sheet: places are from the top left corner, in points. */
class Pen
{
public:
    virtual void beginPage() = 0;
    virtual void box (double x, double y, double width, double height) = 0;
    virtual void text (double x, double y, double width, double size, const std::string& words) = 0;

protected:
    ~Pen() = default;
};

void drawCue (Pen& pen, const SeasonRow& row, double top)
{
    constexpr double textSize = 11;
    constexpr double labelSize = 8;
    const auto width = paperWidth - 2 * margin;
    const auto right = paperWidth - margin - rightSection;
    const auto fields = margin + 67;
    const auto textWidth = right - margin - 8;
    pen.box (margin, top, width, cueHeight);
    pen.text (margin + 4, top + 4, textWidth, textSize, row[2]);
    pen.text (margin + 4, top + 34, 60, labelSize, "NOTES");
    pen.box (fields, top + 32, right - fields - 4, 14);
    pen.text (fields + 3, top + 34, right - fields - 8, labelSize, row[7]);
    pen.text (margin + 4, top + 52, 60, labelSize, "REASON");
    pen.box (fields, top + 50, right - fields - 4, 14);
    pen.text (fields + 3, top + 52, right - fields - 8, labelSize, row[9]);
    pen.text (right + 4, top + 4, rightSection - 8, textSize, row[6]);
    pen.text (right + 4, top + 24, rightSection - 8, labelSize, row[3]);
    pen.text (right + 4, top + 40, rightSection - 8, labelSize, row[0]);
    pen.text (right + 4, top + 54, rightSection - 8, labelSize, row[1]);

    const auto side = (right - margin) / takes;

    for (int take = 0; take < takes; ++take)
    {
        pen.box (margin + take * side, top + cueHeight - side, side, side);
        pen.text (margin + take * side + 5, top + cueHeight - side + 4, side, labelSize,
                  std::to_string (take + 1));
    }
}

/** @returns how many cues were drawn */
long long drawSheet (Pen& pen, int cues)
{
    auto top = paperHeight;
    long long drawn = 0;

    for (const auto& row : seasonRows (cues))
    {
        if (top + cueHeight > paperHeight - margin)
        {
            pen.beginPage();
            top = margin;
        }

        drawCue (pen, row, top);
        top += cueHeight + gap;
        ++drawn;
    }

    return drawn;
}

class PangoPen final : public Pen
{
public:
    explicit PangoPen (const std::string& path)
        : surface (cairo_pdf_surface_create (path.c_str(), paperWidth, paperHeight)),
          cairo (cairo_create (surface))
    {
    }

    ~PangoPen()
    {
        cairo_destroy (cairo);
        cairo_surface_finish (surface);
        cairo_surface_destroy (surface);
    }

    PangoPen (const PangoPen&) = delete;
    PangoPen& operator= (const PangoPen&) = delete;

    void beginPage() override
    {
        if (hasPage)
            cairo_show_page (cairo);

        hasPage = true;
    }

    void box (double x, double y, double width, double height) override
    {
        cairo_rectangle (cairo, x, y, width, height);
        cairo_stroke (cairo);
    }

    void text (double x, double y, double width, double size, const std::string& words) override
    {
        auto* const layout = pango_cairo_create_layout (cairo);
        auto* const font = pango_font_description_from_string ("Sans");
        pango_font_description_set_absolute_size (font, size * PANGO_SCALE);
        pango_layout_set_font_description (layout, font);
        pango_layout_set_width (layout, static_cast<int> (width * PANGO_SCALE));
        pango_layout_set_text (layout, words.c_str(), static_cast<int> (words.size()));
        cairo_move_to (cairo, x, y);
        pango_cairo_show_layout (cairo, layout);
        pango_font_description_free (font);
        g_object_unref (layout);
    }

private:
    cairo_surface_t* surface;
    cairo_t* cairo;
    bool hasPage = false;
};

WorkDone drawWithPango (const WorkOrder& order)
{
    long long drawn = 0;
    const auto seconds = secondsOf (
        [&]
        {
            PangoPen pen (order.out.getChildFile ("pango.pdf").getFullPathName().toStdString());
            drawn = drawSheet (pen, order.rows);
        });
    return { seconds, drawn };
}

#ifdef OVERMARKS_HAS_LIBHARU
class HaruPen final : public Pen
{
public:
    HaruPen() : document (HPDF_New (nullptr, nullptr)), font (HPDF_GetFont (document, "Helvetica", nullptr))
    {
        HPDF_SetCompressionMode (document, HPDF_COMP_ALL);
    }

    ~HaruPen() { HPDF_Free (document); }

    HaruPen (const HaruPen&) = delete;
    HaruPen& operator= (const HaruPen&) = delete;

    void beginPage() override
    {
        page = HPDF_AddPage (document);
        HPDF_Page_SetWidth (page, paperWidth);
        HPDF_Page_SetHeight (page, paperHeight);
    }

    void box (double x, double y, double width, double height) override
    {
        HPDF_Page_Rectangle (page, real (x), real (paperHeight - y - height), real (width), real (height));
        HPDF_Page_Stroke (page);
    }

    void text (double x, double y, double width, double size, const std::string& words) override
    {
        const auto top = paperHeight - y;
        HPDF_Page_BeginText (page);
        HPDF_Page_SetFontAndSize (page, font, real (size));
        HPDF_Page_SetTextLeading (page, real (1.2 * size));
        HPDF_Page_TextRect (page, real (x), real (top), real (x + width), real (top - 2.5 * size),
                            words.c_str(), HPDF_TALIGN_LEFT, nullptr);
        HPDF_Page_EndText (page);
    }

    void save (const std::string& path) { HPDF_SaveToFile (document, path.c_str()); }

private:
    static HPDF_REAL real (double number) { return static_cast<HPDF_REAL> (number); }

    HPDF_Doc document;
    HPDF_Font font;
    HPDF_Page page = nullptr;
};

WorkDone drawWithHaru (const WorkOrder& order)
{
    long long drawn = 0;
    const auto seconds = secondsOf (
        [&]
        {
            HaruPen pen;
            drawn = drawSheet (pen, order.rows);
            pen.save (order.out.getChildFile ("haru.pdf").getFullPathName().toStdString());
        });
    return { seconds, drawn };
}
#endif

constexpr Work works[] = {
    { "pdf-drawn.pango", drawWithPango },
#ifdef OVERMARKS_HAS_LIBHARU
    { "pdf-drawn.floor", drawWithHaru },
#endif
};

} // namespace

std::span<const Work> worksOfPlainPaper() { return works; }

} // namespace bench
