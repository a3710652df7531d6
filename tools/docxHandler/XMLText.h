// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <array>
#include <charconv>
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
    /** Refers to its text, which has to outlive it. */
    class Attribute
    {
    public:
        Attribute (std::string_view attributeName, std::string_view value)
            : name (attributeName),
              text (value)
        {
        }
        Attribute (std::string_view attributeName, const char* value) : name (attributeName), text (value) {}
        Attribute (std::string_view attributeName, const std::string& value)
            : name (attributeName),
              text (value)
        {
        }

        template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
        Attribute (std::string_view attributeName, Integer number)
            : name (attributeName),
              length (static_cast<std::size_t> (
                  std::to_chars (digits.data(), digits.data() + digits.size(), number).ptr - digits.data()))
        {
        }

        [[nodiscard]] std::string_view value() const noexcept
        {
            return length > 0 ? std::string_view (digits.data(), length) : text;
        }

        std::string_view name;

    private:
        std::string_view text;
        std::array<char, 24> digits; ///< of a number
        std::size_t length = 0;
    };

    using Attributes = std::initializer_list<Attribute>;

    XMLText() = default;

    /** @param expectedLength  in bytes, roughly: a long text isn't copied then as it grows */
    explicit XMLText (std::size_t expectedLength) { out.reserve (expectedLength); }

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
    void character (char32_t written);

    std::string out;
    std::vector<std::string_view> openElements;
};

} // namespace DocxHandler
