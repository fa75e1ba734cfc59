#include "codecs/mpc/MpcStream.h"

#include "platform/InputFile.h"

#include <QByteArray>

namespace Sonmira {

namespace {

struct Number {
    qint64 Value = 0;
    qsizetype Bytes = 0;  // 0 where there is none
};

Number NumberAt(const QByteArray& bytes, qsizetype at) {
    constexpr qsizetype most = 9;  // 63 bits
    Number number;
    for (qsizetype i = 0; i < most && at + i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[at + i]);
        number.Value = number.Value << 7 | (byte & 0x7F);
        if ((byte & 0x80) == 0) return {number.Value, i + 1};
    }
    return {};
}

}  // namespace

std::optional<qint64> LengthOfWholeMpc(const InputFile& file) {
    if (BytesAt(file, 0, 4) != "MPCK") return {};
    std::optional<qint64> length;
    qint64 at = 4;
    while (true) {
        const QByteArray head = BytesAt(file, at, 32);
        const Number size = NumberAt(head, 2);
        if (size.Bytes == 0 || size.Value < 2 + size.Bytes || size.Value > file.Size() - at) return {};
        if (head.startsWith("SE")) return at + size.Value == file.Size() ? length : std::nullopt;
        if (head.startsWith("SH")) {
            const Number frames = NumberAt(head, 2 + size.Bytes + 5);
            if (frames.Bytes > 0) length = frames.Value;
        }
        at += size.Value;
    }
}

}  // namespace Sonmira
