#include "Judges.h"
#include "Signals.h"
#include "codecs/ApeFunctions.h"
#include "codecs/ape/ApeInput.h"
#include "codecs/ape/Encode.h"
#include "platform/Failure.h"
#include "support/Sanitized.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <filesystem>

namespace Sonmira {
namespace {

constexpr qint32 GoOn = 0;
constexpr qsizetype HeaderBytes = 44;

QByteArray Compressed(const TestFolder& folder, const QByteArray& wav, int level) {
    CompressFile(folder.MakeFile("in.wav", wav), Anew(folder.Path("out.ape")), level, {}, GoOn);
    return ContentOf(folder.Native("out.ape"));
}

QByteArray Decompressed(const TestFolder& folder) {
    DecompressFile(folder.Path("out.ape"), folder.Path("back.wav"), {}, GoOn);
    return ContentOf(folder.Native("back.wav"));
}

struct Width {
    WavKind Kind;
    int Bits;
};
constexpr Width Widths[] = {{WavKind::Unsigned8, 8}, {WavKind::Signed16, 16}, {WavKind::Signed24, 24}};

class ApeOfEachLevel : public ::testing::TestWithParam<int> {};

TEST_P(ApeOfEachLevel, GivesEveryBitToFfmpegAndTheVeryFileToUs) {
    const TestFolder folder;
    constexpr std::int64_t blocks = UnderSanitizers ? 80'001 : 250'001;
    for (const int channels : {1, 2}) {
        const TestSound sound = MakeApeSignal("mixture", channels, blocks);
        for (const Width& width : Widths) {
            const QByteArray wav = WavOf(sound, width.Kind);
            Compressed(folder, wav, GetParam());
            const JudgedSound judged = ApeByFfmpeg(folder.Native("out.ape"), width.Bits);
            EXPECT_EQ(judged.Complaint, QByteArray());
            const qsizetype bytes = blocks * channels * width.Bits / 8;
            EXPECT_TRUE(judged.Pcm == wav.mid(HeaderBytes, bytes)) << width.Bits << " bits " << channels;
            EXPECT_TRUE(Decompressed(folder) == wav) << width.Bits << " bits " << channels;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, ApeOfEachLevel, ::testing::Values(1000, 2000, 3000, 4000));

TEST(Ape, OfEachLengthAroundAFrameGivesEveryBit) {
    const TestFolder folder;
    for (const std::int64_t blocks : {1, 2, 73727, 73728, 73729}) {
        const QByteArray wav = WavOf(MakeApeSignal("walk", 1, blocks), WavKind::Signed16);
        Compressed(folder, wav, 1000);
        EXPECT_TRUE(ApeByFfmpeg(folder.Native("out.ape"), 16).Pcm == wav.mid(HeaderBytes)) << blocks;
        EXPECT_TRUE(Decompressed(folder) == wav) << blocks;
    }
}

TEST(Ape, OfNoSoundIsAFileThatComesBack) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16);
    Compressed(folder, wav, 2000);
    EXPECT_EQ(Decompressed(folder), wav);
    EXPECT_EQ(GetDurationTrack(folder.Path("out.ape")), 0);
}

TEST(Ape, IsTheSameFileWhoeverWorksOnIt) {
    const TestFolder folder;
    const QString wav =
        folder.MakeFile("in.wav", WavOf(MakeApeSignal("mixture", 2, 73728 * 5 + 5), WavKind::Signed16));
    for (const int level : {1000, 2000}) {
        EncodeApe(wav, Anew(folder.Path("one.ape")), level, {}, GoOn, {1, AvailableApeKernels().front()});
        const QByteArray expected = ContentOf(folder.Native("one.ape"));
        for (const ApeKernels* kernels : AvailableApeKernels()) {
            for (const unsigned threads : {1U, 3U}) {
                EncodeApe(wav, Anew(folder.Path("other.ape")), level, {}, GoOn, {threads, kernels});
                EXPECT_TRUE(ContentOf(folder.Native("other.ape")) == expected) << kernels->Name << threads;
            }
        }
    }
}

TEST(Ape, OfSixteenBitStereoIsTheFileOfAnotherEncoder) {
    if (!HasJavaApe()) GTEST_SKIP() << "libjmac-java is not installed";
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeApeSignal("tones", 2, 200'000), WavKind::Signed16);
    for (int level = 1; level <= 4; ++level) {
        const QByteArray ours = Compressed(folder, wav, level * 1000);
        EXPECT_TRUE(ApeByJavaApe(folder.Native("in.wav"), level, folder.Native("java.ape")) == ours) << level;
    }
}

TEST(Ape, KeepsHeaderAndTrailingChunksForOtherDecoders) {
    if (!HasJavaApe()) GTEST_SKIP() << "libjmac-java is not installed";
    const TestFolder folder;
    QByteArray wav = WavOf(MakeApeSignal("tones", 2, 3001), WavKind::Signed24, WavHeader::Extensible, 3);
    wav += QByteArray("LIST\x1A\0\0\0INFOISFT\x0E\0\0\0some program!\0", 34);
    Compressed(folder, wav, 2000);
    EXPECT_TRUE(IsVerifiedByJavaApe(folder.Native("out.ape")));
    EXPECT_TRUE(WavByJavaApe(folder.Native("out.ape"), folder.Native("java.wav")) == wav);
}

TEST(ApeDecoding, GivesAPlainWavWhereTheSourceHadAnotherHeader) {
    const TestFolder folder;
    const TestSound sound = MakeApeSignal("tones", 2, 3001);
    Compressed(folder, WavOf(sound, WavKind::Signed24, WavHeader::Extensible, 3), 2000);
    EXPECT_TRUE(Decompressed(folder) == WavOf(sound, WavKind::Signed24));
}

TEST(ApeDecoding, GivesTheVeryFileWithItsTrailingChunks) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeApeSignal("tones", 1, 3001), WavKind::Unsigned8) +
                           QByteArray("LIST\x0C\0\0\0INFOISFT\0\0\0\0", 20);
    Compressed(folder, wav, 2000);
    EXPECT_TRUE(Decompressed(folder) == wav);
}

TEST(ApeEncoding, TakesFloatAsTwentyFourBits) {
    const TestFolder folder;
    const TestSound sound = MakeApeSignal("tones", 2, 50'000);
    Compressed(folder, WavOf(sound, WavKind::Float32), 2000);
    // Rounded and dithered: at most two of the least bits away.
    const QByteArray pcm = ApeByFfmpeg(folder.Native("out.ape"), 24).Pcm;
    ASSERT_EQ(pcm.size(), 50'000 * 6);
    const QByteArray wanted = PcmOf(sound, WavKind::Signed24);
    const auto at = [](const QByteArray& bytes, qsizetype i) {
        return static_cast<signed char>(bytes[i + 2]) * 65536 + static_cast<uchar>(bytes[i + 1]) * 256 +
               static_cast<uchar>(bytes[i]);
    };
    int furthest = 0;
    for (qsizetype i = 0; i < pcm.size(); i += 3)
        furthest = std::max(furthest, std::abs(at(pcm, i) - at(wanted, i)));
    EXPECT_LE(furthest, 2);
}

TEST(ApeEncoding, MixesSixChannelsToTwo) {
    const TestFolder folder;
    Compressed(folder, WavOf(MakeTone(48000, 6, 48000, 440, 0.25), WavKind::Signed16), 1000);
    EXPECT_EQ(GetDurationTrack(folder.Path("out.ape")), 1);
    EXPECT_EQ(ApeByFfmpeg(folder.Native("out.ape"), 24).Pcm.size(), 48000 * 2 * 3);
}

TEST(ApeEncoding, OfACutSourceGivesWhatIsThereAndFails) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeApeSignal("tones", 2, 90'000), WavKind::Signed16).first(200'000);
    EXPECT_THROW(Compressed(folder, wav, 1000), Failure);
    EXPECT_TRUE(ApeByFfmpeg(folder.Native("out.ape"), 16).Pcm ==
                wav.mid(HeaderBytes, (200'000 - 44) / 4 * 4));
}

// What is no plain sound of two channels at most goes through the libraries' decoders.
TEST(ApeEncoding, OfACutSourceOfAnotherFormGivesWhatIsThereAndFails) {
    const TestFolder folder;
    folder.MakeFile("noise.wav", WavOf(MakeNoise(44100, 2, 200'000, 0.3), WavKind::Signed16));
    RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("noise.wav"), "-c:a", "adpcm_ms",
             folder.Native("adpcm.wav")});
    const QByteArray sources[] = {WavOf(MakeNoise(44100, 6, 200'000, 0.3), WavKind::Signed16),
                                  WavOf(MakeNoise(44100, 2, 200'000, 0.3), WavKind::Float32),
                                  WavOf(MakeNoise(44100, 2, 200'000, 0.3), WavKind::Signed32),
                                  ContentOf(folder.Native("adpcm.wav"))};
    for (const QByteArray& wav : sources) {
        const int place = static_cast<int>(&wav - &sources[0]);
        EXPECT_THROW(Compressed(folder, wav.first(wav.size() / 2), 1000), Failure) << place;
        const bool isNarrow = place == 3;
        const auto pcm = ApeByFfmpeg(folder.Native("out.ape"), isNarrow ? 16 : 24).Pcm;
        EXPECT_NEAR(static_cast<double>(pcm.size()) / (isNarrow ? 4 : 6), 100'000, 3000) << place;
    }
}

TEST(ApeEncoding, OfASourceOfUnknownSizeGoesToItsEnd) {
    const TestFolder folder;
    for (const QByteArray& size : {QByteArray(4, '\0'), QByteArray(4, '\xFF')}) {
        QByteArray wav = WavOf(MakeApeSignal("tones", 2, 5000), WavKind::Signed16);
        wav.replace(40, 4, size);
        Compressed(folder, wav, 1000);
        EXPECT_TRUE(ApeByFfmpeg(folder.Native("out.ape"), 16).Pcm == wav.mid(HeaderBytes));
    }
}

// A hole in the file stands for the sound.
TEST(ApeEncoding, TakesSoundBehindASizeThatCannotCountItForSound) {
    const TestFolder folder;
    constexpr qint64 Sound = 4'500'000'000;
    struct Claim {
        quint32 Size;
        qint64 There;
        bool IsUnknown;
    };
    for (const auto& [size, there, isUnknown] :
         {Claim{0xFFFFFFFF, Sound, true}, Claim{0x7FFFF000, Sound, true},
          Claim{0x80000000, 0x80000000 + 1000, false}}) {
        QByteArray header = WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16);
        qToLittleEndian(size, header.data() + 40);
        const QString path = folder.MakeFile("in.wav", header);
        std::filesystem::resize_file(folder.Native("in.wav").toStdString(),
                                     static_cast<std::uintmax_t>(44 + there));
        EXPECT_EQ(OpenApeInput(path)->Blocks(), (isUnknown ? there : qint64{size}) / 4) << size;
    }
}

TEST(ApeEncoding, RefusesWhatItCannotDo) {
    const TestFolder folder;
    const QString wav = folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, 100, 440), WavKind::Signed24));
    EXPECT_THROW(CompressFile(wav, folder.Path("out.ape"), 1500, {}, GoOn), Failure);
    EXPECT_THROW(CompressFile(wav, folder.Path("out.ape"), 5000, {}, GoOn), Failure);
    EXPECT_THROW(CompressFile(wav, wav, 1000, {}, GoOn), Failure);
    EXPECT_THROW(CompressFile(folder.Path("none.wav"), folder.Path("out.ape"), 1000, {}, GoOn), Failure);
    EXPECT_THROW(CompressFile(wav, folder.Path("no/out.ape"), 1000, {}, GoOn), Failure);
    EXPECT_FALSE(NativeExists(folder.Native("out.ape")));
}

}  // namespace
}  // namespace Sonmira
