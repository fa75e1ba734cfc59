#pragma once

#include <optional>

namespace Sonmira {

// Windows Media Audio, version 2, at a constant bit rate in kbit a second.
struct WmaFormat {
    int Rate = 44100;
    int Channels = 2;  // 1 or 2
    int Kilobits = 128;
};

// The formats that Windows Media Audio is offered in, by numbers from 1 on that users' settings keep: by
// rate, channels and bit rate, each of which the encoder accepts.
inline constexpr int WmaFormatCount = 51;

// None for a number outside 1 to 51.
std::optional<WmaFormat> WmaFormatOf(int number);

}  // namespace Sonmira
