#include "Conversion.h"
#include "platform/Failure.h"
#include "support/Timing.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <fstream>

namespace Sonmira {
namespace {

AudioBlock NoiseBlock(std::size_t bytes) {
    const QByteArray noise =
        PcmOf(MakeNoise(44100, 1, static_cast<std::int64_t>(bytes / 2)), WavKind::Signed16);
    AudioBlock block{SampleType::Int16, std::vector<std::byte>(bytes)};
    std::copy(noise.begin(), noise.end(), static_cast<char*>(static_cast<void*>(block.Bytes.data())));
    return block;
}

TEST(Reading, GivesBlocksOfWholeFramesAndNoMoreThanAskedFor) {
    const TestFolder folder;
    AudioFile file;
    file.OpenForRead(folder.MakeFile("in.wav", WavOf(MakeNoise(8000, 3, 1000), WavKind::Signed16)));
    EXPECT_EQ(file.ByteRate(), 6);
    qint64 frames = 0;
    for (const qint64 size : {-1, 0, 1, 6, 7, 1000}) {
        const auto given = static_cast<qint64>(file.ReadBlock(size).Bytes.size());
        EXPECT_EQ(given, std::max<qint64>(size / 6, 1) * 6);
        frames += given / 6;
    }
    for (AudioBlock block = file.ReadBlock(999); !block.IsEmpty(); block = file.ReadBlock(999)) {
        frames += static_cast<qint64>(block.Bytes.size()) / 6;
    }
    EXPECT_EQ(frames, 1000);
    EXPECT_TRUE(file.ReadBlock(999).IsEmpty());
}

TEST(Reading, TellsTheLengthInMillisecondsToo) {
    const TestFolder folder;
    AudioFile file;
    file.OpenForRead(folder.MakeFile("in.wav", WavOf(MakeSilence(44100, 1, 66150), WavKind::Signed16)));
    EXPECT_EQ(file.Length(), 1500);
}

TEST(Reading, OfTheNextFileClosesTheOneBefore) {
    const TestFolder folder;
    AudioFile file;
    file.OpenForRead(folder.MakeFile("a.wav", WavOf(MakeSilence(44100, 1, 10), WavKind::Signed16)));
    file.OpenForRead(folder.MakeFile("b.wav", WavOf(MakeSilence(8000, 2, 10), WavKind::Signed16)));
    EXPECT_EQ(file.SampleRate(), 8000);
    EXPECT_THROW(file.OpenForRead(folder.Path("none.wav")), Failure);
    EXPECT_LT(file.FormatCode(), 0);
    EXPECT_THROW(file.ReadBlock(100), Failure);
}

TEST(Writing, WithoutAnOpenFileOrASourceFormatIsAnInvalidCall) {
    const TestFolder folder;
    AudioFile file;
    EXPECT_NO_THROW(file.SetSourceFormat(44100, 2)) << "changes nothing";
    EXPECT_THROW(file.WriteBlock(NoiseBlock(4)), Failure);
    file.SetFormatPCM(44100, 2, 16);
    file.OpenForWrite(folder.Path("out.wav"));
    EXPECT_THROW(file.WriteBlock(NoiseBlock(4)), Failure);
    file.SetSourceFormat(44100, 2);
    EXPECT_THROW(file.WriteBlock(NoiseBlock(6)), Failure);
    EXPECT_NO_THROW(file.CloseFile());
    EXPECT_NO_THROW(file.CloseFile());
}

TEST(Writing, ClosedWithoutASourceFormatLeavesAnEmptyFile) {
    const TestFolder folder;
    AudioFile file;
    file.SetFormatPCM(44100, 2, 16);
    file.OpenForWrite(folder.Path("out.wav"));
    file.CloseFile();
    EXPECT_TRUE(NativeExists(folder.Native("out.wav")));
    EXPECT_EQ(ContentOf(folder.Native("out.wav")), "");
}

TEST(Writing, ClosedWithoutABlockLeavesAValidFileOfNoFrames) {
    const TestFolder folder;
    const auto writeNothing = [&](const char* name, const FormatSetting& format) {
        AudioFile file;
        format(file);
        file.OpenForWrite(folder.Path(name));
        file.SetSourceFormat(48000, 1);
        file.CloseFile();
    };
    writeNothing("out.wav", [](AudioFile& file) { file.SetFormatPCM(44100, 2, 16); });
    writeNothing("out.ogg", [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400); });
    writeNothing("out.mp3", [](AudioFile& file) { file.SetFormatMP3(44100, 128, 2); });
    EXPECT_EQ(ReadWhole(folder.Path("out.wav")).Frames, 0);
    EXPECT_EQ(ReadWhole(folder.Path("out.ogg")).Frames, 0);
    RunTool({"lame", "--quiet", "--decode", folder.Native("out.mp3"), folder.Native("decoded.wav")});
    EXPECT_EQ(ContentOf(folder.Native("decoded.wav")).size(), 44);
}

TEST(Writing, StoppedInTheMiddleLeavesThePartThatWasWritten) {
    const TestFolder folder;
    const std::pair<const char*, FormatSetting> formats[] = {
        {"out.wav", [](AudioFile& file) { file.SetFormatPCM(44100, 2, 16); }},
        {"out.mp3", [](AudioFile& file) { file.SetFormatMP3(44100, 128, 2); }},
        {"out.ogg", [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, 128, 96, 160); }},
    };
    for (const auto& [name, format] : formats) {
        AudioFile file;
        format(file);
        file.OpenForWrite(folder.Path(name));
        file.SetSourceFormat(44100, 2);
        for (int i = 0; i < 20; ++i) file.WriteBlock(NoiseBlock(88200));
        const auto start = CpuClock::now();
        file.CloseFile();
        EXPECT_LT(CpuClock::now() - start, std::chrono::seconds(10)) << name;
        EXPECT_EQ(FramesByFfmpeg(folder.Native(name), 2), 20 * 22050) << name;
    }
}

