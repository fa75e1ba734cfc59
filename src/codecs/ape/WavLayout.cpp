#include "codecs/ape/WavLayout.h"

#include <QtEndian>

#include <array>
#include <cstring>

namespace Sonmira {

namespace {

constexpr int MostChunks = 1000;  // a file of more before its sound is made to waste time
constexpr std::uint16_t TagPcm = 1;
constexpr std::uint16_t TagExtensible = 0xFFFE;

bool IsName(const std::byte* at, const char* name) {
    return std::memcmp(at, name, 4) == 0;
}

// The format chunk's fields, for formats that are ours.
std::optional<ApeSound> SoundOf(std::span<const std::byte> format) {
    const auto tag = qFromLittleEndian<quint16>(format.data());
    if (tag == TagExtensible) {
        // The format proper is the first field of the sub-format; the rest of that is the same for all.
        constexpr std::size_t subFormat = 24;
        if (format.size() < 40 || qFromLittleEndian<quint16>(&format[subFormat]) != TagPcm) return {};
    } else if (tag != TagPcm) {
        return {};
    }
    const ApeSound sound{qFromLittleEndian<qint32>(&format[4]), qFromLittleEndian<quint16>(&format[2]),
                         qFromLittleEndian<quint16>(&format[14])};
    const bool isOurs = (sound.Channels == 1 || sound.Channels == 2) && sound.Rate > 0 &&
                        (sound.Bits == 8 || sound.Bits == 16 || sound.Bits == 24) &&
                        qFromLittleEndian<quint16>(&format[12]) == sound.BlockBytes();
    return isOurs ? std::optional(sound) : std::nullopt;
}

}  // namespace

std::optional<WavLayout> WavLayoutOf(const BytesReader& read) {
    std::array<std::byte, 12> start{};
    if (read(0, start) < start.size() || !IsName(start.data(), "RIFF") || !IsName(&start[8], "WAVE"))
        return {};
    WavLayout layout;
    bool isKnown = false;
    qint64 at = 12;
    for (int chunk = 0; chunk < MostChunks; ++chunk) {
        std::array<std::byte, 8> head{};
        if (read(at, head) < head.size()) return {};
        const auto size = qFromLittleEndian<quint32>(&head[4]);
        at += 8;
        if (IsName(head.data(), "data")) {
            layout.DataStart = at;
            layout.DataClaimed = size;
            return isKnown ? std::optional(layout) : std::nullopt;
        }
        if (IsName(head.data(), "fmt ") && !isKnown) {
            std::array<std::byte, 40> format{};
            const std::span wanted(format.data(), std::min<std::size_t>(size, format.size()));
            if (size < 16 || read(at, wanted) < wanted.size()) return {};
            const auto sound = SoundOf(wanted);
            if (!sound) return {};
            layout.Sound = *sound;
            layout.IsPlain = size == 16;
            isKnown = true;
        }
        at += qint64{size} + size % 2;
    }
    return {};
}

}  // namespace Sonmira
