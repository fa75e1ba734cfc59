#include "codecs/wav/RiffChunks.h"

#include "platform/InputFile.h"

#include <QtEndian>

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

}  // namespace Sonmira
