// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <Poco/Any.h>

#include <deque>
#include <utility>

namespace ZEP::Core
{
/** What an edit saved before it changed something: values of any type, given back in the order in which they
    were saved.

    The order of an undo function is that of its perform function, not the reverse. The type given to restore
    must be the very one that was saved. One thread at a time.
*/
class StateBuffer final
{
public:
    /** Appends a copy at the back. */
    template <typename T>
    void save (const T& value)
    {
        values.emplace_back (value);
    }

    /** Takes the value from the front. Throws Poco::BadCastException, and leaves the value there, if it isn't
        a T; throws it also if nothing is left.
    */
    template <typename T>
    [[nodiscard]] T restore()
    {
        Poco::Any nothing;
        T value = std::move (Poco::RefAnyCast<T> (values.empty() ? nothing : values.front()));
        values.pop_front();
        return value;
    }

    [[nodiscard]] bool empty() const { return values.empty(); }

private:
    std::deque<Poco::Any> values;
};
} // namespace ZEP::Core
