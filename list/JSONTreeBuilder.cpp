// SPDX-License-Identifier: GPL-3.0-only
#include "list/JSONTreeBuilder.h"

#include "list/JSONMember.h"
#include "list/ProjectJSON.h"

#include <stdexcept>
#include <utility>

namespace ZEP::Overmarks
{

using json = nlohmann::ordered_json;

namespace
{

constexpr std::uint64_t weightOfContainer = 64, weightOfMember = sizeof (json::object_t::value_type);

/** Growing an object copies the names of its members, so it grows in few steps. @returns for how many members there is more room */
std::size_t makeRoomForAnother (json::object_t& members)
{
    const auto before = members.capacity();

    if (members.size() == before)
        members.reserve (members.empty() ? 4 : 4 * members.size());

    return members.capacity() - before;
}

} // namespace

void JSONTreeBuilder::weigh (std::uint64_t bytes)
{
    memory.take (bytes);
    weightOfElement += bytes;
}

json& JSONTreeBuilder::put (json value)
{
    if (containers.empty())
        return root = std::move (value);
    if (containers.back()->is_object())
        return *member = std::move (value);

    containers.back()->push_back (std::move (value));
    return containers.back()->back();
}

bool JSONTreeBuilder::add (json value)
{
    put (std::move (value));
    offerElement();
    return true;
}

bool JSONTreeBuilder::open (json container)
{
    if (const auto deepest = ProjectJSON::limits().nesting; containers.size() >= deepest)
        throw std::invalid_argument ("The text is nested too deeply for a project: it has more than "
                                     + std::to_string (deepest) + " objects and lists within each other");

    if (containers.size() == 2)
        weightOfElement = 0;

    weigh (weightOfContainer);
    containers.push_back (&put (std::move (container)));
    return true;
}

bool JSONTreeBuilder::start_object (std::size_t)
{
    open (json::object());

    if (containers.size() == 3)
        containers.back()->get_ref<json::object_t&>().swap (emptied);

    return true;
}

bool JSONTreeBuilder::start_array (std::size_t) { return open (json::array()); }

bool JSONTreeBuilder::key (string_t& name)
{
    auto& members = containers.back()->get_ref<json::object_t&>();

    if (containers.back()->contains (name))
        throw std::invalid_argument ("The member " + JSONMember::quoted (name)
                                     + " stands twice in one object");

    if (const auto most = ProjectJSON::limits().members; members.size() >= most)
        throw std::invalid_argument (
            "An object in the text has more members than any of a project: more than "
            + std::to_string (most));

    weigh (weightOfMember * makeRoomForAnother (members));
    static_cast<std::vector<json::object_t::value_type>&> (members).emplace_back (std::move (name), nullptr);
    member = &members.back().second;
    return true;
}

bool JSONTreeBuilder::endContainer()
{
    containers.pop_back();
    offerElement();
    return true;
}

/** Offers the value that has just been completed, if it is an element of the long list. */
void JSONTreeBuilder::offerElement()
{
    if (containers.size() != 2 || ! isLongList (*containers.back()))
        return;

    auto& elements = containers.back()->get_ref<json::array_t&>();

    if (! take (root, elements.back()))
        return;

    memory.giveBack (std::exchange (weightOfElement, 0));

    if (auto* members = elements.back().get_ptr<json::object_t*>())
    {
        emptied.swap (*members);
        emptied.clear();
    }

    elements.pop_back();
}

/** Whether an array directly within the outermost value is the long list: it is the member that is being read. */
bool JSONTreeBuilder::isLongList (const json& array) const
{
    return array.is_array() && root.is_object()
           && root.get_ref<const json::object_t&>().back().first == nameOfList;
}

bool JSONTreeBuilder::parse_error (std::size_t byte, const std::string&,
                                   const nlohmann::detail::exception& error)
{
    if (dynamic_cast<const json::out_of_range*> (&error) != nullptr)
        throw std::invalid_argument ("The text holds a number that is too large");

    throw std::invalid_argument ("The text is no JSON: it breaks off or has a mistake at byte "
                                 + std::to_string (byte));
}

} // namespace ZEP::Overmarks
