#include "Conversion.h"
#include "codecs/WavDecoders.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "support/RealFiles.h"
#include "support/Sanitized.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

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

INSTANTIATE_TEST_SUITE_P(Corpus, RealInput, ::testing::ValuesIn(SomeOf(RealFiles(), 3)), NameOfRealFile);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealInput);

}  // namespace
}  // namespace Sonmira
