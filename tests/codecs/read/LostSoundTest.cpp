#include "LostSound.h"
#include "codecs/WavDecoders.h"
#include "codecs/read/FileCounts.h"
#include "codecs/read/MediaInput.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

constexpr int Rate = 44100;
constexpr int Seconds = 10;

enum class Damage { Half, End, Hole, Zeros };

// Cuts a file in half or a little before its end, takes four tenths out of its middle, or lays zeros there.
QByteArray Damaged(const QByteArray& whole, Damage damage) {
    const qsizetype from = whole.size() * 3 / 10;
    const qsizetype to = whole.size() * 7 / 10;
    switch (damage) {
        case Damage::Half:
            return whole.first(whole.size() / 2);
        case Damage::End:
            return whole.first(whole.size() * 93 / 100);
        case Damage::Hole:
            return whole.first(from) + whole.mid(to);
        default:
            return whole.first(from) + QByteArray(to - from, '\0') + whole.mid(to);
    }
}

struct Stream {
    const char* Name;
    QList<QByteArray> Command;
    QList<Damage> Damages;  // that the stream itself can tell
};

void PrintTo(const Stream& stream, std::ostream* out) {
    *out << stream.Name;
}

class LostSound : public ::testing::TestWithParam<Stream> {};

TEST_P(LostSound, IsAFailureBehindTheSoundThatIsThere) {
    const TestFolder folder;
    const QByteArray whole =
        MadeOf(folder, GetParam().Name, GetParam().Command, MakeNoise(Rate, 2, Seconds * Rate, 0.3));
    const PartRead intact = ReadPart(folder.Path(GetParam().Name));
    EXPECT_EQ(intact.Failure, QString());
    EXPECT_GT(intact.Frames, Seconds * Rate - 5000);
    for (const Damage damage : GetParam().Damages) {
        SCOPED_TRACE(static_cast<int>(damage));
        const PartRead part = ReadPart(folder.MakeFile("damaged", Damaged(whole, damage)));
        EXPECT_NE(part.Failure, QString());
        EXPECT_GT(part.Frames, 2 * Rate);
        EXPECT_LT(part.Frames, intact.Frames - Rate / 10);
    }
}

QList<QByteArray> Ffmpeg(const QList<QByteArray>& options) {
    return QList<QByteArray>{"ffmpeg", "-v", "error", "-i", "IN"} + options + QList<QByteArray>{"-y", "OUT"};
}

const QList<Damage> All = {Damage::Half, Damage::End, Damage::Hole, Damage::Zeros};

INSTANTIATE_TEST_SUITE_P(
    Of, LostSound,
    ::testing::Values(
        Stream{"vorbis.ogg", {"oggenc", "-Q", "-o", "OUT", "IN"}, All},
        Stream{"opus.ogg", Ffmpeg({"-c:a", "libopus"}), All},
        Stream{"flac.ogg", {"flac", "-s", "--ogg", "-o", "OUT", "IN"}, All},
        Stream{"plain.flac", {"flac", "-s", "-o", "OUT", "IN"}, All},
        Stream{"xing.mp3", {"lame", "--quiet", "-V4", "IN", "OUT"}, All},
        Stream{"info.mp3", {"lame", "--quiet", "-b", "128", "IN", "OUT"}, All},
        // Its tables in front, it can be opened when it is cut.
        Stream{"aac.m4a", Ffmpeg({"-movflags", "faststart"}), {Damage::Half, Damage::End, Damage::Zeros}},
        Stream{"alac.m4a",
               Ffmpeg({"-movflags", "faststart", "-c:a", "alac"}),
               {Damage::Half, Damage::End, Damage::Zeros}},
        Stream{"vorbis.mp4",
               Ffmpeg({"-movflags", "faststart", "-c:a", "libvorbis"}),
               {Damage::Half, Damage::End, Damage::Zeros}},
        Stream{"a.wma", Ffmpeg({"-c:a", "wmav2"}), All}, Stream{"pcm.avi", Ffmpeg({}), All},
        Stream{"mp3.avi", Ffmpeg({"-c:a", "libmp3lame"}), All},
        Stream{"ac3.avi", Ffmpeg({"-c:a", "ac3"}), All},
        Stream{"vorbis.mka", Ffmpeg({"-c:a", "libvorbis"}), {Damage::Half, Damage::End}},
        Stream{"a.wv", Ffmpeg({}), {Damage::Half, Damage::End}}),
    [](const auto& stream) {
        std::string name = stream.param.Name;
        for (char& c : name) c = c == '.' ? '_' : c;
        return name;
    });

