#include "codecs/Conversion.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

// How a file of each kind is made from "in.wav" by a program of its own, and what must come back of it.
struct Made {
    const char* Name;
    QList<QByteArray> Command;  // IN and OUT stand for the files
    qint64 Extra = 0;           // frames that the format cannot help adding
};

void PrintTo(const Made& made, std::ostream* stream) {
    *stream << made.Name;
}

constexpr qint64 Frames = 100003;

class InputFormat : public ::testing::TestWithParam<Made> {
protected:
    void SetUp() override {
        Sound = MakeTone(44100, 2, Frames, 440);
        Folder.MakeFile("in.wav", WavOf(Sound, WavKind::Signed24));
        QList<QByteArray> command = GetParam().Command;
        for (QByteArray& word : command) {
            if (word == "IN") word = Folder.Native("in.wav");
            if (word == "OUT") word = Folder.Native(GetParam().Name);
        }
        const ToolResult made = RunTool(command);
        ASSERT_EQ(made.ExitCode, 0) << made.Errors.constData();
    }

    TestSound Sound;
    TestFolder Folder;
};

TEST_P(InputFormat, IsReadInFullAndItsLengthIsKnown) {
    const ReadFile file = ReadWhole(Folder.Path(GetParam().Name));
    EXPECT_EQ(file.Rate, 44100);
    EXPECT_EQ(file.Channels, 2);
    EXPECT_EQ(file.Frames, Frames + GetParam().Extra);
    EXPECT_EQ(file.StreamLength, file.Frames);
}

QList<QByteArray> Ffmpeg(const QList<QByteArray>& options) {
    return QList<QByteArray>{"ffmpeg", "-v", "error", "-i", "IN", "-bitexact"} + options +
           QList<QByteArray>{"-y", "OUT"};
}

INSTANTIATE_TEST_SUITE_P(
    Formats, InputFormat,
    ::testing::Values(
        Made{"u8.wav", Ffmpeg({"-c:a", "pcm_u8"})}, Made{"s16.wav", Ffmpeg({"-c:a", "pcm_s16le"})},
        Made{"s24.wav", Ffmpeg({"-c:a", "pcm_s24le"})}, Made{"s32.wav", Ffmpeg({"-c:a", "pcm_s32le"})},
        Made{"f32.wav", Ffmpeg({"-c:a", "pcm_f32le"})}, Made{"f64.wav", Ffmpeg({"-c:a", "pcm_f64le"})},
        Made{"alaw.wav", Ffmpeg({"-c:a", "pcm_alaw"})}, Made{"rf64.wav", Ffmpeg({"-rf64", "always"})},
        Made{"aiff.aiff", Ffmpeg({})}, Made{"au.au", Ffmpeg({})}, Made{"w64.w64", Ffmpeg({}), 1},
        Made{"cbr.mp3", {"lame", "--quiet", "-b", "128", "IN", "OUT"}},
        Made{"vbr.mp3", {"lame", "--quiet", "-V", "4", "IN", "OUT"}},
        Made{"untagged.mp3", {"lame", "--quiet", "-t", "-b", "128", "IN", "OUT"}, 1373},
        Made{"vorbis.ogg", {"oggenc", "-Q", "-o", "OUT", "IN"}},
        Made{"flac16.flac", Ffmpeg({"-sample_fmt", "s16"})},
        Made{"flac24.flac", {"flac", "-s", "-f", "-o", "OUT", "IN"}},
        Made{"flac.ogg", {"flac", "-s", "-f", "--ogg", "-o", "OUT", "IN"}},
        Made{"alac.m4a", Ffmpeg({"-c:a", "alac"})}, Made{"wavpack.wv", Ffmpeg({"-c:a", "wavpack"})},
        Made{"tta.tta", Ffmpeg({})}, Made{"sphere.sph", {"sox", "IN", "-b", "16", "OUT"}},
        Made{"pcm.avi", Ffmpeg({"-c:a", "pcm_s16le"})}, Made{"mp3.avi", Ffmpeg({"-c:a", "libmp3lame"}), 1373},
        Made{"layer2.mp3", Ffmpeg({"-f", "mp2"}), 221}, Made{"mp3.wav", Ffmpeg({"-c:a", "libmp3lame"}), 1373},
        Made{"mulaw.wav", Ffmpeg({"-c:a", "pcm_mulaw"})},
        // Of whole blocks: not all releases of the tool count the rest of the last one in the head.
        Made{"adpcm.wav", Ffmpeg({"-af", "apad=whole_len=100683", "-c:a", "adpcm_ima_wav"}), 680},
        Made{"u8.avi", Ffmpeg({"-c:a", "pcm_u8"})}, Made{"ac3.avi", Ffmpeg({"-c:a", "ac3"}), 1373},
        Made{"layer2.avi", Ffmpeg({"-c:a", "mp2"}), 221}),
    [](const auto& made) {
        std::string name = made.param.Name;
        for (char& c : name) c = c == '.' ? '_' : c;
        return name;
    });

// The edit list of such a file counts milliseconds, its stream frames.
TEST(InputFormatOfAac, InMp4EndsAtItsLastFrame) {
    const TestFolder folder;
    folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, Frames, 440), WavKind::Signed16));
    RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("in.wav"), folder.Native("out.m4a")});
    const ReadFile file = ReadWhole(folder.Path("out.m4a"));
    EXPECT_EQ(file.Frames, Frames);
    EXPECT_EQ(file.StreamLength, file.Frames);
}

