// SPDX-License-Identifier: GPL-3.0-only
#include "Suggestion.h"

#include "Session.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>

namespace overmarks
{

namespace
{

std::string inSmallLetters (std::string word)
{
    for (auto& character : word)
        character = static_cast<char> (std::tolower (static_cast<unsigned char> (character)));

    return word;
}

/** How many letters have to be put in, taken out or changed to make one word of the other. */
std::size_t distance (const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row (b.size() + 1);
    std::iota (row.begin(), row.end(), std::size_t { 0 });

    for (std::size_t i = 0; i < a.size(); ++i)
    {
        auto diagonal = row[0];
        row[0] = i + 1;

        for (std::size_t j = 0; j < b.size(); ++j)
        {
            const auto changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min ({ changed, row[j] + 1, row[j + 1] + 1 });
        }
    }

    return row.back();
}

} // namespace

std::string nearestWord (const std::string& typed, const std::vector<std::string>& known)
{
    constexpr std::size_t longestTyped = 64;
    const auto word = inSmallLetters (typed.substr (0, longestTyped));
    std::string nearest;
    auto nearestDistance = std::max<std::size_t> (2, word.size() / 3) + 1;

    for (const auto& candidate : known)
    {
        const auto candidateDistance = distance (word, inSmallLetters (candidate));

        if (candidateDistance < nearestDistance)
        {
            nearest = candidate;
            nearestDistance = candidateDistance;
        }
    }

    return nearest;
}

std::string didYouMean (const std::string& typed, const std::vector<std::string>& known)
{
    const auto nearest = nearestWord (typed, known);
    return nearest.empty() ? std::string() : " Did you mean \"" + nearest + "\"?";
}

std::string joined (const std::vector<std::string>& words)
{
    std::string text;

    for (const auto& word : words)
        text += (text.empty() ? "" : ", ") + word;

    return text;
}

void refuseValue (const std::string& option, const std::string& value, const std::vector<std::string>& known)
{
    throw WrongUsage (option + ": \"" + value + "\" is none of " + joined (known) + "."
                      + didYouMean (value, known));
}

} // namespace overmarks
