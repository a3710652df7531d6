// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** Walks through a JSON text before it is parsed, so that one from a stranger neither exhausts the program nor loses a value
    unseen: nesting and the members of an object are bounded, and no member stands twice in one object.

    A walk of its own, since the parser's callback would look at all events again behind each one of them. For one text;
    given to nlohmann::ordered_json::sax_parse(), which returns false at what is no JSON. A text that is JSON but breaks a
    bound throws std::invalid_argument with a message for people. */
class JSONStructureCheck final : public nlohmann::json_sax<nlohmann::ordered_json>
{
public:
    using Parent = nlohmann::json_sax<nlohmann::ordered_json>;
    using Parent::binary_t;
    using Parent::number_float_t;
    using Parent::number_integer_t;
    using Parent::number_unsigned_t;
    using Parent::string_t;

    bool null() override { return true; }
    bool boolean (bool) override { return true; }
    bool number_integer (number_integer_t) override { return true; }
    bool number_unsigned (number_unsigned_t) override { return true; }
    bool number_float (number_float_t, const string_t&) override { return true; }
    bool string (string_t&) override { return true; }
    bool binary (binary_t&) override { return true; }

    bool start_object (std::size_t) override;
    bool key (string_t& name) override;
    bool end_object() override;
    bool start_array (std::size_t) override;
    bool end_array() override;

    bool parse_error (std::size_t, const std::string&, const nlohmann::detail::exception&) override
    {
        return false;
    }

private:
    void goDeeper();

    int depth = 0;
    std::vector<std::vector<std::string>> namesOfOpenObjects;
};

} // namespace ZEP::Overmarks
