#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <QRect>
#include <memory>
#include <string>
#include <vector>

#include "support/Process.h"

namespace kelvara::test {

/// A window as the desktop sees it.
struct DesktopWindow {
  xcb_window_t id;
  std::string title;
  bool isDialog;  ///< Whether it belongs to another window.
};

/// A virtual screen with a keyboard and a pointer. It has no window manager: windows stay where
/// their program puts them.
class VirtualScreen {
 public:
  explicit VirtualScreen(const std::string& folder);
  /// Ends the server with a signal that lets it remove its socket.
  ~VirtualScreen();
  VirtualScreen(const VirtualScreen&) = delete;
  VirtualScreen& operator=(const VirtualScreen&) = delete;

  static constexpr QSize kSize{1280, 1024};
  /// Where the pointer is over no window.
  static constexpr QPoint kCorner{kSize.width() - 1, kSize.height() - 1};

  /// The display name to give to a program.
  const std::string& Name() const { return name_; }

  /// The visible windows of a program, without menus and tool tips.
  std::vector<DesktopWindow> WindowsOf(pid_t program) const;

  /// Whether a menu or a tool tip of a program is visible.
  bool ShowsMenuOf(pid_t program) const;

  /// Gives the keyboard focus to a window.
  void Focus(xcb_window_t window) const;

  /// Asks a window to close, as the close button of its frame does.
  void RequestClose(xcb_window_t window) const;

  /// Presses keys one after another, given by name: "alt+f", "Tab".
  void Press(const std::vector<std::string>& keys) const;

  void Type(const std::string& text) const;

  void Click(QPoint place, int button = 1) const;
  void PointAt(QPoint place) const;

  void Resize(xcb_window_t window, QSize size) const;

  /// A window's area on the screen, in pixels.
  QRect AreaOf(xcb_window_t window) const;

  /// The colours of an area of the screen, four bytes a pixel.
  std::string Picture(QRect area) const;

  /// Saves an area of the screen to a file, in the format given by its suffix.
  void SavePicture(QRect area, const std::string& path) const;

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };

  static ProcessRequest Server(const std::string& folder);
  static xcb_window_t RootOf(xcb_connection_t* connection);
  xcb_atom_t Atom(const std::string& name) const;
  std::string Property(xcb_window_t window, xcb_atom_t property) const;
  /// The visible windows of a program: either menus and tool tips, or all others.
  std::vector<xcb_window_t> Visible(pid_t program, bool menus) const;
  bool IsVisible(xcb_window_t window, bool menus) const;
  void SendInput(const std::vector<std::string>& arguments) const;

  Process server_;
  std::string name_;
  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  xcb_window_t root_;
};

}  // namespace kelvara::test
