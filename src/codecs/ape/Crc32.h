#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Sonmira {

// CRC-32 as in ISO 3309 and in Ethernet: reflected polynomial 0xEDB88320, all ones at the start and inverted
// at the end.
std::uint32_t Crc32Of(std::span<const std::byte> bytes);

}  // namespace Sonmira