TEST(Writing, AbandonedWithTheObjectEndsItsThreadAndKeepsWhatIsThere) {
    const TestFolder folder;
    {
        AudioFile file;
        file.SetFormatMP3(44100, 128, 2);
        file.OpenForWrite(folder.Path("out.mp3"));
        file.SetSourceFormat(44100, 2);
        for (int i = 0; i < 8; ++i) file.WriteBlock(NoiseBlock(88200));
    }
    EXPECT_TRUE(NativeExists(folder.Native("out.mp3")));
}

TEST(Writing, UsesTheFormatForOneFileAfterTheOther) {
    const TestFolder folder;
    AudioFile file;
    file.SetFormatPCM(44100, 2, 16);
    for (const char* name : {"a.wav", "b.wav"}) {
        file.OpenForWrite(folder.Path(name));
        file.SetSourceFormat(44100, 2);
        file.WriteBlock(NoiseBlock(4000));
        file.CloseFile();
        EXPECT_EQ(FramesByFfmpeg(folder.Native(name), 2), 1000);
    }
}

qint64 ResidentKilobytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == "VmRSS:") {
            qint64 value = 0;
            status >> value;
            return value;
        }
    }
    return 0;
}

TEST(LongFile, IsConvertedWithoutMemoryGrowingWithItsLength) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer keeps freed memory for a while";
#endif
    const TestFolder folder;
    QByteArray wav = WavOf(MakeNoise(8000, 1, 8000), WavKind::Signed16);
    wav.replace(40, 4, QByteArray(4, '\xFF'));  // as long as the file is
    wav += wav.sliced(44).repeated(1199);
    const QString from = folder.MakeFile("in.wav", wav);
    AudioFile reader;
    AudioFile writer;
    writer.SetFormatPCM(11025, 2, 16);
    reader.OpenForRead(from);
    writer.OpenForWrite(folder.Path("out.wav"));
    writer.SetSourceFormat(8000, 1);
    qint64 atFirst = 0;
    qint64 most = 0;
    int blocks = 0;
    for (AudioBlock block = reader.ReadBlock(8000); !block.IsEmpty(); block = reader.ReadBlock(8000)) {
        writer.WriteBlock(block);
        ++blocks;
        if (blocks == 100) atFirst = ResidentKilobytes();
        if (blocks > 100) most = std::max(most, ResidentKilobytes());
    }
    writer.CloseFile();
    EXPECT_EQ(blocks, 2400);
    EXPECT_LT(most - atFirst, 2 * 1024);
}

}  // namespace
}  // namespace Sonmira
