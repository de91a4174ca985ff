#pragma once

#include <array>
#include <string_view>

namespace kelvara::help {

/// The maker of the program, shown in the About box, and the target of the web link. The address is
/// made up, and the web address is reserved for examples.
inline constexpr std::string_view kMakerName = "Halden Group Communications";
inline constexpr std::array<std::string_view, 4> kMakerAddress{
    "12 Example Quay",
    "Sampleford",
    "Exampleshire",
    "XX1 1AA",
};
inline constexpr std::string_view kMakerWebAddress = "https://www.example.com/";

}  // namespace kelvara::help
