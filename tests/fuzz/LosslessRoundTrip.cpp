// Whatever the sound: each lossless writer gives a file from which its own reader and FFmpeg take the same
// sound, bit for bit. The first bytes choose width, channels, rate and level.
#include "FuzzTarget.h"
#include "codecs/ApeFunctions.h"
#include "codecs/AudioFile.h"
#include "codecs/FlacEncoder.h"
#include "codecs/WavDecoders.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"

#include <array>

using namespace Sonmira;

namespace {

constexpr std::size_t Choices = 4;
constexpr std::array Kinds{WavKind::Unsigned8, WavKind::Signed16, WavKind::Signed24, WavKind::Signed32};
constexpr std::array Rates{8000, 22050, 44100, 48000, 96000, 11111};

const TestFolder& Folder() {
    static const TestFolder folder;
    return folder;
}

// What FFmpeg takes out of the file.
std::vector<std::byte> SoundOf(const QString& path) {
    AudioFile file;
    file.OpenForRead(path);
    std::vector<std::byte> sound;
    for (AudioBlock block = file.ReadBlock(1 << 16); !block.IsEmpty(); block = file.ReadBlock(1 << 16)) {
        sound.insert(sound.end(), block.Bytes.begin(), block.Bytes.end());
    }
    return sound;
}

void Copy(const QString& from, const QString& to, int bits) {
    AudioFile reader;
    reader.OpenForRead(from);
    AudioFile writer;
    writer.SetFormatPCM(reader.SampleRate(), reader.ChannelCount(), bits);
    writer.OpenForWrite(Anew(to));
    writer.SetSourceFormat(reader.SampleRate(), reader.ChannelCount());
    for (AudioBlock block = reader.ReadBlock(5000); !block.IsEmpty(); block = reader.ReadBlock(5000)) {
        writer.WriteBlock(block);
    }
    writer.CloseFile();
}

}  // namespace

QList<QByteArray> FuzzSeeds() {
    QList<QByteArray> seeds;
    for (char level = 0; level < 9; ++level) {
        const QByteArray choice = QByteArray(1, static_cast<char>(level % 4)) + QByteArray(1, level) +
                                  QByteArray(1, level) + QByteArray(1, level);
        seeds.append(choice + PcmOf(MakeSweep(8000, 2, 600), WavKind::Signed16));
        seeds.append(choice + PcmOf(MakeNoise(8000, 1, 600, 1.0), WavKind::Signed24));
        seeds.append(choice + QByteArray(2000, '\0') + QByteArray("\x7F\xFF\x00\x80").repeated(300));
    }
    return seeds;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < Choices) return 0;
    const std::size_t width = data[0] % Kinds.size();
    const int bits = 8 * (static_cast<int>(width) + 1);
    const int channels = 1 + data[1] % 2;
    const int rate = Rates[data[2] % Rates.size()];
    QByteArray pcm = InputOf(data + Choices, size - Choices);
    pcm.truncate(pcm.size() / (channels * bits / 8) * (channels * bits / 8));
    if (pcm.isEmpty()) return 0;
    QByteArray wav = WavOf(MakeSilence(rate, channels, pcm.size() / (channels * bits / 8)), Kinds[width]);
    wav.replace(44, pcm.size(), pcm);
    const QString source = Folder().MakeFile("in.wav", wav);
    const auto sound = SoundOf(source);

    Copy(source, Folder().Path("copy.wav"), bits);
    if (ContentOf(Folder().Native("copy.wav")) != wav) Found("WAV: another file");
    if (bits > 24) return 0;

    FlacEncoder().EncodeFromWav(source, Anew(Folder().Path("out.flac")), static_cast<qint16>(data[3] % 9));
    FlacDecoder flac;
    flac.SetInputFile(Folder().Path("out.flac"));
    flac.SetOutputFile(Anew(Folder().Path("back.wav")));
    flac.DecodeToWav();
    if (ContentOf(Folder().Native("back.wav")) != wav) Found("FLAC: another file");
    // FFmpeg passes over the smallest frames there are, of quiet sound.
    const bool isForFfmpeg = bits > 8 || channels > 1;
    if (isForFfmpeg && SoundOf(Folder().Path("out.flac")) != sound) Found("FLAC: FFmpeg hears another sound");

    const int level = 1000 * (1 + data[3] % (bits == 24 ? 4 : 5));
    CompressFile(source, Anew(Folder().Path("out.ape")), level, {}, 0);
    DecompressFile(Folder().Path("out.ape"), Anew(Folder().Path("back.wav")), {}, 0);
    if (ContentOf(Folder().Native("back.wav")) != wav) Found("APE: another file");
    if (SoundOf(Folder().Path("out.ape")) != sound) Found("APE: FFmpeg hears another sound");
    return 0;
}
