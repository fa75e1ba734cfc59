#include "Conversion.h"
#include "platform/Failure.h"
#include "support/Tool.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace Sonmira {
namespace {

int OpeningNumber(const QString& path) {
    AudioFile file;
    try {
        file.OpenForRead(path);
    } catch (const Failure& failure) {
        EXPECT_FALSE(failure.Description.isEmpty());
        EXPECT_LT(file.FormatCode(), 0);
        return failure.Number;
    }
    return 0;
}

TEST(HostileInput, ThatIsMissingIsNotFound) {
    const TestFolder folder;
    EXPECT_EQ(OpeningNumber(folder.Path("none.wav")), FailureNumber::FileNotFound);
    EXPECT_EQ(OpeningNumber(QString()), FailureNumber::FileNotFound);
}

TEST(HostileInput, ThatIsAFolderAPipeOrADeviceIsRefused) {
    const TestFolder folder;
    EXPECT_EQ(OpeningNumber(folder.MakeFolder("folder.wav")), FailureNumber::PathFileAccess);
    ASSERT_EQ(mkfifo(folder.Native("pipe.wav").constData(), 0600), 0);
    EXPECT_EQ(OpeningNumber(folder.Path("pipe.wav")), FailureNumber::PathFileAccess);
    EXPECT_EQ(OpeningNumber(QStringLiteral("\\dev\\zero")), FailureNumber::PathFileAccess);
}

TEST(HostileInput, OfNoSoundIsRefused) {
    const TestFolder folder;
    const QByteArray noise = PcmOf(MakeNoise(44100, 1, 300000), WavKind::Unsigned8);
    EXPECT_EQ(OpeningNumber(folder.MakeFile("empty.mp3", "")), FailureNumber::Component);
    EXPECT_EQ(OpeningNumber(folder.MakeFile("zeros.mp3", QByteArray(100000, '\0'))),
              FailureNumber::Component);
    EXPECT_EQ(OpeningNumber(folder.MakeFile("text.ogg", QByteArray("words ").repeated(9999))),
              FailureNumber::Component);
    EXPECT_EQ(OpeningNumber(folder.MakeFile("riff.wav", "RIFF\x10\x00\x00\x00WAVE")),
              FailureNumber::Component);
    EXPECT_EQ(OpeningNumber(folder.MakeFile("noise.bin", noise)), FailureNumber::Component);
}

TEST(HostileInput, ThatNamesOtherFilesNeverReadsThem) {
    const TestFolder folder;
    folder.MakeFile("secret.wav", WavOf(MakeTone(44100, 2, 44100, 440), WavKind::Signed16));
    RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("secret.wav"), folder.Native("secret.ts")});
    ASSERT_TRUE(NativeExists(folder.Native("secret.ts")));
    const QByteArray target = folder.Native("secret.ts");
    const QByteArray list = "#EXTM3U\n#EXT-X-TARGETDURATION:2\n#EXTINF:1,\n" + target + "\n#EXT-X-ENDLIST\n";
    EXPECT_NE(OpeningNumber(folder.MakeFile("list.mp3", list)), 0);
    EXPECT_NE(OpeningNumber(folder.MakeFile("list.m3u8", list)), 0);
    const QByteArray script = "ffconcat version 1.0\nfile '" + target + "'\nfile 'secret.wav'\n";
    EXPECT_NE(OpeningNumber(folder.MakeFile("script.wav", script)), 0);
    const QByteArray index =
        "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\" "
        "mediaPresentationDuration=\"PT1S\"><Period><AdaptationSet mimeType=\"audio/mp4\">"
        "<Representation id=\"1\" bandwidth=\"1000\"><BaseURL>" +
        target + "</BaseURL></Representation></AdaptationSet></Period></MPD>";
    EXPECT_NE(OpeningNumber(folder.MakeFile("index.mpd", index)), 0);
}

TEST(HostileInput, WithAHeaderThatLiesAboutItsSizeGivesWhatIsThere) {
    const TestFolder folder;
    QByteArray wav = WavOf(MakeNoise(8000, 1, 5000), WavKind::Signed16);
    for (const QByteArray& size :
         {QByteArray(4, '\xFF'), QByteArray(4, '\0'), QByteArray("\xFF\xFF\xFF\x7F")}) {
        wav.replace(40, 4, size);
        const ReadFile file = ReadWhole(folder.MakeFile("lies.wav", wav));
        EXPECT_EQ(file.Frames, 5000);
        EXPECT_EQ(file.StreamLength, 5000);
    }
}

TEST(HostileInput, WithRatesAndChannelsThatCannotBeIsRefusedOrRead) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeNoise(8000, 2, 5000), WavKind::Signed16);
    for (const QByteArray& number :
         {QByteArray(4, '\xFF'), QByteArray(4, '\0'), QByteArray("\xFF\xFF\xFF\x7F")}) {
        for (const int place : {22, 24, 32}) {
            QByteArray lying = wav;
            lying.replace(place, place == 24 ? 4 : 2, number.first(place == 24 ? 4 : 2));
            const QString path = folder.MakeFile("lies.wav", lying);
            PassOver([&] { EXPECT_GE(ReadWhole(path).Rate, 1); });
        }
    }
}

TEST(EmptyInput, OfAHeaderAloneOpensAndHasNoFrames) {
    const TestFolder folder;
    AudioFile file;
    file.OpenForRead(folder.MakeFile("empty.wav", WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16)));
    EXPECT_EQ(file.StreamLength(), 0);
    EXPECT_EQ(file.Length(), 0);
    EXPECT_EQ(file.SampleRate(), 44100);
    EXPECT_EQ(file.ChannelCount(), 2);
    EXPECT_GE(file.FormatCode(), 0);
    EXPECT_TRUE(file.ReadBlock(1000).IsEmpty());
}

}  // namespace
}  // namespace Sonmira
