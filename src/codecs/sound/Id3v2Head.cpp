#include "codecs/sound/Id3v2Head.h"

#include "platform/Files.h"

namespace Sonmira {

qint64 Id3v2Size(QByteArrayView head) {
    if (head.size() < Id3v2HeadSize || !head.startsWith("ID3")) return 0;
    qint64 size = 0;
    for (const char byte : head.sliced(6, 4)) size = size << 7 | (byte & 0x7F);
    const bool hasFooter = head[3] == 4 && (head[5] & Id3v2HasFooter) != 0;
    return Id3v2HeadSize + size + (hasFooter ? Id3v2HeadSize : 0);
}

qint64 BehindId3v2(const InputFile& file) {
    constexpr int most = 16;  // a file of more tags is made to waste time
    qint64 at = 0;
    for (int i = 0; i < most; ++i) {
        const qint64 size = Id3v2Size(BytesAt(file, at, Id3v2HeadSize));
        if (size == 0) break;
        at += size;
    }
    return at;
}

}  // namespace Sonmira
