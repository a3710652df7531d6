// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <new>
#include <utility>

namespace ZEP::Core
{
/** Holds an object from its first use to the end of the process and never destroys it.

    What the whole process shares may be asked for by destructors that run at exit, in an order that nobody
    controls; an object without a destruction can't be too late for them. Make it a static variable of a
    function. No allocation, so no leak.
*/
template <typename Object>
class ProcessLifetime final
{
public:
    template <typename... Arguments>
    explicit ProcessLifetime (Arguments&&... arguments)
        : object (new (storage) Object (std::forward<Arguments> (arguments)...))
    {
    } ///< Makes the object of these arguments.

    ~ProcessLifetime() = default;

    ProcessLifetime (const ProcessLifetime&) = delete;
    ProcessLifetime& operator= (const ProcessLifetime&) = delete;

    [[nodiscard]] Object& get() const { return *object; } ///< The object; valid to the end of the process.

private:
    alignas (Object) mutable unsigned char storage[sizeof (Object)];
    Object* object;
};
} // namespace ZEP::Core
