// SPDX-License-Identifier: GPL-3.0-only
#include "list/JSONStructureCheck.h"

#include "list/JSONMember.h"

#include <algorithm>
#include <stdexcept>

namespace ZEP::Overmarks
{

using json = nlohmann::ordered_json;

namespace
{

// A project nests five deep (events, event, text, runs, run), and its largest object is an event with twenty-two members.
constexpr int deepestNesting = 16;
constexpr std::size_t mostMembers = 64;

} // namespace

bool JSONStructureCheck::operator() (int depth, json::parse_event_t event, const json& parsed)
{
    if (depth > deepestNesting)
        throw std::invalid_argument ("The text is nested too deeply for a project");

    if (event == json::parse_event_t::object_start)
        namesOfOpenObjects.emplace_back();
    else if (event == json::parse_event_t::object_end)
        namesOfOpenObjects.pop_back();
    else if (event == json::parse_event_t::key)
        addName (parsed.get_ref<const std::string&>());

    return true;
}

void JSONStructureCheck::addName (const std::string& name)
{
    auto& names = namesOfOpenObjects.back();

    if (std::find (names.begin(), names.end(), name) != names.end())
        throw std::invalid_argument ("The member " + JSONMember::quoted (name)
                                     + " stands twice in one object");

    if (names.size() == mostMembers)
        throw std::invalid_argument ("An object in the text has more members than any of a project");

    names.push_back (name);
}

} // namespace ZEP::Overmarks
