#include "Conversion.h"
#include "codecs/AacDecoder.h"
#include "codecs/AlacDecoder.h"
#include "codecs/FlacDecoder.h"
#include "codecs/MpcDecoder.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"
#include "support/Tool.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cctype>

namespace Sonmira {
namespace {

// One line of the list that lies beside the files.
struct RealFile {
    QByteArray Path;
    int Rate = 0;
    int Channels = 0;
    QByteArray State;       // "yes", "errors" or "refused" by another decoder
    qint64 Frames = 0;      // by the same
    QByteArray Codec = {};  // by the same
};

void PrintTo(const RealFile& file, std::ostream* stream) {
    *stream << file.Path.constData();
}

std::vector<RealFile> RealFiles() {
    std::vector<RealFile> files;
    QFile list(QStringLiteral(SONMIRA_CORPUS "/MANIFEST.tsv"));
    if (!list.open(QIODevice::ReadOnly)) return files;
    const QList<QByteArray> header = list.readLine().trimmed().split('\t');
    const auto column = [&](const char* name) { return header.indexOf(QByteArray(name)); };
    while (!list.atEnd()) {
        const QList<QByteArray> fields = list.readLine().split('\t');
        if (fields.size() < header.size() - 1) continue;
        files.push_back({SONMIRA_CORPUS "/" + fields.value(column("path")),
                         fields.value(column("rate")).toInt(), fields.value(column("channels")).toInt(),
                         fields.value(column("ffmpeg_decodes_cleanly")),
                         fields.value(column("ffmpeg_sample_frames")).trimmed().toLongLong(),
                         fields.value(column("codec"))});
    }
    return files;
}

class RealInput : public ::testing::TestWithParam<RealFile> {};

TEST_P(RealInput, IsReadWithItsFormatAndLength) {
    const RealFile& real = GetParam();
    const QString path = FromNative(real.Path);
    if (real.State == "refused") {
        AudioFile file;
        EXPECT_THROW(file.OpenForRead(path), Failure);
        return;
    }
    if (real.Path.contains("early-eof")) {
        EXPECT_THROW(ReadWhole(path), Failure) << "less sound than its header counts";
        return;
    }
    const ReadFile file = ReadWhole(path);
    // Musepack's own packets do not say how much they hold; such files have a decoder of their own.
    if (real.Path.endsWith(".mpc")) return;
    EXPECT_EQ(file.Rate, real.Rate);
    EXPECT_EQ(file.Channels, real.Channels);
    EXPECT_GT(file.Frames, 0);
    // A packet or two of what the length of its format cannot express.
    EXPECT_NEAR(static_cast<double>(file.StreamLength), static_cast<double>(file.Frames), 2 * 4096 + 2048);
}

// Frames of what the component for that codec makes of the file; -1 where there is no such component.
qint64 FramesByComponent(const RealFile& real, const TestFolder& folder) {
    const QString path = FromNative(real.Path);
    const QString wav = folder.Path("out.wav");
    if (real.Codec == "aac") {
        AacDecoder decoder;
        decoder.SetInputFile(path);
        decoder.SetOutputFile(wav);
        EXPECT_EQ(decoder.DecodeToWav(), 1);
    } else if (real.Codec == "alac") {
        EXPECT_EQ(AlacDecoder().IsAlac(path), 1);
        EXPECT_EQ(AlacDecoder().DecodeToWav(path, wav), 1);
    } else if (real.Codec == "flac") {
        FlacDecoder decoder;
        decoder.SetInputFile(path);
        decoder.SetOutputFile(wav);
        decoder.DecodeToWav();
    } else if (real.Codec.startsWith("musepack")) {
        MpcDecoder().DecodeToWav(path, wav);
    } else {
        return -1;
    }
    return FramesByFfmpeg(folder.Native("out.wav"), std::min(real.Channels, 2));
}

TEST_P(RealInput, IsDecodedByItsComponentToItsLength) {
    const RealFile& real = GetParam();
    const TestFolder folder;
    const qint64 frames = FramesByComponent(real, folder);
    if (frames < 0) return;
    if (real.Codec.startsWith("musepack")) {
        // The other decoder counts whole packets.
        RunTool({"mpcdec", real.Path, folder.Native("theirs.wav")});
        EXPECT_EQ(frames, FramesByFfmpeg(folder.Native("theirs.wav"), real.Channels));
    } else if (!real.Path.endsWith("m4a") || real.Codec == "alac") {
        EXPECT_EQ(frames, real.Frames);
    }
}

std::string NameOf(const ::testing::TestParamInfo<RealFile>& real) {
    std::string name = std::to_string(real.index) + "_";
    for (const char c : real.param.Path.mid(real.param.Path.lastIndexOf('/') + 1)) {
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, RealInput, ::testing::ValuesIn(RealFiles()), NameOf);

}  // namespace
}  // namespace Sonmira
