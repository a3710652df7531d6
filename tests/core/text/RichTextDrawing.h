// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"
#include "core/text/StringUtil.h"

#include <string>

/** Makes rich texts for tests and draws them as one line. */
namespace RichTextDrawing
{

inline const juce::Colour black { 0xff000000 };
inline const juce::Colour red { 0xffff0000 };

inline juce::String text (const char* utf8) { return ZEP::Core::StringUtil::fromUTF8 (utf8); }

inline juce::Font bold() { return ZEP::Core::RichTextString::defaultFont().boldened(); }

inline ZEP::Core::RichTextString marked (const char* utf8, juce::Range<int> range,
                                         const juce::Font& font = bold(), juce::Colour colour = black)
{
    ZEP::Core::RichTextString result (text (utf8));
    result.setFont (range, font);
    result.setColour (range, colour);
    return result;
}

/* The text, each formatted run in brackets with the letters of its look: "one [b:two] three". */
inline std::string drawn (const ZEP::Core::RichTextString& rich)
{
    std::string result;
    int end = 0;

    for (const auto& run : rich.formattedRuns())
    {
        const std::string look = std::string (run.font.isBold() ? "b" : "") + (run.font.isItalic() ? "i" : "")
                                 + (run.font.isUnderlined() ? "u" : "")
                                 + (ZEP::Core::RichTextString::isStruckThrough (run.font) ? "s" : "")
                                 + (run.colour == black ? "" : "c");
        result += rich.getText().substring (end, run.range.getStart()).toStdString();
        end = run.range.getEnd();
        result += "[" + look + ":" + rich.getText().substring (run.range.getStart(), end).toStdString() + "]";
    }

    return result + rich.getText().substring (end).toStdString();
}

/* Runs from 0 to the length without a gap. */
inline bool isCovered (const ZEP::Core::RichTextString& rich)
{
    int end = 0;

    for (int i = 0; i < rich.getNumAttributes(); ++i)
    {
        if (rich.getAttribute (i).range.getStart() != end || rich.getAttribute (i).range.isEmpty())
            return false;

        end = rich.getAttribute (i).range.getEnd();
    }

    return end == rich.getText().length() && rich.length() == end;
}

} // namespace RichTextDrawing
