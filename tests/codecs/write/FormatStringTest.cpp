#include "codecs/AudioFile.h"
#include "codecs/write/FileWriting.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

TEST(FormatString, DescribesEachFormatInOneLine) {
    AudioFile file;
    EXPECT_TRUE(file.FormatString().isEmpty());
    file.SetFormatPCM(44100, 2, 16);
    EXPECT_EQ(file.FormatString(), QStringLiteral("PCM 44100 Hz, Stereo, 16 bits"));
    file.SetFormatMP3(22050, 64, 1);
    EXPECT_EQ(file.FormatString(), QStringLiteral("MPEG Layer-3 22050 Hz, Mono, 64 kbit/s"));
    file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400);
    EXPECT_EQ(file.FormatString(), QStringLiteral("Ogg Vorbis 44100 Hz, Stereo, quality 4.0"));
    file.SetFormatOggVorbis(44100, 2, 128);
    EXPECT_EQ(file.FormatString(), QStringLiteral("Ogg Vorbis 44100 Hz, Stereo, 128 kbit/s"));
    file.SetFormatOggVorbis(44100, 2, 128, 96, 160);
    EXPECT_EQ(file.FormatString(),
              QStringLiteral("Ogg Vorbis 44100 Hz, Stereo, 128 kbit/s, 96 to 160 kbit/s"));
}

TEST(FormatString, IsEmptyAfterARefusedPcmFormat) {
    AudioFile file;
    const int refused[][3] = {{0, 2, 16}, {384001, 2, 16}, {44100, 0, 16}, {44100, 3, 16}, {44100, 2, 12}};
    for (const auto& [rate, channels, bits] : refused) {
        file.SetFormatPCM(44100, 2, 16);
        file.SetFormatPCM(rate, channels, bits);
        EXPECT_TRUE(file.FormatString().isEmpty()) << rate << ' ' << channels << ' ' << bits;
    }
}

TEST(FormatString, IsEmptyAfterAnMp3FormatThatMpegDoesNotKnow) {
    AudioFile file;
    const int refused[][3] = {{44100, 144, 2}, {44100, 24, 2},  {22050, 192, 2}, {8000, 80, 1},
                              {44100, 128, 3}, {96000, 128, 2}, {0, 128, 2}};
    for (const auto& [rate, kilobits, channels] : refused) {
        file.SetFormatPCM(44100, 2, 16);
        file.SetFormatMP3(rate, kilobits, channels);
        EXPECT_TRUE(file.FormatString().isEmpty()) << rate << ' ' << kilobits << ' ' << channels;
    }
}

TEST(FormatString, IsEmptyAfterAVorbisFormatThatTheEncoderRefuses) {
    AudioFile file;
    for (const int kilobits : {8, 32, 600}) {
        file.SetFormatPCM(44100, 2, 16);
        file.SetFormatOggVorbis(44100, 2, kilobits);
        EXPECT_TRUE(file.FormatString().isEmpty()) << kilobits;
    }
    for (const int quality : {-1, 1001}) {
        file.SetFormatOggVorbis(44100, 2, {}, {}, {}, quality);
        EXPECT_TRUE(file.FormatString().isEmpty()) << quality;
    }
    file.SetFormatOggVorbis(44100, 2);
    EXPECT_TRUE(file.FormatString().isEmpty());
}

TEST(OutputFormat, KnowsEveryBitRateThatAnMpegFrequencyHas) {
    int known = 0;
    for (const int rate : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000}) {
        for (int kilobits = 0; kilobits <= 400; ++kilobits) known += IsMp3Bitrate(kilobits, rate) ? 1 : 0;
    }
    EXPECT_EQ(known, 3 * 8 + 3 * 14 + 3 * 14);
}

}  // namespace
}  // namespace Sonmira
