#include "platform/qt/window_manager.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>

namespace pallomir {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

}  // namespace

// A window manager names its own window in a property of the root window.
bool WindowManagerRuns() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11 || !x11->connection()) return true;
  xcb_connection_t* connection = x11->connection();
  constexpr char kProperty[] = "_NET_SUPPORTING_WM_CHECK";
  const auto atomAsked = xcb_intern_atom(connection, 1, sizeof kProperty - 1, kProperty);
  const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(connection, atomAsked, nullptr));
  if (!atom || atom->atom == XCB_ATOM_NONE) return false;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  const auto asked = xcb_get_property(connection, 0, root, atom->atom, XCB_ATOM_WINDOW, 0, 1);
  const Owned<xcb_get_property_reply_t> property(xcb_get_property_reply(connection, asked, nullptr));
  return property && xcb_get_property_value_length(property.get()) > 0;
}

bool KeyboardIsFree() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11 || !x11->connection()) return false;
  xcb_connection_t* connection = x11->connection();
  const auto asked = xcb_get_input_focus(connection);
  const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(connection, asked, nullptr));
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  return reply && (reply->focus == XCB_INPUT_FOCUS_NONE || reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT ||
                   reply->focus == root);
}

}  // namespace pallomir
