// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/cast/ADRCharacterMap.h"
#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/UserDefaults.h"
#include "core/undo/UndoRedoHelpers.h"
#include "event/Event.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace ZEP::Overmarks::Testing
{

/** An application that has just started: registered preferences, nothing stored, no cast, an empty undo history. */
class OvermarksTest : public ::testing::Test
{
protected:
    OvermarksTest() { startAnew(); }
    ~OvermarksTest() override { startAnew(); }

    static void prefer (const std::string& key, int value)
    {
        EXPECT_TRUE (ZEP::Core::UserDefaults::setValueForKey (key, Poco::Any (value)).wasOk());
    }

private:
    static void startAnew()
    {
        ZEP::Core::UndoRedoHelpers::sharedUndoManager()->clearUndoHistory();
        EXPECT_TRUE (ZEP::Core::UserDefaults::removeAllStoredValues().wasOk());
        UserDefaultsRegistrar::registerUserDefaults();
        Event::setADRCharacterMap (std::make_shared<ZEP::Core::ADRCharacterMap>());
        ZEP::Core::ADRCueReasonsManager::sharedManager()->resetCounters();
        ZEP::Core::ADRCueReasonsManager::sharedManager()->setUserReasonNames ({});
    }
};

} // namespace ZEP::Overmarks::Testing
