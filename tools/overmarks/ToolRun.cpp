// SPDX-License-Identifier: GPL-3.0-only
#include "ToolRun.h"

#include "Session.h"
#include "TemporaryPlace.h"

#include "core/text/StringUtil.h"
#include "export/word/DocxHandlerProtocol.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

namespace overmarks
{

namespace Protocol = ZEP::Overmarks::DocxHandlerProtocol;

namespace
{

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

/** Keeps back what comes to standard output, which belongs to the data of this program, and to standard error, where the tool says
    what it has told its caller already. */
class OutputAside final
{
public:
    explicit OutputAside (std::string& printedSoFar)
        : printed (printedSoFar),
          aside (memfd_create ("printed", MFD_CLOEXEC))
    {
        std::fflush (stdout);
        const int place = aside >= 0 ? aside : STDERR_FILENO;
        dup2 (place, STDOUT_FILENO);
        dup2 (place, STDERR_FILENO);
    }

    OutputAside (const OutputAside&) = delete;
    OutputAside& operator= (const OutputAside&) = delete;

    ~OutputAside()
    {
        std::fflush (stdout);
        putBack (output, STDOUT_FILENO);
        putBack (errors, STDERR_FILENO);

        if (aside >= 0)
            takeOver();
    }

private:
    static void putBack (int kept, int descriptor)
    {
        if (kept < 0)
            return;

        dup2 (kept, descriptor);
        close (kept);
    }

    void takeOver()
    {
        constexpr std::size_t most = 1 << 20; // nobody reads more
        std::string bytes (most, '\0');
        const auto length = pread (aside, bytes.data(), bytes.size(), 0);
        bytes.resize (static_cast<std::size_t> (std::max<ssize_t> (length, 0)));
        printed += bytes;
        close (aside);
    }

    std::string& printed;
    int aside;
    int output = fcntl (STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    int errors = fcntl (STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
};

} // namespace

ToolRun::ToolRun()
{
    requireTool();
    place = std::make_unique<TemporaryPlace>();
}

ToolRun::~ToolRun() { relay(); }

void ToolRun::relay() const
{
    std::istringstream stream (printed);

    for (std::string line; std::getline (stream, line);)
        if (std::none_of (toldOtherwise.begin(), toldOtherwise.end(),
                          [&line] (const auto& told) { return line.ends_with (told.toStdString()); }))
            std::fprintf (stderr, "%s\n", printable (ZEP::Core::StringUtil::fromUTF8 (line)).toRawUTF8());
}

void ToolRun::leaveOut (const juce::String& message)
{
    if (message.isNotEmpty())
        toldOtherwise.push_back (message);
}

bool ToolRun::hasRoom() const
{
    constexpr std::size_t some = 65536;
    const auto file = getFolder().getChildFile ("room");
    std::ofstream stream (file.getFullPathName().toStdString(), std::ios::binary);
    stream << std::string (some, ' ');
    stream.close();
    const bool written = ! stream.fail();
    file.deleteFile();
    return written;
}

juce::String ToolRun::withoutOwnFolder (const juce::String& message) const
{
    const auto start = message.indexOf (getFolder().getFullPathName());
    return start < 0 ? message
                     : message.substring (0, start) + "a temporary file in "
                           + getFolder().getParentDirectory().getFullPathName();
}

const juce::File& ToolRun::getFolder() const noexcept { return place->get(); }

void ToolRun::whileItWorks (const std::function<void()>& cancel, const std::function<void()>& work)
{
    const OutputAside aside (printed);
    place->getSignals().whileToolWorks (cancel, work);
}

void ToolRun::throwIfStopped (const juce::String& undone) const
{
    place->getSignals().throwIfStopped (undone);
}

} // namespace overmarks
