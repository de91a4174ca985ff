#include "system/desktop/VirtualScreen.h"

#include <QImage>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace kelvara::test {
namespace {

constexpr std::uint32_t kMostBytes = 4096;

/// Owns a reply of the screen, which is freed with the pointer.
template <typename Answer>
std::unique_ptr<Answer, decltype(&std::free)> Owned(Answer* answer) {
  return {answer, &std::free};
}

}  // namespace

VirtualScreen::VirtualScreen(const std::string& folder)
    : server_(Server(folder)),
      name_(":" + server_.ReadLine().value_or("")),
      connection_(xcb_connect(name_.c_str(), nullptr)),
      root_(RootOf(connection_.get())) {}

VirtualScreen::~VirtualScreen() {
  connection_.reset();
  server_.Signal(SIGTERM);
  server_.Finish();
}

ProcessRequest VirtualScreen::Server(const std::string& folder) {
  ProcessRequest request;
  const std::string size =
      std::to_string(kSize.width()) + "x" + std::to_string(kSize.height()) + "x24";
  request.arguments = {KELVARA_XVFB, "-displayfd", "1", "-nolisten", "tcp",
                       "-noreset",   "-screen",    "0", size};
  request.environment = {{"PATH", "/usr/bin:/bin"}};
  request.folder = folder;
  return request;
}

xcb_window_t VirtualScreen::RootOf(xcb_connection_t* connection) {
  if (xcb_connection_has_error(connection) != 0) {
    throw std::runtime_error("no screen");
  }
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

std::vector<DesktopWindow> VirtualScreen::WindowsOf(pid_t program) const {
  std::vector<DesktopWindow> windows;
  for (const xcb_window_t window : Visible(program, false)) {
    windows.push_back({window, Property(window, Atom("_NET_WM_NAME")),
                       !Property(window, XCB_ATOM_WM_TRANSIENT_FOR).empty()});
  }
  return windows;
}

bool VirtualScreen::ShowsMenuOf(pid_t program) const { return !Visible(program, true).empty(); }

std::vector<xcb_window_t> VirtualScreen::Visible(pid_t program, bool menus) const {
  const auto tree = Owned(
      xcb_query_tree_reply(connection_.get(), xcb_query_tree(connection_.get(), root_), nullptr));
  if (!tree) {
    throw std::runtime_error("the screen is gone");
  }
  const xcb_window_t* const children = xcb_query_tree_children(tree.get());
  std::vector<xcb_window_t> windows;
  for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
    std::uint32_t owner = 0;
    const std::string ownerBytes = Property(children[i], Atom("_NET_WM_PID"));
    std::memcpy(&owner, ownerBytes.data(), std::min(sizeof owner, ownerBytes.size()));
    if (owner == static_cast<std::uint32_t>(program) && IsVisible(children[i], menus)) {
      windows.push_back(children[i]);
    }
  }
  return windows;
}

bool VirtualScreen::IsVisible(xcb_window_t window, bool menus) const {
  const auto attributes = Owned(xcb_get_window_attributes_reply(
      connection_.get(), xcb_get_window_attributes(connection_.get(), window), nullptr));
  return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
         (attributes->override_redirect != 0) == menus;
}

void VirtualScreen::Focus(xcb_window_t window) const {
  xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  // Waits for a reply, as the keys that follow use another connection and must not come first.
  Owned(xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()),
                                  nullptr));
}

void VirtualScreen::RequestClose(xcb_window_t window) const {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = Atom("WM_PROTOCOLS");
  event.data.data32[0] = Atom("WM_DELETE_WINDOW");
  xcb_send_event(connection_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(connection_.get());
}

void VirtualScreen::Press(const std::vector<std::string>& keys) const {
  if (keys.empty()) {
    return;
  }
  std::vector<std::string> arguments = {"key"};
  arguments.insert(arguments.end(), keys.begin(), keys.end());
  SendInput(arguments);
}

void VirtualScreen::Type(const std::string& text) const { SendInput({"type", "--", text}); }

void VirtualScreen::Click(QPoint place, int button) const {
  SendInput({"mousemove", std::to_string(place.x()), std::to_string(place.y()), "click",
             std::to_string(button)});
}

void VirtualScreen::PointAt(QPoint place) const {
  SendInput({"mousemove", std::to_string(place.x()), std::to_string(place.y())});
}

void VirtualScreen::Resize(xcb_window_t window, QSize size) const {
  const std::array<std::uint32_t, 2> values = {static_cast<std::uint32_t>(size.width()),
                                               static_cast<std::uint32_t>(size.height())};
  xcb_configure_window(connection_.get(), window,
                       XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
  xcb_flush(connection_.get());
}

QRect VirtualScreen::AreaOf(xcb_window_t window) const {
  const auto place = Owned(xcb_get_geometry_reply(
      connection_.get(), xcb_get_geometry(connection_.get(), window), nullptr));
  if (!place) {
    throw std::runtime_error("the window is gone");
  }
  // Without a window manager no window has a frame.
  return {place->x, place->y, place->width, place->height};
}

std::string VirtualScreen::Picture(QRect area) const {
  const auto image = Owned(xcb_get_image_reply(
      connection_.get(),
      xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_,
                    static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                    static_cast<std::uint16_t>(area.width()),
                    static_cast<std::uint16_t>(area.height()), ~std::uint32_t{0}),
      nullptr));
  if (!image) {
    throw std::runtime_error("the area is not on the screen");
  }
  return {reinterpret_cast<const char*>(xcb_get_image_data(image.get())),
          static_cast<std::size_t>(xcb_get_image_data_length(image.get()))};
}

void VirtualScreen::SavePicture(QRect area, const std::string& path) const {
  const std::string colours = Picture(area);
  const QImage image(reinterpret_cast<const uchar*>(colours.data()), area.width(), area.height(),
                     QImage::Format_RGB32);
  if (!image.save(QString::fromStdString(path))) {
    throw std::runtime_error("the picture " + path + " cannot be written");
  }
}

xcb_atom_t VirtualScreen::Atom(const std::string& name) const {
  const auto atom = Owned(xcb_intern_atom_reply(
      connection_.get(),
      xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr));
  return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::string VirtualScreen::Property(xcb_window_t window, xcb_atom_t property) const {
  const auto value =
      Owned(xcb_get_property_reply(connection_.get(),
                                   xcb_get_property(connection_.get(), 0, window, property,
                                                    XCB_GET_PROPERTY_TYPE_ANY, 0, kMostBytes),
                                   nullptr));
  if (!value) {
    return {};
  }
  return {static_cast<const char*>(xcb_get_property_value(value.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(value.get()))};
}

void VirtualScreen::SendInput(const std::vector<std::string>& arguments) const {
  ProcessRequest request;
  request.arguments = {KELVARA_XDOTOOL};
  request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
  request.environment = {{"PATH", "/usr/bin:/bin"}, {"DISPLAY", name_}};
  const ProcessResult result = RunProcess(request);
  if (result.exitCode != 0) {
    throw std::runtime_error("input cannot be sent: " + result.errors);
  }
}

}  // namespace kelvara::test
