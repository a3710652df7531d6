// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/Project.h"

namespace tessera1
{
class ProtoProject;
} // namespace tessera1

namespace ZEP::Overmarks
{

/** A project as its stored record, which is what a project file holds. */
class ProjectRecord final
{
public:
    ProjectRecord() = delete;

    /** The version of the records, raised with every field that is added to one of them. */
    static constexpr int formatVersion = 1;

    /** Fills an empty record. A fade that the list has lost is stored all the same, since no list is loaded without both. */
    static void fill (tessera1::ProtoProject& record, const Project& project);

    /** The project of a record. Nothing is sorted; the project isn't made current.
        @throws std::invalid_argument, with words for people, if the record can't be that of a project */
    [[nodiscard]] static Project read (tessera1::ProtoProject& record);
};

} // namespace ZEP::Overmarks
