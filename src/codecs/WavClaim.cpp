#include "codecs/WavClaim.h"

#include "codecs/InputFile.h"

#include <QByteArray>
#include <QtEndian>

namespace Sonmira {

namespace {

QByteArray BytesAt(const InputFile& file, qint64 position, qsizetype count) {
    QByteArray bytes(count, '\0');
    const auto read = file.ReadAt(
        position, {reinterpret_cast<std::byte*>(bytes.data()), static_cast<std::size_t>(bytes.size())});
    return bytes.first(std::max<qsizetype>(read, 0));
}

}  // namespace

qint64 MissingWavBytes(const InputFile& file) {
    constexpr int MostChunks = 1000;  // a file of more before its sound is made to waste time
    const QByteArray start = BytesAt(file, 0, 12);
    if (!start.startsWith("RIFF") || start.last(4) != "WAVE") return 0;
    qint64 at = 12;
    for (int chunk = 0; chunk < MostChunks; ++chunk) {
        const QByteArray head = BytesAt(file, at, 8);
        if (head.size() < 8) return 0;
        const auto size = qFromLittleEndian<quint32>(head.constData() + 4);
        if (head.startsWith("data")) {
            const bool isKnown = size != 0 && size < LeastUnknownWavSize;
            return isKnown ? std::max<qint64>(at + 8 + size - file.Size(), 0) : 0;
        }
        at += 8 + qint64{size} + size % 2;
    }
    return 0;
}

}  // namespace Sonmira
