#include "codecs/WavClaim.h"

#include "codecs/InputFile.h"
#include "codecs/WavHeader.h"

#include <QByteArray>
#include <QtEndian>

#include <algorithm>
#include <optional>

namespace Sonmira {

qint64 WavSizeBeyond(qint64 there, qint64 wanted) {
    // Whole frames of most forms.
    constexpr qint64 step = 24;
    constexpr qint64 mostBelow = LeastUnknownWavSize / step * step - step;
    constexpr qint64 most = 0xFFFEFFFFLL / step * step;
    const qint64 size = std::max(wanted, there + 1);
    if (!IsUnknownWavSize(size)) return size;
    if (size < 0x80001000 && there < mostBelow) return mostBelow;
    return there < most ? most : UnknownWavSize;
}

namespace {

constexpr int MostChunks = 1000;  // a file of more before its sound is made to waste time

struct Chunk {
    qint64 Start = 0;  // of its content
    qint64 Size = 0;
    qint64 Next() const { return Start + Size + Size % 2; }
};

// The data chunk of a RIFF WAVE file; nothing for any other file.
std::optional<Chunk> SoundOf(const InputFile& file) {
    const QByteArray start = BytesAt(file, 0, 12);
    if (!start.startsWith("RIFF") || !(start.endsWith("WAVE") || start.endsWith("XWMA"))) return {};
    qint64 at = 12;
    for (int number = 0; number < MostChunks; ++number) {
        const QByteArray head = BytesAt(file, at, 8);
        if (head.size() < 8) return {};
        const Chunk chunk{at + 8, qFromLittleEndian<quint32>(head.constData() + 4)};
        if (head.startsWith("data")) return chunk;
        at = chunk.Next();
    }
    return {};
}

bool IsName(const QByteArray& name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

qint64 MissingWavBytes(const InputFile& file) {
    const auto sound = SoundOf(file);
    if (!sound || IsUnknownWavSize(sound->Size)) return 0;
    return std::max<qint64>(sound->Start + sound->Size - file.Size(), 0);
}

bool IsWavWithoutSound(const InputFile& file) {
    const auto sound = SoundOf(file);
    if (!sound || sound->Size != 0) return false;
    qint64 at = sound->Start;
    for (int number = 0; number < MostChunks && at < file.Size(); ++number) {
        const QByteArray head = BytesAt(file, at, 8);
        if (head.size() < 8 || !IsName(head.first(4))) return false;
        at = Chunk{at + 8, qFromLittleEndian<quint32>(head.constData() + 4)}.Next();
    }
    // The last one may lack the byte that makes its size even.
    return at == file.Size() || at == file.Size() + 1;
}

}  // namespace Sonmira
