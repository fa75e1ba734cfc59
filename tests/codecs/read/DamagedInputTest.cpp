#include "codecs/Conversion.h"
#include "platform/Failure.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <random>

namespace Sonmira {
namespace {

constexpr qint64 Frames = 33000;

class DamagedInput : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        Folder.MakeFile("in.wav", WavOf(MakeSweep(22050, 2, Frames), WavKind::Signed16));
        QList<QByteArray> command{"ffmpeg", "-v", "error", "-i", Folder.Native("in.wav")};
        if (QByteArrayView(GetParam()) == "alac.m4a") command += {"-c:a", "alac"};
        ASSERT_EQ(RunTool(command + QList<QByteArray>{Folder.Native(GetParam())}).ExitCode, 0);
        Intact = ContentOf(Folder.Native(GetParam()));
        ASSERT_GT(Intact.size(), 1000);
    }

    // Reads what can be read. Returns the frames, or -1 when the file was refused.
    qint64 Read(const QByteArray& content) const {
        const QString path = Folder.MakeFile("damaged", content);
        qint64 frames = -1;
        PassOver([&] { frames = ReadWhole(path).Frames; });
        return frames;
    }

    TestFolder Folder;
    QByteArray Intact;
};

TEST_P(DamagedInput, CutAnywhereGivesNoMoreThanItHolds) {
    const qint64 whole = Read(Intact);
    for (int part = 0; part < 40; ++part) {
        const qint64 frames = Read(Intact.first(Intact.size() * part / 40));
        EXPECT_LE(frames, whole + 2304) << part << " of 40";
    }
    EXPECT_GE(whole, Frames * 9 / 10);
}

TEST_P(DamagedInput, WithChangedBytesIsReadOrRefused) {
    std::mt19937 random(20240229);
    for (int round = 0; round < 40; ++round) {
        QByteArray damaged = Intact;
        const bool inHeader = round % 2 == 0;
        const qsizetype area = inHeader ? std::min<qsizetype>(damaged.size(), 300) : damaged.size();
        for (int change = 0; change < 1 + round; ++change) {
            damaged[static_cast<qsizetype>(random() % static_cast<unsigned>(area))] =
                static_cast<char>(random());
        }
        EXPECT_LT(Read(damaged), 100 * Frames);
    }
}

// Lossless frames carry check sums, Ogg pages and packets of Windows Media their times, so that what is lost
// is known. Plain PCM has neither.
TEST_P(DamagedInput, WithAHoleInTheMiddleGivesTheRestOrIsReported) {
    QByteArray damaged = Intact;
    const qsizetype start = damaged.size() * 3 / 4;
    damaged.replace(start, 400, QByteArray(400, '\x55'));
    const QByteArrayView name(GetParam());
    if (name == "a.flac" || name == "a.ogg" || name == "a.wma") {
        EXPECT_EQ(Read(damaged), -1);
    } else if (name != "alac.m4a") {
        EXPECT_GT(Read(damaged), Frames / 4);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedInput,
                         ::testing::Values("a.wav", "a.mp3", "a.ogg", "a.flac", "aac.m4a", "alac.m4a",
                                           "a.wma", "a.aac", "a.avi", "a.aiff"),
                         [](const auto& format) {
                             std::string name = format.param;
                             for (char& c : name) c = c == '.' ? '_' : c;
                             return name;
                         });

TEST(DamagedWav, ThatEndsBeforeItsHeaderSaysIsReported) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeNoise(44100, 2, 10 * 44100), WavKind::Signed16);
    const QString path = folder.MakeFile("a.wav", wav.first(wav.size() / 2));
    AudioFile file;
    file.OpenForRead(path);
    qint64 given = 0;
    EXPECT_FALSE(FailureTextOf([&] {
                     for (AudioBlock block = file.ReadBlock(65536); !block.IsEmpty();
                          block = file.ReadBlock(65536)) {
                         given += static_cast<qint64>(block.Bytes.size());
                     }
                 }).isEmpty());
    EXPECT_EQ(given, (wav.size() / 2 - 44) / 4 * 4) << "all that is there comes first";
}

TEST(DamagedFlac, WhoseFramesAreAllGarbageIsRefused) {
    const TestFolder folder;
    folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, 44100), WavKind::Signed16));
    RunTool({"flac", "-s", "-f", "--no-padding", "-o", folder.Native("a.flac"), folder.Native("in.wav")});
    QByteArray flac = ContentOf(folder.Native("a.flac"));
    for (qsizetype i = 400; i < flac.size(); ++i) flac[i] = static_cast<char>(0x55);
    AudioFile file;
    EXPECT_FALSE(FailureTextOf([&] { file.OpenForRead(folder.MakeFile("b.flac", flac)); }).isEmpty());
}

}  // namespace
}  // namespace Sonmira
