// SPDX-License-Identifier: GPL-3.0-only
#include "list/JSONStructureCheck.h"

#include "list/JSONMember.h"

#include <algorithm>
#include <stdexcept>

namespace ZEP::Overmarks
{

namespace
{

// A project nests six deep (project, events, event, text, runs, run), and its largest object is an event with twenty-two
// members.
constexpr int deepestNesting = 16;
constexpr std::size_t mostMembers = 64;

} // namespace

void JSONStructureCheck::goDeeper()
{
    if (++depth > deepestNesting)
        throw std::invalid_argument ("The text is nested too deeply for a project");
}

bool JSONStructureCheck::start_array (std::size_t)
{
    goDeeper();
    return true;
}

bool JSONStructureCheck::end_array()
{
    --depth;
    return true;
}

bool JSONStructureCheck::start_object (std::size_t)
{
    goDeeper();
    namesOfOpenObjects.emplace_back();
    return true;
}

bool JSONStructureCheck::end_object()
{
    --depth;
    namesOfOpenObjects.pop_back();
    return true;
}

bool JSONStructureCheck::key (string_t& name)
{
    auto& names = namesOfOpenObjects.back();

    if (std::find (names.begin(), names.end(), name) != names.end())
        throw std::invalid_argument ("The member " + JSONMember::quoted (name)
                                     + " stands twice in one object");

    if (names.size() == mostMembers)
        throw std::invalid_argument ("An object in the text has more members than any of a project");

    names.push_back (name);
    return true;
}

} // namespace ZEP::Overmarks
