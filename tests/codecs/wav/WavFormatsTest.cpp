#include "codecs/Conversion.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

struct Width {
    int Bits;
    WavKind Kind;
    QByteArray Encoding;  // by sox's name
};

const Width Widths[] = {{8, WavKind::Unsigned8, "Unsigned Integer PCM"},
                        {16, WavKind::Signed16, "Signed Integer PCM"},
                        {24, WavKind::Signed24, "Signed Integer PCM"},
                        {32, WavKind::Signed32, "Signed Integer PCM"}};

class WavFormats : public ::testing::TestWithParam<int> {};

TEST_P(WavFormats, OfEachWidthAndChannelCountAreReadBackBySox) {
    const int rate = GetParam();
    for (const int channels : {1, 2}) {
        const TestSound noise = MakeNoise(rate, channels, 501, 0.9);
        for (const Width& width : Widths) {
            SCOPED_TRACE(testing::Message() << channels << " channels, " << width.Bits << " bits");
            const TestFolder folder;
            ConvertFile(folder.MakeFile("in.wav", WavOf(noise, width.Kind)), folder.Path("out.wav"),
                        [&](AudioFile& file) {
                            file.SetFormatPCM(rate, channels, width.Bits);
                            EXPECT_EQ(file.FormatString(), QStringLiteral("PCM %1 Hz, %2, %3 bits")
                                                               .arg(rate)
                                                               .arg(channels == 1 ? QStringLiteral("Mono")
                                                                                  : QStringLiteral("Stereo"))
                                                               .arg(width.Bits));
                        });
            const QByteArray path = folder.Native("out.wav");
            const auto told = [&](const QByteArray& what) {
                return RunTool({"soxi", what, path}).Output.trimmed();
            };
            EXPECT_EQ(told("-r"), QByteArray::number(rate));
            EXPECT_EQ(told("-c"), QByteArray::number(channels));
            EXPECT_EQ(told("-b"), QByteArray::number(width.Bits));
            EXPECT_EQ(told("-s"), "501");
            EXPECT_EQ(told("-e"), width.Encoding);
            const QByteArray bits = QByteArray::number(width.Bits);
            const QByteArray sign = width.Bits == 8 ? "unsigned-integer" : "signed-integer";
            const ToolResult raw =
                RunTool({"sox", "-D", path, "-t", "raw", "-L", "-b", bits, "-e", sign, "-"});
            EXPECT_EQ(raw.Errors, "");
            EXPECT_TRUE(raw.Output == PcmOf(noise, width.Kind));
        }
    }
}

TEST_P(WavFormats, OfOddWidthsAreRefused) {
    AudioFile file;
    for (const int channels : {1, 2}) {
        for (const int bits : {2, 3, 4, 5, 0, 12, 33}) {
            file.SetFormatPCM(GetParam(), channels, 16);
            file.SetFormatPCM(GetParam(), channels, bits);
            EXPECT_EQ(file.FormatString(), QString()) << bits;
            EXPECT_FALSE(FailureTextOf([&] { file.OpenForWrite(TestFolder().Path("out.wav")); }).isEmpty());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllRates, WavFormats,
                         ::testing::Values(96000, 88200, 48000, 44100, 32000, 24000, 22050, 16000, 12000,
                                           11025, 8000, 6000));

TEST(WavFormatsWithout, ARateAreRefused) {
    AudioFile file;
    file.SetFormatPCM(44100, 2, 16);
    file.SetFormatPCM(0, 2, 16);
    EXPECT_EQ(file.FormatString(), QString());
}

}  // namespace
}  // namespace Sonmira
