#include "codecs/Id3v2Skip.h"

#include "codecs/InputFile.h"

#include <array>
#include <cstring>

namespace Sonmira {

namespace {

constexpr int MostTags = 16;  // a file of more is made to waste time
constexpr std::byte HasFooter{0x10};

// Bytes of the tag at that place: a header of 10 bytes, of which four hold the size in 7 bits each.
qint64 TagBytesAt(const InputFile& file, qint64 position) {
    std::array<std::byte, 10> head{};
    if (file.ReadFully(position, head) < head.size() || std::memcmp(head.data(), "ID3", 3) != 0) return 0;
    qint64 size = 0;
    for (std::size_t i = 6; i < 10; ++i)
        size = size << 7 | std::to_integer<qint64>(head[i] & std::byte{0x7F});
    return 10 + size + ((head[5] & HasFooter) != std::byte{} ? 10 : 0);
}

}  // namespace

qint64 BehindId3v2(const InputFile& file) {
    qint64 at = 0;
    for (int i = 0; i < MostTags; ++i) {
        const qint64 bytes = TagBytesAt(file, at);
        if (bytes == 0) break;
        at += bytes;
    }
    return at;
}

}  // namespace Sonmira
