// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PageCanvas.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <new>
#include <numbers>
#include <utility>

namespace ZEP::Core
{

namespace
{

// The page description's own width 0 comes out as one dot of the printer, which few people can see.
constexpr float thinnestLine = 0.25f;

bool areOnPaper (std::initializer_list<float> values)
{
    constexpr float furthest = 1.0e6f; // positions are kept in fixed point, and no paper is a kilometre long
    return std::all_of (values.begin(), values.end(),
                        [] (float value) { return std::abs (value) < furthest; });
}

bool hasArea (const juce::Rectangle<float>& area) { return isOnPaper (area) && ! area.isEmpty(); }

double component (juce::uint8 value) { return value / 255.0; }

} // namespace

bool isOnPaper (const juce::Rectangle<float>& area)
{
    return areOnPaper ({ area.getX(), area.getY(), area.getWidth(), area.getHeight() });
}

PageCanvas::PageCanvas (float pageWidth, float pageHeight)
    : surface (cairo_pdf_surface_create_for_stream (append, this, static_cast<double> (pageWidth),
                                                    static_cast<double> (pageHeight))),
      context (cairo_create (surface.get()))
{
}

PageCanvas::~PageCanvas() = default;

cairo_status_t PageCanvas::append (void* canvas, const unsigned char* bytes, unsigned int length)
{
    try
    {
        static_cast<PageCanvas*> (canvas)->output.append (reinterpret_cast<const char*> (bytes), length);
        return CAIRO_STATUS_SUCCESS;
    }
    catch (const std::bad_alloc&)
    {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

// ---- the document ----------------------------------------------------------------------------------------------------------

void PageCanvas::setMetadata (int kind, const std::string& text)
{
    if (! finished)
        cairo_pdf_surface_set_metadata (surface.get(), static_cast<cairo_pdf_metadata_t> (kind),
                                        text.c_str());
}

void PageCanvas::setTitle (const std::string& title) { setMetadata (CAIRO_PDF_METADATA_TITLE, title); }
void PageCanvas::setCreator (const std::string& creator)
{
    setMetadata (CAIRO_PDF_METADATA_CREATOR, creator);
}

void PageCanvas::setCreationTime (juce::Time time)
{
    setMetadata (CAIRO_PDF_METADATA_CREATE_DATE,
                 (time.formatted ("%Y-%m-%dT%H:%M:%S") + time.getUTCOffsetString (true)).toStdString());
}

void PageCanvas::addPage()
{
    if (finished)
        return;

    setClip ({});
    cairo_show_page (context.get());
}

juce::Result PageCanvas::finish()
{
    if (! finished)
    {
        setClip ({});
        cairo_show_page (context.get());
        cairo_surface_finish (surface.get());
        finished = true;
    }

    auto status = cairo_status (context.get());

    if (status == CAIRO_STATUS_SUCCESS)
        status = cairo_surface_status (surface.get());

    return status == CAIRO_STATUS_SUCCESS ? juce::Result::ok()
                                          : juce::Result::fail (cairo_status_to_string (status));
}

void PageCanvas::setClip (const juce::Rectangle<float>& rectangle)
{
    if (! beginShape())
        return;

    cairo_reset_clip (context.get());
    clip = hasArea (rectangle) ? rectangle : juce::Rectangle<float>();

    if (clip.isEmpty())
        return;

    cairo_rectangle (context.get(), clip.getX(), clip.getY(), clip.getWidth(), clip.getHeight());
    cairo_clip (context.get());
}

bool PageCanvas::isHidden (float top, float bottom) const
{
    constexpr auto hair = 0.01f; // sums of the same heights differ by as much
    return ! clip.isEmpty() && (bottom <= clip.getY() + hair || top >= clip.getBottom() - hair);
}

// ---- shapes ----------------------------------------------------------------------------------------------------------------

void PageCanvas::setColour (juce::Colour colour)
{
    cairo_set_source_rgba (context.get(), component (colour.getRed()), component (colour.getGreen()),
                           component (colour.getBlue()), component (colour.getAlpha()));
}

void PageCanvas::stroke (float width, juce::Colour colour)
{
    setColour (colour);
    cairo_set_line_width (context.get(), std::max (width, thinnestLine));
    cairo_stroke (context.get());
}

void PageCanvas::drawLine (juce::Line<float> line, float width, bool hasRoundEnds, juce::Colour colour)
{
    if (finished
        || ! areOnPaper ({ line.getStartX(), line.getStartY(), line.getEndX(), line.getEndY(), width }))
        return;

    const Pen wanted { width, hasRoundEnds, colour };

    if (pen != wanted
        || ! colour.isOpaque()) // where lines cross, a transparent stroke shows once, two show twice
        drawWhatIsGathered();

    pen = wanted;
    cairo_move_to (context.get(), line.getStartX(), line.getStartY());
    cairo_line_to (context.get(), line.getEndX(), line.getEndY());
}

void PageCanvas::drawWhatIsGathered() noexcept
{
    strokeLines();
    showTexts();
}

void PageCanvas::strokeLines() noexcept
{
    if (! pen.has_value())
        return;

    cairo_set_line_cap (context.get(), pen->hasRoundEnds ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    stroke (pen->width, pen->colour);
    pen.reset();
}

bool PageCanvas::beginShape()
{
    if (! finished)
        drawWhatIsGathered();

    return ! finished;
}

void PageCanvas::drawRect (const juce::Rectangle<float>& rectangle, float lineWidth, juce::Colour colour)
{
    if (! hasArea (rectangle) || ! areOnPaper ({ lineWidth }) || ! beginShape())
        return;

    cairo_rectangle (context.get(), rectangle.getX(), rectangle.getY(), rectangle.getWidth(),
                     rectangle.getHeight());
    stroke (lineWidth, colour);
}

void PageCanvas::drawRoundedRect (const juce::Rectangle<float>& rectangle, float lineWidth, float radius,
                                  juce::Colour colour)
{
    if (! std::isfinite (radius) || radius <= 0.0f)
        return drawRect (rectangle, lineWidth, colour);

    if (! hasArea (rectangle) || ! areOnPaper ({ lineWidth }) || ! beginShape())
        return;

    constexpr auto quarter = std::numbers::pi / 2.0;
    const double r =
        std::min (radius, std::min (rectangle.getWidth(), rectangle.getHeight()) / 2.0f); // NOLINT
    const double left = rectangle.getX() + r, top = rectangle.getY() + r;
    const double right = rectangle.getRight() - r, bottom = rectangle.getBottom() - r;
    auto* const c = context.get();
    cairo_new_sub_path (c);
    cairo_arc (c, right, top, r, -quarter, 0.0);
    cairo_arc (c, right, bottom, r, 0.0, quarter);
    cairo_arc (c, left, bottom, r, quarter, 2.0 * quarter);
    cairo_arc (c, left, top, r, 2.0 * quarter, 3.0 * quarter);
    cairo_close_path (c);
    stroke (lineWidth, colour);
}

void PageCanvas::fillRect (const juce::Rectangle<float>& rectangle, juce::Colour colour)
{
    if (! hasArea (rectangle) || ! beginShape())
        return;

    setColour (colour);
    cairo_rectangle (context.get(), rectangle.getX(), rectangle.getY(), rectangle.getWidth(),
                     rectangle.getHeight());
    cairo_fill (context.get());
}

// ---- text ------------------------------------------------------------------------------------------------------------------

bool PageCanvas::canBeDrawnOn() const noexcept
{
    return ! finished && cairo_status (context.get()) == CAIRO_STATUS_SUCCESS;
}

void PageCanvas::drawText (PangoLayoutLine& line, juce::Point<float> start, juce::Colour colour)
{
    if (! canBeDrawnOn() || ! areOnPaper ({ start.getX(), start.getY() }))
        return;

    strokeLines();

    // Transparent texts that are shown together don't show through each other.
    if (colour != colourOfTexts || ! colour.isOpaque())
        showTexts();

    // One that begins outside, or on the edge, may be seen by nobody; together with others its letters would stand in the file all the same.
    if (! isWithinLimits (start))
        return showAlone (line, start, colour);

    colourOfTexts = colour;

    if (texts.add (line, start))
        return;

    const bool isAfterOthers = ! texts.empty();
    showTexts();

    if (! isAfterOthers || ! texts.add (line, start))
        showAlone (line, start, colour);
}

void PageCanvas::showAlone (PangoLayoutLine& line, juce::Point<float> start, juce::Colour colour)
{
    showTexts();
    setColour (colour);
    cairo_move_to (context.get(), start.getX(), start.getY());
    pango_cairo_show_layout_line (context.get(), &line);
    cairo_new_path (context.get());
}

bool PageCanvas::isWithinLimits (juce::Point<float> point) const
{
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents (context.get(), &left, &top, &right, &bottom);
    return point.x > left && point.x < right && point.y > top && point.y < bottom;
}

void PageCanvas::showTexts() noexcept
{
    if (texts.empty())
        return;

    setColour (colourOfTexts);
    texts.show (*context);
}

// ---- what comes again ------------------------------------------------------------------------------------------------------

/** As long as this lives, all that is drawn goes to another surface, which no clip limits. */
class PageCanvas::Elsewhere final
{
public:
    Elsewhere (PageCanvas& drawnOn, cairo_surface_t* target, juce::Point<float> origin)
        : canvas (drawnOn),
          pageContext (std::exchange (canvas.context, Context (cairo_create (target)))),
          clipOfPage (std::exchange (canvas.clip, {}))
    {
        cairo_translate (canvas.context.get(), -origin.getX(), -origin.getY());
    }

    ~Elsewhere()
    {
        canvas.drawWhatIsGathered();
        canvas.context = std::move (pageContext);
        canvas.clip = clipOfPage;
    }

    Elsewhere (const Elsewhere&) = delete;
    Elsewhere& operator= (const Elsewhere&) = delete;

private:
    PageCanvas& canvas;
    Context pageContext;
    juce::Rectangle<float> clipOfPage;
};

PageCanvas::Surface PageCanvas::recorded (const juce::Rectangle<float>& place,
                                          const std::function<void()>& draw)
{
    constexpr auto reach = 2.0f; // lines on the edge reach beyond it
    const auto around = place.withZeroOrigin().expanded (reach);
    const cairo_rectangle_t extents { around.getX(), around.getY(), around.getWidth(), around.getHeight() };
    Surface recording (cairo_recording_surface_create (CAIRO_CONTENT_COLOR_ALPHA, &extents));
    const Elsewhere scope (*this, recording.get(), place.getPosition());
    draw();
    return recording;
}

void PageCanvas::drawRepeated (const juce::String& identifier, const juce::Rectangle<float>& place,
                               const std::function<void()>& draw)
{
    if (! hasArea (place) || ! beginShape())
        return;

    const std::tuple key { identifier, place.getWidth(), place.getHeight() };
    auto known = recordings.find (key);

    if (known == recordings.end())
    {
        auto recording = recorded (place, draw); // a new image forgets what is known
        known = recordings.insert_or_assign (key, std::move (recording)).first;
    }

    auto* const c = context.get();
    cairo_save (c);
    cairo_set_source_surface (c, known->second.get(), place.getX(), place.getY());
    cairo_paint (c);
    cairo_restore (c);
}

// ---- images ----------------------------------------------------------------------------------------------------------------

PageCanvas::Surface PageCanvas::surfaceOf (const juce::Image& image)
{
    const auto pixels = image.convertedToFormat (juce::Image::ARGB); // premultiplied, as the surface has it
    const juce::Image::BitmapData data (pixels, juce::Image::BitmapData::readOnly);
    Surface made (cairo_image_surface_create (CAIRO_FORMAT_ARGB32, data.width, data.height));

    if (cairo_surface_status (made.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;

    cairo_surface_flush (made.get());
    auto* const target = cairo_image_surface_get_data (made.get());
    const auto stride = cairo_image_surface_get_stride (made.get());

    for (int row = 0; row < data.height; ++row)
        std::memcpy (target + static_cast<std::ptrdiff_t> (row) * stride, data.getLinePointer (row),
                     static_cast<std::size_t> (data.width) * sizeof (std::uint32_t));

    cairo_surface_mark_dirty (made.get());
    return made;
}

void PageCanvas::setImage (const juce::Image& image, const juce::String& identifier)
{
    recordings.clear(); // an older image may be in one

    if (image.isValid())
        images[identifier] = surfaceOf (image);
    else
        images.erase (identifier);
}

void PageCanvas::drawImage (const juce::String& identifier, const juce::Rectangle<float>& rectangle)
{
    const auto found = images.find (identifier);

    if (found == images.end() || found->second == nullptr || ! hasArea (rectangle) || ! beginShape())
        return;

    auto* const image = found->second.get();
    auto* const c = context.get();
    cairo_save (c);
    cairo_translate (c, rectangle.getX(), rectangle.getY());
    cairo_scale (c, static_cast<double> (rectangle.getWidth()) / cairo_image_surface_get_width (image),
                 static_cast<double> (rectangle.getHeight()) / cairo_image_surface_get_height (image));
    cairo_set_source_surface (c, image, 0.0, 0.0);
    cairo_paint (c);
    cairo_restore (c);
}

} // namespace ZEP::Core
