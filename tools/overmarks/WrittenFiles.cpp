// SPDX-License-Identifier: GPL-3.0-only
#include "WrittenFiles.h"

#include <utility>

namespace overmarks
{

void tellOfFiles (const std::vector<juce::File>& files, bool isDryRun, const Session& session)
{
    const auto messages = session.messagesAsJSON(); // the files have a member of their own
    auto paths = json::array();

    for (const auto& file : files)
    {
        session.say ((isDryRun ? "Would write " : "Wrote ") + file.getFullPathName());
        paths.push_back (file.getFullPathName().toStdString());
    }

    if (! session.wantsJSON)
        return;

    json document { { "files", std::move (paths) },
                    { "messages", messages },
                    { "problems", session.problemsAsJSON() } };

    if (isDryRun)
        document["dryRun"] = true;

    session.data (document);
}

} // namespace overmarks
