// SPDX-License-Identifier: GPL-3.0-only
#include "ToolRun.h"

#include "PrivateFolder.h"
#include "Session.h"

#include "export/word/DocxHandlerProtocol.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace overmarks
{

namespace Protocol = ZEP::Overmarks::DocxHandlerProtocol;

namespace
{

constexpr auto nameOfVariable = "TMPDIR";

void requireTool()
{
    const auto path = Protocol::toolPath();

    if (! juce::File (path).exists())
        throw CommandFailure ("Word documents need the program docxHandler, and there is none in "
                              + juce::File (path).getParentDirectory().getFullPathName()
                              + "; --resources names its folder");

    if (! juce::File (path).existsAsFile() || access (path.toRawUTF8(), X_OK) != 0)
        throw CommandFailure (path + " is no program that can be run");
}

/** Standard output belongs to the data of this program; meanwhile what comes there goes to standard error. */
class OutputAside final
{
public:
    OutputAside()
    {
        std::fflush (stdout);
        kept = dup (STDOUT_FILENO);
        dup2 (STDERR_FILENO, STDOUT_FILENO);
    }

    OutputAside (const OutputAside&) = delete;
    OutputAside& operator= (const OutputAside&) = delete;

    ~OutputAside()
    {
        std::fflush (stdout);

        if (kept >= 0)
        {
            dup2 (kept, STDOUT_FILENO);
            close (kept);
        }
    }

private:
    int kept = -1;
};

} // namespace

/** A folder of this run's own that is the temporary folder as long as it exists. */
class ToolRun::TemporaryPlace final
{
public:
    TemporaryPlace() : folder (usualTemporaryFolder(), "overmarks.")
    {
        if (const char* given = std::getenv (nameOfVariable))
            before = given;

        setenv (nameOfVariable, folder.get().getFullPathName().toRawUTF8(), 1);
    }

    TemporaryPlace (const TemporaryPlace&) = delete;
    TemporaryPlace& operator= (const TemporaryPlace&) = delete;

    ~TemporaryPlace()
    {
        if (before.has_value())
            setenv (nameOfVariable, before->c_str(), 1);
        else
            unsetenv (nameOfVariable);
    }

    const PrivateFolder folder;

private:
    const StopSignals::Patience patience { folder.getSignals() };
    std::optional<std::string> before;
};

ToolRun::ToolRun()
{
    requireTool();
    place = std::make_unique<TemporaryPlace>();
}

ToolRun::~ToolRun() = default;

const juce::File& ToolRun::getFolder() const noexcept { return place->folder.get(); }

void ToolRun::whileItWorks (const std::function<void()>& cancel, const std::function<void()>& work)
{
    const OutputAside aside;
    place->folder.getSignals().whileToolWorks (cancel, work);
}

void ToolRun::throwIfStopped (const juce::String& undone) const
{
    place->folder.getSignals().throwIfStopped (undone);
}

} // namespace overmarks
