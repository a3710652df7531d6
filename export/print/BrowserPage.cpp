// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/BrowserPage.h"

#include "core/system/Descriptor.h"
#include "export/print/BrowserProgram.h"
#include "export/print/PageRequestReply.h"
#include "export/print/PrintError.h"

#include <juce_core/juce_core.h>
#include <nlohmann/json.hpp>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace ZEP::Overmarks
{

namespace fs = std::filesystem;
using json = nlohmann::json;

namespace
{

constexpr auto pageName = "page.html";
constexpr int pieceOfDocument = 1 << 20; ///< bytes

/** All in all a document may take so many times as long as the browser may be silent. */
constexpr int mostPatience = 10;

/** So many bytes of a page are worth another second of patience: a slow machine lays out a few hundred cues in that time. */
constexpr std::size_t bytesASecond = 30'000;

double inches (int points) { return points / 72.0; }

/** The address of a file: whatever isn't plainly a part of a path is written in hexadecimal digits. */
std::string addressOf (const fs::path& file)
{
    std::string address = "file://";

    for (const unsigned char byte : file.string())
        if (std::isalnum (byte) != 0 || byte == '/' || byte == '-' || byte == '_' || byte == '.')
            address += static_cast<char> (byte);
        else
            address += "%" + juce::String::toHexString (&byte, 1).toUpperCase().toStdString();

    return address;
}

void writePage (const fs::path& file, std::string_view ahead, std::string_view html)
{
    constexpr mode_t rightsOfPage = 0600;
    Core::Descriptor page (file, O_WRONLY | O_CREAT | O_TRUNC, rightsOfPage);

    if (! page.write (ahead) || ! page.write (html) || ! page.close())
        throw PrintError ("the page can't be written to " + file.string());
}

/** The value of a letter of base64; anything else is -1. */
constexpr std::array<signed char, 256> base64Values = []
{
    std::array<signed char, 256> values {};
    values.fill (-1);
    signed char value = 0;

    for (const char letter :
         std::string_view ("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"))
        values[static_cast<unsigned char> (letter)] = value++;

    return values;
}();

/** Documents of megabytes come in base64; the framework's reader takes longer for one than the browser for making it. */
std::string decoded (std::string_view base64)
{
    while (base64.ends_with ('='))
        base64.remove_suffix (1);

    std::string bytes;
    bytes.reserve (base64.size() * 3 / 4);
    unsigned int bits = 0;
    int number = 0;

    for (const unsigned char letter : base64)
    {
        if (base64Values[letter] < 0)
            throw PrintError ("the browser's answer can't be understood");

        bits = bits << 6 | static_cast<unsigned int> (base64Values[letter]);
        number += 6;

        if (number >= 8)
            bytes += static_cast<char> (bits >> (number -= 8) & 255);
    }

    return bytes;
}

Core::PrivateFolder folderForPrinting()
{
    try
    {
        return Core::PrivateFolder ("overmarks-print-");
    }
    catch (const std::runtime_error& error)
    {
        throw PrintError (std::string ("there is ") + error.what());
    }
}

} // namespace

BrowserPage::BrowserPage (const fs::path& program, Clock::duration patienceWithBrowser)
    : privateFolder (folderForPrinting()),
      patience (patienceWithBrowser),
      end (Clock::now() + patience * mostPatience)
{
    open (program);
}

BrowserPage::~BrowserPage() = default;

void BrowserPage::open (const fs::path& program)
{
    // An administrator's browser can't shut its pages in.
    const bool mayHaveSandbox = ::geteuid() != 0;

    try
    {
        start (program, mayHaveSandbox);
    }
    catch (const PrintError&)
    {
        // Nor can it where the system forbids ordinary users what it needs for that, as in many containers. Nothing has been
        // loaded yet, and a page gets no scripts and no network in any case.
        const bool lacksSandbox = process != nullptr && mayHaveSandbox
                                  && process->lastWords().find ("sandbox") != std::string::npos;
        process.reset();

        if (! lacksSandbox)
            throw;

        start (program, false);
    }
}

void BrowserPage::start (const fs::path& program, bool withSandbox)
{
    process = std::make_unique<BrowserProcess> (
        program, browserArguments (privateFolder.path() / "profile", withSandbox), privateFolder.path());
    prepare();
}

void BrowserPage::prepare()
{
    const auto ofPage = "/" + privateFolder.path().filename().string() + "/" + pageName;
    requests = std::make_unique<PageRequests> (ofPage, PageRequests::Icons());

    const auto target = call ("Target.createTarget", { { "url", "about:blank" } }, {});
    const auto attached =
        call ("Target.attachToTarget",
              { { "targetId", target.value ("targetId", std::string()) }, { "flatten", true } }, {});
    page = attached.value ("sessionId", std::string());

    // Each is waited for: a page is loaded only once all of them hold. Requests of the whole browser, so that no frame of the page
    // is left out.
    call ("Fetch.enable", { { "patterns", requests->patterns() } }, {});
    call ("Browser.setDownloadBehavior", { { "behavior", "deny" } }, {});
    call ("Inspector.enable", json::object(), page);
    call ("Page.enable", json::object(), page);
    call ("Page.setLifecycleEventsEnabled", { { "enabled", true } }, page);
    call ("Emulation.setScriptExecutionDisabled", { { "value", true } }, page);
}

void BrowserPage::load (std::string_view ahead, std::string_view html, PageRequests::Icons icons)
{
    const auto file = privateFolder.path() / pageName;
    const auto secondsForSize = std::chrono::seconds (html.size() / bytesASecond);
    patience += secondsForSize;
    end = Clock::now() + patience * mostPatience;

    writePage (file, ahead, html);
    requests = std::make_unique<PageRequests> (
        "/" + privateFolder.path().filename().string() + "/" + pageName, std::move (icons));

    const auto start = Clock::now();
    loaded.clear();
    const auto answer = call ("Page.navigate", { { "url", addressOf (file) } }, page);

    if (answer.contains ("errorText"))
        throw PrintError ("the browser can't load the page: " + answer.value ("errorText", std::string()));

    const auto wanted = answer.at ("loaderId").get<std::string>();

    while (loaded != wanted)
        take (receive());

    if (! requests->pageIsShutIn())
        throw PrintError ("the browser loads pages without asking");

    ownTime += Clock::now() - start;
}

void BrowserPage::print (const PrintLayout& layout, std::size_t mostPages,
                         const std::function<void (std::string_view)>& write)
{
    const auto start = Clock::now();
    const auto answer =
        call ("Page.printToPDF",
              { { "transferMode", "ReturnAsStream" },
                // Tags are of no use on paper, and their time grows with the square of the pages.
                { "generateTaggedPDF", false },
                { "printBackground", true },
                { "pageRanges", "1-" + std::to_string (mostPages) },
                { "landscape", false },
                { "paperWidth", inches (layout.paperWidth) },
                { "paperHeight", inches (layout.paperHeight) },
                { "marginTop", inches (layout.top) },
                { "marginBottom", inches (layout.bottom) },
                { "marginLeft", inches (layout.left) },
                { "marginRight", inches (layout.right) },
                { "displayHeaderFooter", true },
                { "headerTemplate", "<span></span>" },
                { "footerTemplate", layout.footer } },
              page);
    ownTime += Clock::now() - start;

    const auto stream = answer.value ("stream", std::string());

    for (bool isLast = false; ! isLast;)
    {
        const auto piece = call ("IO.read", { { "handle", stream }, { "size", pieceOfDocument } }, page);
        const auto& data = piece.at ("data").get_ref<const std::string&>();
        write (piece.value ("base64Encoded", false) ? decoded (data) : data);
        isLast = piece.value ("eof", true);
    }
}

int BrowserPage::send (const char* method, const json& parameters, const std::string& session)
{
    json message { { "id", ++lastID }, { "method", method }, { "params", parameters } };

    if (! session.empty())
        message["sessionId"] = session;

    process->send (message.dump (-1, ' ', false, json::error_handler_t::replace), deadline());
    return lastID;
}

/** Sends a command and waits for its answer, serving the page meanwhile. */
json BrowserPage::call (const char* method, const json& parameters, const std::string& session)
{
    const auto id = send (method, parameters, session);

    for (;;)
    {
        auto message = receive();

        if (message.value ("id", 0) != id)
            take (message);
        else if (const auto failure = message.find ("error"); failure != message.end())
            throw PrintError (
                "the browser refuses to print: "
                + (failure->is_object() ? failure->value ("message", std::string()) : std::string()));
        else
            return message.value ("result", json::object());
    }
}

json BrowserPage::receive()
{
    auto message = json::parse (process->receive (deadline()), nullptr, false);

    if (! message.is_object())
        throw PrintError ("the browser's answer can't be understood");

    return message;
}

void BrowserPage::take (const json& event)
{
    const auto method = event.value ("method", std::string());

    if (method == "Fetch.requestPaused")
    {
        const auto reply = requests->replyTo (event.value ("params", json::object()));
        send (reply.method, reply.parameters, {});
    }
    else if (method == "Page.lifecycleEvent" && event.value ("sessionId", std::string()) == page)
    {
        const auto parameters = event.value ("params", json::object());

        if (parameters.value ("name", std::string()) == "load")
            loaded = parameters.value ("loaderId", std::string());
    }
    else if (method == "Inspector.targetCrashed" || method == "Target.detachedFromTarget")
    {
        throw PrintError ("the browser has given up the page");
    }
}

BrowserPage::Clock::time_point BrowserPage::deadline() const
{
    return std::min (Clock::now() + patience, end);
}

} // namespace ZEP::Overmarks
