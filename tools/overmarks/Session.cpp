// SPDX-License-Identifier: GPL-3.0-only
#include "Session.h"

#include "core/system/TerminalOrders.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <utility>

namespace overmarks
{

namespace
{

void writeLine (std::FILE* stream, const std::string& line)
{
    std::fwrite (line.data(), 1, line.size(), stream);

    if (line.empty() || line.back() != '\n')
        std::fputc ('\n', stream);
}

/** Passes over a character, and tells whether no terminal may see it. */
bool isOrder (juce::CharPointer_UTF8& place)
{
    return ZEP::Core::isTerminalOrder (static_cast<std::uint32_t> (place.getAndAdvance()));
}

/** The control character that begins at this place; nothing if there is none. */
std::string_view controlAt (const std::string& text, std::size_t place)
{
    const juce::CharPointer_UTF8 first (text.c_str() + place);
    auto next = first;
    return isOrder (next) ? std::string_view (
               first.getAddress(), static_cast<std::size_t> (next.getAddress() - first.getAddress()))
                          : std::string_view();
}

/** The next place from here on at which one of the control characters may begin that JSON lets stand as they are; else the end. */
std::size_t nextSuspect (const std::string& text, std::size_t place)
{
    const auto isFirstByte = [] (char byte) { return byte == '\x7f' || byte == '\xc2' || byte == '\xe2'; };
    const auto from = text.begin() + static_cast<std::ptrdiff_t> (place);
    return static_cast<std::size_t> (std::find_if (from, text.end(), isFirstByte) - text.begin());
}

} // namespace

std::string indentedJSON (const json& document)
{
    return document.dump (1, ' ', false, json::error_handler_t::replace);
}

juce::String counted (std::size_t number, const char* thing)
{
    return juce::String (number) + " " + thing + (number == 1 ? "" : "s");
}

juce::String printable (const juce::String& text)
{
    const std::string_view bytes = text.toRawUTF8();

    if (std::all_of (bytes.begin(), bytes.end(), [] (char byte) { return byte >= ' ' && byte < '\x7f'; }))
        return text;

    std::string shown;
    shown.reserve (bytes.size());

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
    {
        const auto* first = p.getAddress();

        if (isOrder (p))
            shown += ' ';
        else
            shown.append (first, static_cast<std::size_t> (p.getAddress() - first));
    }

    return juce::CharPointer_UTF8 (shown.c_str());
}

std::string printableJSON (std::string text)
{
    std::string escaped;
    std::size_t copied = 0;

    for (auto place = nextSuspect (text, 0); place < text.size(); place = nextSuspect (text, place + 1))
        if (const auto control = controlAt (text, place); ! control.empty())
        {
            escaped.append (text, copied, place - copied);
            escaped += json::parse ('"' + std::string (control) + '"').dump (-1, ' ', true).substr (1, 6);
            copied = place + control.size();
        }

    if (copied == 0)
        return text;

    escaped.append (text, copied);
    return escaped;
}

juce::String Problem::inWords() const
{
    juce::String words;

    if (file.isNotEmpty())
        words << file << ": ";
    if (row > 0)
        words << "row " << row << (column.isEmpty() ? ": " : ", ");
    if (column.isNotEmpty())
        words << column << ": ";

    return words + message;
}

json Problem::asJSON() const
{
    return { { "file", file.toStdString() },
             { "row", row },
             { "column", column.toStdString() },
             { "message", message.toStdString() } };
}

void Session::addOutputOptions (CLI::App& command)
{
    command.add_flag ("--json", wantsJSON, "Write one JSON document, also when the command fails");
    command.add_flag ("--quiet", isQuiet, "No progress and no notes");
}

void Session::data (const std::string& text) const { writeLine (stdout, text); }

void Session::data (const json& document) const { dataAsJSON (indentedJSON (document)); }

void Session::dataAsJSON (std::string text) const { writeLine (stdout, printableJSON (std::move (text))); }

void Session::partOfJSON (const std::string& text) const
{
    if (std::ferror (stdout) != 0)
        return; // a reader who lost a part takes what follows it for the whole

    const auto write = [] (const std::string& part) { std::fwrite (part.data(), 1, part.size(), stdout); };

    if (nextSuspect (text, 0) == text.size())
        write (text);
    else
        write (printableJSON (text));
}

void Session::say (const juce::String& message) const
{
    messages.push_back (message.toStdString());

    if (! isQuiet)
        writeLine (stderr, printable (message).toStdString());
}

void Session::report (const Problem& problem)
{
    writeLine (stderr, printable (problem.inWords()).toStdString());
    problems.push_back (problem);
    exitStatus = 1;
}

json Session::problemsAsJSON() const
{
    auto list = json::array();

    for (const auto& problem : problems)
        list.push_back (problem.asJSON());

    return list;
}

json Session::messagesAsJSON() const { return messages; }

void Session::keep (std::shared_ptr<const void> large)
{
    static auto& kept = *new std::vector<std::shared_ptr<const void>>(); // never goes
    kept.push_back (std::move (large));
}

} // namespace overmarks
