#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Sonmira {

// Bytes of a file's header, put together field by field.
class LittleEndianBytes {
public:
    void Name(std::string_view name) {
        for (const char c : name) Bytes.push_back(static_cast<std::byte>(c));
    }
    void Number(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) Bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
    }
    std::vector<std::byte> Bytes;
};

}  // namespace Sonmira