// Each of them is shorter than what a container of milliseconds is wrong by. As of a broadcast, nothing
// counts the whole.
TEST(LostSoundOfMatroska, InSinglePacketsCountsTogether) {
    const TestFolder folder;
    QByteArray mka = MadeOf(folder, "a.mka", Ffmpeg({"-c:a", "libvorbis", "-live", "1"}),
                            MakeNoise(Rate, 2, Seconds * Rate, 0.3));
    const QList<QByteArray> blocks = RunTool({"ffprobe", "-v", "error", "-show_entries", "packet=pos", "-of",
                                              "csv=p=0", folder.Native("a.mka")})
                                         .Output.split('\n');
    ASSERT_GT(blocks.size(), 400);
    const auto failing = [&](int count) {
        QByteArray spoilt = mka;
        for (int n = 1; n <= count; ++n) {
            // Behind the head of the block the first bit says that the packet is one of sound.
            const qsizetype place = blocks[40 * n].toLongLong() + 4;
            spoilt[place] = static_cast<char>(spoilt[place] | 1);
        }
        return ReadPart(folder.MakeFile("spoilt.mka", spoilt)).Failure;
    };
    EXPECT_EQ(failing(2), QString());
    EXPECT_NE(failing(9), QString());
}

TEST(LostSoundOfWindowsMedia, IsNoneWhereItsCountsAreMoreThanAnyFileHas) {
    const TestFolder folder;
    QByteArray wma = MadeOf(folder, "a.wma", Ffmpeg({"-c:a", "wmav2"}), MakeNoise(Rate, 2, Rate, 0.3));
    const qsizetype properties = wma.indexOf(QByteArray::fromHex("a1dcab8c47a9cf118ee400c00c205365"));
    ASSERT_GT(properties, 0);
    const auto header = qFromLittleEndian<qint64>(wma.constData() + 16);
    const auto missing = [&](qint64 packets, quint32 size) {
        qToLittleEndian(packets, wma.data() + properties + 56);
        qToLittleEndian(packets, wma.data() + header + 40);
        qToLittleEndian(size, wma.data() + properties + 92);
        qToLittleEndian(size, wma.data() + properties + 96);
        const MediaInput input(std::make_shared<const InputFile>(folder.MakeFile("b.wma", wma)));
        return MissingByCounts(input, {1, 1, 1});
    };
    EXPECT_GT(missing(1'000'000, 3200), 0);
    // Their product goes round to a number of bytes that a file may have.
    EXPECT_EQ(missing(qint64{1} << 39, (1U << 25) + 2), 0);
}

class RawStream : public ::testing::TestWithParam<Stream> {};

