// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PrintFooter.h"

#include "core/system/UserLocale.h"
#include "core/text/TextDecoding.h"
#include "export/frame/CSVCells.h"

#include <langinfo.h>
#include <time.h>

#include <array>
#include <string_view>

namespace ZEP::Overmarks
{
namespace
{

std::string escaped (const juce::String& text)
{
    std::string html;

    for (const char letter : utf8 (text))
        if (letter == '<')
            html += "&lt;";
        else if (letter == '&')
            html += "&amp;";
        else
            html += letter;

    return html;
}

/** An element at a place of the sheet; points from its left and top. */
std::string element (double x, double y, double width, double height, const std::string& style,
                     const std::string& content)
{
    const auto points = [] (double length) { return juce::String (length, 2).toStdString() + "pt;"; };
    return "<div style=\"position:absolute;left:" + points (x) + "top:" + points (y)
           + "width:" + points (width) + "height:" + points (height) + style + "\">" + content + "</div>";
}

std::string textElement (double x, double y, double width, const std::string& alignment,
                         const std::string& content)
{
    constexpr double lineHeight = 15;
    return element (x, y, width, lineHeight, "text-align:" + alignment, content);
}

std::string iconElement (double x, double y, const std::string& bytes)
{
    constexpr double size = 16;

    if (bytes.empty())
        return {};

    return element (x, y, size, size, {},
                    "<img style=\"display:block;width:16pt;height:16pt\" src=\"data:image/png;base64,"
                        + juce::Base64::toBase64 (bytes.data(), bytes.size()).toStdString() + "\">");
}

juce::String formatted (std::string_view pattern, const std::tm& time, locale_t locale)
{
    std::array<char, 256> buffer {};
    const auto length =
        ::strftime_l (buffer.data(), buffer.size(), std::string (pattern).c_str(), &time, locale);
    const std::string_view bytes (buffer.data(), length);
    return ZEP::Core::ByteSurvey (bytes).isUTF8
               ? juce::String::fromUTF8 (bytes.data(), static_cast<int> (bytes.size()))
               : juce::String();
}

} // namespace

std::string PrintFooter::html (const PrintLayout& layout) const
{
    // The band's own corners, and from there as they are drawn on all sheets of this kind.
    const double x = layout.left;
    const double w = layout.paperWidth - layout.left - layout.right;
    const double bottom = layout.paperHeight - (layout.bottom - height);
    const double top = bottom - height;
    const double textTop = bottom - 15;

    return "<div style=\"position:absolute;left:0;top:0;font:9pt/11pt Arial,sans-serif;color:#555;"
           "white-space:nowrap;-webkit-print-color-adjust:exact\">"
           + element (x + 4, top - 0.5, w - 12, 1, "background:#555", {})
           + iconElement (x + 4, bottom - 16, icon)
           + textElement (x + 28, textTop, w - 28, "left", escaped (version))
           + textElement (x, textTop, w, "center", escaped (dateAndTime))
           + textElement (x, textTop, w - 4, "right",
                          "Page: <span class=\"pageNumber\"></span>/<span class=\"totalPages\"></span>")
           + textElement (x + 130, textTop, w - 28, "center", escaped (layoutName)) + "</div>";
}

juce::String shortDateAndTime (std::time_t moment)
{
    std::tm time {};
    ::localtime_r (&moment, &time);
    const Core::UserLocale user (LC_TIME_MASK);
    const Core::UserLocale neutral (LC_TIME_MASK, "C");
    const auto locale = user.exists() ? user.get() : neutral.get();

    // The time without its seconds, by the clock of the place.
    const std::string_view usualTime (::nl_langinfo_l (T_FMT, locale));
    const bool hasTwelveHours = usualTime.find ("%r") != usualTime.npos
                                || usualTime.find ("%I") != usualTime.npos
                                || usualTime.find ("%l") != usualTime.npos;
    const auto date = formatted ("%x", time, locale);
    return (date.isNotEmpty() ? date : formatted ("%F", time, neutral.get())) + ", "
           + formatted (hasTwelveHours ? "%I:%M %p" : "%H:%M", time, locale);
}

} // namespace ZEP::Overmarks
