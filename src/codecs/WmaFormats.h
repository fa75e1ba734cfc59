#pragma once

#include "codecs/OutputFormat.h"

namespace Sonmira {

// The formats that Windows Media Audio is offered in, by numbers from 1 on that users' settings keep: by
// rate, channels and bit rate, each of which the encoder accepts.
inline constexpr int WmaFormatCount = 51;

// None for a number outside 1 to 51.
std::optional<WmaFormat> WmaFormatOf(int number);

}  // namespace Sonmira
