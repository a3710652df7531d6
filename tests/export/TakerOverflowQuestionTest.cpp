// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventCSVExporter.h"
#include "export/ExportSupport.h"
#include "support/CollectedLog.h"
#include "support/Environment.h"
#include "support/VirtualDisplay.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <thread>

using namespace ExportSupport;
using ZEP::Overmarks::Testing::Environment;
using ZEP::Overmarks::Testing::VirtualDisplay;
using ZEP::Overmarks::Testing::WindowedProgram;

namespace
{

/** Answers the box as soon as it is up, and notes what it says. */
class Answering final : private juce::Timer
{
public:
    explicit Answering (int buttonResult) : result (buttonResult) { startTimer (20); }

    juce::String title;
    juce::String text;
    juce::MessageBoxIconType icon = juce::MessageBoxIconType::NoIcon;

private:
    void timerCallback() override
    {
        if (auto* box = dynamic_cast<juce::AlertWindow*> (juce::Component::getCurrentlyModalComponent()))
        {
            stopTimer();
            title = box->getName();
            icon = box->getAlertType();

            // The box draws its text itself; what it has for a screen reader is the same.
            for (auto* child : box->getChildren())
                if (const auto* label = dynamic_cast<juce::Label*> (child))
                    text = label->getText();

            box->exitModalState (result);
        }
    }

    int result;
};

constexpr auto question =
    "There are some cues in your event list with more than four subcues: \n\n- 7\n\nDSTaker can only handle four "
    "Markers per cue number so these cues will not be represented correctly. \n\nDo you want to continue?";

class OverflowQuestion : public ExportTest
{
protected:
    OverflowQuestion()
    {
        settings->options[EventExportCSVTemplateKey] = 1;

        for (int i = 0; i < 6; ++i)
            settings->events.push_back (event ({ "7", i * 25, i * 25 + 25 }));
    }

    EventCSVExporter exporter { settings };
};

} // namespace

TEST_F (OverflowQuestion, isCancelledWhereNoMessageLoopExists)
{
    ASSERT_EQ (juce::MessageManager::getInstanceWithoutCreating(), nullptr);
    const ZEP::Overmarks::Testing::CollectedLog log;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (folder.names().empty());
    ASSERT_EQ (log.lines().size(), 1u);
    EXPECT_EQ (juce::String (log.lines()[0]),
               juce::String ("DS ADR CSV Export: no file was written, since nobody can be asked. ")
                   + juce::String (question).replaceCharacter ('\n', ' '))
        << "a message is one line";
}

TEST_F (OverflowQuestion, isAskedByTheBoxAlsoWhenItsFunctionWasTakenAway)
{
    exporter.askToContinue = nullptr;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (OverflowQuestion, isCancelledWithoutADisplay)
{
    const Environment noDisplay ("DISPLAY", ":4000");
    const juce::ScopedJuceInitialiser_GUI messages;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (OverflowQuestion, isCancelledOnAThreadWhoseLoopNobodyServes)
{
    const Environment noDisplay ("DISPLAY", ":4000");
    const juce::ScopedJuceInitialiser_GUI messages;
    std::thread ([this] { EXPECT_EQ (exporter.exportEventsByTimecode(), ""); }).join();
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (OverflowQuestion, isABoxWithOKAndCancel)
{
    const VirtualDisplay display;
    ASSERT_TRUE (display.isUp()) << "these tests need Xvfb";
    const Environment onDisplay ("DISPLAY", display.name().c_str());
    const WindowedProgram program;
    const juce::ScopedJuceInitialiser_GUI messages;

    {
        const Answering cancel (0);
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        EXPECT_EQ (cancel.title, "DS ADR CSV Export");
        EXPECT_EQ (cancel.text, juce::String ("DS ADR CSV Export. ") + question);
        EXPECT_EQ (cancel.icon, juce::MessageBoxIconType::InfoIcon);
        EXPECT_TRUE (folder.names().empty());
    }

    const Answering ok (1);
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (ok.title, "DS ADR CSV Export");
    EXPECT_EQ (folder.names(), std::vector<std::string> { "Reel 2.csv" });
}
