#pragma once

// Screens of at most 256 colours cannot show the soft tool-tip and grey shades: the windows
// then use the system's highlight pairs, white grid rows and a green position display.
namespace store {

inline bool hasFewColours(double colourCount) {
    return colourCount <= 256;
}

}  // namespace store
