#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <QRect>
#include <memory>
#include <string>
#include <vector>

#include "support/Process.h"

namespace kelvara::test {

/// A window as its desktop knows it.
struct DesktopWindow {
  xcb_window_t id;
  std::string title;
  bool isDialog;  ///< It stands over another window.
};

/// A screen of the test's own that nobody sees, with the hands of its user. Nothing manages its
/// windows: they stand where their program puts them.
class VirtualScreen {
 public:
  explicit VirtualScreen(const std::string& folder);
  VirtualScreen(const VirtualScreen&) = delete;
  VirtualScreen& operator=(const VirtualScreen&) = delete;

  static constexpr QSize kSize{1280, 1024};
  /// Where a pointer is in nobody's way.
  static constexpr QPoint kCorner{kSize.width() - 1, kSize.height() - 1};

  /// What a program is to be told as its display.
  const std::string& Name() const { return name_; }

  /// The windows of a program that can be seen, menus and tool tips left out.
  std::vector<DesktopWindow> WindowsOf(pid_t program) const;

  /// Whether a menu or a tool tip of a program can be seen.
  bool ShowsMenuOf(pid_t program) const;

  /// Gives the keyboard to a window.
  void Focus(xcb_window_t window) const;

  /// Asks a window to close, as the box in its frame does.
  void RequestClose(xcb_window_t window) const;

  /// Presses keys one after the other, by the names that they have for the desktop: "alt+f", "Tab".
  void Press(const std::vector<std::string>& keys) const;

  void Type(const std::string& text) const;

  void Click(QPoint place, int button = 1) const;
  void PointAt(QPoint place) const;

  void Resize(xcb_window_t window, QSize size) const;

  /// Where a window is on the screen, in pixels.
  QRect AreaOf(xcb_window_t window) const;

  /// The colours of a part of the screen, four bytes for each pixel.
  std::string Picture(QRect area) const;

  /// Writes a part of the screen to a file, whose suffix says in which format.
  void SavePicture(QRect area, const std::string& path) const;

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };

  static ProcessRequest Server(const std::string& folder);
  static xcb_window_t RootOf(xcb_connection_t* connection);
  xcb_atom_t Atom(const std::string& name) const;
  std::string Property(xcb_window_t window, xcb_atom_t property) const;
  /// The windows of a program that can be seen: menus and tool tips, or all others.
  std::vector<xcb_window_t> Seen(pid_t program, bool menus) const;
  bool IsSeen(xcb_window_t window, bool menus) const;
  void Hands(const std::vector<std::string>& arguments) const;

  Process server_;
  std::string name_;
  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  xcb_window_t root_;
};

}  // namespace kelvara::test
