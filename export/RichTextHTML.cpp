// SPDX-License-Identifier: GPL-3.0-only
#include "export/RichTextHTML.h"

namespace ZEP::Overmarks
{

using ZEP::Core::RichTextString;

namespace
{

/** Copies up to so many characters and moves on behind them. */
void appendCharacters (std::string& html, juce::CharPointer_UTF8& place, int number)
{
    auto pieceStart = place;

    const auto finishPiece = [&]
    { html.append (pieceStart.getAddress(), static_cast<std::size_t> (place - pieceStart)); };

    for (; number > 0 && ! place.isEmpty(); --number)
    {
        if (*place != '\n')
        {
            ++place;
            continue;
        }

        finishPiece();
        html += "<br />";
        pieceStart = ++place;
    }

    finishPiece();
}

const char* decorationOf (const juce::Font& font)
{
    const bool isStruckThrough = RichTextString::isStruckThrough (font);

    if (font.isUnderlined())
        return isStruckThrough ? "text-decoration: underline line-through;" : "text-decoration: underline;";

    return isStruckThrough ? "text-decoration: line-through;" : "";
}

std::string spanStart (const juce::Font& font, juce::Colour colour)
{
    std::string tag = R"(<span style=")";

    if (font.isBold())
        tag += "font-weight: bold;";

    if (font.isItalic())
        tag += "font-style: italic;";

    tag += decorationOf (font);
    tag += "color: rgb(" + std::to_string (colour.getRed()) + "," + std::to_string (colour.getGreen()) + ","
           + std::to_string (colour.getBlue()) + ");";
    return tag + R"(">)";
}

} // namespace

std::string htmlOfRichText (const RichTextString& text)
{
    std::string html;
    auto place = text.getText().getCharPointer();
    int position = 0;

    for (const auto& run : text.formattedRuns())
    {
        appendCharacters (html, place, run.range.getStart() - position);
        html += spanStart (run.font, run.colour);
        appendCharacters (html, place, run.range.getLength());
        html += "</span>";
        position = run.range.getEnd();
    }

    // What follows the last run, and all of a plain text.
    appendCharacters (html, place, text.length() - position);
    return html;
}

} // namespace ZEP::Overmarks
