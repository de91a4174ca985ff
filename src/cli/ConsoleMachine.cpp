#include "cli/ConsoleMachine.h"

namespace kelvara::cli {

platform::MessageAnswer ConsoleMessageBoxes::Show(std::string_view text, std::string_view /*title*/,
                                                  platform::MessageIcon /*icon*/,
                                                  platform::MessageButtons buttons) {
  if (buttons != platform::MessageButtons::YesNo &&
      buttons != platform::MessageButtons::YesNoDefaultNo) {
    return platform::MessageAnswer::Ok;
  }
  streams_.Complain(text.substr(0, text.find('\r')));
  return platform::MessageAnswer::No;
}

}  // namespace kelvara::cli
