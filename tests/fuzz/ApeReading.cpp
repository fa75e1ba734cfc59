// Whatever an APE file holds: decoding, its length and its tags end well or in a Failure.
#include "FuzzTarget.h"
#include "codecs/ApeFunctions.h"
#include "codecs/ape/Decode.h"
#include "platform/Failure.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"

using namespace Sonmira;
using namespace Qt::StringLiterals;

namespace {
const TestFolder& Folder() {
    static const TestFolder folder;
    return folder;
}
}  // namespace

QList<QByteArray> FuzzSeeds() {
    QList<QByteArray> seeds;
    const qint32 killFlag = 0;
    for (const int level : {1000, 2000, 3000, 4000}) {
        for (const WavKind kind : {WavKind::Unsigned8, WavKind::Signed16, WavKind::Signed24}) {
            for (const int channels : {1, 2}) {
                CompressFile(Folder().MakeFile("in.wav", WavOf(MakeSweep(8000, channels, 1500), kind)),
                             Anew(Folder().Path("seed.ape")), level, {}, killFlag);
                seeds.append(ContentOf(Folder().Native("seed.ape")));
            }
        }
    }
    TagFileSimple(Folder().Path("seed.ape"), u"artist"_s, u"album"_s, {}, {}, u"Blues"_s, u"1999"_s, {}, 1,
                  1);
    seeds.append(ContentOf(Folder().Native("seed.ape")));
    seeds.append(QByteArray("ID3\x03\0\0\0\0\0\x10", 10) + QByteArray(16, '\0') + seeds.first());
    return seeds;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = Folder().MakeFile(
        "in.ape",
        QByteArray(static_cast<const char*>(static_cast<const void*>(data)), static_cast<qsizetype>(size)));
    const qint32 killFlag = 0;
    PassOver([&] { DecodeApe(path, Folder().Path("out.wav"), {}, killFlag, {.Threads = 1}); });
    GetDurationTrack(path);
    std::array<char, 128> block{};
    GetID3Tag(path, block);
    PassOver([&] { TagFileSimple(path, u"one"_s, {}, u"two"_s, {}, {}, {}, {}, 1, 1); });
    return 0;
}
