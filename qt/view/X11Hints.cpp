// Window manager hints of the message box and the update window on X11.
#include "qt/view/X11Hints.h"

#include <QGuiApplication>
#include <QWidget>

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <memory>

namespace {

xcb_atom_t Atom(xcb_connection_t* c, const char* name) {
    const xcb_intern_atom_cookie_t cookie = xcb_intern_atom(c, 0, static_cast<std::uint16_t>(qstrlen(name)), name);
    std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(xcb_intern_atom_reply(c, cookie, nullptr),
                                                                         &std::free);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

}  // namespace

void x11hints::MakeFixedToolWindow(QWidget* window) {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11 || !window) return;
    xcb_connection_t* c = x11->connection();
    const auto id = static_cast<xcb_window_t>(window->winId());

    // The states a window starts with; Qt adds its own to these when it maps.
    const std::array<xcb_atom_t, 2> states = {Atom(c, "_NET_WM_STATE_SKIP_TASKBAR"),
                                              Atom(c, "_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, id, Atom(c, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(states.size()), states.data());

    // Motif hints: move and close only; no decorations, the window draws
    // its own frame.
    enum : std::uint32_t { kFunctions = 1, kDecorations = 2 };
    enum : std::uint32_t { kFuncMove = 4, kFuncClose = 32 };
    const std::array<std::uint32_t, 5> motif = {kFunctions | kDecorations, kFuncMove | kFuncClose, 0, 0, 0};
    const xcb_atom_t motifAtom = Atom(c, "_MOTIF_WM_HINTS");
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, id, motifAtom, motifAtom, 32,
                        static_cast<std::uint32_t>(motif.size()), motif.data());
    xcb_flush(c);
}
