// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/FixedWidthText.h"

#include <algorithm>

namespace ZEP::Overmarks
{

void FixedWidthText::column (std::string_view bytes, std::size_t most, std::size_t width)
{
    const auto shown = bytes.substr (0, most);
    text (shown);
    blanks (width - std::min (shown.size(), width));
}

void FixedWidthText::blanks (std::size_t number) { all.append (number, ' '); }

void FixedWidthText::text (std::string_view bytes) { all += bytes; }

void FixedWidthText::endLine() { all += "\r\n"; }

std::vector<std::string_view> piecesOf (std::string_view bytes, std::size_t length)
{
    std::vector<std::string_view> pieces;

    for (; ! bytes.empty(); bytes.remove_prefix (pieces.back().size()))
        pieces.push_back (bytes.substr (0, length));

    return pieces;
}

std::string without (std::string_view bytes, std::string_view sought)
{
    std::string kept;
    std::size_t start = 0;

    for (auto hit = bytes.find (sought); hit != std::string_view::npos; hit = bytes.find (sought, start))
    {
        kept += bytes.substr (start, hit - start);
        start = hit + sought.size();
    }

    kept += bytes.substr (start);
    return kept;
}

} // namespace ZEP::Overmarks
