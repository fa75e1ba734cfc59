#include "LostSound.h"
#include "codecs/FlacEncoder.h"
#include "codecs/WavDecoders.h"
#include "codecs/read/MediaInput.h"

#include <gtest/gtest.h>

extern "C" {
#include <libavformat/avformat.h>
}

namespace Sonmira {
namespace {

constexpr int Rate = 44100;

TEST(OpenedFormats, AreReadersOfOneFileThatTheLibraryHas) {
    const QList<QByteArray> names = QByteArray(MediaFormatNames).split(',');
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    for (const QByteArray& name : names) {
        const AVInputFormat* reader = av_find_input_format(name.constData());
        ASSERT_NE(reader, nullptr) << name.constData();
        EXPECT_EQ(reader->flags & (AVFMT_NOFILE | AVFMT_NEEDNUMBER), 0) << name.constData();
    }
    for (const char* other :
         {"hls", "concat", "dash", "sdp", "rtsp", "image2", "lavfi", "imf", "tedcaptions"}) {
        EXPECT_FALSE(names.contains(other)) << other;
    }
}

TEST(OpenedFormats, HoldXwma) {
    const TestFolder folder;
    QByteArray wav =
        MadeOf(folder, "a.wav", {"ffmpeg", "-v", "error", "-i", "IN", "-c:a", "wmav2", "-bitexact", "OUT"},
               MakeNoise(Rate, 2, 3LL * Rate, 0.3));
    const PartRead part = ReadPart(folder.MakeFile("a.xwma", wav.replace("WAVE", "XWMA")));
    EXPECT_EQ(part.Failure, QString());
    EXPECT_NEAR(static_cast<double>(part.Frames), 3 * Rate, 3 * 2048);
    EXPECT_NE(ReadPart(folder.MakeFile("b.xwma", wav.first(wav.size() / 2))).Failure, QString());
}

QByteArray Id3v1() {
    return "TAG" + QByteArray("Title").leftJustified(30, '\0') +
           QByteArray("Artist").leftJustified(30, '\0') + QByteArray("Album").leftJustified(30, '\0') +
           "1999" + QByteArray(30, '\0') + '\x05';
}

// An ID3v2.3 tag with a cover of so many bytes.
QByteArray Id3v2(int size) {
    const int content = size - 10;
    QByteArray tag("ID3\3\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7) tag += static_cast<char>(content >> shift & 0x7F);
    tag += "APIC";
    for (int shift = 24; shift >= 0; shift -= 8) tag += static_cast<char>((content - 10) >> shift);
    tag += QByteArray("\0\0\0image/jpeg\0\3\0", 16);
    for (int i = 0; tag.size() < size; ++i) tag += static_cast<char>(i * 7919 >> 3);
    return tag;
}

// Two frames of noise look like something else as often as not.
TEST(OpenedFormats, HoldAacOfAFrameOrTwoWithATagBehindIt) {
    const TestFolder folder;
    const QByteArray aac =
        MadeOf(folder, "a.aac", {"ffmpeg", "-v", "error", "-i", "IN", "-b:a", "256k", "OUT"},
               MakeNoise(22050, 1, 22050 * 10, 0.5));
    qsizetype at = 0;
    qsizetype before = 0;
    for (int frame = 0; frame < 200 && at + 7 < aac.size(); ++frame) {
        const auto byte = [&](qsizetype place) { return static_cast<quint8>(aac[at + place]); };
        const qsizetype size = (byte(3) & 3) << 11 | byte(4) << 3 | byte(5) >> 5;
        const PartRead one = ReadPart(folder.MakeFile("one.aac", aac.mid(at, size) + Id3v1()));
        EXPECT_EQ(one.Failure, QString()) << frame;
        const PartRead two =
            ReadPart(folder.MakeFile("two.aac", aac.mid(before, at + size - before) + Id3v1()));
        EXPECT_EQ(two.Failure, QString()) << frame;
        before = at;
        at += size;
    }
    EXPECT_GT(at, 20'000);
}

TEST(OpenedFormats, HoldAacAndFlacBehindALargeCover) {
    const TestFolder folder;
    const TestSound noise = MakeNoise(Rate, 2, 3LL * Rate, 0.3);
    const QByteArray aac = MadeOf(folder, "a.aac", {"ffmpeg", "-v", "error", "-i", "IN", "OUT"}, noise);
    const QByteArray flac = MadeOf(folder, "a.flac", {"flac", "-s", "-o", "OUT", "IN"}, noise);
    for (const int size : {100'000, 1'100'000, 3'000'000}) {
        const PartRead fromAac = ReadPart(folder.MakeFile("b.aac", Id3v2(size) + aac));
        EXPECT_EQ(fromAac.Failure, QString()) << size;
        EXPECT_GT(fromAac.Frames, 3 * Rate - 1);
        const PartRead fromFlac = ReadPart(folder.MakeFile("b.flac", Id3v2(size) + flac));
        EXPECT_EQ(fromFlac.Failure, QString()) << size;
        EXPECT_EQ(fromFlac.Frames, 3 * Rate);
    }
}

TEST(OpenedFormats, HoldFlacOf32BitsBehindATag) {
    const TestFolder folder;
    folder.MakeFile("in.wav", WavOf(MakeNoise(Rate, 2, 3LL * Rate), WavKind::Signed32));
    RunTool({"flac", "-s", "-0", "-o", folder.Native("a.flac"), folder.Native("in.wav")});
    FlacDecoder decoder;
    const QByteArray flac = ContentOf(folder.Native("a.flac"));
    EXPECT_EQ(decoder.TrackLength(folder.MakeFile("b.flac", Id3v2(1000) + flac)), 3);
}

// Its count of no bytes is that of writers who cannot know it, whose sound goes on to the end.
TEST(WavWithoutSound, HoldsNoneOfWhatIsBehindIt) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeSilence(Rate, 2, 0), WavKind::Signed16);
    const QByteArray list = "LIST" + QByteArray::fromHex("1a000000") + "INFOISFT" +
                            QByteArray::fromHex("0e000000") + QByteArray("Some software\0", 14);
    const QByteArray id3 = "id3 " + QByteArray::fromHex("0b000000") + "ID3 a tag..";
    FlacEncoder().EncodeFromWav(folder.MakeFile("a.wav", wav), folder.Path("a.flac"), 5);
    const QByteArray empty = ContentOf(folder.Native("a.flac"));
    for (const QByteArray& tail : {list, id3, id3 + '\0', list + id3}) {
        const QString path = folder.MakeFile("b.wav", wav + tail);
        EXPECT_EQ(ReadWhole(path).Frames, 0);
        FlacEncoder().EncodeFromWav(path, Anew(folder.Path("b.flac")), 5);
        EXPECT_EQ(ContentOf(folder.Native("b.flac")), empty);
    }
    const QByteArray sound = PcmOf(MakeNoise(Rate, 2, 1000), WavKind::Signed16);
    EXPECT_EQ(ReadWhole(folder.MakeFile("c.wav", wav + sound)).Frames, 1000) << "of a pipe";
}

}  // namespace
}  // namespace Sonmira
