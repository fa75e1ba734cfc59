// Whatever a file holds: what reads and decodes sound by its content ends well or in a Failure. RIFF, AVI,
// MP4, ASF, Ogg, FLAC, Musepack and the other kinds of Seeds.cpp.
#include "FuzzTarget.h"
#include "Seeds.h"
#include "codecs/AudioFile.h"
#include "codecs/WavDecoders.h"
#include "platform/Failure.h"
#include "support/TestFolder.h"

using namespace Sonmira;

namespace {

// A spoilt header may ask for more sound than a test has time for.
constexpr qint64 MostBytes = 16 << 20;
constexpr qint64 BlockBytes = 1 << 16;

const TestFolder& Folder() {
    static const TestFolder folder;
    return folder;
}

QString Output() {
    return Anew(Folder().Path("out.wav"));
}

void ReadBlocks(const QString& path) {
    AudioFile file;
    file.OpenForRead(path);
    const qint64 frame = file.ByteRate();
    if (file.SampleRate() < 1 || file.ChannelCount() < 1 || frame < 1 || file.FormatCode() < 0)
        Found("An open file without a format");
    if (file.StreamLength() < 0) Found("A length below nothing");
    qint64 given = 0;
    while (given < MostBytes) {
        const AudioBlock block = file.ReadBlock(BlockBytes);
        if (block.IsEmpty()) break;
        const auto bytes = static_cast<qint64>(block.Bytes.size());
        if (bytes % frame != 0 || bytes > std::max(BlockBytes, frame))
            Found("A block of another size than was asked for");
        given += bytes;
    }
}

// Ends a decoder that goes on and on.
template <class Decoder>
auto Bounded(Decoder& decoder) {
    return [&decoder, calls = 0](auto&&...) mutable {
        if (++calls > 200) decoder.StopCodec();
    };
}

}  // namespace

QList<QByteArray> FuzzSeeds() {
    return SoundSeeds();
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = Folder().MakeFile("in", InputOf(data, size));
    PassOver([&] { ReadBlocks(path); });

    AacDecoder aac;
    aac.Progress = Bounded(aac);
    PassOver([&] {
        aac.SetInputFile(path);
        aac.SetOutputFile(Output());
        aac.DecodeToWav();
    });

    AlacDecoder alac;
    double seconds = 0;
    qint32 rate = 0;
    qint32 channels = 0;
    qint32 bits = 0;
    if (alac.TrackInfo(path, seconds, rate, channels, bits) != 0 && (seconds < 0 || rate < 1))
        Found("A track of no rate");
    if (alac.IsAlac(path) != 0) PassOver([&] { alac.DecodeToWav(path, Output()); });

    FlacDecoder flac;
    flac.Progress = Bounded(flac);
    PassOver([&] {
        flac.SetInputFile(path);
        flac.SetOutputFile(Output());
        flac.DecodeToWav();
    });
    if (flac.TrackLength(path) < 0) Found("A length below nothing");

    MpcDecoder mpc;
    mpc.Progress = Bounded(mpc);
    PassOver([&] { mpc.DecodeToWav(path, Output()); });
    if (mpc.TrackLength(path) < 0) Found("A length below nothing");
    return 0;
}
