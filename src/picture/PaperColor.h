#pragma once

#include <cstdint>

/// The colours of drawings on the ground that a picture is shown on.
namespace PaperColor {

/// What a picture is drawn on.
enum class eGround : std::uint8_t { kPaper, kDark };

/// Red, green and blue, of 0 to 255 each.
struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Rgb&) const = default;
};

/// The ground itself.
Rgb ground(eGround ground);
/// A drawing colour, 0 to 256, so that a thin line of it is seen on the ground. 0, 7, 256 and numbers that
/// there are not are what stands out most.
Rgb of(int color, eGround ground);
/// The colour of what is pointed out, and that of the band around it.
Rgb highlight(eGround ground);
Rgb paleHighlight(eGround ground);

} // namespace PaperColor
