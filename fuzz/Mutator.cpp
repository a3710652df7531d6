// SPDX-License-Identifier: GPL-3.0-only
#include "Mutator.h"

#include "Law.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace
{

/** What goes wrong in files of any format: marks, line ends, cut characters, numbers at the end of their range. */
const std::array<std::string, 16> strays { std::string (1, '\0'),
                                           "\n",
                                           "\r",
                                           "\r\n",
                                           "\xef\xbb\xbf",
                                           "\xff\xfe",
                                           "\xc0\x80",
                                           "\xed\xa0\x80",
                                           "\xf0\x9f",
                                           "\"",
                                           ",",
                                           "-1",
                                           "2147483648",
                                           "1e999",
                                           "%s",
                                           "\xff\xff\xff\xff" };

bool isDigit (char c) { return c >= '0' && c <= '9'; }

unsigned hexDigit (char c)
{
    constexpr std::string_view digits = "0123456789abcdef0000000000ABCDEF";
    const auto place = digits.find (c);
    law (place != std::string_view::npos, "\\x in a dictionary has two hexadecimal digits behind it");
    return static_cast<unsigned> (place) % 16;
}

std::string unescaped (std::string_view text)
{
    std::string word;

    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != '\\')
        {
            word += text[i];
            continue;
        }

        law (++i < text.size(), "a word of a dictionary doesn't end in half an escape");

        if (text[i] != 'x')
        {
            law (text[i] == '\\' || text[i] == '"', "a dictionary escapes \\, \" and bytes alone");
            word += text[i];
            continue;
        }

        law (i + 2 < text.size(), "\\x in a dictionary has two hexadecimal digits behind it");
        word += static_cast<char> (hexDigit (text[i + 1]) * 16 + hexDigit (text[i + 2]));
        i += 2;
    }

    return word;
}

} // namespace

std::vector<std::string> wordsOfDictionary (const std::filesystem::path& file)
{
    std::ifstream stream (file);
    law (stream.is_open(), "the dictionary can be read");
    std::vector<std::string> words;

    for (std::string line; std::getline (stream, line);)
    {
        if (line.empty() || line.front() == '#')
            continue;

        const auto start = line.find ('"');
        const auto end = line.rfind ('"');
        law (start != std::string::npos && end > start, "a line of a dictionary holds a word in quotes");
        words.push_back (unescaped (std::string_view (line).substr (start + 1, end - start - 1)));
    }

    law (! words.empty(), "a dictionary has words");
    return words;
}

std::string Mutator::next (const std::vector<std::string>& inputs)
{
    constexpr std::size_t mostFaults = 8;
    auto bytes = inputs.empty() ? std::string() : inputs[below (inputs.size())];

    for (auto faults = 1 + below (mostFaults); faults > 0; --faults)
        damage (bytes, inputs);

    return bytes;
}

std::size_t Mutator::below (std::size_t limit) { return random() % std::max<std::size_t> (limit, 1); }

std::string Mutator::word() { return words.empty() ? strayBytes() : words[below (words.size())]; }

std::string Mutator::strayBytes()
{
    constexpr std::size_t mostBytes = 8, byteValues = 256, oneIn = 3;

    if (below (oneIn) != 0)
        return strays[below (strays.size())];

    std::string bytes (1 + below (mostBytes), '\0');

    for (auto& byte : bytes)
        byte = static_cast<char> (below (byteValues));

    return bytes;
}

void Mutator::damage (std::string& bytes, const std::vector<std::string>& inputs)
{
    constexpr std::size_t kinds = 10, longestPiece = 64, rarely = 8, byteValues = 256, bits = 8;
    const auto place = below (bytes.size() + 1);
    const auto length = below (std::min (bytes.size() - place, longestPiece) + 1);

    switch (below (kinds))
    {
        case 0: bytes.insert (place, word()); break;
        case 1: bytes.replace (place, length, word()); break;
        case 2: bytes.insert (place, strayBytes()); break;
        case 3: bytes.insert (below (bytes.size() + 1), bytes.substr (place, length)); break;
        case 4: bytes.erase (place, length); break;
        case 5: bytes.resize (below (rarely) == 0 ? place : bytes.size()); break;
        case 6: changeNumber (bytes); break;
        case 7:
            if (! inputs.empty())
            {
                const auto& other = inputs[below (inputs.size())];
                bytes.insert (place, other.substr (below (other.size() + 1), below (longestPiece)));
            }
            break;
        default:
            if (place < bytes.size())
                bytes[place] = below (2) == 0 ? static_cast<char> (below (byteValues))
                                              : static_cast<char> (bytes[place] ^ (1 << below (bits)));
            break;
    }
}

/** Puts another number in the place of one that is written in digits. */
void Mutator::changeNumber (std::string& bytes)
{
    static const std::array<std::string, 10> numbers {
        "0", "1", "-1", "59", "60", "99", "00", "24", "2147483647", "99999999999999999999"
    };
    const auto from = bytes.begin() + static_cast<std::ptrdiff_t> (below (bytes.size() + 1));
    const auto start = std::find_if (from, bytes.end(), isDigit);
    const auto end = std::find_if_not (start, bytes.end(), isDigit);

    if (start != end)
        bytes.replace (start, end, numbers[below (numbers.size())]);
}
