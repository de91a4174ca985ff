#pragma once

#include <QElapsedTimer>
#include <string>

#include "platform/Beeper.h"
#include "platform/DocumentOpener.h"
#include "platform/EventPump.h"

namespace kelvara::widgets {

/// The desktop's alert sound.
class QtBeeper : public platform::Beeper {
 public:
  void Beep() override;
};

/// Opens documents and web addresses with the desktop.
class QtDocumentOpener : public platform::DocumentOpener {
 public:
  bool OpenDocument(const std::string& path) override;
  bool OpenAddress(const std::string& address) override;
};

/// Processes the pending events of the user-interface thread.
class QtEventPump : public platform::EventPump {
 public:
  bool ProcessEvents() override;
  void End() override { ending_ = true; }

 private:
  bool ending_ = false;
  QElapsedTimer sinceLook_;
};

}  // namespace kelvara::widgets
