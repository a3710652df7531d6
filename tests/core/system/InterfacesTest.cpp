// SPDX-License-Identifier: GPL-3.0-only
// The two interfaces of a record, in one class as a cue has them.
#include "core/system/IDescribable.h"
#include "core/system/IProtobufSerializable.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace
{
using namespace ZEP::Core;

class Record final : public IProtobufSerializable, public IDescribable
{
public:
    explicit Record (bool& isGone) : gone (isGone) {}
    ~Record() override { gone = true; }

    bool initWithProtoObject (void* message) override
    {
        if (message == nullptr)
            return false;
        text = *static_cast<std::string*> (message);
        return true;
    }

    void fillProtoObject (void* message) override { *static_cast<std::string*> (message) = text; }

    juce::String description() override { return "Text: " + juce::String (text); }
    juce::String oneLineDescription() override { return juce::String (text); }

private:
    bool& gone;
    std::string text;
};

static_assert (! std::is_destructible_v<IDescribable>);
static_assert (std::has_virtual_destructor_v<IProtobufSerializable>);
} // namespace

TEST (Interfaces, aRecordIsStoredAndDescribedThroughThem)
{
    bool gone = false;
    auto record = std::make_unique<Record> (gone);
    IDescribable& describable = *record;
    std::unique_ptr<IProtobufSerializable> stored = std::move (record);
    std::string message = "one";

    EXPECT_FALSE (stored->initWithProtoObject (nullptr));
    EXPECT_TRUE (stored->initWithProtoObject (&message));
    EXPECT_EQ (describable.description(), "Text: one");
    EXPECT_EQ (describable.oneLineDescription(), "one");

    message.clear();
    stored->fillProtoObject (&message);
    EXPECT_EQ (message, "one");

    stored.reset();
    EXPECT_TRUE (gone);
}
