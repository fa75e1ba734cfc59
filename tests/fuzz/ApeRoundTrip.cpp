// Whatever the sound: it comes back bit for bit. The first bytes choose level, width, channels and workers.
#include "FuzzTarget.h"
#include "codecs/ape/Decode.h"
#include "codecs/ape/Encode.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"

#include <cstdio>
#include <cstdlib>

using namespace Sonmira;

namespace {

const TestFolder& Folder() {
    static const TestFolder folder;
    return folder;
}

constexpr int Choices = 4;

}  // namespace

QList<QByteArray> FuzzSeeds() {
    QList<QByteArray> seeds;
    for (char level = 0; level < 5; ++level) {
        for (char width = 0; width < 3; ++width) {
            const QByteArray choice = {QByteArray(1, level) + QByteArray(1, width) + QByteArray(1, level) +
                                       QByteArray(1, width)};
            seeds.append(choice + PcmOf(MakeSweep(8000, 2, 1200), WavKind::Signed16));
            seeds.append(choice + PcmOf(MakeNoise(8000, 2, 1200, 1.0), WavKind::Signed24));
            seeds.append(choice + QByteArray(2000, '\0') + QByteArray("\x7F\xFF\x00\x80").repeated(499));
        }
    }
    return seeds;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < Choices) return 0;
    const int level = 1000 * (1 + data[0] % 5);
    const int channels = 1 + data[2] % 2;
    const auto available = AvailableApeKernels();
    const ApeWorkers workers{1U + data[3] % 2, available[data[3] / 2 % available.size()]};
    const WavKind kinds[] = {WavKind::Unsigned8, WavKind::Signed16, WavKind::Signed24};
    const std::size_t width = level == 5000 ? data[1] % 2 : data[1] % 3;
    const auto blockBytes = static_cast<qsizetype>(width + 1) * channels;
    QByteArray pcm(static_cast<const char*>(static_cast<const void*>(data + Choices)),
                   static_cast<qsizetype>(size) - Choices);
    pcm.truncate(pcm.size() / blockBytes * blockBytes);
    QByteArray wav = WavOf(MakeSilence(44100, channels, pcm.size() / blockBytes), kinds[width]);
    wav.replace(44, pcm.size(), pcm);

    const qint32 killFlag = 0;
    EncodeApe(Folder().MakeFile("in.wav", wav), Anew(Folder().Path("out.ape")), level, {}, killFlag, workers);
    DecodeApe(Folder().Path("out.ape"), Folder().Path("back.wav"), {}, killFlag, workers);
    if (ContentOf(Folder().Native("back.wav")) != wav) {
        std::puts("The sound that came back is another one");
        std::abort();
    }
    return 0;
}
