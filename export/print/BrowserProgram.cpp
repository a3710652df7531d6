// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/BrowserProgram.h"

#include "export/print/PrintError.h"

#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string_view>

namespace ZEP::Overmarks
{

namespace fs = std::filesystem;

namespace
{

bool isProgram (const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file (path, error) && ::access (path.c_str(), X_OK) == 0;
}

std::optional<fs::path> findInPath (std::string_view name)
{
    const char* variable = std::getenv ("PATH");
    std::string_view folders = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";

    while (! folders.empty())
    {
        const auto end = folders.find (':');
        const auto folder = folders.substr (0, end);

        // Nothing is started from the folder in which one happens to stand.
        if (folder.starts_with ('/') && isProgram (fs::path (folder) / name))
            return fs::path (folder) / name;

        folders = end == std::string_view::npos ? std::string_view() : folders.substr (end + 1);
    }

    return {};
}

} // namespace

fs::path findBrowser (const std::string& wanted)
{
    if (wanted.find ('/') != std::string::npos)
    {
        if (isProgram (wanted))
            return wanted;

        throw PrintError ("the browser " + wanted + " can't be started: there is no such program");
    }

    if (! wanted.empty())
    {
        if (const auto found = findInPath (wanted))
            return *found;

        throw PrintError ("the browser " + wanted + " isn't installed");
    }

    for (const auto* usual : { "chromium-headless-shell", "chromium" })
        if (const auto found = findInPath (usual))
            return *found;

    throw PrintError ("no browser is installed to print with; the package chromium-headless-shell has one");
}

std::vector<std::string> browserArguments (const fs::path& profile, bool withSandbox)
{
    std::vector<std::string> arguments {
        "--headless",
        "--remote-debugging-pipe",
        "--user-data-dir=" + profile.string(),

        // Shared memory is scarce in containers, and a long list needs a lot.
        "--disable-dev-shm-usage",
        "--disable-gpu",
        "--hide-scrollbars",
        "--mute-audio",

        // Nothing of its own on the network, and no way there for a page: each request is refused already, and what gets past
        // that meets names without an address and a proxy that isn't there.
        "--host-resolver-rules=MAP * ~NOTFOUND",
        "--proxy-server=http://127.0.0.1:9",
        "--proxy-bypass-list=<-loopback>",
        "--dns-prefetch-disable",
        "--no-pings",
        "--disable-background-networking",
        "--disable-component-update",
        "--disable-domain-reliability",
        "--disable-sync",

        "--no-first-run",
        "--no-default-browser-check",
        "--disable-default-apps",
        "--disable-extensions",
        "--disable-breakpad",
        "--disable-crash-reporter",
    };

    if (! withSandbox)
        arguments.emplace_back ("--no-sandbox");

    return arguments;
}

} // namespace ZEP::Overmarks
