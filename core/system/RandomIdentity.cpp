// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/RandomIdentity.h"

#include <Poco/Process.h>

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace ZEP::Core
{

namespace
{

/** The 128 bits of a UUID, in the order in which its text names them. */
using Identity = std::array<unsigned char, 16>;

/** Random bits from the system, fetched for a few hundred identities at a time: fetching them for each one
    costs more than all the rest of making an event.

    A process that was forked off fetches its own, or it would give its events the identities of its parent's.
*/
class RandomIdentities final
{
public:
    Identity next()
    {
        if (used == stock.size() || owner != Poco::Process::id())
            fetch();

        return stock[used++];
    }

private:
    void fetch()
    {
        constexpr std::size_t inOneCall = 256 / sizeof (Identity); // more bytes than these the system refuses

        for (std::size_t place = 0; place < stock.size(); place += inOneCall)
            if (getentropy (&stock[place], inOneCall * sizeof (Identity)) != 0)
                throw std::system_error (errno, std::generic_category(),
                                         "The system gives no random numbers");

        owner = Poco::Process::id();
        used = 0;
    }

    std::array<Identity, 256> stock {};
    std::size_t used = stock.size();
    Poco::Process::PID owner = 0;
};

/** Marks random bits as a version 4 UUID of the common variant. */
void markAsRandom (Identity& identity)
{
    identity[6] = static_cast<unsigned char> ((identity[6] & 0x0F) | 0x40);
    identity[8] = static_cast<unsigned char> ((identity[8] & 0x3F) | 0x80);
}

} // namespace

juce::String randomIdentity()
{
    thread_local RandomIdentities identities;
    auto identity = identities.next();
    markAsRandom (identity);

    constexpr std::string_view digits = "0123456789abcdef";
    std::array<char, 36> text;
    std::size_t place = 0;

    for (std::size_t byte = 0; byte < identity.size(); ++byte)
    {
        if (byte == 4 || byte == 6 || byte == 8 || byte == 10)
            text[place++] = '-';

        text[place++] = digits[identity[byte] >> 4];
        text[place++] = digits[identity[byte] & 0x0F];
    }

    return { text.data(), text.size() };
}

} // namespace ZEP::Core
