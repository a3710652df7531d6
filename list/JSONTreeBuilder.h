// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/JSONBudget.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{

/** Builds the values of a JSON text while it is read, and hands the elements of one long list over one by one, so that a
    season's events never stand in memory as JSON.

    A text from a stranger neither exhausts the program nor loses a value unseen: nesting, the members of an object and the memory that
    they take are bounded, and no member stands twice in one object. For one text; given to nlohmann::ordered_json::sax_parse(). What is
    no JSON or breaks a bound throws std::invalid_argument with a message for people. */
class JSONTreeBuilder final : public nlohmann::json_sax<nlohmann::ordered_json>
{
public:
    using json = nlohmann::ordered_json;
    using Parent = nlohmann::json_sax<json>;
    using Parent::binary_t;
    using Parent::number_float_t;
    using Parent::number_integer_t;
    using Parent::number_unsigned_t;
    using Parent::string_t;

    /** Is shown each element of the list as soon as it is complete, with the outermost object as far as it has been read, the
        list's own array being the last member. Returns whether it has taken the element, which then leaves the tree. */
    using TakeElement = std::function<bool (const json& outermost, const json& element)>;

    /** @param longList        the name of the list, a member of the outermost object
        @param memoryOfText    pays for what stays in the tree; it has to outlive this object */
    JSONTreeBuilder (std::string longList, JSONBudget& memoryOfText, TakeElement takeElement)
        : nameOfList (std::move (longList)),
          memory (memoryOfText),
          take (std::move (takeElement))
    {
    }

    /** The whole text's value, but for the elements that were taken. */
    const json& tree() const noexcept { return root; }

    bool null() override { return add (nullptr); }
    bool boolean (bool value) override { return add (value); }
    bool number_integer (number_integer_t value) override { return add (value); }
    bool number_unsigned (number_unsigned_t value) override { return add (value); }
    bool number_float (number_float_t value, const string_t&) override { return add (value); }
    bool string (string_t& value) override { return add (std::move (value)); }
    bool binary (binary_t&) override { return false; } // JSON has none

    bool start_object (std::size_t) override;
    bool key (string_t& name) override;
    bool end_object() override { return endContainer(); }
    bool start_array (std::size_t) override;
    bool end_array() override { return endContainer(); }

    bool parse_error (std::size_t byte, const std::string&,
                      const nlohmann::detail::exception& error) override;

private:
    json& put (json value);
    bool add (json value);
    bool open (json container);
    bool endContainer();
    void offerElement();
    void weigh (std::uint64_t bytes);
    bool isLongList (const json& array) const;

    std::string nameOfList;
    JSONBudget& memory;
    std::uint64_t weightOfElement = 0; ///< what has been taken for the element that is being read
    TakeElement take;
    json root;
    json* member = nullptr; ///< the place of the next value of the innermost object
    std::vector<json*> containers;
    json::object_t emptied; ///< of an element that was taken, whose memory serves the next one
};

} // namespace ZEP::Overmarks
