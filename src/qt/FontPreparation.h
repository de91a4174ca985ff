#pragma once

#include <thread>

namespace kelvara::qt {

/// Reads the machine's list of fonts in the background, while the program is still reaching its
/// screen. Without it the first text of the first window waits for the list. Does nothing where the
/// list is the system's own.
class FontPreparation {
 public:
  FontPreparation();
  ~FontPreparation();
  FontPreparation(const FontPreparation&) = delete;
  FontPreparation& operator=(const FontPreparation&) = delete;

  /// Waits until the list is there. To be called before the first text is measured: two readers at
  /// once would both do the whole work.
  void Finish();

 private:
  std::thread reader_;
};

}  // namespace kelvara::qt
