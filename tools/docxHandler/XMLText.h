// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace DocxHandler
{

/** Writes XML: the one place that knows its syntax. Element names are literals, since they are kept until they are closed.
    Characters that XML can't hold are left out of texts and values. */
class XMLText final
{
public:
    class Attribute
    {
    public:
        Attribute (std::string_view attributeName, std::string_view text) : name (attributeName), value (text)
        {
        }
        Attribute (std::string_view attributeName, const char* text) : name (attributeName), value (text) {}
        Attribute (std::string_view attributeName, const std::string& text)
            : name (attributeName),
              value (text)
        {
        }

        template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
        Attribute (std::string_view attributeName, Integer number)
            : name (attributeName),
              value (std::to_string (number))
        {
        }

        std::string_view name;
        std::string value;
    };

    using Attributes = std::initializer_list<Attribute>;

    /** An element that holds what follows until close(). */
    void open (std::string_view element, Attributes attributes = {});

    /** An element without content. */
    void leaf (std::string_view element, Attributes attributes = {});

    /** An element that holds a text and nothing else. */
    void leafWithText (std::string_view element, std::string_view content, Attributes attributes = {});

    /** Ends the element opened last. */
    void close();

    void text (std::string_view content);

    /** Markup that is written already. */
    void markup (std::string_view written) { out += written; }

    void declaration();

    [[nodiscard]] const std::string& written() const noexcept { return out; }
    [[nodiscard]] std::string take() { return std::move (out); }

private:
    void start (std::string_view element, Attributes attributes);

    std::string out;
    std::vector<std::string_view> openElements;
};

} // namespace DocxHandler
