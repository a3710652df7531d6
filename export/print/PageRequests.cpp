// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PageRequests.h"

#include "export/print/PageRequestReply.h"

#include <juce_core/juce_core.h>

#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

/** Beside the policy: shown as by an older browser that knew no scripts, frames, forms, plug-ins, downloads or ways to another page. A
    page can't say that of itself. */
constexpr std::string_view sandbox = "; sandbox allow-same-origin";

using json = nlohmann::json;

json header (const char* name, const std::string& value) { return { { "name", name }, { "value", value } }; }

PageRequests::Reply refusal (const json& id)
{
    // "Aborted" rather than an error that the browser would show in a page of its own.
    return { "Fetch.failRequest", { { "requestId", id }, { "errorReason", "Aborted" } } };
}

PageRequests::Reply icon (const json& id, const std::string& bytes)
{
    return { "Fetch.fulfillRequest",
             { { "requestId", id },
               { "responseCode", 200 },
               { "responseHeaders", json::array ({ header ("Content-Type", "image/png") }) },
               { "body", juce::Base64::toBase64 (bytes.data(), bytes.size()).toStdString() } } };
}

/** The answer to the page, with what a file can't say for itself. */
PageRequests::Reply pageWithPolicy (const json& id)
{
    return { "Fetch.continueResponse",
             { { "requestId", id },
               { "responseCode", 200 },
               { "responseHeaders",
                 json::array ({ header ("Content-Type", "text/html; charset=utf-8"),
                                header ("Content-Security-Policy",
                                        std::string (policyOfPages) + std::string (sandbox)) }) } } };
}

} // namespace

PageRequests::PageRequests (std::string endOfAddress, Icons iconsByName)
    : pageEnd (std::move (endOfAddress)),
      icons (std::move (iconsByName))
{
}

json PageRequests::patterns() const
{
    return json::array ({ { { "urlPattern", "*" }, { "requestStage", "Request" } },
                          { { "urlPattern", "*" + pageEnd }, { "requestStage", "Response" } } });
}

PageRequests::Reply PageRequests::replyTo (const json& event)
{
    const auto id = event.value ("requestId", std::string());
    const auto address = event.value ("request", json::object()).value ("url", std::string());

    if (event.contains ("responseStatusCode"))
    {
        pageHasPolicy = pageHasPolicy || isPage (address);
        return isPage (address) ? pageWithPolicy (id) : refusal (id);
    }

    if (isPage (address) && ! std::exchange (pageWasLoaded, true))
        return { "Fetch.continueRequest", { { "requestId", id } } };

    const auto* bytes = iconAt (address);
    return bytes != nullptr ? icon (id, *bytes) : refusal (id);
}

bool PageRequests::isPage (const std::string& address) const
{
    return address.starts_with ("file://") && address.ends_with (pageEnd);
}

const std::string* PageRequests::iconAt (const std::string& address) const
{
    if (! address.starts_with ("file://"))
        return nullptr;

    const auto path = address.substr (0, address.find_first_of ("?#"));
    const auto found = icons.find (path.substr (path.rfind ('/') + 1));
    return found != icons.end() ? &found->second : nullptr;
}

} // namespace ZEP::Overmarks
