// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/PageRequestReply.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using nlohmann::json;

namespace
{

const std::string page = "/overmarks-print-Abc123/page.html";
const std::string pageAddress = "file:///tmp" + page;

json request (const std::string& address, bool isAnswered = false)
{
    json event { { "requestId", "7" }, { "request", { { "url", address } } } };

    if (isAnswered)
        event["responseStatusCode"] = 200;

    return event;
}

class PageRequestsTest : public testing::Test
{
protected:
    std::string methodFor (const json& event) { return requests.replyTo (event).method; }

    PageRequests requests { page, { { "icon.png", "PNG" } } };
};

} // namespace

TEST_F (PageRequestsTest, thePageIsLoadedOnce)
{
    const auto reply = requests.replyTo (request (pageAddress));
    EXPECT_STREQ (reply.method, "Fetch.continueRequest");
    EXPECT_EQ (reply.parameters, (json { { "requestId", "7" } }));
    EXPECT_EQ (methodFor (request (pageAddress)), "Fetch.failRequest");
}

TEST_F (PageRequestsTest, thePageIsShownWithoutScriptsFramesAndWaysOut)
{
    const auto reply = requests.replyTo (request (pageAddress, true));
    EXPECT_STREQ (reply.method, "Fetch.continueResponse");
    EXPECT_EQ (reply.parameters["requestId"], "7");
    EXPECT_EQ (reply.parameters["responseCode"], 200);
    const auto headers = reply.parameters["responseHeaders"];
    ASSERT_EQ (headers.size(), 2u);
    EXPECT_EQ (headers[0]["name"], "Content-Type");
    EXPECT_EQ (headers[0]["value"], "text/html; charset=utf-8");
    EXPECT_EQ (headers[1]["name"], "Content-Security-Policy");
    EXPECT_EQ (headers[1]["value"],
               "default-src 'none'; img-src file:; style-src 'unsafe-inline'; sandbox allow-same-origin");
}

TEST_F (PageRequestsTest, anIconComesFromTheMemoryWhateverItsFolder)
{
    for (const auto* address : { "file:///a%20b/icon.png", "file:///icon.png?x", "file:///a/icon.png#y" })
    {
        const auto reply = requests.replyTo (request (address));
        EXPECT_STREQ (reply.method, "Fetch.fulfillRequest") << address;
        EXPECT_EQ (reply.parameters["body"], "UE5H");
        EXPECT_EQ (reply.parameters["responseCode"], 200);
        EXPECT_EQ (reply.parameters["requestId"], "7");
        EXPECT_EQ (reply.parameters["responseHeaders"],
                   json::parse (R"([{"name": "Content-Type", "value": "image/png"}])"));
    }
}

TEST_F (PageRequestsTest, everythingElseIsRefused)
{
    for (const auto* address :
         { "file:///etc/passwd", "http://127.0.0.1/icon.png", "https://x/page.html", "file:///a/icon.png/b",
           "", "data:,x", "file:///tmp/overmarks-print-Abc124/page.html",
           "http://127.0.0.1/tmp/overmarks-print-Abc123/page.html", "ftp://x/icon.png" })
    {
        const auto reply = requests.replyTo (request (address));
        EXPECT_STREQ (reply.method, "Fetch.failRequest") << address;
        EXPECT_EQ (reply.parameters["errorReason"], "Aborted");
        EXPECT_EQ (reply.parameters["requestId"], "7");
        EXPECT_EQ (methodFor (request (address, true)), "Fetch.failRequest") << address;
    }

    EXPECT_EQ (methodFor (json::object()), "Fetch.failRequest");
}

TEST_F (PageRequestsTest, everyRequestIsHeldUpAndThePageOnceMore)
{
    EXPECT_EQ (requests.patterns(), json::parse (R"([{"urlPattern": "*", "requestStage": "Request"},
        {"urlPattern": "*/overmarks-print-Abc123/page.html", "requestStage": "Response"}])"));
}

TEST_F (PageRequestsTest, thePageIsShutInOnceItWasAskedForAndShownWithItsPolicy)
{
    EXPECT_FALSE (requests.pageIsShutIn());
    methodFor (request (pageAddress));
    methodFor (request ("file:///a/icon.png", true));
    EXPECT_FALSE (requests.pageIsShutIn());
    methodFor (request (pageAddress, true));
    EXPECT_TRUE (requests.pageIsShutIn());
}

TEST_F (PageRequestsTest, aPageThatWasNeverAskedForIsNotShutIn)
{
    methodFor (request (pageAddress, true));
    EXPECT_FALSE (requests.pageIsShutIn());
}
