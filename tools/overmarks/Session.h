// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <CLI/CLI.hpp>
#include <juce_core/juce_core.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace overmarks
{

using json = nlohmann::ordered_json;

/** The work could not be done; the program says why and ends with 1. */
struct CommandFailure : std::runtime_error
{
    explicit CommandFailure (const juce::String& message) : std::runtime_error (message.toStdString()) {}
};

/** Somebody has stopped the program before the work was done. */
struct WorkStopped : CommandFailure
{
    using CommandFailure::CommandFailure;
};

/** A document as text, indented by a blank a level. What no UTF-8 text can hold becomes U+FFFD. */
std::string indentedJSON (const json& document);

/** The command line asks for something that doesn't exist; the program says so and ends with 2. */
struct WrongUsage : std::runtime_error
{
    explicit WrongUsage (const juce::String& message) : std::runtime_error (message.toStdString()) {}
};

/** Something in a cue list that could not be taken over as it stands. */
struct Problem
{
    juce::String file;
    int row = 0;         ///< as a person counts, the title row being 1; 0 for the whole file
    juce::String column; ///< empty for the whole row
    juce::String message;

    juce::String inWords() const;
    json asJSON() const;
};

/** One run of the program: what it writes where, and how it ends.

    Standard output carries data only; messages and problems go to standard error, where nothing that a cue list says can
    steer the terminal. */
class Session final
{
public:
    /** --json and --quiet, which every command has. */
    void addOutputOptions (CLI::App& command);

    /** Data, as it stands, to standard output. Text for a person has to go through printable() first. */
    void data (const std::string& text) const;
    void data (const json& document) const;

    /** A JSON document that is text already, with what a terminal would obey escaped. */
    void dataAsJSON (std::string text) const;

    /** The same of a document that is too long to stand in memory as a whole: one part of it, which cuts no character in two.
        The last one ends the line. */
    void partOfJSON (const std::string& text) const;

    /** Something worth knowing, on standard error unless --quiet, and kept in any case. */
    void say (const juce::String& message) const;

    /** Something that is wrong, on standard error; the program will end with 1. */
    void report (const Problem& problem);

    /** What has been reported so far, as the "problems" of a JSON document. */
    json problemsAsJSON() const;

    /** What has been said so far, as the "messages" of a JSON document. */
    json messagesAsJSON() const;

    /** Holds a list or a table, whoever else lets go of it, until the process has ended, when the system takes back its memory as a whole. To take a
        season's list apart cue by cue would make the user wait for nothing. */
    static void keep (std::shared_ptr<const void> large);

    bool wantsJSON = false;
    bool isQuiet = false;
    int exitStatus = 0;

private:
    std::vector<Problem> problems;
    mutable std::vector<std::string> messages; ///< a record of what was said, no matter who may only look
};

/** The text without control characters, so that a terminal shows it and never obeys it; line breaks become blanks. */
juce::String printable (const juce::String& text);

/** A JSON text in which what printable() takes out stands escaped, so that a terminal never obeys it and every reader of JSON gets it
    back exactly. */
std::string printableJSON (std::string text);

/** "1 event", "2 events". */
juce::String counted (std::size_t number, const char* thing);

} // namespace overmarks
