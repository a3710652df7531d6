// SPDX-License-Identifier: GPL-3.0-only
#include "event/RandomIdentity.h"

#include <Poco/UUID.h>
#include <Poco/UUIDGenerator.h>

namespace ZEP::Overmarks
{

juce::String randomIdentity()
{
    return Poco::UUIDGenerator().createRandom().toString();
}

} // namespace ZEP::Overmarks