TEST(InputFormatOfAac, WithoutContainerHasTheLengthOfItsPackets) {
    const TestFolder folder;
    folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, Frames), WavKind::Signed16));
    RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("in.wav"), folder.Native("out.aac")});
    const ReadFile file = ReadWhole(folder.Path("out.aac"));
    EXPECT_GE(file.Frames, Frames);
    EXPECT_EQ(file.StreamLength, file.Frames);
}

TEST(InputFormatOfWma, IsReadWithALengthThatIsRightToAFewPackets) {
    const TestFolder folder;
    folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, Frames, 440), WavKind::Signed16));
    RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("in.wav"), folder.Native("out.wma")});
    const ReadFile file = ReadWhole(folder.Path("out.wma"));
    EXPECT_NEAR(static_cast<double>(file.Frames), Frames, 3 * 2048);
    EXPECT_NEAR(static_cast<double>(file.StreamLength), static_cast<double>(file.Frames), 3 * 2048);
}

TEST(InputWidth, StaysWhatTheFileHolds) {
    const TestFolder folder;
    const TestSound noise = MakeNoise(44100, 2, 3000, 1.0);
    const std::pair<WavKind, SampleType> kinds[] = {{WavKind::Signed16, SampleType::Int16},
                                                    {WavKind::Signed32, SampleType::Int32},
                                                    {WavKind::Float32, SampleType::Float32}};
    for (const auto& [kind, type] : kinds) {
        const ReadFile file = ReadWhole(folder.MakeFile("in.wav", WavOf(noise, kind)));
        EXPECT_EQ(file.Type, type);
        EXPECT_EQ(file.Bytes, PcmOf(noise, kind));
    }
}

TEST(InputWidth, OfEightBitsIsWidenedExactly) {
    const TestFolder folder;
    const ReadFile file =
        ReadWhole(folder.MakeFile("in.wav", WavOf(MakeNoise(8000, 1, 3000), WavKind::Unsigned8)));
    const QByteArray raw = PcmOf(MakeNoise(8000, 1, 3000), WavKind::Unsigned8);
    ASSERT_EQ(file.Frames, raw.size());
    for (qsizetype i = 0; i < raw.size(); ++i) {
        ASSERT_EQ(file.Bytes[2 * i], 0);
        ASSERT_EQ(static_cast<uchar>(file.Bytes[2 * i + 1]), static_cast<uchar>(raw[i] ^ 0x80));
    }
}

TEST(ChainedInput, OfAnotherRateAndChannelCountKeepsTheFormatOfItsFirstLink) {
    const TestFolder folder;
    folder.MakeFile("a.wav", WavOf(MakeTone(44100, 2, 44100, 440), WavKind::Signed16));
    folder.MakeFile("b.wav", WavOf(MakeTone(22050, 1, 22050, 440), WavKind::Signed16));
    for (const char* name : {"a", "b"}) {
        RunTool(
            {"oggenc", "-Q", "-s", name, "-o", folder.Native(name) + ".ogg", folder.Native(name) + ".wav"});
    }
    const QString chain =
        folder.MakeFile("chain.ogg", ContentOf(folder.Native("a.ogg")) + ContentOf(folder.Native("b.ogg")));
    const ReadFile file = ReadWhole(chain);
    EXPECT_EQ(file.Rate, 44100);
    EXPECT_EQ(file.Channels, 2);
    // At a join the rest of a link's last packet may stay.
    EXPECT_NEAR(static_cast<double>(file.Frames), 88200, 2048);
}

TEST(InputOfFewVorbisPackets, HasEveryFrame) {
    const TestFolder folder;
    for (const qint64 frames : {1, 575, 2000, 44100}) {
        folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, frames, 440), WavKind::Signed16));
        RunTool({"oggenc", "-Q", "-o", folder.Native("out.ogg"), folder.Native("in.wav")});
        const ReadFile file = ReadWhole(folder.Path("out.ogg"));
        EXPECT_EQ(file.Frames, frames);
        EXPECT_EQ(file.StreamLength, frames);
    }
}

TEST(InputWithPicture, IsReadAsSound) {
    const TestFolder folder;
    folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, Frames, 440), WavKind::Signed16));
    RunTool({"ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc=s=64x64", "-frames:v", "1",
             folder.Native("in.jpg")});
    RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("in.wav"), "-i", folder.Native("in.jpg"), "-map",
             "0", "-map", "1", "-c:v", "copy", "-disposition:v", "attached_pic", folder.Native("out.mp3")});
    EXPECT_EQ(ReadWhole(folder.Path("out.mp3")).Frames, Frames);
}

TEST(InputOfVideoAlone, IsRefusedForHavingNoSound) {
    const TestFolder folder;
    RunTool({"ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc=s=64x64:d=1", folder.Native("out.avi")});
    AudioFile file;
    EXPECT_EQ(FailureTextOf([&] { file.OpenForRead(folder.Path("out.avi")); }),
              QStringLiteral("No sound in this file"));
}

}  // namespace
}  // namespace Sonmira
