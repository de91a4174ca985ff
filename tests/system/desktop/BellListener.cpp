#include "system/desktop/BellListener.h"

#include <sys/uio.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace kelvara::test {
namespace {

// The keyboard extension's wire format; many machines lack the headers of its library.
xcb_extension_t keyboardExtension = {"XKEYBOARD", 0};
constexpr unsigned char kUseExtension = 0;
constexpr unsigned char kSelectEvents = 1;
constexpr std::uint8_t kBellNotify = 8;

struct UseExtension {
  std::uint32_t header = 0;
  std::uint16_t major = 1;
  std::uint16_t minor = 0;
};

struct SelectEvents {
  std::uint32_t header = 0;
  std::uint16_t device = 0x100;  ///< The core keyboard.
  std::uint16_t affected = 1U << kBellNotify;
  std::uint16_t cleared = 0;
  std::uint16_t selectedWhole = 1U << kBellNotify;
  std::uint16_t affectedMaps = 0;
  std::uint16_t maps = 0;
};

}  // namespace

BellListener::BellListener(const VirtualScreen& screen)
    : connection_(xcb_connect(screen.Name().c_str(), nullptr)) {
  const xcb_query_extension_reply_t* const extension =
      xcb_get_extension_data(connection_.get(), &keyboardExtension);
  if (extension == nullptr || extension->present == 0) {
    throw std::runtime_error("the screen does not report its bell");
  }
  firstEvent_ = extension->first_event;
  UseExtension use;
  const unsigned number = Send(reinterpret_cast<std::byte*>(&use), sizeof use, kUseExtension, true);
  std::free(xcb_wait_for_reply(connection_.get(), number, nullptr));
  SelectEvents select;
  Send(reinterpret_cast<std::byte*>(&select), sizeof select, kSelectEvents, false);
  // The reply to a later request confirms that the events are selected.
  std::free(xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()),
                                      nullptr));
}

unsigned BellListener::Send(std::byte* request, std::size_t size, unsigned char opcode,
                            bool isAnswered) const {
  // The library needs two free elements before the first part.
  std::array<iovec, 3> parts{};
  parts[2] = {request, size};
  const xcb_protocol_request_t protocol = {1, &keyboardExtension, opcode,
                                           static_cast<std::uint8_t>(isAnswered ? 0 : 1)};
  const int flags = isAnswered ? XCB_REQUEST_CHECKED : 0;
  return xcb_send_request(connection_.get(), flags, &parts[2], &protocol);
}

int BellListener::Count() const {
  while (xcb_generic_event_t* const event = xcb_poll_for_event(connection_.get())) {
    const bool isBell = (event->response_type & 0x7FU) == firstEvent_ && event->pad0 == kBellNotify;
    count_ += isBell ? 1 : 0;
    std::free(event);
  }
  return count_;
}

}  // namespace kelvara::test
