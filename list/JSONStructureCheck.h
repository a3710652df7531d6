// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** Watches a JSON text while it is parsed, so that one from a stranger neither exhausts the program nor loses a value unseen:
    nesting and the members of an object are bounded, and no member stands twice in one object.

    For one text; given to nlohmann::ordered_json::parse() by reference. */
class JSONStructureCheck final
{
public:
    /** The parser's callback. @throws std::invalid_argument with a message for people. @returns true */
    bool operator() (int depth, nlohmann::ordered_json::parse_event_t event,
                     const nlohmann::ordered_json& parsed);

private:
    void addName (const std::string& name);

    std::vector<std::vector<std::string>> namesOfOpenObjects;
};

} // namespace ZEP::Overmarks
