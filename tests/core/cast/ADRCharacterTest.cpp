// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCharacter.h"

#include <gtest/gtest.h>

TEST (ADRCharacter, beginsWithItsNameAlone)
{
    const ZEP::Core::ADRCharacter character ("Mrs. Hudson");

    EXPECT_EQ (character.name, "Mrs. Hudson");
    EXPECT_TRUE (character.prefix.isEmpty());
    EXPECT_TRUE (character.actor.isEmpty());
}
