#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Sonmira {

// Appends a FLAC frame of fixed block size under another number to `frames`. The frame's layout, by RFC 9639:
// four bytes of sync and codes, the number in one to six bytes of the kind that UTF-8 uses, block size and
// rate where the codes say so, a CRC-8 of all that, the sound, a CRC-16 of the whole frame.
void AppendRenumbered(std::span<const std::byte> frame, std::uint32_t number, std::vector<std::byte>& frames);

}  // namespace Sonmira
