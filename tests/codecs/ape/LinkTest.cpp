// Texts that name a part of an APE file.
#include "Signals.h"
#include "codecs/ApeFunctions.h"
#include "platform/Failure.h"
#include "support/TestFolder.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <filesystem>

namespace Sonmira {
namespace {

constexpr qint32 GoOn = 0;
constexpr int FrameBlocks = 73728;
constexpr int Blocks = 3 * FrameBlocks + 5000;
constexpr int HeaderBytes = 44;
const QByteArray Title = "[Monkey's Audio Image Link File]\r\n";

TestSound PartOf(const TestSound& sound, std::int64_t start, std::int64_t finish) {
    TestSound part = sound;
    part.Samples = {sound.Samples.begin() + start * sound.Channels,
                    sound.Samples.begin() + finish * sound.Channels};
    return part;
}

class ApeLinks : public ::testing::Test {
protected:
    ApeLinks() : Sound(MakeApeSignal("mixture", 2, Blocks)) {
        MakeImage("disc.ape", Sound, WavKind::Signed16, 1000);
    }
    void MakeImage(const QByteArray& name, const TestSound& sound, WavKind kind, int level) {
        std::filesystem::remove(Folder.Native(name).toStdString());
        CompressFile(Folder.MakeFile("in.wav", WavOf(sound, kind)), Folder.Path(name), level, {}, GoOn);
    }
    static QByteArray Text(const QByteArray& image, const QByteArray& start, const QByteArray& finish) {
        return Title + "Image File=" + image + "\r\nStart Block=" + start + "\r\nFinish Block=" + finish +
               "\r\n";
    }
    static QByteArray Text(std::int64_t start, std::int64_t finish) {
        return Text("disc.ape", QByteArray::number(qint64{start}), QByteArray::number(qint64{finish}));
    }

    // The WAV that a text decodes to, and whether there was a failure, which must have a text.
    QByteArray Decoded(const QByteArray& text, const QByteArray& name = "part.apl") {
        return DecodedFile(Folder.MakeFile(name, text));
    }
    QByteArray DecodedFile(const QString& path) {
        std::filesystem::remove(Folder.Native("part.wav").toStdString());
        Failed = false;
        try {
            DecompressFile(path, Folder.Path("part.wav"), {}, GoOn);
        } catch (const Failure& failure) {
            Failed = true;
            EXPECT_FALSE(failure.Description.isEmpty());
        }
        const QByteArray wav = Folder.Native("part.wav");
        return NativeExists(wav) ? ContentOf(wav) : QByteArray();
    }
    QByteArray ExpectedWav(std::int64_t start, std::int64_t finish) const {
        return WavOf(PartOf(Sound, start, finish), WavKind::Signed16);
    }
    void ExpectPart(const QByteArray& text, std::int64_t start, std::int64_t finish) {
        EXPECT_TRUE(Decoded(text) == ExpectedWav(start, finish)) << text.constData();
        EXPECT_FALSE(Failed) << text.constData();
    }
    qint32 Seconds(const QByteArray& text) { return GetDurationTrack(Folder.MakeFile("part.apl", text)); }

