// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "overmarks/ProgramFixture.h"

#include <cstdlib>
#include <string>

/** A user whose settings lie in the folder of the test. */
class ProgramMIDITest : public ProgramTest
{
protected:
    ProgramMIDITest() { setenv ("XDG_DATA_HOME", path ("data").c_str(), 1); }
    ~ProgramMIDITest() override { unsetenv ("XDG_DATA_HOME"); }

    std::string identityOf (std::size_t event) const
    {
        return run ({ "list", "film.json", "--json" }).json()["events"][event]["uuid"].get<std::string>();
    }

    void hasFilm() const
    {
        write ("x.csv", threeCues);
        ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    }

    ProgramResult bind (const std::string& message, const std::string& uuid) const
    {
        return run ({ "midi", "bind", "film.json", "--message", message, "--uuid", uuid });
    }

    nlohmann::ordered_json bindings() const { return run ({ "midi", "list", "--json" }).json()["bindings"]; }

    const std::string triggerFile = "data/overmarks/midiEventsV3.bin";
};
