// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/PaperSize.h"

#include "export/frame/UserLocale.h"

#include <langinfo.h>

#include <cmath>
#include <cstdint>

namespace ZEP::Overmarks
{
namespace
{

/** A measure of the locale in millimetres; it comes in the place of a pointer. */
int millimetres (nl_item measure, locale_t locale)
{
    return static_cast<int> (reinterpret_cast<std::intptr_t> (nl_langinfo_l (measure, locale)) & 0xffff);
}

int points (int lengthInMillimetres)
{
    return static_cast<int> (std::lround (lengthInMillimetres * 72.0 / 25.4));
}

} // namespace

PaperSize paperSizeFromMillimetres (int width, int height)
{
    constexpr int letterWidth = 216, letterHeight = 279;
    constexpr int smallest = 100, largest = 1000; // of what a cue sheet is printed on

    if (width == letterWidth && height == letterHeight)
        return paperLetter; // whose measures aren't whole millimetres

    if (width < smallest || width > largest || height < smallest || height > largest)
        return paperA4;

    return { points (width), points (height) };
}

PaperSize localPaperSize()
{
    const UserLocale locale (LC_PAPER_MASK);

    if (! locale.exists())
        return paperA4;

    return paperSizeFromMillimetres (millimetres (_NL_PAPER_WIDTH, locale.get()),
                                     millimetres (_NL_PAPER_HEIGHT, locale.get()));
}

PaperSize paperSizeFor (const EventExportSettingsSet& settings)
{
    const auto found = settings.options.find (EventExportPaperKey);
    const auto name = found != settings.options.end() ? found->second.toString() : juce::String();

    if (name == "a4")
        return paperA4;

    return name == "letter" ? paperLetter : localPaperSize();
}

} // namespace ZEP::Overmarks
