// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <memory>
#include <string>

namespace SessionSupport
{

/** Someone at the display: mouse and keys reach a window by way of the X server, as those of a person do. */
class WindowUser final
{
public:
    explicit WindowUser (const std::string& displayName);

    WindowUser (const WindowUser&) = delete;
    WindowUser& operator= (const WindowUser&) = delete;
    ~WindowUser();

    /** Whether a window has come up. What is done to it before is lost. */
    [[nodiscard]] bool sees (void* nativeWindow) const;

    /** Clicks at a point of a window, in pixels from its corner. */
    void click (void* nativeWindow, int x, int y) const;

    void pressEscape (void* nativeWindow) const;

    /** What the window manager says when the close box of a title bar is clicked. */
    void close (void* nativeWindow) const;

    /** Something that means nothing, as the small movements of a mouse that nobody holds. */
    void nudge (void* nativeWindow) const;

    /** The title that the window manager writes above a window. */
    [[nodiscard]] std::string titleOf (void* nativeWindow) const;

private:
    struct Connection;
    std::unique_ptr<Connection> connection;
};

} // namespace SessionSupport
