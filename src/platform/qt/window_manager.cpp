#include "platform/qt/window_manager.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace pallomir {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

xcb_connection_t* Connection() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

// XCB_ATOM_NONE for a name that no program has used.
xcb_atom_t AtomOf(xcb_connection_t* connection, std::string_view name) {
  const auto asked = xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data());
  const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, asked, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// The 32-bit values of a property, the first 64 at most.
std::vector<std::uint32_t> ValuesOf(xcb_connection_t* connection, xcb_window_t window,
                                    std::string_view property, xcb_atom_t type) {
  const xcb_atom_t atom = AtomOf(connection, property);
  if (atom == XCB_ATOM_NONE) return {};
  const auto asked = xcb_get_property(connection, 0, window, atom, type, 0, 64);
  const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, asked, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

}  // namespace

// A window manager names its own window in a property of the root window.
bool WindowManagerRuns() {
  xcb_connection_t* connection = Connection();
  if (!connection) return true;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  return !ValuesOf(connection, root, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW).empty();
}

bool KeyboardIsFree() {
  xcb_connection_t* connection = Connection();
  if (!connection) return false;
  const auto asked = xcb_get_input_focus(connection);
  const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(connection, asked, nullptr));
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  return reply && (reply->focus == XCB_INPUT_FOCUS_NONE || reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT ||
                   reply->focus == root);
}

bool IsMaximisedOneWay(const QWindow& window) {
  xcb_connection_t* connection = Connection();
  if (!connection) return false;
  const auto states =
      ValuesOf(connection, static_cast<xcb_window_t>(window.winId()), "_NET_WM_STATE", XCB_ATOM_ATOM);
  const auto has = [&](std::string_view state) {
    const xcb_atom_t atom = AtomOf(connection, state);
    return atom != XCB_ATOM_NONE && std::find(states.begin(), states.end(), atom) != states.end();
  };
  return has("_NET_WM_STATE_MAXIMIZED_VERT") != has("_NET_WM_STATE_MAXIMIZED_HORZ");
}

}  // namespace pallomir