// Nothing in them counts what there should be, and what is between good frames may be a tag.
TEST_P(RawStream, ThatCannotTellPasses) {
    const TestFolder folder;
    const QByteArray whole =
        MadeOf(folder, GetParam().Name, GetParam().Command, MakeNoise(Rate, 2, Seconds * Rate, 0.3));
    for (const Damage damage : All) {
        const PartRead part = ReadPart(folder.MakeFile("damaged", Damaged(whole, damage)));
        EXPECT_EQ(part.Failure, QString());
        EXPECT_GT(part.Frames, 4 * Rate);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, RawStream,
                         ::testing::Values(Stream{"mp3", {"lame", "--quiet", "-t", "IN", "OUT"}, {}},
                                           Stream{"aac", Ffmpeg({"-f", "adts"}), {}},
                                           Stream{"ac3", Ffmpeg({"-f", "ac3"}), {}}),
                         [](const auto& stream) { return std::string(stream.param.Name); });

// Of an Ogg file whose last page is not all there, the head of that page tells where it should have ended.
TEST(LostSoundOfOgg, InAPageThatIsCutIsAFailure) {
    const TestFolder folder;
    const QByteArray ogg = MadeOf(folder, "a.ogg", {"oggenc", "-Q", "-q", "0", "-o", "OUT", "IN"},
                                  MakeNoise(Rate, 2, Seconds * Rate, 0.3));
    const qsizetype page = ogg.indexOf("OggS", ogg.size() / 2);
    const PartRead part = ReadPart(folder.MakeFile("cut.ogg", ogg.first(page + 500)));
    EXPECT_NE(part.Failure, QString());
    EXPECT_GT(part.Frames, Rate);
    EXPECT_EQ(ReadPart(folder.MakeFile("between.ogg", ogg.first(page))).Failure, QString())
        << "nobody knows of pages that are not there at all";
}

TEST(LostSoundOfOgg, IsNoneWhereALinkOfAChainBeginsItsTimesAnew) {
    const TestFolder folder;
    const QList<QByteArray> command = {"oggenc", "-Q", "-o", "OUT", "IN"};
    const QByteArray one = MadeOf(folder, "a.ogg", command, MakeNoise(Rate, 2, Rate, 0.3));
    const QByteArray other = MadeOf(folder, "b.ogg", command, MakeNoise(Rate, 2, 3 * Rate, 0.3));
    for (const QByteArray& chain : {one + other, other + one, one + other + one}) {
        EXPECT_EQ(ReadPart(folder.MakeFile("chain.ogg", chain)).Failure, QString());
    }
}

class CountedMp3 : public ::testing::Test {
protected:
    void SetUp() override {
        Mp3 = MadeOf(Folder, "a.mp3", {"lame", "--quiet", "-b", "128", "IN", "OUT"},
                     MakeNoise(Rate, 2, Seconds * Rate, 0.3));
    }
    QString FailureOf(const QByteArray& mp3) const {
        return ReadPart(Folder.MakeFile("changed.mp3", mp3)).Failure;
    }
    // Where a frame of the stream of 128 kbit begins, at or behind a place.
    qsizetype FrameAt(qsizetype place) const {
        qsizetype at = 0;
        while (at < place) at += (Mp3[at + 2] & 2) != 0 ? 418 : 417;
        return at;
    }

    TestFolder Folder;
    QByteArray Mp3;
};

TEST_F(CountedMp3, WhoseBytesCountATagThatWasCutOffPasses) {
    const qsizetype info = Mp3.indexOf("Info");
    ASSERT_GT(info, 0);
    QByteArray counted = Mp3;
    counted[info + 13] = static_cast<char>(counted[info + 13] + 1);  // 64 KB more
    EXPECT_EQ(FailureOf(counted), QString());
    // The same where the frames are not counted: nothing speaks for the file.
    counted = Mp3.left(info + 8) + Mp3.mid(info + 12, 4) + Mp3.mid(info + 12);
    counted[info + 7] = 2;
    EXPECT_EQ(FailureOf(counted), QString());
    counted[info + 9] = static_cast<char>(counted[info + 9] + 1);
    EXPECT_NE(FailureOf(counted), QString());
}

TEST_F(CountedMp3, WithTagsAndJunkBetweenItsFramesPasses) {
    const qsizetype place = FrameAt(Mp3.size() / 2);
    const QByteArray junk = "TAG" + QByteArray(125, ' ') + QByteArray(3000, '\0');
    EXPECT_EQ(FailureOf(Mp3.first(place) + junk + Mp3.mid(place)), QString());
    EXPECT_EQ(FailureOf(Mp3 + junk), QString());
    EXPECT_EQ(FailureOf(Mp3 + Mp3), QString());
}

TEST_F(CountedMp3, ThatLacksAFrameOrTwoPasses) {
    EXPECT_EQ(FailureOf(Mp3.chopped(2 * 417)), QString());
    EXPECT_NE(FailureOf(Mp3.chopped(8 * 417)), QString());
}

// Editors that take frames away may leave the old count of them behind, though not of the bytes.
TEST_F(CountedMp3, WhoseFramesAreWholeAndFewerThanCountedPassesUnlessItCountsMoreBytesThanThereAre) {
    const qsizetype info = Mp3.indexOf("Info");
    ASSERT_GT(info, 0);
    const qsizetype end = FrameAt(Mp3.size() * 9 / 10);
    const auto cutAt = [&](qsizetype place) {
        QByteArray mp3 = Mp3.first(place);
        qToBigEndian(static_cast<quint32>(place), mp3.data() + info + 12);
        return mp3;
    };
    const QByteArray cut = cutAt(end);
    EXPECT_NE(FailureOf(Mp3.first(end)), QString()) << "bytes that are not there";
    EXPECT_EQ(FailureOf(cut), QString());
    EXPECT_EQ(FailureOf(cut + "TAG" + QByteArray(125, ' ')), QString());
    QByteArray uncounted = cut;
    uncounted[info + 7] = 1;
    EXPECT_EQ(FailureOf(uncounted), QString());
    EXPECT_NE(FailureOf(cutAt(end - 200)), QString()) << "a frame of which the end is missing";
    QByteArray spoilt = cut;
    spoilt.replace(FrameAt(end / 2), 4, QByteArray(4, '\0'));
    EXPECT_NE(FailureOf(spoilt), QString()) << "frames that are none";
}

class CountedFlac : public ::testing::Test {
protected:
    void SetUp() override {
        Flac = MadeOf(Folder, "a.flac", {"flac", "-s", "--no-padding", "-o", "OUT", "IN"},
                      MakeNoise(Rate, 2, Seconds * Rate, 0.3));
    }
    PartRead Read(const QByteArray& flac) const { return ReadPart(Folder.MakeFile("changed.flac", flac)); }
    // With another total, of which the file holds the lowest 32 bits at 22.
    static QByteArray WithTotal(QByteArray flac, qint64 total) {
        for (int i = 0; i < 4; ++i) flac[22 + i] = static_cast<char>(total >> (24 - 8 * i));
        return flac;
    }
    // Without the sum of the sound, at 26.
    static QByteArray WithoutSum(QByteArray flac) { return flac.replace(26, 16, QByteArray(16, '\0')); }
    // Where the frame of that number begins.
    qsizetype FrameAt(char number) const {
        qsizetype at = 42;
        do at = Flac.indexOf("\xFF\xF8\xC9", at + 1);
        while (at >= 0 && Flac[at + 4] != number);
        return at;
    }

    TestFolder Folder;
    QByteArray Flac;
};

TEST_F(CountedFlac, WhoseTotalIsWrongPassesWhereNothingIsLost) {
    for (const qint64 total : {qint64{0}, qint64{Rate}, qint64{Seconds + 5} * Rate}) {
        EXPECT_EQ(Read(WithTotal(Flac, total)).Failure, QString()) << total;
        EXPECT_EQ(Read(WithTotal(WithoutSum(Flac), total)).Failure, QString()) << total;
    }
    // An editor that takes whole frames from the end, and leaves total and sum as they were.
    const qsizetype frame = FrameAt(50);
    ASSERT_GT(frame, 0);
    const PartRead cut = Read(Flac.first(frame));
    EXPECT_EQ(cut.Failure, QString());
    EXPECT_EQ(cut.Frames, 50 * 4096);
}

TEST_F(CountedFlac, ThatEndsInsideAFrameFailsWhateverItsTotal) {
    const QByteArray cut = Flac.first(FrameAt(50) + 3000);
    for (const qint64 total : {qint64{0}, qint64{Seconds} * Rate}) {
        const PartRead part = Read(WithTotal(cut, total));
        EXPECT_NE(part.Failure, QString()) << total;
        EXPECT_EQ(part.Frames, 50 * 4096);
    }
}

TEST_F(CountedFlac, ThatLacksAFrameInTheMiddleFailsWhateverItsTotal) {
    const QByteArray cut = Flac.first(FrameAt(50)) + Flac.mid(FrameAt(51));
    EXPECT_NE(Read(cut).Failure, QString());
    EXPECT_NE(Read(WithTotal(cut, 0)).Failure, QString());
}

TEST_F(CountedFlac, WithATagBehindItOrBetweenItsFramesPasses) {
    const QByteArray tag = "TAG" + QByteArray(125, 'x');
    EXPECT_EQ(Read(Flac + tag).Failure, QString());
    const qsizetype frame = FrameAt(50);
    const PartRead part = Read(Flac.first(frame) + tag + Flac.mid(frame));
    EXPECT_EQ(part.Failure, QString());
    EXPECT_EQ(part.Frames, Seconds * Rate);
}

// Its sound is decoded once more for that.
class CheckedFlac : public CountedFlac {
protected:
    // Reads until the failure and returns how often a stop was asked for meanwhile.
    int AskedWhileReading(bool stop) const {
        Folder.MakeFile("lacking.flac", Flac.first(FrameAt(50)) + Flac.mid(FrameAt(51)));
        AudioFile file;
        file.OpenForRead(Folder.Path("lacking.flac"));
        int asked = 0;
        file.StopAsked = [&] {
            ++asked;
            return stop;
        };
        EXPECT_NE(FailureTextOf([&] {
                      while (!file.ReadBlock(65536).IsEmpty()) {
                      }
                  }),
                  QString());
        return asked;
    }
};

TEST_F(CheckedFlac, HearsAStopWhileItsSumIsTaken) {
    EXPECT_GT(AskedWhileReading(false), 50) << "once a frame";
    EXPECT_EQ(AskedWhileReading(true), 1);
}

TEST_F(CheckedFlac, LeavesTheWindowAliveWhileItsSumIsTaken) {
    int yields = 0;
    WhileFilesAreScanned([&] { ++yields; });
    AskedWhileReading(false);
    WhileFilesAreScanned({});
    EXPECT_GT(yields, 3);
}

TEST_F(CheckedFlac, GoesOnShowingHowFarItIsWhileItsSumIsTaken) {
    FlacDecoder decoder;
    decoder.SetInputFile(Folder.MakeFile("lacking.flac", Flac.first(FrameAt(50)) + Flac.mid(FrameAt(51))));
    decoder.SetOutputFile(Folder.Path("out.wav"));
    qint16 farthest = 0;
    int last = -1;
    decoder.Progress = [&](qint16 percent) {
        farthest = std::max(farthest, percent);
        last = percent;
    };
    EXPECT_NE(FailureTextOf([&] { decoder.DecodeToWav(); }), QString());
    EXPECT_GT(farthest, 90);
    EXPECT_EQ(last, farthest);
}

// An edit list may go on beyond the stream, where it begins before time 0.
TEST(LostSoundOfMov, IsNoneWhereTimesBeginBelowNought) {
    const TestFolder folder;
    MadeOf(folder, "a.ogg", {"oggenc", "-Q", "-o", "OUT", "IN"}, MakeNoise(Rate, 2, Seconds * Rate, 0.3));
    const QList<QByteArray> command = {"ffmpeg",
                                       "-v",
                                       "error",
                                       "-itsoffset",
                                       "-2",
                                       "-i",
                                       folder.Native("a.ogg"),
                                       "-c",
                                       "copy",
                                       "-avoid_negative_ts",
                                       "disabled",
                                       folder.Native("a.mov")};
    ASSERT_EQ(RunTool(command).ExitCode, 0);
    QByteArray mov = ContentOf(folder.Native("a.mov"));
    const qsizetype edits = mov.indexOf("elst");
    ASSERT_GT(edits, 0);
    mov.replace(edits + 12, 4, QByteArray::fromHex("00002710"));  // 10,000 milliseconds
    const PartRead part = ReadPart(folder.MakeFile("b.mov", mov));
    EXPECT_EQ(part.Failure, QString());
    EXPECT_NEAR(static_cast<double>(part.Frames), 8 * Rate, 2048);
}

}  // namespace
}  // namespace Sonmira
