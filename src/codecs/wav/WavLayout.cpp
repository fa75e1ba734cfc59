#include "codecs/wav/WavLayout.h"

#include "codecs/wav/WavWriter.h"
#include "platform/Files.h"

#include <QtEndian>

#include <algorithm>

namespace Sonmira {

BytesReader BytesReaderOf(const InputFile& file) {
    return [&file](qint64 position, qsizetype count) { return BytesAt(file, position, count); };
}

std::optional<RiffChunk> RiffChunks::Next() {
    constexpr int most = 1000;
    if (Count++ >= most) return {};
    const QByteArray head = Read(At, HeadSize);
    if (head.size() < HeadSize) return {};
    RiffChunk chunk{head.first(4), At + HeadSize, qFromLittleEndian<quint32>(head.constData() + 4)};
    At = chunk.Next();
    return chunk;
}

namespace {

constexpr quint16 TagPcm = 1;
constexpr quint16 TagExtensible = 0xFFFE;

// The format chunk's fields, for formats that are ours.
std::optional<PcmFormat> PcmFormatOf(const QByteArray& format) {
    const char* const fields = format.constData();
    const auto tag = qFromLittleEndian<quint16>(fields);
    if (tag == TagExtensible) {
        // The format proper is the first field of the sub-format; the rest of that is the same for all.
        constexpr qsizetype subFormat = 24;
        if (format.size() < 40 || qFromLittleEndian<quint16>(fields + subFormat) != TagPcm) return {};
    } else if (tag != TagPcm) {
        return {};
    }
    const PcmFormat sound{qFromLittleEndian<qint32>(fields + 4), qFromLittleEndian<quint16>(fields + 2),
                          qFromLittleEndian<quint16>(fields + 14)};
    const bool isOurs = (sound.Channels == 1 || sound.Channels == 2) && sound.Rate > 0 &&
                        (sound.Bits == 8 || sound.Bits == 16 || sound.Bits == 24) &&
                        qFromLittleEndian<quint16>(fields + 12) == sound.FrameSize();
    return isOurs ? std::optional(sound) : std::nullopt;
}

// The data chunk of a RIFF WAVE file; nothing for any other file.
std::optional<RiffChunk> SoundChunk(const InputFile& file) {
    const QByteArray start = BytesAt(file, 0, RiffChunks::FirstChunk);
    if (!start.startsWith("RIFF") || !(start.endsWith("WAVE") || start.endsWith("XWMA"))) return {};
    RiffChunks chunks(BytesReaderOf(file));
    std::optional<RiffChunk> chunk = chunks.Next();
    while (chunk && chunk->Name != "data") chunk = chunks.Next();
    return chunk;
}

bool IsName(const QByteArray& name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::optional<WavLayout> WavLayoutOf(const BytesReader& read) {
    const QByteArray start = read(0, RiffChunks::FirstChunk);
    if (!start.startsWith("RIFF") || !start.endsWith("WAVE")) return {};
    std::optional<WavLayout> layout;
    RiffChunks chunks(read);
    while (const auto chunk = chunks.Next()) {
        if (chunk->Name == "data") {
            if (!layout) return {};
            layout->DataStart = chunk->Start;
            layout->DataClaimed = chunk->Size;
            return layout;
        }
        if (chunk->Name != "fmt " || layout) continue;
        constexpr qint64 plain = 16;
        constexpr qint64 largest = 40;
        const QByteArray format = read(chunk->Start, std::min(chunk->Size, largest));
        if (format.size() < std::clamp(chunk->Size, plain, largest)) return {};
        const auto sound = PcmFormatOf(format);
        if (!sound) return {};
        layout = WavLayout{*sound, chunk->Size == plain};
    }
    return {};
}

qint64 MissingWavBytes(const InputFile& file) {
    const auto sound = SoundChunk(file);
    if (!sound || IsUnknownWavSize(sound->Size)) return 0;
    return std::max<qint64>(sound->Start + sound->Size - file.Size(), 0);
}

bool IsWavWithoutSound(const InputFile& file) {
    const auto sound = SoundChunk(file);
    if (!sound || sound->Size != 0) return false;
    RiffChunks behind(BytesReaderOf(file), sound->Start);
    while (behind.Place() < file.Size()) {
        const auto chunk = behind.Next();
        if (!chunk || !IsName(chunk->Name)) return false;
    }
    // The last one may lack the byte that makes its size even.
    return behind.Place() <= file.Size() + 1;
}

}  // namespace Sonmira
