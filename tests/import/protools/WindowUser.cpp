// SPDX-License-Identifier: GPL-3.0-only
#include "import/protools/WindowUser.h"

#include <cstdint>

// Its macros take names that the test framework has too, so nothing else is included here.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

namespace SessionSupport
{
namespace
{

Window windowOf (void* nativeWindow) { return reinterpret_cast<Window> (nativeWindow); }

} // namespace

struct WindowUser::Connection
{
    void send (Window window, long mask, XEvent& event) const
    {
        event.xany.window = window;
        event.xany.display = display;
        XSendEvent (display, window, False, mask, &event);
        XFlush (display);
    }

    Display* display;
};

WindowUser::WindowUser (const std::string& displayName)
    : connection (std::make_unique<Connection> (Connection { XOpenDisplay (displayName.c_str()) }))
{
    // Programs listen to a close box only where a window manager has made its words known.
    for (const auto* word : { "WM_PROTOCOLS", "WM_TAKE_FOCUS", "WM_DELETE_WINDOW" })
        XInternAtom (connection->display, word, False);
}

WindowUser::~WindowUser()
{
    if (connection->display != nullptr)
        XCloseDisplay (connection->display);
}

bool WindowUser::sees (void* nativeWindow) const
{
    // A window that the program has made and not yet told the server of is an error there, not an answer.
    const auto handler = XSetErrorHandler ([] (Display*, XErrorEvent*) { return 0; });
    XWindowAttributes attributes {};
    const bool isUp = XGetWindowAttributes (connection->display, windowOf (nativeWindow), &attributes) != 0
                      && attributes.map_state == IsViewable;
    XSetErrorHandler (handler);
    return isUp;
}

void WindowUser::click (void* nativeWindow, int x, int y) const
{
    XEvent event {};
    auto& button = event.xbutton;
    button.root = DefaultRootWindow (connection->display);
    button.x = x;
    button.y = y;
    Window child = 0;
    XTranslateCoordinates (connection->display, windowOf (nativeWindow), button.root, x, y, &button.x_root,
                           &button.y_root, &child);
    button.button = Button1;
    button.same_screen = True;

    event.type = ButtonPress;
    connection->send (windowOf (nativeWindow), ButtonPressMask, event);
    event.type = ButtonRelease;
    button.state = Button1Mask;
    connection->send (windowOf (nativeWindow), ButtonReleaseMask, event);
}

void WindowUser::pressEscape (void* nativeWindow) const
{
    XEvent event {};
    event.type = KeyPress;
    event.xkey.root = DefaultRootWindow (connection->display);
    event.xkey.keycode = XKeysymToKeycode (connection->display, XK_Escape);
    event.xkey.same_screen = True;
    connection->send (windowOf (nativeWindow), KeyPressMask, event);
}

void WindowUser::close (void* nativeWindow) const
{
    XEvent event {};
    event.type = ClientMessage;
    event.xclient.message_type = XInternAtom (connection->display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] =
        static_cast<long> (XInternAtom (connection->display, "WM_DELETE_WINDOW", False));
    connection->send (windowOf (nativeWindow), NoEventMask, event);
}

void WindowUser::nudge (void* nativeWindow) const
{
    XEvent event {};
    event.type = ClientMessage;
    event.xclient.message_type = XInternAtom (connection->display, "OVERMARKS_NUDGE", False);
    event.xclient.format = 32;
    connection->send (windowOf (nativeWindow), NoEventMask, event);
}

std::string WindowUser::titleOf (void* nativeWindow) const
{
    XTextProperty name {};
    if (XGetWMName (connection->display, windowOf (nativeWindow), &name) == 0 || name.value == nullptr)
        return {};

    std::string title (reinterpret_cast<const char*> (name.value), name.nitems);
    XFree (name.value);
    return title;
}

} // namespace SessionSupport
