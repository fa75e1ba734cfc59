#pragma once

#include <array>
#include <optional>

namespace Sonmira {

// What the positions of every bit rate slider stand for, in kbit a second. 40 and 80 have no position.
inline constexpr std::array BitrateTable = {8, 16, 24, 32, 48, 56, 64, 96, 112, 128, 160, 192, 224, 256, 320};

inline std::optional<int> PositionOfBitrate(int kilobits) {
    for (std::size_t position = 0; position < BitrateTable.size(); ++position) {
        if (BitrateTable[position] == kilobits) return static_cast<int>(position);
    }
    return {};
}

inline int BitrateAt(int position) {
    return BitrateTable.at(static_cast<std::size_t>(position));
}

}  // namespace Sonmira
