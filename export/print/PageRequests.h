// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <nlohmann/json_fwd.hpp>

#include <map>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** What a printed page may load and run, in the words of the web: pictures of its own folder, styles that stand in it, nothing else. It
    is said twice, with the answer to the browser's request and by the page itself, for a browser that passes over one of them. */
inline constexpr std::string_view policyOfPages =
    "default-src 'none'; img-src file:; style-src 'unsafe-inline'";

/** Decides about each request of a page in the browser. Cue texts reach the page as they stand and come from strangers, so the
    page itself is loaded once, the icons come from this process' memory, and everything else is refused. */
class OVERMARKS_API PageRequests final
{
public:
    using json = nlohmann::json; ///< the browser's messages

    /** The bytes of PNG files under their names. Any address of a file of that name gets them. */
    using Icons = std::map<std::string, std::string>;

    /** @param endOfAddress  of the page, which no cue text can know */
    PageRequests (std::string endOfAddress, Icons iconsByName);

    /** What to ask the browser to hold up: everything, and the answer to the page once more. */
    [[nodiscard]] json patterns() const;

    /** A method of the browser with its parameters. */
    struct Reply;

    /** @param event  the parameters of Fetch.requestPaused */
    [[nodiscard]] Reply replyTo (const json& event);

    /** Whether the page was asked for here, and was shown with the policy that shuts it in. */
    [[nodiscard]] bool pageIsShutIn() const noexcept { return pageWasLoaded && pageHasPolicy; }

private:
    [[nodiscard]] bool isPage (const std::string& address) const;
    [[nodiscard]] const std::string* iconAt (const std::string& address) const;

    std::string pageEnd;
    Icons icons;
    bool pageWasLoaded = false;
    bool pageHasPolicy = false;
};

} // namespace ZEP::Overmarks
