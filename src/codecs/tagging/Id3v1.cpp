#include "codecs/tagging/Id3v1.h"

#include "codecs/sound/Id3v2Head.h"
#include "platform/Files.h"

#include <id3v1genres.h>
#include <id3v1tag.h>

#include <algorithm>
#include <cstring>

namespace Sonmira {

QString GenreName(int index) {
    if (index < 0 || index >= GenreCount) return {};
    return QString::fromStdString(TagLib::ID3v1::genre(index).to8Bit(true));
}

int GenreIndexOf(const QString& name) {
    for (int index = 0; index < GenreCount; ++index) {
        if (GenreName(index).compare(name, Qt::CaseInsensitive) == 0) return index;
    }
    return -1;
}

namespace {

constexpr int MostFlacBlocks = 1000;
constexpr std::byte LastBlock{0x80};
constexpr std::byte ApplicationBlock{2};

std::optional<Id3Block> BlockAt(const InputFile& file, qint64 position) {
    Id3Block block{};
    if (position < 0 || file.ReadFully(position, std::as_writable_bytes(std::span(block))) < block.size())
        return {};
    return std::memcmp(block.data(), "TAG", 3) == 0 ? std::optional(block) : std::nullopt;
}

}  // namespace

// Metadata of a FLAC file: blocks of one byte of kind, three of size, and as many bytes.
std::optional<qint64> Id3BlockPlaceInFlac(const InputFile& file) {
    const auto start = FlacStart(file);
    if (!start) return {};
    qint64 at = *start + 4;
    for (int i = 0; i < MostFlacBlocks; ++i) {
        std::array<std::byte, 4 + FlacId3Application.size()> head{};
        if (file.ReadFully(at, head) < head.size()) return {};
        const qint64 size = std::to_integer<qint64>(head[1]) << 16 | std::to_integer<qint64>(head[2]) << 8 |
                            std::to_integer<qint64>(head[3]);
        const bool isOurs = (head[0] & ~LastBlock) == ApplicationBlock &&
                            size == std::ssize(FlacId3Application) + std::ssize(Id3Block()) &&
                            std::memcmp(&head[4], FlacId3Application.data(), FlacId3Application.size()) == 0;
        if (isOurs) return at + std::ssize(head);
        if ((head[0] & LastBlock) != std::byte{}) return {};
        at += 4 + size;
    }
    return {};
}

std::optional<qint64> FlacStart(const InputFile& file) {
    const qint64 start = BehindId3v2(file);
    std::array<std::byte, 4> name{};
    if (file.ReadFully(start, name) < name.size() || std::memcmp(name.data(), "fLaC", 4) != 0) return {};
    return start;
}

std::optional<Id3Block> Id3BlockAtEnd(const InputFile& file) {
    return BlockAt(file, file.Size() - std::ssize(Id3Block()));
}

std::optional<Id3Block> ReadId3Block(const QString& path) {
    const InputFile file(path);
    const auto block = Id3BlockAtEnd(file);
    if (block) return block;
    const auto place = Id3BlockPlaceInFlac(file);
    return place ? BlockAt(file, *place) : std::nullopt;
}

}  // namespace Sonmira
