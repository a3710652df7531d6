// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/PrivateFolder.h"
#include "export/print/BrowserProcess.h"
#include "export/print/PageRequests.h"

#include <nlohmann/json_fwd.hpp>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** How a page is laid out on paper: in points, as a person measures; the browser's inches are this class's affair. */
struct PrintLayout
{
    int paperWidth = 0;  ///< of the upright or turned sheet
    int paperHeight = 0; ///< likewise
    int top = 0;         ///< margin
    int bottom = 0;      ///< margin, which holds the footer
    int left = 0;        ///< margin
    int right = 0;       ///< margin
    std::string footer;  ///< HTML of the size of the whole sheet, on every page
};

/** A page in a browser that was started for it, which runs no script, reaches no network and reads no file but the page itself.
    A browser that doesn't take the orders for that prints nothing.

    Each operation blocks until it is done or throws PrintError: the browser may be missing, die or say nothing. It counts as
    dead when it has said nothing for the time of its patience. One thread. */
class OVERMARKS_API BrowserPage final
{
public:
    using Clock = BrowserProcess::Clock; ///< steady: a changed time of day ends no patience

    /** Starts the browser and waits until it is ready. */
    BrowserPage (const std::filesystem::path& program, Clock::duration patienceWithBrowser);
    ~BrowserPage();

    BrowserPage (const BrowserPage&) = delete;
    BrowserPage& operator= (const BrowserPage&) = delete;

    /** Loads a page of HTML in UTF-8, with the icons that it may show.
        @param ahead  HTML that the browser reads before the page, for what no text of the page may change */
    void load (std::string_view ahead, std::string_view html, PageRequests::Icons icons);

    /** Prints what was loaded, and hands on the bytes of the document in pieces.
        @param mostPages  further ones are left out */
    void print (const PrintLayout& layout, std::size_t mostPages,
                const std::function<void (std::string_view)>& write);

    /** What the browser itself needed for the page so far: loading and printing it. */
    [[nodiscard]] Clock::duration browsersOwnTime() const noexcept { return ownTime; }

    /** Where its files lie meanwhile. */
    [[nodiscard]] const std::filesystem::path& folder() const noexcept { return privateFolder.path(); }

private:
    using json = nlohmann::json;

    void open (const std::filesystem::path& program);
    void start (const std::filesystem::path& program, bool withSandbox);
    void prepare();
    int send (const char* method, const json& parameters, const std::string& session);
    json call (const char* method, const json& parameters, const std::string& session);
    json receive();
    void take (const json& event);
    [[nodiscard]] Clock::time_point deadline() const;

    Core::PrivateFolder privateFolder;
    Clock::duration patience;
    Clock::time_point end;
    std::unique_ptr<BrowserProcess> process;
    std::unique_ptr<PageRequests> requests;
    std::string page; ///< the session of the page, beside that of the whole browser
    int lastID = 0;
    std::string loaded; ///< the browser's name for the document that was loaded last
    Clock::duration ownTime {};
};

} // namespace ZEP::Overmarks
