#include "codecs/Conversion.h"
#include "codecs/wav/WavLayout.h"
#include "codecs/wav/WavWriter.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

struct Width {
    WavKind Kind;
    int Bits;
};

class WavOutputOfEachWidth : public ::testing::TestWithParam<Width> {};

TEST_P(WavOutputOfEachWidth, GivesEveryBitOfASourceOfTheSameWidth) {
    const WavKind kind = GetParam().Kind;
    const int bits = GetParam().Bits;
    const TestFolder folder;
    for (const int rate : {1, 8000, 44100, 96000, 384000}) {
        for (const int channels : {1, 2}) {
            const QByteArray source = WavOf(MakeNoise(rate, channels, 20011, 1.0), kind);
            const QString from = folder.MakeFile("in.wav", source);
            ConvertFile(from, folder.Path("out.wav"),
                        [&](AudioFile& file) { file.SetFormatPCM(rate, channels, bits); });
            // Our files have the same plain header as those of the tests: all of the file is equal.
            EXPECT_EQ(ContentOf(folder.Native("out.wav")), source) << rate << " Hz, " << channels;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllWidths, WavOutputOfEachWidth,
                         ::testing::Values(Width{WavKind::Unsigned8, 8}, Width{WavKind::Signed16, 16},
                                           Width{WavKind::Signed24, 24}, Width{WavKind::Signed32, 32}));

TEST(WavOutput, WidensSixteenBitsToMoreExactly) {
    const TestFolder folder;
    const TestSound noise = MakeNoise(44100, 2, 5000, 1.0);
    const QString from = folder.MakeFile("in.wav", WavOf(noise, WavKind::Signed16));
    for (const int bits : {24, 32}) {
        ConvertFile(from, folder.Path("out.wav"),
                    [&](AudioFile& file) { file.SetFormatPCM(44100, 2, bits); });
        EXPECT_EQ(RawByFfmpeg(folder.Native("out.wav"), "s16le"), PcmOf(noise, WavKind::Signed16));
    }
}

TEST(WavOutput, OfOneChannelInTwoHoldsItTwiceUnchanged) {
    const TestFolder folder;
    const TestSound mono = MakeNoise(44100, 1, 5000, 1.0);
    TestSound stereo{44100, 2, {}};
    for (const double sample : mono.Samples) stereo.Samples.insert(stereo.Samples.end(), 2, sample);
    const QString from = folder.MakeFile("in.wav", WavOf(mono, WavKind::Signed32));
    ConvertFile(from, folder.Path("out.wav"), [](AudioFile& file) { file.SetFormatPCM(44100, 2, 32); });
    EXPECT_EQ(ContentOf(folder.Native("out.wav")), WavOf(stereo, WavKind::Signed32));
}

TEST(WavOutput, OfNoFramesIsAValidEmptyFile) {
    const TestFolder folder;
    const QString from = folder.MakeFile("in.wav", WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16));
    ConvertFile(from, folder.Path("out.wav"), [](AudioFile& file) { file.SetFormatPCM(44100, 2, 16); });
    EXPECT_EQ(ContentOf(folder.Native("out.wav")).size(), 44);
    EXPECT_EQ(FramesByFfmpeg(folder.Native("out.wav"), 2), 0);
}

TEST(WavOutput, OfAnOddNumberOfBytesIsPaddedAsTheFormatAsks) {
    const TestFolder folder;
    const QString from = folder.MakeFile("in.wav", WavOf(MakeNoise(8000, 1, 777), WavKind::Unsigned8));
    ConvertFile(from, folder.Path("out.wav"), [](AudioFile& file) { file.SetFormatPCM(8000, 1, 8); });
    EXPECT_EQ(ContentOf(folder.Native("out.wav")).size(), 44 + 778);
    EXPECT_EQ(RunTool({"sox", folder.Native("out.wav"), "-n", "stat"}).ExitCode, 0);
    EXPECT_EQ(RawByFfmpeg(folder.Native("out.wav"), "u8").size(), 777);
}

TEST(WavOutput, ThatWouldGrowBeyondItsSizeFieldsFailsAndStaysReadable) {
    const TestFolder folder;
    OutputFile file(folder.Path("out.wav"));
    WavWriter writer(PcmFormat{44100, 2, 16}, WavWriter::Beyond4Gb::Fails, 1000);
    const AudioBlock block{SampleType::Int16, std::vector<std::byte>(400)};
    writer.Write(block, file);
    writer.Write(block, file);
    EXPECT_EQ(FailureTextOf([&] { writer.Write(block, file); }),
              QStringLiteral("A WAV file cannot grow beyond 4 GB"));
    writer.Finish(file);
    file.Close();
    EXPECT_EQ(FramesByFfmpeg(folder.Native("out.wav"), 2), 200);
}

TEST(WavOutput, ForOurOwnEncodersGrowsOnAndTellsNoSize) {
    const TestFolder folder;
    OutputFile file(folder.Path("out.wav"));
    WavWriter writer(PcmFormat{44100, 2, 16}, WavWriter::Beyond4Gb::GrowsOn, 1000);
    const AudioBlock block{SampleType::Int16, std::vector<std::byte>(400)};
    for (int n = 0; n < 4; ++n) writer.Write(block, file);
    writer.Finish(file);
    file.Close();
    EXPECT_EQ(ContentOf(folder.Native("out.wav")).mid(40, 4), QByteArray(4, '\xFF'));
    EXPECT_EQ(FramesByFfmpeg(folder.Native("out.wav"), 2), 400);
    EXPECT_EQ(MissingWavBytes(InputFile(folder.Path("out.wav"))), 0);
}

}  // namespace
}  // namespace Sonmira
