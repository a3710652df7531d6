// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdlib>
#include <string>

namespace ZEP::Overmarks::Testing
{

/** Sets an environment variable, also of the programs that are started, for as long as it lasts. */
class Environment final
{
public:
    Environment (const char* variable, const std::string& value)
        : name (variable),
          before (std::getenv (variable) != nullptr ? std::getenv (variable) : "")
    {
        ::setenv (name, value.c_str(), 1);
    }

    Environment (const Environment&) = delete;
    Environment& operator= (const Environment&) = delete;
    ~Environment() { before.empty() ? ::unsetenv (name) : ::setenv (name, before.c_str(), 1); }

private:
    const char* name;
    std::string before;
};

} // namespace ZEP::Overmarks::Testing
