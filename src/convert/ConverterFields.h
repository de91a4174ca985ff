#pragma once

#include <span>

#include "convert/Converter.h"

namespace kelvara::convert {

/// A field of the converter's window, with the button that updates the others from it.
struct ConverterField {
  Field field;
  const char* control;
  const char* label;
  const char* toolTip;
  const char* button;
  const char* buttonToolTip;
  bool enterUpdates;  ///< Whether Enter in the field acts like its button.
};

/// A frame of the window, with its fields from top to bottom.
struct ConverterFrame {
  const char* control;
  const char* caption;
  std::span<const ConverterField> fields;
};

/// The frames from top to bottom.
std::span<const ConverterFrame> ConverterFrames();

}  // namespace kelvara::convert
