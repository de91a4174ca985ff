#pragma once

#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <cstddef>
#include <memory>

#include "system/desktop/VirtualScreen.h"

namespace kelvara::test {

/// Counts the bells of a screen, which are the beeps of its programs.
class BellListener {
 public:
  explicit BellListener(const VirtualScreen& screen);
  BellListener(const BellListener&) = delete;
  BellListener& operator=(const BellListener&) = delete;

  /// How often the bell has rung since the listener was created.
  int Count() const;

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };

  /// Sends a request of the keyboard extension. Returns its number.
  unsigned Send(std::byte* request, std::size_t size, unsigned char opcode, bool isAnswered) const;

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  unsigned firstEvent_ = 0;
  mutable int count_ = 0;
};

}  // namespace kelvara::test