    TestFolder Folder;
    TestSound Sound;
    bool Failed = false;
};

TEST_F(ApeLinks, GiveJustTheBlocksThatTheyName) {
    const std::pair<int, int> parts[] = {{0, Blocks},
                                         {0, 1},
                                         {1, 2},
                                         {0, FrameBlocks},
                                         {100, 200},
                                         {FrameBlocks - 1, FrameBlocks + 1},
                                         {FrameBlocks, 2 * FrameBlocks},
                                         {FrameBlocks + 7, 3 * FrameBlocks + 11},
                                         {2 * FrameBlocks - 1, Blocks},
                                         {Blocks - 1, Blocks}};
    for (const auto& [start, finish] : parts) ExpectPart(Text(start, finish), start, finish);
}

// More frames than one worker takes at a time.
TEST_F(ApeLinks, GiveAPartOfManyFrames) {
    constexpr int Many = 21 * FrameBlocks;
    Sound = MakeNoise(44100, 2, Many, 0.001);
    MakeImage("disc.ape", Sound, WavKind::Signed16, 1000);
    ExpectPart(Text(FrameBlocks - 5, Many - FrameBlocks + 7), FrameBlocks - 5, Many - FrameBlocks + 7);
    ExpectPart(Text("disc.ape", QByteArray::number(10 * FrameBlocks + 1), "-1"), 10 * FrameBlocks + 1, Many);
}

TEST_F(ApeLinks, GiveTheSoundOfImagesOfEachWidthAndOfOneChannel) {
    for (const WavKind kind : {WavKind::Unsigned8, WavKind::Signed16, WavKind::Signed24}) {
        for (const int level : {2000, 4000}) {
            const TestSound sound = MakeApeSignal("mixture", 1, FrameBlocks + 1000);
            MakeImage("disc.ape", sound, kind, level);
            const QByteArray expected = WavOf(PartOf(sound, 501, FrameBlocks + 502), kind);
            EXPECT_TRUE(Decoded(Text(501, FrameBlocks + 502)) == expected) << level;
            EXPECT_FALSE(Failed);
        }
    }
}

TEST_F(ApeLinks, GoToTheEndOfTheImageWithoutALastBlock) {
    ExpectPart(Text("disc.ape", "1000", "-1"), 1000, Blocks);
    ExpectPart(Title + "Image File=disc.ape\r\nStart Block=1000", 1000, Blocks);
    ExpectPart(Title + "Image File=disc.ape", 0, Blocks);
}

TEST_F(ApeLinks, AreReadWithAnyLineEndsBlanksAndOrder) {
    ExpectPart(Text(1000, 2000).replace("\r\n", "\n"), 1000, 2000);
    ExpectPart("\xEF\xBB\xBF" + Text(1000, 2000), 1000, 2000);
    ExpectPart(Title + "\r\nFinish Block= 2000 \r\nother line\r\nOther Key=1\r\n start block = 1000\r\n" +
                   "Image File=disc.ape\r\n\r\n",
               1000, 2000);
    ExpectPart(Text(1000, 2000) + "Start Block=3\r\nImage File=gone.ape\r\n", 1000, 2000);
}

TEST_F(ApeLinks, MayEndInATagThatChangesNothing) {
    const QByteArray tag = "APETAGEX\r\nFinish Block=5\r\nImage File=gone.ape\r\n";
    ExpectPart(Title + "Image File=disc.ape\r\nStart Block=1000\r\n\r\n-----\r\n" + tag, 1000, Blocks);
    ExpectPart(Text(1000, 2000) + tag + QByteArray(300'000, '\x7F'), 1000, 2000);
}

TEST_F(ApeLinks, GiveTheBlockOfTheirOwnTagAndNotOfTheImages) {
    const QByteArray own = QByteArray("TAGOne song").leftJustified(128, '\0');
    Folder.MakeFile("disc.ape", ContentOf(Folder.Native("disc.ape")) +
                                    QByteArray("TAGWhole disc").leftJustified(128, '\0'));
    const auto blockOf = [&](const QByteArray& text) {
        std::array<char, 128> block{};
        GetID3Tag(Folder.MakeFile("part.apl", text), block);
        return QByteArray(block.data(), std::ssize(block));
    };
    EXPECT_EQ(blockOf(Text(1000, 2000) + own), own);
    EXPECT_EQ(blockOf(Text(1000, 2000)), QByteArray(128, '\0'));
    ExpectPart(Text(1000, 2000) + own, 1000, 2000);
}

TEST_F(ApeLinks, FindTheImageByRelativeAndAbsolutePathsOfBothKinds) {
    Folder.MakeFile("sub/deep/x.txt");
    const QByteArray image = ContentOf(Folder.Native("disc.ape"));
    Folder.MakeFile("sub/deep/other.ape", image);
    const QByteArray root = Folder.Native("") + '/';
    for (const QByteArray& name :
         {QByteArray("deep/other.ape"), QByteArray("deep\\other.ape"), QByteArray(".\\deep/other.ape"),
          QByteArray("../disc.ape"), QByteArray("..\\disc.ape"), root + "disc.ape",
          QByteArray("Z:" + root + "disc.ape").replace('/', '\\'), QByteArray("C:" + root + "disc.ape")}) {
        const QByteArray wav = Decoded(Text(name, "10", "20"), "sub/part.apl");
        EXPECT_TRUE(wav == ExpectedWav(10, 20)) << name.constData();
    }
}

TEST_F(ApeLinks, FindTheImageByANameOfAnyLetters) {
    const QByteArray image = ContentOf(Folder.Native("disc.ape"));
    struct Name {
        QByteArray OfFile;
        QByteArray InText;
    };
    for (const Name& name : {Name{"d\xC3\xA9j\xC3\xA0.ape", "d\xC3\xA9j\xC3\xA0.ape"},
                             Name{"d\xC3\xA9j\xC3\xA0.ape", "d\xE9j\xE0.ape"}, Name{"\xE9.ape", "\xE9.ape"},
                             Name{" two = one .ape", " two = one .ape"}, Name{"A: first.ape", "A: first.ape"},
                             Name{"s\xC3\xB9"
                                  "b/\xC3\xA9.ape",
                                  "s\xF9"
                                  "b\\\xE9.ape"}}) {
        Folder.MakeFile(name.OfFile, image);
        EXPECT_TRUE(Decoded(Text(name.InText, "10", "20")) == ExpectedWav(10, 20)) << name.InText.constData();
        std::filesystem::remove(Folder.Native(name.OfFile).toStdString());
    }
}

TEST_F(ApeLinks, TakeTheVeryNameBeforeAnyOtherMeaning) {
    Folder.MakeFile("deep/a.ape", "no sound");
    Folder.MakeFile("deep\\a.ape", ContentOf(Folder.Native("disc.ape")));
    EXPECT_TRUE(Decoded(Text("deep\\a.ape", "10", "20")) == ExpectedWav(10, 20));
    Folder.MakeFile("\xC3\xA9.ape", "no sound");
    Folder.MakeFile("\xE9.ape", ContentOf(Folder.Native("disc.ape")));
    EXPECT_TRUE(Decoded(Text("\xE9.ape", "10", "20")) == ExpectedWav(10, 20));
}

TEST_F(ApeLinks, LastAsLongAsTheirPart) {
    EXPECT_EQ(Seconds(Text(44100, 3 * 44100 - 1)), 1);
    EXPECT_EQ(Seconds(Text(44100, 3 * 44100)), 2);
    EXPECT_EQ(Seconds(Text("disc.ape", "44100", "-1")), (Blocks - 44100) / 44100);
    EXPECT_EQ(Seconds(Text(0, qint64{1} << 60)), Blocks / 44100) << "of what there is";
}

TEST_F(ApeLinks, ThatSayWhatIsNotSoAreUnreadable) {
    Folder.MakeFolder("folder");
    Folder.MakeFile("text.ape", "no sound");
    Folder.MakeFile("empty.ape");
    Folder.MakeFile("other.apl", Text(0, 1000));
    const QByteArray bare = Title + "Image File=disc.ape\r\n";
    const std::pair<const char*, QByteArray> lies[] = {
        {"a missing image", Text("gone.ape", "0", "1000")},
        {"a missing image elsewhere", Text("/nowhere/disc.ape", "0", "1000")},
        {"a folder", Text("folder", "0", "1000")},
        {"the folder of the text", Text(".", "0", "1000")},
        {"a device", Text("/dev/zero", "0", "1000")},
        {"a file without sound", Text("text.ape", "0", "1000")},
        {"an empty file", Text("empty.ape", "0", "1000")},
        {"itself", Text("part.apl", "0", "1000")},
        {"another text", Text("other.apl", "0", "1000")},
        {"no name", Text("", "0", "1000")},
        {"no image", Title + "Start Block=0\r\nFinish Block=1000\r\n"},
        {"an image behind the start of the tag", Title + "APETAGEX\r\nImage File=disc.ape\r\n"},
        {"a name that goes on for ever", Text(QByteArray(1'000'000, 'a'), "0", "1000")},
        {"a name with a zero", Text(QByteArray("disc.ape\0.ape", 13), "0", "1000")},
        {"a start behind the image", Text(Blocks, Blocks + 1000)},
        {"a start far behind the image", Text("disc.ape", "9223372036854775807", "-1")},
        {"a start at the finish", Text(1000, 1000)},
        {"a start behind the finish", Text(2000, 1000)},
        {"a start before the image", Text("disc.ape", "-5", "1000")},
        {"a finish before the image", Text("disc.ape", "0", "-2")},
        {"a start that is no number", bare + "Start Block=one"},
        {"a start of nothing", bare + "Start Block="},
        {"a start of a number and more", bare + "Start Block=1x"},
        {"a finish that is no number", bare + "Finish Block=0x10"},
        {"a finish of too many digits", bare + "Finish Block=99999999999999999999"}};
    for (const auto& [what, text] : lies) {
        EXPECT_EQ(Seconds(text), 0) << what;
        EXPECT_EQ(Decoded(text).size(), 0) << what;
        EXPECT_TRUE(Failed) << what;
    }
}

TEST_F(ApeLinks, ToMoreThanThereIsGiveWhatThereIsAndFail) {
    for (const qint64 finish : {qint64{Blocks} + 1, std::numeric_limits<qint64>::max()}) {
        const QByteArray wav = Decoded(Text(Blocks - 1000, finish));
        constexpr qsizetype HeaderSize = 44;
        EXPECT_TRUE(wav.sliced(HeaderSize) == ExpectedWav(Blocks - 1000, Blocks).sliced(HeaderSize))
            << finish;
        EXPECT_GT(qFromLittleEndian<quint32>(wav.constData() + HeaderSize - 4), wav.size() - HeaderSize)
            << "whoever reads it finds the loss";
        EXPECT_TRUE(Failed) << finish;
    }
}

TEST_F(ApeLinks, CareOnlyForDamageInTheirOwnFrames) {
    Sound = MakeApeSignal("tones", 2, Blocks);
    MakeImage("disc.ape", Sound, WavKind::Signed16, 1000);
    QByteArray image = ContentOf(Folder.Native("disc.ape"));
    const auto frame = [&](int n) { return qFromLittleEndian<quint32>(image.constData() + 76 + 4 * n); };
    const auto middle = static_cast<qsizetype>(frame(1) + frame(2)) / 2;
    image[middle] = static_cast<char>(image[middle] ^ 0x10);
    Folder.MakeFile("disc.ape", image);
    ExpectPart(Text(0, FrameBlocks), 0, FrameBlocks);
    ExpectPart(Text("disc.ape", QByteArray::number(2 * FrameBlocks), "-1"), 2 * FrameBlocks, Blocks);
    Decoded(Text(0, FrameBlocks + 1));
    EXPECT_TRUE(Failed);
    // Where the image was cut behind the part, nothing of that is missing.
    Folder.MakeFile("disc.ape", image.first(frame(1) + 100));
    ExpectPart(Text(5, FrameBlocks), 5, FrameBlocks);
}

// A shape that our own encoder never gives a stream, and that the library's decoder reads.
TEST_F(ApeLinks, NameAPartOfOtherShapesOfStreamsToo) {
    constexpr int Length = 50'000;
    const TestSound sound = MakeApeSignal("mixture", 2, Length);
    MakeImage("disc.ape", sound, WavKind::Signed16, 2000);
    QByteArray image = ContentOf(Folder.Native("disc.ape"));
    qToLittleEndian(quint32{FrameBlocks + 1}, image.data() + 52 + 4);
    Folder.MakeFile("disc.ape", image);
    for (const auto& [start, finish] :
         {std::pair(0, Length), std::pair(17, 30'001), std::pair(30'000, Length)}) {
        EXPECT_TRUE(Decoded(Text(start, finish)) == WavOf(PartOf(sound, start, finish), WavKind::Signed16));
        EXPECT_FALSE(Failed);
    }
    EXPECT_TRUE(Decoded(Text("disc.ape", "17", "-1")) == WavOf(PartOf(sound, 17, Length), WavKind::Signed16));
    EXPECT_FALSE(Failed);
    Decoded(Text(17, Length + 1));
    EXPECT_TRUE(Failed);
    Decoded(Text(Length, Length + 1));
    EXPECT_TRUE(Failed);
    EXPECT_EQ(Seconds(Text(1, 44101)), 1);
    EXPECT_EQ(Seconds(Text(0, 44099)), 0);
}

TEST_F(ApeLinks, AreNoneUnderAnotherNameAndAStreamUnderThatNameIsAStream) {
    Decoded(Text(0, 1000), "part.ape");
    EXPECT_TRUE(Failed);
    for (const char* name : {"song.apl", "song.APL"}) {
        const QString stream = Folder.MakeFile(name, ContentOf(Folder.Native("disc.ape")));
        EXPECT_TRUE(DecodedFile(stream) == ContentOf(Folder.Native("in.wav")));
        EXPECT_FALSE(Failed);
        EXPECT_EQ(GetDurationTrack(stream), Blocks / 44100);
    }
    EXPECT_TRUE(Decoded(Text(0, 1000), "part.Apl") == ExpectedWav(0, 1000));
}

TEST_F(ApeLinks, AreNeverDecodedOntoTheirImage) {
    const QByteArray image = ContentOf(Folder.Native("disc.ape"));
    const QString link = Folder.MakeFile("part.apl", Text(0, 1000));
    EXPECT_THROW(DecompressFile(link, Folder.Path("disc.ape"), {}, GoOn), Failure);
    EXPECT_THROW(DecompressFile(link, link, {}, GoOn), Failure);
    EXPECT_TRUE(ContentOf(Folder.Native("disc.ape")) == image);
    EXPECT_EQ(ContentOf(Folder.Native("part.apl")), Text(0, 1000));
}

TEST_F(ApeLinks, TellTheProgressOfTheirPartAndStop) {
    const QString link = Folder.MakeFile("part.apl", Text(2 * FrameBlocks + 5, Blocks));
    std::vector<qint32> told;
    DecompressFile(
        link, Folder.Path("part.wav"), [&](qint32 done) { told.push_back(done); }, GoOn);
    EXPECT_EQ(told.front(), 0);
    EXPECT_EQ(told.back(), 100'000);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    constexpr qint32 Stop = 1;
    EXPECT_NO_THROW(DecompressFile(link, Folder.Path("part.wav"), {}, Stop));
    EXPECT_EQ(ContentOf(Folder.Native("part.wav")).size(), HeaderBytes);
    Folder.MakeFile("part.apl", Text(0, Blocks + 1));
    EXPECT_NO_THROW(DecompressFile(link, Folder.Path("part.wav"), {}, Stop)) << "it did not come to the end";
}

}  // namespace
}  // namespace Sonmira
