// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/EventAttribute.h"

#include <Poco/Any.h>
#include <juce_core/juce_core.h>

#include <memory>
#include <string>
#include <vector>

namespace overmarks
{

/** The cell of an attribute in words: yes and no, the names of types, characters, reasons and regions, numbers as the
    applications' menus count them. */
juce::String attributeText (ZEP::Overmarks::Event& event, const ZEP::Overmarks::EventAttribute& attribute);

/** The value that a text typed by a person stands for, as the key-value editor takes it.
    Throws CommandFailure for a text that can't be understood, so that a typing mistake never clears anything. */
Poco::Any attributeValue (const ZEP::Overmarks::Event& event, const ZEP::Overmarks::EventAttribute& attribute,
                          const juce::String& text);

/** The attribute of a key, ignoring case. Throws WrongUsage, with a suggestion. */
const ZEP::Overmarks::EventAttribute& attributeWithKey (const juce::String& key);

/** The same, of an attribute that can be set. Throws WrongUsage. */
const ZEP::Overmarks::EventAttribute& settableAttributeWithKey (const juce::String& key);

/** All keys, and those of the attributes that can be set. */
std::vector<std::string> attributeKeys();
std::vector<std::string> settableAttributeKeys();

} // namespace overmarks
