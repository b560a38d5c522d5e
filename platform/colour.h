#pragma once

#include <cstdint>

namespace parvenna {

struct Rgb {
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;

  friend constexpr bool operator==(Rgb, Rgb) = default;
};

// Colours with a meaning of their own across the program.
namespace colours {
inline constexpr Rgb Black{0, 0, 0};
inline constexpr Rgb White{255, 255, 255};
inline constexpr Rgb Red{255, 0, 0};
inline constexpr Rgb Green{0, 128, 0};
inline constexpr Rgb Cyan{0, 255, 255};
inline constexpr Rgb Yellow{255, 255, 0};
// The field a message refers to, and the field that has the focus.
inline constexpr Rgb MarkColour{128, 255, 128};
// The row button of a curve whose area sign is still to be confirmed.
inline constexpr Rgb UnconfirmedColour{255, 0, 128};
}  // namespace colours

}  // namespace parvenna
